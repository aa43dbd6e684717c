// The only way output leaves the library: whole pieces of text to the host's write callback.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "api/status.h"
#include "pdf/object.h"
#include "ps/number_text.h"
#include "zorvan/zorvan.h"

namespace zorvan {

/// The open file's callback, and what it answered in the exported call in progress.
class OutputSink {
public:
    explicit OutputSink(ZORVAN_WriteCallback callback) : callback_(callback) {}

    /// A new exported call may write again, whatever the host refused before.
    void BeginCall() { refusal_ = Status::kOk; }
    /// True once the host has refused a piece in this call: nothing more is handed to it and nothing is
    /// recorded.
    [[nodiscard]] bool IsRefused() const { return Failed(refusal_); }

    Status Write(std::string_view piece);
    /// Bytes that the host has taken so far.
    [[nodiscard]] std::uint64_t Written() const { return written_; }

private:
    ZORVAN_WriteCallback callback_;
    std::uint64_t written_ = 0;
    Status refusal_ = Status::kOk;
};

/// Hands a piece to the host, unbuffered: one call is one call of the callback, an empty piece too. The
/// status is the host's own, unchanged; kCanNotOutputPs, recorded, without a callback.
Status WriteOutput(std::string_view piece);

Status WriteOutput(std::span<const std::uint8_t> bytes);

/// The first of the two, for an encoder to write to.
inline Status WriteEncoded(std::string_view piece) {
    return WriteOutput(piece);
}

/// A piece being composed. It is written once; Clear makes it ready for the next one and keeps its memory.
class OutputPiece {
public:
    OutputPiece& Append(std::string_view text);
    OutputPiece& Append(std::span<const std::uint8_t> bytes);
    OutputPiece& AppendInteger(std::int32_t value);
    OutputPiece& AppendUnsigned(std::uint32_t value);
    /// "%04x".
    OutputPiece& AppendFourDigits(std::uint16_t value);
    /// "%f": six decimals.
    OutputPiece& AppendFixed(float value);
    /// The real-number rule.
    OutputPiece& AppendReal(float value);
    /// `FormatOperand`: an integer object by the integer rule, any other by the real-number rule.
    OutputPiece& AppendOperand(PdfObject operand);

    [[nodiscard]] std::string_view View() const { return {text_.get(), size_}; }
    void Clear() { size_ = 0; }

    Status Write() const { return WriteOutput(View()); }

private:
    /// At least `count` writable characters behind the text.
    char* Room(std::size_t count) {
        if (capacity_ - size_ < count) {
            Grow(count);
        }
        return text_.get() + size_;
    }
    void Grow(std::size_t count);
    void CommitTo(const char* end) { size_ = static_cast<std::size_t>(end - text_.get()); }

    std::unique_ptr<char[]> text_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

}  // namespace zorvan
