// What a file may cost in one call of the host: a small file can otherwise ask for any amount of work, by
// naming one large object over and over.
#pragma once

#include <cstdint>
#include <new>

namespace zorvan {

class StepBudget {
public:
    void Renew(std::uint64_t steps) { left_ = steps; }
    /// Takes steps, a byte read being about one; false, and takes none, when there are not so many left.
    [[nodiscard]] bool Take(std::uint64_t steps) noexcept {
        const bool enough = steps <= left_;
        left_ -= enough ? steps : 0;
        return enough;
    }
    /// The same, but throws std::bad_alloc: the call then ends like one whose memory is used up.
    void Charge(std::uint64_t steps) {
        if (!Take(steps)) {
            throw std::bad_alloc();
        }
    }

private:
    std::uint64_t left_ = 0;
};

}  // namespace zorvan
