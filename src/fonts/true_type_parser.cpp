// Reading the tables of a TrueType file.
#include "fonts/true_type_parser.h"

#include <string_view>

#include "platform/limits.h"

namespace zorvan {
namespace {

constexpr std::size_t kCodes16 = 65536;

constexpr std::uint32_t Tag(std::string_view name) {
    std::uint32_t tag = 0;
    for (const char letter : name) {
        tag = tag << 8U | static_cast<unsigned char>(letter);
    }
    return tag;
}

}  // namespace

bool TrueTypeParser::Parse(Bytes file, GlyphMapSource source) {
    file_ = file;
    tables_.clear();
    box_ = {};
    longOffsets_ = 0;
    glyphs_ = 0;
    mapped_ = 0;
    glyphMap_.assign(kCodes16, 0);
    if (!ReadDirectory()) {
        return false;
    }
    ReadHead();
    ReadMaxp();
    return source == GlyphMapSource::kCmap ? MapCmap() : MapIdentity();
}

bool TrueTypeParser::ReadDirectory() {
    constexpr std::size_t kHeader = 12;
    constexpr std::size_t kRecord = 16;
    if (file_.size() <= kHeader) {
        return false;
    }
    const std::size_t count = U16(4);
    if (kRecord * count + kHeader >= file_.size()) {
        return false;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t record = kHeader + i * kRecord;
        tables_[U32(record)] = {.offset = U32(record + 8), .length = U32(record + 12)};
    }
    return true;
}

const TrueTypeParser::TableRecord* TrueTypeParser::Find(std::uint32_t tag) const {
    const auto found = tables_.find(tag);
    return found == tables_.end() ? nullptr : &found->second;
}

void TrueTypeParser::ReadHead() {
    constexpr std::size_t kSize = 56;
    const TableRecord* head = Find(Tag("head"));
    if (head == nullptr || !Holds(head->offset, kSize)) {
        return;
    }
    for (std::size_t i = 0; i < box_.size(); ++i) {
        box_[i] = I16(head->offset + 36 + 2 * i);
    }
    longOffsets_ = U16(head->offset + 50);
}

void TrueTypeParser::ReadMaxp() {
    constexpr std::size_t kSize = 32;
    const TableRecord* maxp = Find(Tag("maxp"));
    if (maxp != nullptr && Holds(maxp->offset, kSize)) {
        glyphs_ = U16(maxp->offset + 4);
    }
}

bool TrueTypeParser::MapIdentity() {
    const TableRecord* loca = Find(Tag("loca"));
    const std::size_t entry = longOffsets_ != 0 ? 4 : 2;
    if (loca == nullptr || loca->length < (glyphs_ + std::size_t{1}) * entry ||
        !Holds(loca->offset, (glyphs_ + std::size_t{1}) * entry)) {
        return false;
    }
    for (std::uint32_t glyph = 0; glyph < glyphs_; ++glyph) {
        glyphMap_[glyph] = static_cast<std::uint16_t>(glyph);
    }
    return true;
}

bool TrueTypeParser::MapCmap() {
    constexpr std::size_t kHeader = 4;
    constexpr std::size_t kRecord = 8;
    constexpr std::uint32_t kMicrosoft = 3;
    constexpr std::uint32_t kMacintosh = 1;
    const TableRecord* cmap = Find(Tag("cmap"));
    if (cmap == nullptr || !Holds(cmap->offset, kHeader)) {
        return false;
    }
    const std::size_t count = U16(cmap->offset + 2);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t record = cmap->offset + kHeader + i * kRecord;
        if (!Holds(record, kRecord)) {
            return false;
        }
        const std::uint32_t platform = U16(record);
        const bool wanted = platform == kMicrosoft || (platform == kMacintosh && U16(record + 2) == 0);
        const std::size_t subtable = U32(record + 4);
        if (wanted && !(Holds(cmap->offset, subtable) && MapSubtable(cmap->offset + subtable))) {
            return false;
        }
    }
    return true;
}

bool TrueTypeParser::MapSubtable(std::size_t offset) {
    constexpr std::size_t kHeader = 6;
    if (!Holds(offset, kHeader)) {
        return false;
    }
    switch (U16(offset)) {
        case 0:
            return MapByteEncoding(offset + kHeader);
        case 2:
            return MapHighBytes(offset + kHeader);
        case 4:
            return MapSegments(offset + kHeader);
        case 6:
            return MapTrimmed(offset + kHeader);
        case 1:
        case 3:
        case 5:
            return true;  // no such format is defined
        default:
            return false;
    }
}

