// Writing indexed spaces.
#include "content/indexed_space.h"

#include <algorithm>
#include <string_view>

#include "api/current_job.h"
#include "api/error_record.h"
#include "content/color_state.h"
#include "pdf/byte_buffer.h"
#include "pdf/lexer.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "ps/device_parameters.h"
#include "ps/embedded_data.h"

namespace zorvan {
namespace {

bool IsBlank(std::uint8_t byte) {
    return IsPdfWhitespace(byte) && byte != '\b';  // which is none in PostScript
}

bool IsBase85(std::uint8_t byte) {
    return (byte >= '!' && byte <= 'u') || byte == 'z' || IsBlank(byte);
}

/// Digits of one number of four bytes; a shorter last one is filled up as the device does it.
class Base85Number {
public:
    /// False when it is no such number.
    bool Take(unsigned digit) {
        value_ = value_ * 85 + digit;
        count_ = (count_ + 1) % 5;
        const bool fits = value_ <= 0xFFFFFFFFU;
        value_ = count_ == 0 ? 0 : value_;
        return fits;
    }
    [[nodiscard]] bool HasBegun() const { return count_ != 0; }
    bool End() {
        bool fits = count_ != 1;
        while (HasBegun() && fits) {
            fits = Take(84);
        }
        return fits;
    }

private:
    std::uint64_t value_ = 0;
    unsigned count_ = 0;
};

/// The device ends the job at digits that are no numbers.
bool AreBase85Numbers(Bytes digits) {
    Base85Number number;
    for (const std::uint8_t digit : digits) {
        const bool zeros = digit == 'z';
        if (!IsBlank(digit) && (zeros ? number.HasBegun() : !number.Take(digit - unsigned{'!'}))) {
            return false;
        }
    }
    return number.End();
}

bool AreDigits(Bytes /*digits*/) {
    return true;
}

/// A table in an ASCII form that PostScript strings have, too.
struct AsciiForm {
    std::uint32_t filter;
    std::string_view begin;
    std::string_view end;
    bool (*belongs)(std::uint8_t byte);
    bool (*isWhole)(Bytes digits);
};

constexpr AsciiForm kAsciiForms[] = {
    {names::kASCII85Decode, "<~", "~>", IsBase85, AreBase85Numbers},
    {names::kASCIIHexDecode, "<", ">", BelongsIntoHexadecimal, AreDigits},
};

/// True for data that is such a string up to its end: the device would run anything else as a program.
bool CanBeCopied(Bytes data, const AsciiForm& form) {
    const auto end = std::ranges::find_if_not(data, form.belongs);
    const auto digits = static_cast<std::size_t>(end - data.begin());
    const Bytes rest = data.subspan(digits);
    return form.isWhole(data.first(digits)) && rest.size() >= form.end.size() &&
           std::equal(form.end.begin(), form.end.end(), rest.begin()) &&
           std::ranges::all_of(rest.subspan(form.end.size()), IsPdfWhitespace);
}

/// The form in which the table can pass through as it stands, or null.
const AsciiForm* FormOf(const StreamReader& reader) {
    if (reader.Filters().size() != 1) {
        return nullptr;
    }
    const auto* const form =
        std::ranges::find(kAsciiForms, reader.Filters().front().name, &AsciiForm::filter);
    return form != std::end(kAsciiForms) && CanBeCopied(reader.Raw(), *form) ? form : nullptr;
}

}  // namespace

IndexedSpace::IndexedSpace(ResourceKey key, PdfObject array, std::uint32_t depth)
    : ColorSpace(key, family::kIndexed),
      base_(ArrayGet(array, 1), depth),
      highest_(IntegerOf(Resolved(ArrayGet(array, 2)).Get())),
      table_(CloneObject(Resolved(ArrayGet(array, 3)).Get())) {}

Status IndexedSpace::RegisterUsed() {
    base_.Register();
    return Status::kOk;
}

Status IndexedSpace::AppendDefinition(OutputPiece& text) {
    if (!Is(table_.Get(), ObjectType::kStream)) {
        return Fail(Status::kInvalidDataType, Reference());
    }
    text.Append("[/Indexed ");
    RETURN_IF_FAILED(AppendBase(text));
    RETURN_IF_FAILED(WriteTable(text.AppendInteger(highest_).Append("\n")));
    text.Append("]");
    return Status::kOk;
}

/// A base in the text stands there twice, as its definition and as its use; the prolog drops the second.
Status IndexedSpace::AppendBase(OutputPiece& text) {
    RETURN_IF_FAILED(base_.AppendText(text));
    const ColorSpace* own = base_.Inline();
    if (own == nullptr) {
        return Status::kOk;
    }
    if (own->IsDevice()) {
        own->AppendUse(text);
        return Status::kOk;
    }
    if (baseKey_.number == 0) {
        baseKey_.number = TakeGeneratedResourceNumber();
    }
    AppendUseOf(text, baseKey_);
    return Status::kOk;
}

Status IndexedSpace::WriteTable(OutputPiece& text) const {
    StreamReader reader(table_.Get());
    if (const AsciiForm* form = FormOf(reader)) {
        text.Append(form->begin).Append(reader.Raw());
        return Status::kOk;
    }
    RETURN_IF_FAILED(text.Write());
    text.Clear();
    return WriteDecodedTable(reader);
}

Status IndexedSpace::WriteDecodedTable(StreamReader& reader) const {
    ByteBuffer data;
    RETURN_IF_FAILED(DecodeWholeStream(reader, Reference(), data));
    const auto wanted = static_cast<std::uint64_t>(
        std::max<std::int64_t>(0, (std::int64_t{highest_} + 1) * base_.Components()));
    // A table that is too short is left out whole: the prolog fills it up.
    const bool isWhole = wanted <= data.Size();
    return EmbedAscii85String(isWhole ? data.Bytes().first(static_cast<std::size_t>(wanted)) : Bytes());
}

}  // namespace zorvan
