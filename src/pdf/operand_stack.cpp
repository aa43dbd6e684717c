// The rarer operations of the operand stack.
#include "content/operand_stack.h"

#include <algorithm>

namespace zorvan {

OwnedObject OperandStack::Pop() {
    if (entries_.empty()) {
        return {};
    }
    OwnedObject top(entries_.back());
    entries_.pop_back();
    return top;
}

std::span<const PdfObject> OperandStack::Top(std::uint32_t count) const {
    return std::span(entries_).last(std::min(count, Count()));
}

std::uint32_t OperandStack::CountToMark() const {
    const auto mark = std::find(entries_.rbegin(), entries_.rend(), MakeMark());
    return mark == entries_.rend() ? kNoMark : static_cast<std::uint32_t>(mark - entries_.rbegin());
}

}  // namespace zorvan
