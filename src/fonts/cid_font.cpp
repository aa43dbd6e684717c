// Building CID-keyed fonts; writing those with compact programs.
#include "fonts/cid_font.h"

#include "api/current_job.h"
#include "fonts/compact_program.h"
#include "fonts/font_program.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "ps/device_parameters.h"

namespace zorvan {
namespace {

constexpr std::uint32_t kSerifFlag = 2;

/// What stands between the parentheses of a string, its escapes and all.
std::string LiteralTextOf(PdfObject string) {
    std::string text = TextOfString(string);
    return StringKindOf(string) == StringKind::kHexadecimal ? EscapedText(text) : text;
}

/// Takes the code of up to three octal digits, of which there is one at least.
char TakeOctal(std::string_view& text) {
    unsigned code = 0;
    for (int digits = 0; digits < 3 && !text.empty() && text.front() >= '0' && text.front() <= '7';
         ++digits) {
        code = code * 8 + static_cast<unsigned>(text.front() - '0');
        text.remove_prefix(1);
    }
    return static_cast<char>(code);
}

/// Appends what the escape behind a backslash stands for, and takes it from the text.
void TakeEscape(std::string_view& text, std::string& bytes) {
    constexpr std::string_view kLetters = "nrtbf";
    constexpr std::string_view kMeant = "\n\r\t\b\f";
    const char letter = text.front();
    if (letter >= '0' && letter <= '7') {
        bytes += TakeOctal(text);
        return;
    }
    text.remove_prefix(text.starts_with("\r\n") ? 2 : 1);
    const std::size_t named = kLetters.find(letter);
    if (named != std::string_view::npos) {
        bytes += kMeant[named];
    } else if (letter != '\r' && letter != '\n') {
        bytes += letter;
    }
}

/// The bytes that the device reads of such a text.
std::string BytesOfText(std::string_view text) {
    std::string bytes;
    while (!text.empty()) {
        const char letter = text.front();
        text.remove_prefix(1);
        if (letter != '\\') {
            bytes += letter;
        } else if (!text.empty()) {
            TakeEscape(text, bytes);
        }
    }
    return bytes;
}

CharacterCollection CollectionOf(PdfObject font) {
    const Resolved info(DictGet(font, names::kCIDSystemInfo));
    const Resolved registry(DictGet(info.Get(), names::kRegistry));
    const Resolved ordering(DictGet(info.Get(), names::kOrdering));
    return {.registry = LiteralTextOf(registry.Get()), .ordering = LiteralTextOf(ordering.Get())};
}

bool IsSerif(PdfObject font) {
    const OwnedObject flags = DescriptorEntry(font, names::kFlags);
    return (static_cast<std::uint32_t>(IntegerOf(Resolved(flags.Get()).Get())) & kSerifFlag) != 0;
}

std::string Token(const std::string& text) {
    NameTable& table = CurrentNames();
    return table.NameText(table.InternName(text), NameTextMode::kToken);
}

}  // namespace

void CharacterCollection::AppendSystemInfo(OutputPiece& text) const {
    text.Append("/CIDSystemInfo 3 dict dup begin\n/Registry ");
    AppendStringText(text, registry);
    AppendStringText(text.Append(" def\n/Ordering "), ordering);
    text.Append(" def\n/Supplement 0 def\nend def\n");
}

void CharacterCollection::AppendName(OutputPiece& text) const {
    text.Append("/").Append(Token(BytesOfText(registry) + "-" + BytesOfText(ordering))).Append(" ");
}

CIDFontResource::CIDFontResource(FontSource source, std::uint32_t kind, std::uint32_t programKey)
    : FontResource(std::move(source), kind),
      collection_(CollectionOf(Dictionary())),
      serif_(IsSerif(Dictionary())),
      program_(DescriptorEntry(Dictionary(), programKey)) {
    SetNameFrom(names::kBaseFont, kCIDNameLimit);
}

CIDFontType0Resource::CIDFontType0Resource(FontSource source)
    : CIDFontResource(std::move(source), font_kind::kCIDFontType0, names::kFontFile3) {
    const OwnedObject name = DescriptorEntry(Dictionary(), names::kFontName);
    const Resolved value(name.Get());
    if (Is(value.Get(), ObjectType::kName)) {
        SetName(CurrentNames().NameText(NameOf(value.Get()), NameTextMode::kToken, kCIDNameLimit));
    }
}

Status CIDFontType0Resource::WriteResource() {
    if (IsNull(Program())) {
        return Status::kOk;
    }
    std::string declared;
    RETURN_IF_FAILED(WriteCompactProgram(Program(), Reference(), declared));
    if (!declared.empty()) {
        SetName(Token(declared));  // the device has defined it under this one
    }
    return Status::kOk;
}

std::unique_ptr<CIDFontResource> CreateCIDFont(PdfObject value) {
    const Resolved font(value);
    const Resolved subtype(DictGet(font.Get(), names::kSubtype));
    FontSource source{.key = {.number = value.payload, .generation = value.type},
                      .dictionary = OwnedObject(CloneObject(font.Get()))};
    if (!IsReference(value)) {
        source.key = {.number = TakeGeneratedResourceNumber()};
    }
    switch (NameOf(subtype.Get())) {
        case names::kCIDFontType0:
            return std::make_unique<CIDFontType0Resource>(std::move(source));
        case names::kCIDFontType2:
            return std::make_unique<CIDFontType2Resource>(std::move(source));
        default:
            return nullptr;
    }
}

}  // namespace zorvan
