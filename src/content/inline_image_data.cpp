// The search for the end of inline data: binary data may hold the letters "EI", so that what stands around
// them counts.
#include "content/inline_image_data.h"

#include <algorithm>
#include <array>

#include "pdf/lexer.h"

namespace zorvan {
namespace {

constexpr std::string_view kEnd = "EI";

bool IsContentByte(std::uint8_t byte) {
    return IsPdfWhitespace(byte) ? byte != 0 : byte > 0x20 && byte < 0x7F;
}

/// True when the bytes behind a candidate read like operators and numbers, or when the content ends there.
/// What stands in a string may be anything.
bool ReadsLikeContent(Bytes bytes) {
    constexpr std::size_t kLookedAt = 16;
    for (const std::uint8_t byte : bytes.first(std::min(bytes.size(), kLookedAt))) {
        if (byte == '(') {
            return true;
        }
        if (!IsContentByte(byte)) {
            return false;
        }
    }
    return true;
}

bool IsWord(Bytes rest, std::size_t place) {
    const std::size_t behind = place + kEnd.size();
    return StandsAt(rest, place, kEnd) && (behind == rest.size() || !IsPdfRegular(rest[behind]));
}

std::size_t SkipWhitespace(Bytes rest, std::size_t place) {
    while (place < rest.size() && IsPdfWhitespace(rest[place])) {
        ++place;
    }
    return place;
}

/// The place of the "EI" that follows a place, with white space before it or none; kNotFound when something
/// else follows.
std::size_t EndAt(Bytes rest, std::size_t place) {
    const std::size_t end = SkipWhitespace(rest, place);
    return IsWord(rest, end) ? end : kNotFound;
}

/// One white space, or a carriage return with its line feed, stands between "ID" and the data.
std::size_t DataBegin(Bytes rest) {
    if (rest.size() > 1 && rest[0] == '\r' && rest[1] == '\n') {
        return 2;
    }
    return !rest.empty() && IsPdfWhitespace(rest[0]) ? 1 : 0;
}

bool IsDigitOf(CodecKind kind, std::uint8_t byte) {
    if (kind == CodecKind::kASCII85Decode) {
        return (byte >= '!' && byte <= 'u') || byte == 'z' || byte == '~';
    }
    return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'F') || (byte >= 'a' && byte <= 'f');
}

/// Where the mark that ends ASCII data ends; kNotFound when something else comes before it.
std::size_t AsciiEnd(Bytes rest, std::size_t begin, CodecKind kind) {
    const std::string_view mark = kind == CodecKind::kASCIIHexDecode ? ">" : "~>";
    for (std::size_t place = begin; place < rest.size(); ++place) {
        if (StandsAt(rest, place, mark)) {
            return place + mark.size();
        }
        const bool standing = IsWord(rest, place) && place > 0 && IsPdfWhitespace(rest[place - 1]);
        if (standing || (!IsDigitOf(kind, rest[place]) && !IsPdfWhitespace(rest[place]))) {
            return kNotFound;
        }
    }
    return kNotFound;
}

/// True when the data decodes to as many bytes as the image needs.
bool IsComplete(Bytes data, const InlineFilter& filter, std::size_t expected) {
    constexpr std::size_t kDecodedAtMost = std::size_t{16} << 20;
    Codec decoder(filter.kind, DecoderParametersOf(filter.kind, filter.parameters), data);
    std::array<std::uint8_t, 4096>
        buffer;  // NOLINT(cppcoreguidelines-pro-type-member-init): written before read
    std::size_t decoded = 0;
    int state = 1;
    while (state > 0 && decoded < std::min(expected, kDecodedAtMost)) {
        std::uint32_t produced = 0;
        state = decoder.Decode(buffer, produced);
        decoded += produced;
    }
    return decoded >= expected;
}

/// For data that is followed by no "EI" of the ordinary kind.
std::size_t EndOfCompleteData(Bytes rest, std::size_t begin, const InlineFilter& filter,
                              std::size_t expected) {
    constexpr int kTried = 4;  // decoding is what costs
    std::size_t end = FindForward(rest, begin, kEnd);
    for (int tried = 0; tried < kTried && end != kNotFound; end = FindForward(rest, end + 1, kEnd)) {
        if (!IsWord(rest, end)) {
            continue;
        }
        ++tried;
        if (IsComplete(rest.subspan(begin, end - begin), filter, expected)) {
            return end;
        }
    }
    return rest.size();
}

}  // namespace

std::size_t ImageEnds::Find(Bytes rest, std::size_t from) {
    std::size_t found = none_ ? kNotFound : FindForward(rest, std::max<std::size_t>(from, 1), kEnd);
    while (found != kNotFound) {
        const Bytes behind = rest.subspan(found + kEnd.size());
        const bool stands =
            IsPdfWhitespace(rest[found - 1]) && (behind.empty() || IsPdfWhitespace(behind[0]));
        if (stands && ReadsLikeContent(behind)) {
            return found;
        }
        found = FindForward(rest, found + 1, kEnd);
    }
    none_ = true;
    return rest.size();
}

InlineData FindInlineData(Bytes rest, const std::vector<InlineFilter>& filters, std::size_t expected,
                          ImageEnds& ends) {
    const std::size_t begin = DataBegin(rest);
    const auto data = [&](std::size_t end, std::size_t consumed) {
        return InlineData{rest.subspan(begin, std::max(end, begin) - begin), consumed};
    };
    if (filters.empty()) {
        const std::size_t end = begin + std::min(expected, rest.size() - begin);
        if (const std::size_t word = EndAt(rest, end); word != kNotFound) {
            return data(end, word);
        }
        const std::size_t word = ends.Find(rest, begin);
        return word == rest.size() ? data(end, end) : data(std::min(end, word), word);
    }
    const CodecKind kind = filters.front().kind;
    if (kind == CodecKind::kASCIIHexDecode || kind == CodecKind::kASCII85Decode) {
        const std::size_t end = AsciiEnd(rest, begin, kind);
        if (end != kNotFound && EndAt(rest, end) != kNotFound) {
            return data(end, EndAt(rest, end));
        }
    }
    std::size_t word = ends.Find(rest, begin);
    if (word == rest.size()) {
        word = EndOfCompleteData(rest, begin, filters.front(), expected);
    }
    return data(word, word);
}

}  // namespace zorvan
