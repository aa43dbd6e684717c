// The search for "EI": binary data may hold these two letters, so that what follows them is looked at.
#include "content/inline_image.h"

#include <algorithm>

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

}  // namespace

std::size_t FindInlineImageEnd(Bytes rest) {
    std::size_t found = FindForward(rest, 1, "EI");
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

}  // namespace zorvan
