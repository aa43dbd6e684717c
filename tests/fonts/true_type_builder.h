// Composes small TrueType files, table by table.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zorvan::test {

/// Numbers of two bytes, the higher one first; negative ones as their complement.
std::string Words(const std::vector<int>& words);

/// A file of tables, which stand in the order in which they were added.
class TrueTypeBuilder {
public:
    TrueTypeBuilder& Table(std::string_view tag, std::string_view bytes);
    [[nodiscard]] std::string Bytes() const;
    /// Where a table begins.
    [[nodiscard]] std::size_t OffsetOf(std::string_view tag) const;

private:
    std::vector<std::pair<std::string, std::string>> tables_;
};

/// A `head` table: xMin, yMin, xMax, yMax, and indexToLocFormat.
std::string Head(const std::array<int, 4>& box, int longOffsets = 0);
/// A `maxp` table.
std::string Maxp(int glyphs);

/// One subtable of a `cmap`, of a platform and an encoding of it.
struct Subtable {
    int platform = 0;
    int encoding = 0;
    std::string bytes;
};
std::string Cmap(const std::vector<Subtable>& subtables);

// Subtables by their formats.

/// A subtable's format, length and language, and the words behind them.
std::string OfFormat(int format, const std::vector<int>& words);
/// The glyphs of the bytes from `first` on; 0 for all others.
std::string Format0(std::size_t first, const std::vector<int>& glyphs);

/// A subheader of format 2; the glyphs that it names follow all subheaders.
struct SubHeader {
    int firstCode = 0;
    int delta = 0;
    std::vector<int> glyphs;
};
/// Byte h takes the subheader that `highBytes` names for it, and the first one when it names none.
std::string Format2(const std::vector<SubHeader>& subHeaders,
                    const std::vector<std::pair<std::size_t, std::size_t>>& highBytes);

/// A segment of format 4. With glyphs, which follow all segments, they are taken through the range offset.
struct Segment {
    int first = 0;
    int last = 0;
    int delta = 0;
    std::vector<int> glyphs;
};
/// The last segment, which the format wants at 0xFFFF, is the caller's too.
std::string Format4(const std::vector<Segment>& segments);
std::string Format6(int first, const std::vector<int>& glyphs);

/// A file with a `head` and this one subtable of platform 3, encoding 1, as its last bytes.
std::string FileWith(std::string_view subtable);

}  // namespace zorvan::test
