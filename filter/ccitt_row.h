// One row of a bitmap, as the CCITTFax codecs see it: black pixels are 1, whatever the caller's bits are.
#ifndef FILTER_CCITT_ROW_H
#define FILTER_CCITT_ROW_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace zorvan::filter {

class CcittRow {
public:
    explicit CcittRow(std::size_t columns) : columns_(columns) {}

    // Makes the row, all white. False when memory is lacking.
    bool Open();

    std::size_t Columns() const { return columns_; }
    // The leftmost pixel is the highest bit; those behind the last pixel count for nothing.
    std::span<std::uint8_t> Bytes() { return {bytes_.get(), (columns_ + 7) / 8}; }

    void Clear();
    void CopyFrom(const CcittRow& row);
    void Blacken(std::size_t begin, std::size_t end);

    bool IsBlack(std::size_t column) const { return (bytes_[column / 8] & 0x80U >> column % 8) != 0; }
    // The first pixel of a colour at `column` or right of it; the row's length where there is none.
    std::size_t Find(bool black, std::size_t column) const;
    void Swap(CcittRow& row) noexcept { bytes_.swap(row.bytes_); }

private:
    std::size_t columns_;
    std::unique_ptr<std::uint8_t[]> bytes_;
};

// Finds the pixels of a row from left to right. What was found is kept, so that a row is read once, however
// many changes the row beside it has.
class CcittScanner {
public:
    explicit CcittScanner(const CcittRow& row) : row_(row) {}

    // The row has changed.
    void Restart() {
        known_ = {};
        knownSecond_ = {};
    }

    // As the row's own.
    std::size_t Find(bool black, std::size_t column) { return Find(known_[black ? 1 : 0], black, column); }

    // The changes of this row, the one above, that T.4 calls b1 and b2; `column` is a0. At a row's beginning
    // alone the first pixel counts as a change.
    struct Changes {
        std::size_t first;
        std::size_t second;
    };
    Changes FindChanges(bool black, std::size_t column, bool atBeginning);

private:
    // There is no pixel of the colour from `begin` up to `next`, where there is one.
    struct Known {
        std::size_t begin = 1;
        std::size_t next = 0;
    };

    std::size_t Find(Known& known, bool black, std::size_t column) const {
        if (column < known.begin || column > known.next) {
            known = {column, row_.Find(black, column)};
        }
        return known.next;
    }

    const CcittRow& row_;
    // Of white pixels and of black ones. Second changes lie far ahead, and are kept for themselves.
    std::array<Known, 2> known_;
    std::array<Known, 2> knownSecond_;
};

}  // namespace zorvan::filter

#endif
