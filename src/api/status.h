// The one status type of every operation, and the way to pass a failure on.
#pragma once

#include <cstdint>

namespace zorvan {

/// 0 is success, the named values are the library's own errors, kNoObject says that there is no job or file
/// (or that a codec failed). Any other value is a status of the host's write callback, passed up unchanged.
// clang-format off
enum class [[nodiscard]] Status : std::int32_t {
    // clang-format on
    kOk = 0,
    kNoObject = -1,
#define ZORVAN_ERROR(code, name, messageId, english, chinese) name = (code),
#include "api/error_table.inc"
#undef ZORVAN_ERROR
};

constexpr bool Failed(Status status) {
    return status != Status::kOk;
}

/// The plain number that leaves through the exported functions.
constexpr std::int32_t ToNumber(Status status) {
    return static_cast<std::int32_t>(status);
}

}  // namespace zorvan

/// Ends the function with the status of `expression` when that is not kOk.
#define RETURN_IF_FAILED(expression)                   \
    do {                                               \
        const ::zorvan::Status failed_ = (expression); \
        if (::zorvan::Failed(failed_)) {               \
            return failed_;                            \
        }                                              \
    } while (false)
