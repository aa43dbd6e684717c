// Where the objects of the file are: (object number, generation) to file offset.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "pdf/object.h"
#include "platform/seeded_hash.h"

namespace zorvan {

class XrefTable {
public:
    /// What a slot of the direct part holds before an entry is added.
    static constexpr std::uint32_t kNoOffset = 0xFFFFFFFF;

    /// Begins the direct part: objects 1 to `size` of generation 0. `size` comes from the file and is only a
    /// number: memory is taken for the entries that are added, as long as these number no more than
    /// `mostEntries`, which is what the file has room for.
    void SetSize(std::uint32_t size, std::uint32_t mostEntries);

    /// The first entry for an object wins: the newest section is read first.
    void Add(std::uint32_t number, std::uint16_t generation, std::uint32_t offset);

    /// The offset; kNoOffset for an object of the direct part that has no entry, 0 for any other absent one.
    [[nodiscard]] std::uint32_t Lookup(std::uint32_t number, std::uint16_t generation) const;

private:
    [[nodiscard]] bool IsDirect(std::uint32_t number, std::uint16_t generation) const {
        return generation == 0 && number >= 1 && number <= size_;
    }

    std::uint32_t size_ = 0;
    std::uint32_t mostDense_ = 0;
    std::vector<std::uint32_t> dense_;  // objects 1 upward of the direct part, as far as entries were added
    std::unordered_map<std::uint64_t, std::uint32_t, SeededHash> sparse_;
};

}  // namespace zorvan
