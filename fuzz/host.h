// What the header promises a host, demanded of each result of the exported functions.
#pragma once

#include <numeric>
#include <string>

#include "fuzz/require.h"
#include "platform/loadable_module.h"
#include "zorvan/zorvan.h"

namespace zorvan::fuzz {

/// The codec library stays loaded: a fuzzer would count it anew in each job, and at some time too often.
inline int BeginJob(const char* folder = FILTER_FOLDER) {
    static LoadableModule codecs;
    static const bool isLoaded = codecs.Load(FILTER_FOLDER "Filter.dll");
    Require(isLoaded);
    return KAPRINE_Begin(folder);
}

constexpr bool IsLibraryError(int status) {
    return status >= -4095 && status <= -4068;
}

/// The record of the job's first error, all of its parts read.
inline int RequireSoundError() {
    constexpr unsigned int kLongestExcerpt = 69;
    const char* message = "";
    unsigned int offset = 0;
    const unsigned char* excerpt = nullptr;
    unsigned int length = 0;
    const int code = KAPRINE_GetErrInfo(&message, &offset, &excerpt, &length);
    Require(code == 0 || IsLibraryError(code));
    Require((code == 0) == std::string(message).empty());
    Require(length <= kLongestExcerpt && std::accumulate(excerpt, excerpt + length, 0U) <= length * 255);
    return code;
}

/// A status is success, an error of the library, which is then told, or -1; or what the callback said, which
/// is 0 as long as it accepted everything.
inline void RequireStatus(int status, int refusal = 0) {
    Require(status == 0 || status == -1 || status == refusal || IsLibraryError(status));
    Require(!IsLibraryError(status) || status == refusal || RequireSoundError() != 0);
}

}  // namespace zorvan::fuzz
