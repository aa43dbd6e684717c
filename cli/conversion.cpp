// Walks the library's calling order and turns its statuses into the program's ends.
#include "cli/conversion.h"

namespace zorvan::cli {

ExitCode OpeningFailure(int status) {
    switch (status) {
        case kWrongPassword:
            return ExitCode::kPassword;
        case kNoJob:
        case kOutOfMemory:
        case kNoProlog:
            return ExitCode::kFailed;
        default:
            return ExitCode::kBadInput;
    }
}

void RequireCodecs(const LibrarySession& session, const std::vector<std::string>& searchedFolders) {
    if (session.BeginStatus() == 0) {
        return;
    }
    std::string searched;
    for (const std::string& folder : searchedFolders) {
        searched += (searched.empty() ? "" : ", ") + folder;
    }
    throw Failure(ExitCode::kFailed,
                  "the library cannot start: " + StatusText(session.BeginStatus(), session.FirstError()) +
                      "; Filter.dll was looked for in " + searched);
}

Conversion::Conversion(const Options& options, LibrarySession& session, PageSink& sink, Messages& messages,
                       ProgressBar& progress)
    : options_(options), session_(session), sink_(sink), messages_(messages), progress_(progress) {}

ExitCode Conversion::Run(const std::string& path) {
    Open(path);
    const std::vector<unsigned> pages = options_.pages.Resolve(pageCount_);
    if (const int status = session_.WriteSetup(); status != 0) {
        Fail(ExitCode::kFailed, "its resources cannot be converted", status);
    }
    WritePages(pages);
    session_.CloseFile();
    sink_.ThrowIfFailed();
    firstError_ = session_.FirstError();
    if (firstError_.code != 0) {
        messages_.Warning(About("warning: " + ErrorText(firstError_)));
    }
    return firstError_.code != 0 || pageWasDropped_ ? ExitCode::kWarnings : ExitCode::kDone;
}

void Conversion::Open(const std::string& path) {
    if (const int status = session_.OpenFile(path, options_.password, sink_); status != 0) {
        // The file was opened before the library saw it: that it cannot be read is not the reason.
        const bool isTooLarge = status == kNotMapped;
        Fail(OpeningFailure(status),
             isTooLarge ? "is too large to be mapped whole into memory" : "cannot be opened as a PDF",
             status);
    }
    pageCount_ = session_.PageCount();
    if (pageCount_ == 0) {
        Fail(ExitCode::kBadInput, "has no pages", session_.FirstError().code);
    }
}

void Conversion::WritePages(const std::vector<unsigned>& pages) {
    unsigned done = 0;
    for (const unsigned page : pages) {
        progress_.Show(done, static_cast<unsigned>(pages.size()));
        WritePage(page);
        ++done;
    }
    progress_.Clear();
}

// A page that failed has left the device's memory unrestored: it must not stay in the output.
void Conversion::WritePage(unsigned page) {
    sink_.BeginPage(page);
    const int status = session_.WritePage(page);
    const std::string name = "page " + std::to_string(page);
    if (status == 0) {
        sink_.KeepPage();
    } else if (options_.keepGoing) {
        sink_.ThrowIfFailed();
        sink_.DropPage();
        pageWasDropped_ = true;
        messages_.Error(About(name + " is left out: " + StatusText(status, session_.FirstError())));
    } else {
        Fail(ExitCode::kFailed, name + " cannot be converted", status);
    }
    sink_.ThrowIfFailed();
}

// A status can be the sink's refusal come back: then the output is to blame, not the file.
void Conversion::Fail(ExitCode code, const std::string& what, int status) const {
    sink_.ThrowIfFailed();
    const std::string reason = status == 0 ? "" : ": " + StatusText(status, session_.FirstError());
    throw Failure(code, About(what + reason));
}

}  // namespace zorvan::cli
