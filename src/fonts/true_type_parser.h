// Reads of a TrueType file what a PostScript font needs: its box, and which glyph each code shows.
//
// The tables are those of the TrueType specification (Apple, "TrueType Reference Manual", chapter 6). Every
// access is checked against the end of the file.
#pragma once

#include <array>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "pdf/byte_scan.h"
#include "platform/seeded_hash.h"

namespace zorvan {

/// In font units: xMin, yMin, xMax, yMax.
using GlyphBox = std::array<std::int32_t, 4>;

class TrueTypeParser {
public:
    enum class GlyphMapSource { kCmap, kIdentity };

    /// False when the file is too short for its directory, when it has no `cmap` (kCmap), or no `loca` that
    /// holds all its glyphs (kIdentity), when a subtable reaches beyond the file or is of a format above 6.
    /// `file` is not kept.
    [[nodiscard]] bool Parse(Bytes file, GlyphMapSource source);

    /// Of the `head` table; zeros when there is none.
    [[nodiscard]] const GlyphBox& BoundingBox() const { return box_; }
    /// A glyph index for each 16-bit code, 0 for none.
    [[nodiscard]] const std::vector<std::uint16_t>& GlyphMap() const { return glyphMap_; }
    /// How many codes were looked at for it.
    [[nodiscard]] std::uint32_t CodesSeen() const { return mapped_; }

private:
    struct TableRecord {
        std::size_t offset = 0;
        std::size_t length = 0;
    };

    bool ReadDirectory();
    void ReadHead();
    void ReadMaxp();
    bool MapIdentity();
    bool MapCmap();
    bool MapSubtable(std::size_t offset);
    bool MapByteEncoding(std::size_t offset);
    bool MapHighBytes(std::size_t offset);
    bool MapHighByte(std::size_t offset, std::uint32_t high);
    bool MapSegments(std::size_t offset);
    void MapSegment(std::size_t offset, std::size_t segments, std::size_t segment);
    bool MapTrimmed(std::size_t offset);
    void Map(std::uint32_t code, std::uint32_t glyph);

    [[nodiscard]] const TableRecord* Find(std::uint32_t tag) const;
    [[nodiscard]] bool Holds(std::size_t offset, std::size_t count) const {
        return offset <= file_.size() && count <= file_.size() - offset;
    }
    /// The numbers at an offset, which the caller has checked.
    [[nodiscard]] std::uint32_t U16(std::size_t offset) const {
        return file_[offset] * 256U + file_[offset + 1];
    }
    [[nodiscard]] std::int32_t I16(std::size_t offset) const {
        return static_cast<std::int16_t>(U16(offset));
    }
    [[nodiscard]] std::uint32_t U32(std::size_t offset) const { return U16(offset) << 16U | U16(offset + 2); }

    Bytes file_;
    std::unordered_map<std::uint32_t, TableRecord, SeededHash> tables_;
    GlyphBox box_{};
    std::uint32_t longOffsets_ = 0;  // indexToLocFormat
    std::uint32_t glyphs_ = 0;       // numGlyphs
    std::vector<std::uint16_t> glyphMap_;
    std::uint32_t mapped_ = 0;  // codes looked at so far
};

/// The glyph of each one-byte code: that of the lowest 16-bit code that ends in it, so that symbol fonts,
/// whose codes begin at 0xF000, are reached.
std::array<std::uint16_t, 256> FoldGlyphMap(const std::vector<std::uint16_t>& glyphMap);

}  // namespace zorvan
