// Recording errors: the table look-up, the excerpt, and the rule that the first error of a job is kept.
#include "api/error_record.h"

#include <algorithm>
#include <string_view>

#include "platform/message_table.h"

namespace zorvan {
namespace {

struct ErrorRow {
    Status code;
    unsigned messageId;
};

constexpr ErrorRow kErrorRows[] = {
#define ZORVAN_ERROR(code, name, messageId, english, chinese) {Status::name, messageId},
#include "api/error_table.inc"
#undef ZORVAN_ERROR
};

constexpr unsigned kOtherCodes = 1;

}  // namespace

const char* MessageText(Status code) {
    const auto* const row =
        std::find_if(std::begin(kErrorRows), std::end(kErrorRows),
                     [code](const ErrorRow& candidate) { return candidate.code == code; });
    return MessageOf(row == std::end(kErrorRows) ? kOtherCodes : row->messageId);
}

void ErrorRecord::Append(std::span<const std::uint8_t> bytes) {
    const std::size_t count = std::min(bytes.size(), excerpt_.size() - length_);
    std::copy_n(bytes.begin(), count, excerpt_.begin() + length_);
    length_ += static_cast<std::uint32_t>(count);
}

void ErrorRecord::Record(Status code, std::span<const std::uint8_t> file, std::uint32_t offset,
                         std::span<const std::uint8_t> bytes) {
    if (Failed(code_) || !Failed(code)) {
        return;
    }
    code_ = code;
    message_ = MessageText(code);
    if (file.empty()) {
        return;
    }
    offset_ = offset;
    const std::size_t rest = offset < file.size() ? file.size() - offset : 0;
    const std::size_t fromFile = offset == 0 ? 0 : std::min<std::size_t>(kExcerptPiece, rest);
    if (bytes.empty()) {
        Append(file.subspan(fromFile == 0 ? 0 : offset, fromFile));
        return;
    }
    if (fromFile != 0) {
        // Taken from the start of the file, not from the offset, and only as long as the rest behind the
        // offset: hosts show this excerpt as the kind of file, followed by the failing data.
        Append(file.first(fromFile));
        constexpr std::string_view kDots = "\n...\n";
        Append({reinterpret_cast<const std::uint8_t*>(kDots.data()), kDots.size()});
    }
    const std::size_t room = length_ < kExcerptPiece ? kExcerptPiece - length_ : kExcerptPiece;
    Append(bytes.first(std::min(bytes.size(), room)));
}

}  // namespace zorvan
