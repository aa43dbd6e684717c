// RC4.
#include "pdf/rc4.h"

#include <numeric>
#include <utility>

namespace zorvan {

Rc4::Rc4(Bytes key) {
    std::iota(permutation_.begin(), permutation_.end(), std::uint8_t{0});
    std::uint8_t j = 0;
    for (std::size_t i = 0; i < permutation_.size(); ++i) {
        j = static_cast<std::uint8_t>(j + permutation_[i] + key[i % key.size()]);
        std::swap(permutation_[i], permutation_[j]);
    }
}

void Rc4::Apply(Bytes input, std::uint8_t* output) {
    for (const std::uint8_t byte : input) {
        ++i_;
        j_ = static_cast<std::uint8_t>(j_ + permutation_[i_]);
        std::swap(permutation_[i_], permutation_[j_]);
        const auto place = static_cast<std::uint8_t>(permutation_[i_] + permutation_[j_]);
        *output++ = byte ^ permutation_[place];
    }
}

}  // namespace zorvan
