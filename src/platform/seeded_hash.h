// Hashing what files choose: seeded, so that no file can choose keys that collide.
#pragma once

#include <chrono>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace zorvan {

/// Another seed for each process; it must never show in the output, so nothing walks a hashed container
/// there.
class SeededHash {
public:
    std::size_t operator()(std::uint64_t value) const { return Fold(Mix(value ^ Seed()) + Seed()); }
    std::size_t operator()(std::string_view text) const {
        std::uint64_t hash = Mix(Seed() ^ text.size());
        while (!text.empty()) {
            std::uint64_t word = 0;
            const std::size_t count = text.size() < sizeof word ? text.size() : sizeof word;
            std::memcpy(&word, text.data(), count);
            hash = Mix(hash ^ word) + Seed();
            text.remove_prefix(count);
        }
        return Fold(hash);
    }

private:
    static std::uint64_t Seed() {
        static const std::uint64_t seed = Mix(
            static_cast<std::uint64_t>(std::chrono::high_resolution_clock::now().time_since_epoch().count()) ^
            reinterpret_cast<std::uintptr_t>(&seed));
        return seed;
    }
    static std::uint64_t Mix(std::uint64_t value) {
        value = (value ^ (value >> 32U)) * 0x9E3779B97F4A7C15U;
        return (value ^ (value >> 29U)) * 0xBF58476D1CE4E5B9U;
    }
    static std::size_t Fold(std::uint64_t hash) { return static_cast<std::size_t>(hash ^ (hash >> 32U)); }
};

}  // namespace zorvan
