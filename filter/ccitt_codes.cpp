// The tables of code words and what is looked up in them.
#include "filter/ccitt_codes.h"

#include <array>

namespace zorvan::filter {
namespace {

template <std::size_t Count>
constexpr std::array<CcittCode, Count> Codes(const char* const (&digits)[Count]) {
    std::array<CcittCode, Count> codes;
    for (std::size_t i = 0; i < Count; ++i) {
        codes[i] = CcittCode(digits[i]);
    }
    return codes;
}

// White runs of 0 to 63.
constexpr std::array<CcittCode, 64> kWhite = Codes({
    "00110101", "000111",   "0111",     "1000",     "1011",     "1100",     "1110",     "1111",
    "10011",    "10100",    "00111",    "01000",    "001000",   "000011",   "110100",   "110101",
    "101010",   "101011",   "0100111",  "0001100",  "0001000",  "0010111",  "0000011",  "0000100",
    "0101000",  "0101011",  "0010011",  "0100100",  "0011000",  "00000010", "00000011", "00011010",
    "00011011", "00010010", "00010011", "00010100", "00010101", "00010110", "00010111", "00101000",
    "00101001", "00101010", "00101011", "00101100", "00101101", "00000100", "00000101", "00001010",
    "00001011", "01010010", "01010011", "01010100", "01010101", "00100100", "00100101", "01011000",
    "01011001", "01011010", "01011011", "01001010", "01001011", "00110010", "00110011", "00110100",
});

// Black runs of 0 to 63.
constexpr std::array<CcittCode, 64> kBlack = Codes({
    "0000110111",   "010",          "11",           "10",           "011",          "0011",
    "0010",         "00011",        "000101",       "000100",       "0000100",      "0000101",
    "0000111",      "00000100",     "00000111",     "000011000",    "0000010111",   "0000011000",
    "0000001000",   "00001100111",  "00001101000",  "00001101100",  "00000110111",  "00000101000",
    "00000010111",  "00000011000",  "000011001010", "000011001011", "000011001100", "000011001101",
    "000001101000", "000001101001", "000001101010", "000001101011", "000011010010", "000011010011",
    "000011010100", "000011010101", "000011010110", "000011010111", "000001101100", "000001101101",
    "000011011010", "000011011011", "000001010100", "000001010101", "000001010110", "000001010111",
    "000001100100", "000001100101", "000001010010", "000001010011", "000000100100", "000000110111",
    "000000111000", "000000100111", "000000101000", "000001011000", "000001011001", "000000101011",
    "000000101100", "000001011010", "000001100110", "000001100111",
});

// White runs of 64, 128 and so on to 1728.
constexpr std::array<CcittCode, 27> kWhiteMakeUp = Codes({
    "11011",     "10010",     "010111",    "0110111",   "00110110",  "00110111",  "01100100",
    "01100101",  "01101000",  "01100111",  "011001100", "011001101", "011010010", "011010011",
    "011010100", "011010101", "011010110", "011010111", "011011000", "011011001", "011011010",
    "011011011", "010011000", "010011001", "010011010", "011000",    "010011011",
});

// Black runs of 64, 128 and so on to 1728.
constexpr std::array<CcittCode, 27> kBlackMakeUp = Codes({
    "0000001111",    "000011001000",  "000011001001",  "000001011011",  "000000110011",  "000000110100",
    "000000110101",  "0000001101100", "0000001101101", "0000001001010", "0000001001011", "0000001001100",
    "0000001001101", "0000001110010", "0000001110011", "0000001110100", "0000001110101", "0000001110110",
    "0000001110111", "0000001010010", "0000001010011", "0000001010100", "0000001010101", "0000001011010",
    "0000001011011", "0000001100100", "0000001100101",
});

// Runs of either colour of 1792, 1856 and so on to 2560.
constexpr std::array<CcittCode, 13> kCommonMakeUp = Codes({
    "00000001000",
    "00000001100",
    "00000001101",
    "000000010010",
    "000000010011",
    "000000010100",
    "000000010101",
    "000000010110",
    "000000010111",
    "000000011100",
    "000000011101",
    "000000011110",
    "000000011111",
});

constexpr std::size_t kFirstCommonMakeUp = kFirstMakeUp * (kWhiteMakeUp.size() + 1);

struct ModeCode {
    CcittMode mode;
    std::int8_t shift;
    CcittCode code;
};

// The extensions of T.6 (0000001xxx, uncompressed mode) are left out: nobody writes them.
constexpr std::array kModes = {
    ModeCode{CcittMode::kVertical, -3, CcittCode("0000010")},
    ModeCode{CcittMode::kVertical, -2, CcittCode("000010")},
    ModeCode{CcittMode::kVertical, -1, CcittCode("010")},
    ModeCode{CcittMode::kVertical, 0, CcittCode("1")},
    ModeCode{CcittMode::kVertical, 1, CcittCode("011")},
    ModeCode{CcittMode::kVertical, 2, CcittCode("000011")},
    ModeCode{CcittMode::kVertical, 3, CcittCode("0000011")},
    ModeCode{CcittMode::kHorizontal, 0, CcittCode("001")},
    ModeCode{CcittMode::kPass, 0, CcittCode("0001")},
};

// Enters what a code word means under all bits that begin with it.
template <typename Found, std::size_t Size>
constexpr void Enter(std::array<Found, Size>& lookup, CcittCode code, Found found) {
    const std::size_t count = Size >> code.length;
    for (std::size_t i = 0; i < count; ++i) {
        lookup[code.bits * count + i] = found;
    }
}

using RunLookup = std::array<FoundRun, std::size_t{1} << kLongestRunCode>;

constexpr void EnterRuns(RunLookup& lookup, const auto& codes, std::size_t first, std::size_t step) {
    std::size_t run = first;
    for (const CcittCode code : codes) {
        Enter(lookup, code, FoundRun{static_cast<std::uint16_t>(run), code.length});
        run += step;
    }
}

constexpr RunLookup MakeRunLookup(const auto& terminating, const auto& makeUp) {
    RunLookup lookup{};
    EnterRuns(lookup, terminating, 0, 1);
    EnterRuns(lookup, makeUp, kFirstMakeUp, kFirstMakeUp);
    EnterRuns(lookup, kCommonMakeUp, kFirstCommonMakeUp, kFirstMakeUp);
    return lookup;
}

constexpr RunLookup kWhiteLookup = MakeRunLookup(kWhite, kWhiteMakeUp);
constexpr RunLookup kBlackLookup = MakeRunLookup(kBlack, kBlackMakeUp);

using ModeLookup = std::array<FoundMode, std::size_t{1} << kLongestModeCode>;

constexpr ModeLookup MakeModeLookup() {
    ModeLookup lookup{};
    for (const ModeCode& mode : kModes) {
        Enter(lookup, mode.code, FoundMode{mode.mode, mode.shift, mode.code.length});
    }
    return lookup;
}

constexpr ModeLookup kModeLookup = MakeModeLookup();

}  // namespace

CcittCode RunCode(bool black, std::size_t run) {
    if (run < kFirstMakeUp) {
        return black ? kBlack[run] : kWhite[run];
    }
    if (run >= kFirstCommonMakeUp) {
        return kCommonMakeUp[(run - kFirstCommonMakeUp) / kFirstMakeUp];
    }
    const std::size_t place = run / kFirstMakeUp - 1;
    return black ? kBlackMakeUp[place] : kWhiteMakeUp[place];
}

CcittCode PassCode() {
    return kModes.back().code;
}

CcittCode HorizontalCode() {
    return kModes[kModes.size() - 2].code;
}

CcittCode VerticalCode(int shift) {
    const int place = shift + kLargestShift;
    return kModes[static_cast<std::size_t>(place)].code;
}

FoundRun FindRun(bool black, unsigned int next13Bits) {
    return black ? kBlackLookup[next13Bits] : kWhiteLookup[next13Bits];
}

FoundMode FindMode(unsigned int next7Bits) {
    return kModeLookup[next7Bits];
}

}  // namespace zorvan::filter
