// Takes any bytes apart as a Type 1 program. The first eight are the two declared lengths, the least byte
// first.
#include <cstdint>

#include "fonts/type1_program.h"
#include "fuzz/require.h"

using zorvan::Bytes;
using zorvan::fuzz::Require;

namespace {

std::size_t ReadLength(const std::uint8_t* bytes) {
    std::size_t length = 0;
    for (int i = 4; i-- > 0;) {
        length = length << 8U | bytes[i];
    }
    return length;
}

/// A segment header of a PFB file (Adobe TN 5040).
bool BeginsAsPfb(Bytes program) {
    return program.size() >= 6 && program[0] == 128 && program[1] == 1;
}

/// Whether all the bytes stand in the program, in their order; others may stand between them.
bool StandIn(Bytes program, Bytes bytes) {
    std::size_t found = 0;
    for (std::size_t i = 0; i < program.size() && found < bytes.size(); ++i) {
        found += program[i] == bytes[found] ? 1U : 0U;
    }
    return found == bytes.size();
}

/// The parts of a program that was not put together anew: its beginning, and what follows, there or decoded
/// from digits.
void RequirePieces(Bytes program, const zorvan::Type1Parts& parts) {
    const Bytes clear = parts.Clear();
    const Bytes encrypted = parts.Encrypted();
    Require(clear.data() == program.data());
    const bool isInPlace = encrypted.data() == program.data() + clear.size();
    Require(isInPlace || encrypted.size() * 2 <= program.size() - clear.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kLengths = 8;
    if (size < kLengths) {
        return 0;
    }
    const Bytes program(data + kLengths, size - kLengths);
    const zorvan::Type1Parts parts(program, ReadLength(data), ReadLength(data + 4));
    Require(parts.Clear().size() <= program.size());
    Require(parts.Encrypted().size() <= program.size() - parts.Clear().size());
    Require(StandIn(program, parts.Clear()));
    Require(StandIn(program, parts.Encrypted()) || parts.Encrypted().size() * 2 <= program.size());
    if (!BeginsAsPfb(program)) {
        RequirePieces(program, parts);
    }
    return 0;
}
