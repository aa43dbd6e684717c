// The encoding of a simple font: which glyph name stands behind each of its 256 codes.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "pdf/object.h"
#include "pdf/object_parser.h"
#include "ps/output.h"

namespace zorvan {

constexpr std::uint32_t kCodes = 256;  // of a simple font: a code is one byte

enum class BaseEncoding : std::uint32_t { kMacRoman = 1, kWinAnsi = 2, kMacExpert = 4, kFontOwn = 8 };

/// A slot of a difference table that says: keep the name that the font's own encoding has at this code.
constexpr std::string_view kSameName = "SameName";

/// The glyph names by which a predefined encoding differs from the encoding that fonts carry.
using DifferenceTable = std::array<std::string_view, kCodes>;
const DifferenceTable& DifferencesOf(BaseEncoding base);

/// Appends a glyph's name in a list of names. Behind an empty one stands a blank: the two slashes of "//A"
/// would have the device look A up, and run it.
void AppendGlyphName(OutputPiece& piece, std::string_view name);

class FontEncoding {
public:
    /// `value` is the `Encoding` value: a name, a dictionary, or anything else, which leaves the font its own
    /// encoding. It must outlive the encoding.
    explicit FontEncoding(PdfObject value);

    [[nodiscard]] BaseEncoding Base() const { return base_; }
    /// The `Differences` array, or null.
    [[nodiscard]] PdfObject Differences() const { return differences_.Get(); }

    /// True when the list of differences must be written: for MacExpert, which no prolog has, and whenever
    /// there is a `Differences` entry, even an empty one.
    [[nodiscard]] bool NeedsDifferences() const {
        return base_ == BaseEncoding::kMacExpert || !IsNull(Differences());
    }

    /// Writes the list of codes and names that TZ applies to a font's own encoding, and a line feed.
    Status WriteDifferences() const;

private:
    void AppendOwnList(OutputPiece& piece) const;
    void AppendMergedList(OutputPiece& piece) const;

    Resolved value_;
    BaseEncoding base_;
    Resolved differences_;
};

}  // namespace zorvan
