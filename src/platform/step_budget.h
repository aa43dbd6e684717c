// What a file may cost in one call of the host: a small file can otherwise ask for any amount of work, by
// naming one large object over and over.
#pragma once

#include <cstdint>
#include <new>

namespace zorvan {

class StepBudget {
public:
    void Renew(std::uint64_t steps) { left_ = steps; }
    /// Takes steps, a byte read being about one. Throws std::bad_alloc when they are used up: the call then
    /// ends like one whose memory is.
    void Charge(std::uint64_t steps) {
        if (steps > left_) {
            throw std::bad_alloc();
        }
        left_ -= steps;
    }

private:
    std::uint64_t left_ = 0;
};

}  // namespace zorvan
