// Reads the name of any bytes as a compact program: a name that is told must stand there and fit its place.
#include <algorithm>
#include <cstdint>
#include <string>

#include "fonts/compact_program.h"
#include "fuzz/require.h"

using zorvan::fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const zorvan::Bytes program(data, size);
    const std::string name = zorvan::ReadCompactFontName(program);
    if (name.empty()) {
        return 0;
    }
    Require(name.size() < zorvan::kCompactNameCapacity);
    Require(std::ranges::all_of(name, [](char letter) { return letter > 0x20 && letter < 0x7F; }));
    Require(zorvan::FindForward(program, 0, name) != zorvan::kNotFound);
    return 0;
}
