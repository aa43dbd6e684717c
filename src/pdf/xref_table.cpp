// The two parts of the cross-reference table.
#include "pdf/xref_table.h"

#include <algorithm>

namespace zorvan {

void XrefTable::SetSize(std::uint32_t size, std::uint32_t mostEntries) {
    size_ = size;
    mostDense_ = std::min(size, mostEntries);
}

void XrefTable::Add(std::uint32_t number, std::uint16_t generation, std::uint32_t offset) {
    if (!IsDirect(number, generation) || number > mostDense_) {
        sparse_.try_emplace(ReferenceKey(number, generation), offset);
        return;
    }
    if (dense_.size() < number) {
        dense_.resize(number, kNoOffset);
    }
    if (dense_[number - 1] == kNoOffset) {
        dense_[number - 1] = offset;
    }
}

std::uint32_t XrefTable::Lookup(std::uint32_t number, std::uint16_t generation) const {
    const bool direct = IsDirect(number, generation);
    if (direct && number <= mostDense_) {
        return number <= dense_.size() ? dense_[number - 1] : kNoOffset;
    }
    const auto entry = sparse_.find(ReferenceKey(number, generation));
    if (entry != sparse_.end()) {
        return entry->second;
    }
    return direct ? kNoOffset : 0;
}

}  // namespace zorvan
