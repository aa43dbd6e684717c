// Writing pieces and composing them.
#include "ps/output.h"

#include <algorithm>

#include "api/current_job.h"
#include "api/error_record.h"

namespace zorvan {

Status OutputSink::Write(std::string_view piece) {
    if (IsRefused()) {
        return refusal_;
    }
    if (callback_ == nullptr) {
        return Fail(Status::kCanNotOutputPs);
    }
    refusal_ = static_cast<Status>(callback_(piece.data(), static_cast<unsigned int>(piece.size())));
    written_ += piece.size();
    return refusal_;
}

Status WriteOutput(std::string_view piece) {
    return CurrentOutput().Write(piece);
}

namespace {

std::string_view AsText(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

}  // namespace

Status WriteOutput(std::span<const std::uint8_t> bytes) {
    return WriteOutput(AsText(bytes));
}

OutputPiece& OutputPiece::Append(std::span<const std::uint8_t> bytes) {
    return Append(AsText(bytes));
}

void OutputPiece::Grow(std::size_t count) {
    constexpr std::size_t kFirst = 256;
    const std::size_t wanted = std::max({kFirst, size_ + count, capacity_ * 2});
    auto grown = std::make_unique_for_overwrite<char[]>(wanted);
    std::copy_n(text_.get(), size_, grown.get());
    text_ = std::move(grown);
    capacity_ = wanted;
}

OutputPiece& OutputPiece::Append(std::string_view text) {
    std::copy(text.begin(), text.end(), Room(text.size()));
    size_ += text.size();
    return *this;
}

OutputPiece& OutputPiece::AppendInteger(std::int32_t value) {
    CommitTo(WriteInteger(Room(kMaxNumberText), value));
    return *this;
}

OutputPiece& OutputPiece::AppendUnsigned(std::uint32_t value) {
    CommitTo(WriteUnsigned(Room(kMaxNumberText), value));
    return *this;
}

OutputPiece& OutputPiece::AppendFourDigits(std::uint16_t value) {
    CommitTo(WriteFourDigits(Room(kMaxNumberText), value));
    return *this;
}

OutputPiece& OutputPiece::AppendFixed(float value) {
    CommitTo(WriteFixed(Room(kMaxNumberText), value));
    return *this;
}

OutputPiece& OutputPiece::AppendReal(float value) {
    CommitTo(WriteReal(Room(kMaxNumberText), value));
    return *this;
}

OutputPiece& OutputPiece::AppendOperand(PdfObject operand) {
    if (Is(operand, ObjectType::kInteger)) {
        return AppendInteger(static_cast<std::int32_t>(operand.payload));
    }
    return AppendReal(NumberOf(operand));
}

}  // namespace zorvan
