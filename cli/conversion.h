// One conversion from the opened library to the last page.
#pragma once

#include <string>
#include <vector>

#include "cli/failure.h"
#include "cli/library_session.h"
#include "cli/messages.h"
#include "cli/options.h"
#include "cli/page_sink.h"
#include "cli/progress_bar.h"

namespace zorvan::cli {

class Conversion {
public:
    Conversion(const Options& options, LibrarySession& session, PageSink& sink, Messages& messages,
               ProgressBar& progress);

    // Converts the pages of the file that the library finds under `path` into the sink. The result is kDone
    // or kWarnings; every other end is a Failure, after which the sink's bytes are worth nothing.
    ExitCode Run(const std::string& path);

    unsigned PageCount() const { return pageCount_; }
    // The first error, code 0 when there was none. Valid after Run.
    const LibraryError& FirstError() const { return firstError_; }

private:
    void Open(const std::string& path);
    void WritePages(const std::vector<unsigned>& pages);
    void WritePage(unsigned page);
    [[noreturn]] void Fail(ExitCode code, const std::string& what, int status) const;
    std::string About(const std::string& text) const { return options_.input + ": " + text; }

    const Options& options_;
    LibrarySession& session_;
    PageSink& sink_;
    Messages& messages_;
    ProgressBar& progress_;
    unsigned pageCount_ = 0;
    bool pageWasDropped_ = false;
    LibraryError firstError_;
};

// Throws a Failure when the session's job could not begin; `searchedFolders` are named in it.
void RequireCodecs(const LibrarySession& session, const std::vector<std::string>& searchedFolders);

// The exit code for a file whose opening ended with `status`: it is the file's fault, or the password's,
// unless the library lacks something of its own.
ExitCode OpeningFailure(int status);

}  // namespace zorvan::cli
