// Writing Type 3 fonts.
#include "fonts/type3_font.h"

#include <algorithm>
#include <ctime>
#include <random>
#include <string>
#include <string_view>

#include "api/current_job.h"
#include "content/drawn_names.h"
#include "content/interpreter.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "ps/number_array.h"
#include "ps/resource_registry.h"

namespace zorvan {
namespace {

/// A name for a font without one: a number below 32,768, another one on each run on purpose.
std::string RandomName() {
    constexpr std::uint32_t kNames = 32768;
    std::minstd_rand random(static_cast<std::minstd_rand::result_type>(std::time(nullptr)));
    OutputPiece name;
    name.AppendUnsigned(static_cast<std::uint32_t>(random() % kNames));
    return std::string(name.View());
}

/// A glyph's name. The words that stand between the glyphs' definitions get another one: in the dictionary
/// that is being filled, the glyph would run in the place of the operator.
std::string GlyphToken(std::uint32_t name) {
    constexpr std::string_view kWords[] = {"bind", "def", "currentdict", "end"};
    std::string token = CurrentNames().NameText(name, NameTextMode::kToken);
    return std::ranges::find(kWords, token) == std::end(kWords) ? token : "$" + token;
}

/// Composes the 256 names of an encoding array, from code 0 on.
class EncodingWriter {
public:
    explicit EncodingWriter(OutputPiece& piece) : piece_(piece) {}

    void Name(std::uint32_t name) {
        constexpr std::uint32_t kNamesInLine = 9;
        if (position_ == kCodes) {
            return;
        }
        ++position_;
        AppendGlyphName(piece_, GlyphToken(name));
        if (++namesInLine_ == kNamesInLine) {
            piece_.Append("\n");
            namesInLine_ = 0;
        }
    }

    /// Fills up to a code with .notdef; does nothing when the code is behind.
    void FillTo(std::uint32_t code) {
        if (code > position_) {
            piece_.Append("\n").AppendUnsigned(code - position_).Append(" nND\n");
            position_ = code;
            namesInLine_ = 0;
        }
    }

private:
    OutputPiece& piece_;
    std::uint32_t position_ = 0;
    std::uint32_t namesInLine_ = 0;
};

}  // namespace

Type3FontResource::Type3FontResource(FontSource source)
    : FontResource(std::move(source), font_kind::kType3), encoding_(DictGet(Dictionary(), names::kEncoding)) {
    SetNameFrom(names::kName);
    if (NameWithoutSlash().empty()) {
        SetName(RandomName());
    }
    scope_ = ResourceScope::OfDictionary(Dictionary());
}

Status Type3FontResource::RegisterUsed() {
    if (scope_ != nullptr) {
        scope_->Register();
    }
    return Status::kOk;
}

const ResourceScope* Type3FontResource::Scope() const {
    return scope_ != nullptr ? scope_.get() : CurrentRegistry().ScopeInForce();
}

void Type3FontResource::MarkDrawn() {
    const ResourceScope* scope = Scope();
    const Resolved glyphs(DictGet(Dictionary(), names::kCharProcs));
    MarkFontsAndPatterns(scope);
    for (std::uint32_t i = 0; i < DictSlotCount(glyphs.Get()); ++i) {
        MarkXObjects(scope, DictSlot(glyphs.Get(), i).value);
    }
}

Status Type3FontResource::WriteResource() {
    const ResourceScope* scope = Scope();
    if (scope_ != nullptr) {
        RETURN_IF_FAILED(CurrentRegistry().EmitScope(*scope_));
    }
    RETURN_IF_FAILED(WriteHeader());
    RETURN_IF_FAILED(WriteGlyphs(scope));
    RETURN_IF_FAILED(WriteOutput("FontName currentdict end\ndefinefont pop\n%%EndResource\n"));
    OutputPiece line;
    line.Append("[").Append(Name()).Append(" ");
    AppendUse(line);
    return line.Append(" -1 TZ\n").Write();
}

Status Type3FontResource::WriteHeader() const {
    OutputPiece piece;
    piece.Append("%%BeginResource: font ")
        .Append(Name())
        .Append("\n10 dict begin\nT3Defs\n/FontType 3 def\n/FontName ");
    AppendUse(piece);
    piece.Append(" def\n");
    AppendNumbers(piece.Append("/FontMatrix ["), DictGet(Dictionary(), names::kFontMatrix), 6);
    AppendNumbers(piece.Append("] def\n/FontBBox ["), DictGet(Dictionary(), names::kFontBBox), 4);
    piece.Append("] def\n/Encoding [");
    AppendEncoding(piece);
    return piece.Append("] def\n").Write();
}

/// BaseEncoding means nothing here: its glyphs have no standard names.
void Type3FontResource::AppendEncoding(OutputPiece& piece) const {
    const PdfObject differences = encoding_.Differences();
    if (!Is(differences, ObjectType::kArray)) {
        return;  // the prolog's definefont fills the empty array up
    }
    EncodingWriter writer(piece);
    for (std::uint32_t i = 0; i < ArrayCount(differences); ++i) {
        const Resolved element(ArrayGet(differences, i));
        if (Is(element.Get(), ObjectType::kName)) {
            writer.Name(element.Get().payload);
        } else {
            writer.FillTo(static_cast<std::uint32_t>(
                std::clamp(IntegerOf(element.Get()), 0, static_cast<std::int32_t>(kCodes))));
        }
    }
    writer.FillTo(kCodes);
}

Status Type3FontResource::WriteGlyphs(const ResourceScope* scope) const {
    const Resolved glyphs(DictGet(Dictionary(), names::kCharProcs));
    std::uint32_t count = 0;
    for (std::uint32_t i = 0; i < DictSlotCount(glyphs.Get()); ++i) {
        count += DictSlot(glyphs.Get(), i).key != 0 ? 1U : 0U;
    }
    const bool hasNotdef = DictHas(glyphs.Get(), names::kNotdef);
    OutputPiece piece;
    piece.Append("/GlyphProcs ").AppendUnsigned(count + (hasNotdef ? 0U : 1U)).Append(" dict begin\n");
    if (!hasNotdef) {
        piece.Append("/.notdef {250 0 d0} bind def\n");
    }
    RETURN_IF_FAILED(piece.Write());
    for (std::uint32_t i = 0; i < DictSlotCount(glyphs.Get()); ++i) {
        const DictionarySlot slot = DictSlot(glyphs.Get(), i);
        if (slot.key != 0) {
            RETURN_IF_FAILED(WriteGlyph(slot.key, slot.value, scope));
        }
    }
    return WriteOutput("currentdict end def\n");
}

Status Type3FontResource::WriteGlyph(std::uint32_t name, PdfObject contents, const ResourceScope* scope) {
    OutputPiece piece;
    RETURN_IF_FAILED(piece.Append("/").Append(GlyphToken(name)).Append(" { save\n").Write());
    RETURN_IF_FAILED(ContentInterpreter(scope, contents, ContentKind::kType3Glyph).Run());
    return WriteOutput("restore } bind def\n");
}

}  // namespace zorvan
