// The first error of a job: its code, its text in the user's language, and where in the file it was.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "api/status.h"

namespace zorvan {

struct PdfObject;

/// Message text for a code, UTF-8; "Unknown error." for a code that is not in the table.
const char* MessageText(Status code);

class ErrorRecord {
public:
    /// What is copied from the file, and as much again from the failing operation.
    static constexpr std::uint32_t kExcerptPiece = 32;

    [[nodiscard]] Status Code() const { return code_; }
    [[nodiscard]] const char* Message() const { return message_; }
    [[nodiscard]] std::uint32_t Offset() const { return offset_; }
    [[nodiscard]] std::span<const std::uint8_t> Excerpt() const { return {excerpt_.data(), length_}; }

    /// Keeps the first error and ignores every later one. `file` is the mapped file, empty when none is open;
    /// `offset` the place of the object involved, 0 for none; `bytes` a piece of the failing data, or empty.
    void Record(Status code, std::span<const std::uint8_t> file, std::uint32_t offset,
                std::span<const std::uint8_t> bytes);

private:
    void Append(std::span<const std::uint8_t> bytes);

    static constexpr std::uint32_t kSeparator = 5;  // "\n...\n"

    Status code_ = Status::kOk;
    const char* message_ = "";
    std::uint32_t offset_ = 0;
    std::uint32_t length_ = 0;
    std::array<std::uint8_t, 2 * kExcerptPiece + kSeparator> excerpt_{};
};

/// Records an error of the current job; `object` is the reference of the object being worked on, or null.
/// Nothing is recorded while the host refuses output: the failure is then the host's own.
void RecordError(Status code, PdfObject object, std::span<const std::uint8_t> bytes = {});

/// Records the error and hands it back: `return Fail(Status::kIllegalFont, reference);`
Status Fail(Status code, PdfObject object, std::span<const std::uint8_t> bytes = {});
Status Fail(Status code);

}  // namespace zorvan
