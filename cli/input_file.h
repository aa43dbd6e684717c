// The PDF to convert, checked before the library sees it.
#pragma once

#include <string>

namespace zorvan::cli {

class InputFile {
public:
    // Throws a Failure that says what is wrong: missing, unreadable, a folder, no regular file, empty.
    explicit InputFile(const std::string& path);
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile();

    // The path under which the library opens the file. It takes 259 bytes; a longer path is replaced by a
    // short one to the same file, valid as long as this object.
    std::string LibraryPath() const;

private:
    void Check() const;

    std::string path_;
    int descriptor_;
};

}  // namespace zorvan::cli
