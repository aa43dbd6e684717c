// The rarer operations of the operand stack.
#include "pdf/operand_stack.h"

#include <algorithm>
#include <new>

#include "platform/limits.h"

namespace zorvan {

void OperandStack::Grow() {
    if (entries_.size() >= limits::kOperands) {
        throw std::bad_alloc();
    }
    constexpr std::size_t kFirst = 128;
    constexpr std::size_t kLeastStep = 4;
    entries_.reserve(std::max({kFirst, entries_.size() + kLeastStep, entries_.size() * 2}));
}

void OperandStack::PushMark() {
    marks_.push_back(Count());
    Push(OwnedObject(MakeMark()));
}

OwnedObject OperandStack::Pop() {
    if (entries_.empty()) {
        return {};
    }
    OwnedObject top(entries_.back());
    entries_.pop_back();
    ForgetDroppedMarks();
    return top;
}

bool OperandStack::Close(PdfObject (*make)(std::span<const PdfObject>)) {
    if (marks_.empty()) {
        return false;
    }
    const std::uint32_t mark = marks_.back();
    // What is made takes over what stood above the mark; its place is the mark's.
    entries_[mark] = make(std::span(entries_).subspan(mark + 1));
    entries_.resize(mark + 1);
    marks_.pop_back();
    return true;
}

void OperandStack::DropToMark() {
    if (!marks_.empty()) {
        Drop(Count() - marks_.back());
    }
}

}  // namespace zorvan
