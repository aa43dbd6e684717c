// The values that a reader has met and not yet used, oldest at the bottom: the object parser's and the
// interpreter's.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "pdf/object.h"

namespace zorvan {

/// Owns what it holds. Nothing here fails: an empty stack pops null and an index outside reads null.
class OperandStack {
public:
    OperandStack() = default;
    ~OperandStack() { Clear(); }
    OperandStack(const OperandStack&) = delete;
    OperandStack& operator=(const OperandStack&) = delete;

    void Push(OwnedObject value) {
        if (entries_.size() == entries_.capacity()) {
            Grow();
        }
        entries_.push_back(value.Release());
    }
    void PushMark();
    OwnedObject Pop();
    [[nodiscard]] std::uint32_t Count() const { return static_cast<std::uint32_t>(entries_.size()); }
    /// Counted from the bottom.
    [[nodiscard]] PdfObject At(std::uint32_t index) const {
        return index < Count() ? entries_[index] : MakeNull();
    }
    /// The topmost `count` entries, deepest first; fewer when there are fewer.
    [[nodiscard]] std::span<const PdfObject> Top(std::uint32_t count) const {
        return std::span(entries_).last(count < Count() ? count : Count());
    }
    void Drop(std::uint32_t count) {
        for (; count > 0 && !entries_.empty(); --count) {
            FreeObject(entries_.back());
            entries_.pop_back();
        }
        ForgetDroppedMarks();
    }
    void Clear() { Drop(Count()); }

    /// How many marks there are: a `]` or `>>` belongs to the nearest one.
    [[nodiscard]] std::uint32_t Marks() const { return static_cast<std::uint32_t>(marks_.size()); }
    /// Replaces what stands above the nearest mark, and the mark, by what is made of it. False without a
    /// mark.
    bool Close(PdfObject (*make)(std::span<const PdfObject>));
    /// Drops what stands above the nearest mark, and the mark. Does nothing without a mark.
    void DropToMark();

private:
    void Grow();
    void ForgetDroppedMarks() {
        while (!marks_.empty() && marks_.back() >= entries_.size()) {
            marks_.pop_back();
        }
    }

    std::vector<PdfObject> entries_;
    /// Where the marks are: looking for them would cost a hostile content the length of the stack each time.
    std::vector<std::uint32_t> marks_;
};

}  // namespace zorvan
