// Calls the eight functions in their order and routes the callback to the session's sink.
#include "cli/library_session.h"

#include <algorithm>
#include <new>

#include "zorvan/zorvan.h"

namespace zorvan::cli {
namespace {

PageSink* currentSink = nullptr;

// Called millions of times a second with some fifteen bytes. No exception may cross the library.
int ZORVAN_CALL TakePiece(const void* bytes, unsigned int count) {
    if (count == 0) {
        return 0;
    }
    try {
        return currentSink->Take(static_cast<const char*>(bytes), count) ? 0 : LibrarySession::kRefused;
    } catch (const std::bad_alloc&) {
        return kOutOfMemory;
    }
}

// PDF passwords are 32 bytes at most (PDF Reference, algorithm 3.2), so nothing that counts is cut off.
ZORVAN_PasswordRecord PasswordRecord(const std::string& password) {
    ZORVAN_PasswordRecord record = {};
    record.length = static_cast<unsigned int>(password.copy(record.text, sizeof record.text));
    return record;
}

}  // namespace

LibrarySession::LibrarySession(const std::string& filterFolder)
    : beginStatus_(KAPRINE_Begin(filterFolder.c_str())) {}

LibrarySession::~LibrarySession() {
    KAPRINE_End();
    currentSink = nullptr;
}

int LibrarySession::OpenFile(const std::string& path, const std::optional<std::string>& password,
                             PageSink& sink) {
    currentSink = &sink;
    if (!password) {
        return ZORVAN_OneFileBegin(path.c_str(), TakePiece, nullptr);
    }
    const ZORVAN_PasswordRecord record = PasswordRecord(*password);
    return ZORVAN_OneFileBegin(path.c_str(), TakePiece, &record);
}

int LibrarySession::WriteSetup() {
    return ZORVAN_OutputGlobalResources();
}

int LibrarySession::WritePage(unsigned page) {
    return ZORVAN_OutputOnePage(page);
}

void LibrarySession::CloseFile() {
    ZORVAN_OneFileEnd();
}

unsigned LibrarySession::PageCount() const {
    return static_cast<unsigned>(std::max(0, ZORVAN_GetTotalPages()));
}

LibraryError LibrarySession::FirstError() const {
    const char* text = nullptr;
    const unsigned char* excerpt = nullptr;
    unsigned int length = 0;
    LibraryError error;
    error.code = KAPRINE_GetErrInfo(&text, &error.offset, &excerpt, &length);
    if (text != nullptr) {
        error.text = text;
    }
    if (excerpt != nullptr) {
        error.excerpt.assign(excerpt, excerpt + length);
    }
    return error;
}

}  // namespace zorvan::cli