/// Every code is counted, so that subtables which map the same ones over and over end.
void TrueTypeParser::Map(std::uint32_t code, std::uint32_t glyph) {
    ++mapped_;
    std::uint16_t& entry = glyphMap_[code % kCodes16];
    if (entry == 0) {
        entry = static_cast<std::uint16_t>(glyph);
    }
}

bool TrueTypeParser::MapByteEncoding(std::size_t offset) {
    constexpr std::uint32_t kCount = 256;
    if (!Holds(offset, kCount)) {
        return false;
    }
    for (std::uint32_t code = 0; code < kCount; ++code) {
        Map(code, file_[offset + code]);
    }
    return true;
}

bool TrueTypeParser::MapHighBytes(std::size_t offset) {
    constexpr std::uint32_t kCount = 256;
    if (!Holds(offset, std::size_t{2} * kCount)) {
        return false;
    }
    for (std::uint32_t high = 0; high < kCount; ++high) {
        if (!MapHighByte(offset, high)) {
            return false;
        }
    }
    return true;
}

bool TrueTypeParser::MapHighByte(std::size_t offset, std::uint32_t high) {
    constexpr std::size_t kKeys = 512;
    constexpr std::size_t kSubHeader = 8;
    const std::size_t subHeader =
        offset + kKeys + U16(offset + std::size_t{2} * high) / kSubHeader * kSubHeader;
    if (!Holds(subHeader, kSubHeader)) {
        return false;
    }
    const std::uint32_t first = U16(subHeader);
    const std::uint32_t count = U16(subHeader + 2);
    const std::uint32_t delta = U16(subHeader + 4);
    const std::size_t range = subHeader + 6 + U16(subHeader + 6);
    if (!Holds(range, std::size_t{2} * count)) {
        return false;
    }
    for (std::uint32_t j = 0; j < count && mapped_ < limits::kMappedCodes; ++j) {
        const std::uint32_t glyph = U16(range + std::size_t{2} * j);
        Map(high * 256 + (first + j) % 256, glyph == 0 ? 0 : glyph + delta);
    }
    return true;
}

bool TrueTypeParser::MapSegments(std::size_t offset) {
    constexpr std::size_t kSearchData = 8;
    if (!Holds(offset, kSearchData)) {
        return false;
    }
    const std::size_t segments = U16(offset) / 2;
    // Four arrays of a word a segment, and a word of padding behind the first.
    if (!Holds(offset + kSearchData, segments * 8 + 2)) {
        return false;
    }
    for (std::size_t segment = 0; segment < segments && mapped_ < limits::kMappedCodes; ++segment) {
        MapSegment(offset + kSearchData, segments, segment);
    }
    return true;
}

void TrueTypeParser::MapSegment(std::size_t offset, std::size_t segments, std::size_t segment) {
    ++mapped_;  // also when it maps nothing
    const std::size_t place = offset + 2 * segment;
    const std::uint32_t last = U16(place);
    const std::uint32_t first = U16(place + 2 * segments + 2);
    const std::uint32_t delta = U16(place + 4 * segments + 2);
    const std::size_t rangePlace = place + 6 * segments + 2;
    const std::uint32_t range = U16(rangePlace);
    for (std::uint32_t code = first; code <= last; ++code) {
        if (range == 0) {
            Map(code, code + delta);
            continue;
        }
        // An index beyond the file is none: the last segment of real fonts leads anywhere.
        const std::size_t index = rangePlace + range + std::size_t{2} * (code - first);
        const std::uint32_t glyph = Holds(index, 2) ? U16(index) : 0;
        Map(code, glyph == 0 ? 0 : glyph + delta);
    }
}

bool TrueTypeParser::MapTrimmed(std::size_t offset) {
    constexpr std::size_t kHeader = 4;
    if (!Holds(offset, kHeader)) {
        return false;
    }
    const std::uint32_t first = U16(offset);
    const std::uint32_t count = U16(offset + 2);
    if (!Holds(offset + kHeader, std::size_t{2} * count)) {
        return false;
    }
    for (std::uint32_t j = 0; j < count && first + j < kCodes16 && mapped_ < limits::kMappedCodes; ++j) {
        Map(first + j, U16(offset + kHeader + std::size_t{2} * j));
    }
    return true;
}

std::array<std::uint16_t, 256> FoldGlyphMap(const std::vector<std::uint16_t>& glyphMap) {
    std::array<std::uint16_t, 256> folded{};
    for (std::size_t code = 0; code < glyphMap.size(); ++code) {
        std::uint16_t& entry = folded[code % folded.size()];
        if (entry == 0) {
            entry = glyphMap[code];
        }
    }
    return folded;
}

}  // namespace zorvan
