// Reading an Encoding value, and writing the list of differences.
#include "fonts/font_encoding.h"

#include <algorithm>
#include <string>
#include <vector>

#include "api/current_job.h"
#include "pdf/name_table.h"
#include "platform/limits.h"

namespace zorvan {
namespace {

BaseEncoding BaseOf(PdfObject value) {
    const Resolved name(value);
    switch (NameOf(name.Get())) {
        case names::kMacRomanEncoding:
            return BaseEncoding::kMacRoman;
        case names::kWinAnsiEncoding:
            return BaseEncoding::kWinAnsi;
        case names::kMacExpertEncoding:
            return BaseEncoding::kMacExpert;
        default:
            return BaseEncoding::kFontOwn;
    }
}

std::string GlyphName(PdfObject name) {
    return CurrentNames().NameText(name.payload, NameTextMode::kToken);
}

/// A base's table with the names of a Differences array laid over it.
std::vector<std::string> MergedNames(const DifferenceTable& base, PdfObject differences) {
    std::vector<std::string> merged(base.begin(), base.end());
    std::int64_t code = 0;
    for (std::uint32_t i = 0; i < ArrayCount(differences); ++i) {
        const Resolved element(ArrayGet(differences, i));
        if (IsNumber(element.Get())) {
            code = IntegerOf(element.Get());
        } else if (Is(element.Get(), ObjectType::kName)) {
            if (code >= 0 && code < kCodes) {
                merged[static_cast<std::size_t>(code)] = GlyphName(element.Get());
            }
            ++code;
        }
    }
    return merged;
}

}  // namespace

void AppendGlyphName(OutputPiece& piece, std::string_view name) {
    piece.Append("/").Append(name).Append(name.empty() ? " " : "");
}

FontEncoding::FontEncoding(PdfObject value)
    : value_(value),
      base_(BaseOf(Is(value_.Get(), ObjectType::kDictionary) ? DictGet(value_.Get(), names::kBaseEncoding)
                                                             : value_.Get())),
      differences_(DictGet(value_.Get(), names::kDifferences)) {}

Status FontEncoding::WriteDifferences() const {
    OutputPiece piece;
    if (base_ == BaseEncoding::kFontOwn) {
        AppendOwnList(piece);
    } else {
        AppendMergedList(piece);
    }
    return piece.Append("\n").Write();
}

void FontEncoding::AppendOwnList(OutputPiece& piece) const {
    constexpr std::uint32_t kNamesInLine = 9;
    const std::uint32_t count = std::min(ArrayCount(Differences()), limits::kDifferences);
    std::uint32_t namesInLine = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        const Resolved element(ArrayGet(Differences(), i));
        if (IsNumber(element.Get())) {
            piece.Append(" ").AppendInteger(IntegerOf(element.Get())).Append(" ");
        } else if (Is(element.Get(), ObjectType::kName)) {
            AppendGlyphName(piece, GlyphName(element.Get()));
            if (++namesInLine == kNamesInLine) {
                piece.Append("\n");
                namesInLine = 0;
            }
        }
    }
}

// Lines are counted otherwise than in the list above: by every slot looked at, the one that ends a run
// included. Kept, since outputs are compared byte by byte.
void FontEncoding::AppendMergedList(OutputPiece& piece) const {
    constexpr std::uint32_t kLastInLine = 8;
    const std::vector<std::string> merged = MergedNames(DifferencesOf(base_), Differences());
    std::uint32_t inLine = 0;
    for (std::uint32_t code = 0; code < kCodes; ++code) {
        if (merged[code] == kSameName) {
            continue;
        }
        piece.Append(" ").AppendUnsigned(code).Append(" ");
        for (; code < kCodes; ++code) {
            if (inLine == kLastInLine) {
                piece.Append("\n");
                inLine = 0;
            } else {
                ++inLine;
            }
            if (merged[code] == kSameName) {
                break;
            }
            AppendGlyphName(piece, merged[code]);
        }
    }
}

}  // namespace zorvan
