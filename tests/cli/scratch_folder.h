// A folder for one test's files, gone with the test.
#pragma once

#include <string>
#include <vector>

namespace zorvan::cli {

class ScratchFolder {
public:
    ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder();

    std::string Path(const std::string& name) const { return folder_ + "/" + name; }
    // Writes a file and gives its path.
    std::string Write(const std::string& name, const std::string& content) const;
    // The names of all files, sorted, hidden ones included.
    std::vector<std::string> Names() const;

private:
    std::string folder_;
};

// The content of a file; "(missing)" when there is none.
std::string FileText(const std::string& path);

}  // namespace zorvan::cli
