// The code words of ITU-T T.4 and T.6, as data, and how both directions look them up.
#ifndef FILTER_CCITT_CODES_H
#define FILTER_CCITT_CODES_H

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zorvan::filter {

// The bits of a code word, the last one lowest.
struct CcittCode {
    constexpr CcittCode() = default;
    // From its digits, as the standards print it.
    explicit constexpr CcittCode(std::string_view digits) : length(static_cast<std::uint8_t>(digits.size())) {
        for (const char digit : digits) {
            bits = static_cast<std::uint16_t>(bits * 2U + (digit == '1' ? 1U : 0U));
        }
    }

    std::uint16_t bits = 0;
    std::uint8_t length = 0;
};

constexpr CcittCode kEndOfLineCode("000000000001");
// The zeros that no code word but this one holds in a row.
constexpr unsigned int kEndOfLineZeros = 11;

// A run is coded as make-up codes, of multiples of 64, and one terminating code, of less than 64.
constexpr std::size_t kFirstMakeUp = 64;
constexpr std::size_t kLongestMakeUp = 2560;

// The code of a run below 64, or of a multiple of 64 up to the longest make-up.
CcittCode RunCode(bool black, std::size_t run);

// Two-dimensional coding tells how a row's next change lies to those of the row above.
enum class CcittMode : std::uint8_t { kPass, kHorizontal, kVertical };

CcittCode PassCode();
CcittCode HorizontalCode();
// `shift` is how far right of the change above the change lies: -3 to 3.
constexpr int kLargestShift = 3;
CcittCode VerticalCode(int shift);

// What a decoder finds under the next bits; a length of 0 says that no code word begins so.
struct FoundRun {
    std::uint16_t run = 0;
    std::uint8_t length = 0;
};
constexpr unsigned int kLongestRunCode = 13;
FoundRun FindRun(bool black, unsigned int next13Bits);

struct FoundMode {
    CcittMode mode = CcittMode::kPass;
    std::int8_t shift = 0;
    std::uint8_t length = 0;
};
constexpr unsigned int kLongestModeCode = 7;
FoundMode FindMode(unsigned int next7Bits);

}  // namespace zorvan::filter

#endif
