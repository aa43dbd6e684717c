// The operands of a content, oldest at the bottom.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "pdf/object.h"

namespace zorvan {

/// Owns what it holds. Nothing here fails: an empty stack pops null and an index outside reads null.
class OperandStack {
public:
    OperandStack() { entries_.reserve(kFirstCapacity); }
    ~OperandStack() { Clear(); }
    OperandStack(const OperandStack&) = delete;
    OperandStack& operator=(const OperandStack&) = delete;

    void Push(OwnedObject value) {
        entries_.push_back(value.Get());
        static_cast<void>(value.Release());
    }
    OwnedObject Pop();
    [[nodiscard]] std::uint32_t Count() const { return static_cast<std::uint32_t>(entries_.size()); }
    /// Counted from the bottom.
    [[nodiscard]] PdfObject At(std::uint32_t index) const {
        return index < Count() ? entries_[index] : MakeNull();
    }
    /// The topmost `count` entries, deepest first; fewer when there are fewer.
    [[nodiscard]] std::span<const PdfObject> Top(std::uint32_t count) const;
    void Drop(std::uint32_t count) {
        for (; count > 0 && !entries_.empty(); --count) {
            FreeObject(entries_.back());
            entries_.pop_back();
        }
    }
    void Clear() { Drop(Count()); }

    /// The number of entries above the nearest mark, or kNoMark.
    static constexpr std::uint32_t kNoMark = 0xFFFFFFFF;
    [[nodiscard]] std::uint32_t CountToMark() const;
    /// Takes the topmost `count` entries and the mark below them off without freeing them: they were moved
    /// elsewhere.
    void ForgetToMark(std::uint32_t count) { entries_.resize(entries_.size() - count - 1); }

private:
    static constexpr std::size_t kFirstCapacity = 128;

    std::vector<PdfObject> entries_;
};

}  // namespace zorvan
