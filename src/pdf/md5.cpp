// MD5 by RFC 1321, section 3.
#include "pdf/md5.h"

#include <algorithm>
#include <bit>

namespace zorvan {
namespace {

constexpr std::size_t kBlock = 64;
constexpr std::size_t kLengthAt = 56;  // of the last block

constexpr std::array<std::uint32_t, 64> kSines = {
    0xd76aa478, 0xe8c7b756, 0x242070db, 0xc1bdceee, 0xf57c0faf, 0x4787c62a, 0xa8304613, 0xfd469501,
    0x698098d8, 0x8b44f7af, 0xffff5bb1, 0x895cd7be, 0x6b901122, 0xfd987193, 0xa679438e, 0x49b40821,
    0xf61e2562, 0xc040b340, 0x265e5a51, 0xe9b6c7aa, 0xd62f105d, 0x02441453, 0xd8a1e681, 0xe7d3fbc8,
    0x21e1cde6, 0xc33707d6, 0xf4d50d87, 0x455a14ed, 0xa9e3e905, 0xfcefa3f8, 0x676f02d9, 0x8d2a4c8a,
    0xfffa3942, 0x8771f681, 0x6d9d6122, 0xfde5380c, 0xa4beea44, 0x4bdecfa9, 0xf6bb4b60, 0xbebfbc70,
    0x289b7ec6, 0xeaa127fa, 0xd4ef3085, 0x04881d05, 0xd9d4d039, 0xe6db99e5, 0x1fa27cf8, 0xc4ac5665,
    0xf4292244, 0x432aff97, 0xab9423a7, 0xfc93a039, 0x655b59c3, 0x8f0ccc92, 0xffeff47d, 0x85845dd1,
    0x6fa87e4f, 0xfe2ce6e0, 0xa3014314, 0x4e0811a1, 0xf7537e82, 0xbd3af235, 0x2ad7d2bb, 0xeb86d391};

constexpr std::array<std::array<int, 4>, 4> kRotations = {
    {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}}};

using State = std::array<std::uint32_t, 4>;

std::uint32_t WordAt(const std::uint8_t* bytes) {
    return bytes[0] | static_cast<std::uint32_t>(bytes[1]) << 8U |
           static_cast<std::uint32_t>(bytes[2]) << 16U | static_cast<std::uint32_t>(bytes[3]) << 24U;
}

/// The function of a round, and which word of the block its step takes.
std::uint32_t Mix(std::size_t step, const State& state, std::size_t& word) {
    const auto [a, b, c, d] = state;
    switch (step / 16) {
        case 0:
            word = step;
            return (b & c) | (~b & d);
        case 1:
            word = (5 * step + 1) % 16;
            return (b & d) | (c & ~d);
        case 2:
            word = (3 * step + 5) % 16;
            return b ^ c ^ d;
        default:
            word = 7 * step % 16;
            return c ^ (b | ~d);
    }
}

void AddBlock(State& digest, const std::uint8_t* block) {
    State state = digest;
    for (std::size_t step = 0; step < kBlock; ++step) {
        std::size_t word = 0;
        const std::uint32_t mixed = Mix(step, state, word);
        const std::uint32_t sum = state[0] + mixed + WordAt(block + 4 * word) + kSines[step];
        state = {state[3], state[1] + std::rotl(sum, kRotations[step / 16][step % 4]), state[1], state[2]};
    }
    for (std::size_t i = 0; i < digest.size(); ++i) {
        digest[i] += state[i];
    }
}

/// What is left of the message, a one bit, zeros, and the length in bits.
void AddEnd(State& digest, Bytes rest, std::uint64_t length) {
    std::array<std::uint8_t, 2 * kBlock> end{};
    std::copy(rest.begin(), rest.end(), end.begin());
    end[rest.size()] = 0x80;
    const std::size_t last = rest.size() < kLengthAt ? 0 : kBlock;
    for (std::size_t i = 0; i < sizeof length; ++i) {
        end[last + kLengthAt + i] = static_cast<std::uint8_t>(length * 8 >> (8 * i));
    }
    for (std::size_t block = 0; block <= last; block += kBlock) {
        AddBlock(digest, end.data() + block);
    }
}

}  // namespace

std::array<std::uint8_t, 16> Md5(Bytes message) {
    State digest = {0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476};
    Bytes rest = message;
    for (; rest.size() >= kBlock; rest = rest.subspan(kBlock)) {
        AddBlock(digest, rest.data());
    }
    AddEnd(digest, rest, message.size());
    std::array<std::uint8_t, 16> bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<std::uint8_t>(digest[i / 4] >> (8 * (i % 4)));
    }
    return bytes;
}

}  // namespace zorvan
