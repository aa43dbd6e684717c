// The search for the end of inline data: binary data may hold the letters "EI", so that what stands around
// them counts.
#include "content/inline_image_data.h"

#include <algorithm>
#include <array>

#include "pdf/lexer.h"

namespace zorvan {
namespace {

bool IsContentByte(std::uint8_t byte) {
    return IsPdfWhitespace(byte) ? byte != 0 : byte > 0x20 && byte < 0x7F;
}

/// True when the bytes behind a candidate read like operators and numbers, or when the content ends there.
bool ReadsLikeContent(Bytes bytes) {
    constexpr std::size_t kLookedAt = 16;
    return std::ranges::all_of(bytes.first(std::min(bytes.size(), kLookedAt)), IsContentByte);
}

/// One white space, or a carriage return with its line feed, stands between "ID" and the data.
std::size_t DataBegin(Bytes rest) {
    if (rest.size() > 1 && rest[0] == '\r' && rest[1] == '\n') {
        return 2;
    }
    return !rest.empty() && IsPdfWhitespace(rest[0]) ? 1 : 0;
}

/// Where the mark that ends ASCII data ends; the end of the image when it is missing.
std::size_t AsciiEnd(Bytes rest, CodecKind kind) {
    const std::size_t mark = FindForward(rest, 0, kind == CodecKind::kASCIIHexDecode ? ">" : "~>");
    if (mark == kNotFound) {
        return FindInlineImageEnd(rest);
    }
    return mark + (kind == CodecKind::kASCIIHexDecode ? 1 : 2);
}

/// True when the data decodes to as many bytes as the image needs.
bool IsComplete(Bytes data, const InlineFilter& filter, std::size_t expected) {
    Codec decoder(filter.kind, DecoderParametersOf(filter.kind, filter.parameters), data);
    std::array<std::uint8_t, 4096>
        buffer;  // NOLINT(cppcoreguidelines-pro-type-member-init): written before read
    std::size_t decoded = 0;
    int state = 1;
    while (state > 0 && decoded < expected) {
        std::uint32_t produced = 0;
        state = decoder.Decode(buffer, produced);
        decoded += produced;
    }
    return decoded >= expected;
}

std::size_t BinaryEnd(Bytes rest, std::size_t begin, const InlineFilter& filter, std::size_t expected) {
    constexpr int kTried = 16;  // decoding is what costs; no image of the trade holds so many false ends
    const std::size_t first = FindInlineImageEnd(rest);
    std::size_t end = first;
    for (int tried = 0; tried < kTried && end < rest.size(); ++tried) {
        if (IsComplete(rest.subspan(begin, std::max(end, begin) - begin), filter, expected)) {
            return end;
        }
        end = FindInlineImageEnd(rest, end + 1);
    }
    return first;
}

}  // namespace

std::size_t FindInlineImageEnd(Bytes rest, std::size_t from) {
    std::size_t found = FindForward(rest, std::max<std::size_t>(from, 1), "EI");
    while (found != kNotFound) {
        const Bytes behind = rest.subspan(found + 2);
        const bool stands =
            IsPdfWhitespace(rest[found - 1]) && (behind.empty() || IsPdfWhitespace(behind[0]));
        if (stands && ReadsLikeContent(behind)) {
            return found;
        }
        found = FindForward(rest, found + 1, "EI");
    }
    return rest.size();
}

InlineData FindInlineData(Bytes rest, const std::vector<InlineFilter>& filters, std::size_t expected) {
    const std::size_t begin = DataBegin(rest);
    if (filters.empty()) {
        const std::size_t end = begin + std::min(expected, rest.size() - begin);
        return {rest.subspan(begin, end - begin), end};
    }
    const CodecKind kind = filters.front().kind;
    const bool ascii = kind == CodecKind::kASCIIHexDecode || kind == CodecKind::kASCII85Decode;
    const std::size_t end = ascii ? std::max(AsciiEnd(rest, kind), begin)
                                  : std::max(BinaryEnd(rest, begin, filters.front(), expected), begin);
    return {rest.subspan(begin, end - begin), end};
}

}  // namespace zorvan
