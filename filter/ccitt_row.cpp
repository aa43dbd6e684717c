// Runs and changes of a row, found and made byte by byte.
#include "filter/ccitt_row.h"

#include <algorithm>
#include <bit>
#include <new>

namespace zorvan::filter {
namespace {

// The bits of a byte from a column of it on.
constexpr std::uint8_t MaskFrom(std::size_t column) {
    return static_cast<std::uint8_t>(0xFFU >> column % 8);
}

}  // namespace

bool CcittRow::Open() {
    bytes_.reset(new (std::nothrow) std::uint8_t[Bytes().size()]());
    return bytes_ != nullptr;
}

void CcittRow::Clear() {
    std::ranges::fill(Bytes(), std::uint8_t{0});
}

void CcittRow::CopyFrom(const CcittRow& row) {
    std::copy_n(row.bytes_.get(), Bytes().size(), bytes_.get());
}

void CcittRow::Blacken(std::size_t begin, std::size_t end) {
    if (begin == end) {
        return;
    }
    const std::size_t last = end / 8;
    const auto endMask = static_cast<std::uint8_t>(~MaskFrom(end));
    std::size_t place = begin / 8;
    auto mask = MaskFrom(begin);
    for (; place < last; ++place, mask = 0xFF) {
        bytes_[place] |= mask;
    }
    if (endMask != 0) {
        bytes_[place] |= static_cast<std::uint8_t>(mask & endMask);
    }
}

std::size_t CcittRow::Find(bool black, std::size_t column) const {
    if (column >= columns_) {
        return columns_;
    }
    const std::size_t count = (columns_ + 7) / 8;
    const std::uint8_t flip = black ? 0 : 0xFF;
    std::size_t place = column / 8;
    auto found = static_cast<std::uint8_t>((bytes_[place] ^ flip) & MaskFrom(column));
    while (found == 0 && ++place < count) {
        found = bytes_[place] ^ flip;
    }
    return std::min(columns_, place * 8 + static_cast<std::size_t>(std::countl_zero(found)));
}

CcittScanner::Changes CcittScanner::FindChanges(bool black, std::size_t column, bool atBeginning) {
    std::size_t begin = atBeginning ? 0 : column + 1;
    if (!atBeginning && row_.IsBlack(column) != black) {
        begin = Find(black, begin);
    }
    const std::size_t first = Find(!black, begin);
    return {first, Find(knownSecond_[black ? 1 : 0], black, first)};
}

}  // namespace zorvan::filter
