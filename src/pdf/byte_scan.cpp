// Searching and number reading over a file's bytes.
#include "pdf/byte_scan.h"

#include <algorithm>
#include <limits>

namespace zorvan {
namespace {

std::string_view TextOf(Bytes bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

}  // namespace

bool StandsAt(Bytes bytes, std::size_t position, std::string_view text) {
    return position <= bytes.size() && TextOf(bytes.subspan(position)).starts_with(text);
}

std::size_t FindForward(Bytes bytes, std::size_t position, std::string_view text) {
    const std::size_t found = TextOf(bytes).find(text, position);
    return found == std::string_view::npos ? kNotFound : found;
}

std::uint64_t ReadDecimal(Bytes bytes, std::size_t position, std::size_t limit) {
    const std::size_t end = std::min(bytes.size(), position + limit);
    while (position < end && IsStructureBlank(bytes[position])) {
        ++position;
    }
    std::uint64_t number = 0;
    for (; position < end && bytes[position] >= '0' && bytes[position] <= '9'; ++position) {
        const unsigned digit = bytes[position] - unsigned{'0'};
        constexpr std::uint64_t kMost = std::numeric_limits<std::uint64_t>::max();
        number = number > (kMost - digit) / 10 ? kMost : number * 10 + digit;
    }
    return number;
}

std::size_t SkipStructureBlanks(Bytes bytes, std::size_t position) {
    while (position < bytes.size() && IsStructureBlank(bytes[position])) {
        ++position;
    }
    return position;
}

}  // namespace zorvan
