// Bounds-checked reading of bytes by position, for the cross-reference reader and the object parser.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace zorvan {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t kNotFound = static_cast<std::size_t>(-1);

/// True when `text` stands at `position`.
bool StandsAt(Bytes bytes, std::size_t position, std::string_view text);

/// The first place of `text` at or behind `position`, or kNotFound.
std::size_t FindForward(Bytes bytes, std::size_t position, std::string_view text);

/// The decimal digits from `position` on, at most `limit` bytes, as a number; blanks before them are skipped,
/// and anything else ends it. More than 20 digits saturate.
std::uint64_t ReadDecimal(Bytes bytes, std::size_t position, std::size_t limit);

/// A blank of the file structure: every byte of value 0x20 or below, a wider set than the lexer's.
constexpr bool IsStructureBlank(std::uint8_t byte) {
    return byte <= 0x20;
}

std::size_t SkipStructureBlanks(Bytes bytes, std::size_t position);

}  // namespace zorvan
