// The program's only way to the library: one job with one file.
#pragma once

#include <optional>
#include <string>

#include "cli/page_sink.h"

namespace zorvan::cli {

// The first error of a job, as KAPRINE_GetErrInfo tells it.
struct LibraryError {
    int code = 0;  // 0: none
    std::string text;
    unsigned offset = 0;  // in bytes, of the object involved; 0 when none is known
    std::string excerpt;
};

// The statuses that the program tells apart.
constexpr int kNoJob = -1;
constexpr int kOutOfMemory = -4088;
constexpr int kNoProlog = -4087;
constexpr int kNotMapped = -4086;
constexpr int kWrongPassword = -4068;

// Begins the job when it is made and ends it when it dies; a file that is open then gets no trailer. The
// write callback has no room for a pointer of ours, so there is one session at a time.
class LibrarySession {
public:
    explicit LibrarySession(const std::string& filterFolder);
    LibrarySession(const LibrarySession&) = delete;
    LibrarySession& operator=(const LibrarySession&) = delete;
    ~LibrarySession();

    // Each result is the library's status: 0, one of its codes, or kRefused when `sink` took no more.
    int BeginStatus() const { return beginStatus_; }
    int OpenFile(const std::string& path, const std::optional<std::string>& password, PageSink& sink);
    int WriteSetup();
    int WritePage(unsigned page);
    // Writes the trailer.
    void CloseFile();

    unsigned PageCount() const;
    LibraryError FirstError() const;

    // The status with which the callback refuses bytes: none of the library's own.
    static constexpr int kRefused = 1;

private:
    int beginStatus_;
};

}  // namespace zorvan::cli
