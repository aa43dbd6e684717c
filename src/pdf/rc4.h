// The RC4 stream cipher. Encrypting and decrypting are the same.
#pragma once

#include <array>
#include <cstdint>

#include "pdf/byte_scan.h"

namespace zorvan {

class Rc4 {
public:
    Rc4() = default;
    /// Starts the keystream of a key, which is not empty.
    explicit Rc4(Bytes key);

    /// Runs the keystream on over `input`; `output` has room for as much, and may be the same.
    void Apply(Bytes input, std::uint8_t* output);

private:
    std::array<std::uint8_t, 256> permutation_{};
    std::uint8_t i_ = 0;
    std::uint8_t j_ = 0;
};

}  // namespace zorvan
