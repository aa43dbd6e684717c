// A host for tests: drives the exported functions and keeps every piece that the library hands out.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "zorvan/calling.h"

namespace zorvan::test {

/// What KAPRINE_GetErrInfo tells.
struct ErrorInfo {
    int code = 0;
    std::string message;
    unsigned offset = 0;
    std::string excerpt;
};
ErrorInfo GetErrorInfo();

/// A file below the system's temporary folder that goes away with the object.
class TemporaryFile {
public:
    explicit TemporaryFile(std::string_view bytes);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    [[nodiscard]] const std::string& Path() const { return path_; }

private:
    std::string path_;
};

/// The folder of the built "Filter.dll", with its separator.
std::string FilterFolder();

/// The pieces that the callback took, and how it refuses. There is one callback, so all of it is static.
class Pieces {
public:
    /// Forgets everything and accepts everything.
    static void Reset();
    /// From now on refuses the `call`-th callback, counted from 1 (and every later one), with `status`.
    static void Refuse(std::uint64_t call, int status, bool fromThenOn);

    static int ZORVAN_CALL Take(const void* bytes, unsigned int count);

    static const std::vector<std::string>& Taken();
    static std::string Joined();
    static std::uint64_t Calls();
    /// Callbacks after a refused one, until ResetRefusal; there must be none inside one exported call.
    static std::uint64_t CallsAfterRefusal();
    static void ResetRefusal();
};

/// The statuses of a whole conversion, in the order of the calls.
struct Conversion {
    int begin = 0;
    int fileBegin = 0;
    int global = 0;
    std::vector<int> pages;
    ErrorInfo error;
    std::string output;
};

/// Converts a file in a job of its own, all pages, going on whatever the statuses are.
Conversion Convert(std::string_view pdfBytes);

/// What a page's content became: the text between the clip line and the page's trailer.
std::string ContentOf(std::string_view output, unsigned page = 1);
/// Converts a one-page document with this content and gives what it became.
std::string Translate(std::string_view content, std::string_view pageEntries = "");

}  // namespace zorvan::test
