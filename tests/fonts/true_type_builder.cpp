// Laying out tables and subtables.
#include "fonts/true_type_builder.h"

namespace zorvan::test {
namespace {

constexpr std::size_t kDirectory = 12;
constexpr std::size_t kRecord = 16;

std::string Long(std::size_t value) {
    return Words({static_cast<int>(value >> 16U), static_cast<int>(value & 0xFFFFU)});
}

void AddTo(std::vector<int>& words, const std::vector<int>& more) {
    words.insert(words.end(), more.begin(), more.end());
}

}  // namespace

std::string Words(const std::vector<int>& words) {
    std::string bytes;
    for (const int word : words) {
        bytes += static_cast<char>(static_cast<unsigned>(word) >> 8U & 0xFFU);
        bytes += static_cast<char>(static_cast<unsigned>(word) & 0xFFU);
    }
    return bytes;
}

TrueTypeBuilder& TrueTypeBuilder::Table(std::string_view tag, std::string_view bytes) {
    tables_.emplace_back(tag, bytes);
    return *this;
}

std::size_t TrueTypeBuilder::OffsetOf(std::string_view tag) const {
    std::size_t offset = kDirectory + kRecord * tables_.size();
    for (const auto& [name, bytes] : tables_) {
        if (name == tag) {
            break;
        }
        offset += bytes.size();
    }
    return offset;
}

std::string TrueTypeBuilder::Bytes() const {
    std::string file = Words({1, 0, static_cast<int>(tables_.size()), 0, 0, 0});
    std::size_t offset = kDirectory + kRecord * tables_.size();
    for (const auto& [tag, bytes] : tables_) {
        file += tag + Long(0) + Long(offset) + Long(bytes.size());
        offset += bytes.size();
    }
    for (const auto& [tag, bytes] : tables_) {
        file += bytes;
    }
    return file;
}

std::string Head(const std::array<int, 4>& box, int longOffsets) {
    std::vector<int> words(28);
    for (std::size_t i = 0; i < box.size(); ++i) {
        words[18 + i] = box[i];
    }
    words[25] = longOffsets;
    return Words(words);
}

std::string Maxp(int glyphs) {
    std::vector<int> words(16);
    words[2] = glyphs;
    return Words(words);
}

std::string Cmap(const std::vector<Subtable>& subtables) {
    std::string table = Words({0, static_cast<int>(subtables.size())});
    std::size_t offset = 4 + 8 * subtables.size();
    for (const Subtable& each : subtables) {
        table += Words({each.platform, each.encoding}) + Long(offset);
        offset += each.bytes.size();
    }
    for (const Subtable& each : subtables) {
        table += each.bytes;
    }
    return table;
}

std::string OfFormat(int format, const std::vector<int>& words) {
    return Words({format, static_cast<int>(6 + 2 * words.size()), 0}) + Words(words);
}

std::string Format0(std::size_t first, const std::vector<int>& glyphs) {
    std::string bytes = Words({0, 262, 0}) + std::string(256, '\0');
    for (std::size_t i = 0; i < glyphs.size(); ++i) {
        bytes[6 + first + i] = static_cast<char>(glyphs[i]);
    }
    return bytes;
}

std::string Format2(const std::vector<SubHeader>& subHeaders,
                    const std::vector<std::pair<std::size_t, std::size_t>>& highBytes) {
    std::vector<int> words(256);
    for (const auto& [byte, subHeader] : highBytes) {
        words[byte] = static_cast<int>(8 * subHeader);
    }
    std::vector<int> glyphs;
    for (std::size_t i = 0; i < subHeaders.size(); ++i) {
        const SubHeader& each = subHeaders[i];
        // From the range offset itself to the first glyph.
        const std::size_t range = 2 + 8 * (subHeaders.size() - i - 1) + 2 * glyphs.size();
        AddTo(words,
              {each.firstCode, static_cast<int>(each.glyphs.size()), each.delta, static_cast<int>(range)});
        AddTo(glyphs, each.glyphs);
    }
    AddTo(words, glyphs);
    return OfFormat(2, words);
}

std::string Format4(const std::vector<Segment>& segments) {
    std::vector<int> words{static_cast<int>(2 * segments.size()), 0, 0, 0};
    std::vector<int> firsts;
    std::vector<int> deltas;
    std::vector<int> ranges;
    std::vector<int> glyphs;
    for (std::size_t i = 0; i < segments.size(); ++i) {
        const Segment& each = segments[i];
        words.push_back(each.last);
        firsts.push_back(each.first);
        deltas.push_back(each.delta);
        ranges.push_back(
            each.glyphs.empty() ? 0 : static_cast<int>(2 * (segments.size() - i) + 2 * glyphs.size()));
        AddTo(glyphs, each.glyphs);
    }
    words.push_back(0);
    for (const auto* more : {&firsts, &deltas, &ranges, &glyphs}) {
        AddTo(words, *more);
    }
    return OfFormat(4, words);
}

std::string Format6(int first, const std::vector<int>& glyphs) {
    std::vector<int> words{first, static_cast<int>(glyphs.size())};
    AddTo(words, glyphs);
    return OfFormat(6, words);
}

std::string FileWith(std::string_view subtable) {
    return TrueTypeBuilder()
        .Table("head", Head({-10, -20, 1000, 800}))
        .Table("cmap", Cmap({{3, 1, std::string(subtable)}}))
        .Bytes();
}

}  // namespace zorvan::test
