// Number text: an exact integer path for the magnitudes that files hold, std::to_chars for the rest.
#include "ps/number_text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>

namespace zorvan {
namespace {

constexpr unsigned kDecimals = 6;
constexpr std::uint64_t kMillion = 1000000;
constexpr std::ptrdiff_t kMostCharacters = 31;

/// A float's magnitude in millionths, rounded to the nearest and ties to even, exactly as "%f" rounds: a
/// float is mantissa * 2^exponent with 24 bits of mantissa, so that mantissa * 10^6 fits into 44 bits and
/// nothing is lost. False above 2^32, where the rare rest begins.
bool ToMillionths(float magnitude, std::uint64_t& millionths) {
    constexpr unsigned kMantissaBits = 23;
    constexpr int kBias = 150;
    const auto bits = std::bit_cast<std::uint32_t>(magnitude);
    if (!(magnitude < 4294967296.0F)) {
        return false;  // NaN is here, too
    }
    const auto exponentBits = static_cast<int>(bits >> kMantissaBits);
    const std::uint64_t fraction = bits & ((1U << kMantissaBits) - 1);
    const std::uint64_t mantissa = exponentBits == 0 ? fraction : fraction | (1U << kMantissaBits);
    const int exponent = std::max(exponentBits, 1) - kBias;
    const std::uint64_t scaled = mantissa * kMillion;
    if (exponent >= 0) {
        millionths = scaled << static_cast<unsigned>(exponent);
        return true;
    }
    const auto shift = static_cast<unsigned>(-exponent);
    if (shift > 45) {
        millionths = 0;  // scaled is below 2^44, so that less than a quarter of a millionth is left
        return true;
    }
    const std::uint64_t rest = scaled & ((std::uint64_t{1} << shift) - 1);
    const std::uint64_t half = std::uint64_t{1} << (shift - 1);
    millionths = scaled >> shift;
    if (rest > half || (rest == half && (millionths & 1U) != 0)) {
        ++millionths;
    }
    return true;
}

/// "00" to "99": two digits a step halve the divisions.
constexpr auto kDigitPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < pairs.size() / 2; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

char* WritePair(char* out, std::uint32_t value) {
    return std::copy_n(&kDigitPairs[std::size_t{value} * 2], 2, out);
}

char* WriteDecimals(char* out, std::uint32_t millionths) {
    *out++ = '.';
    out = WritePair(out, millionths / 10000);
    out = WritePair(out, millionths / 100 % 100);
    return WritePair(out, millionths % 100);
}

/// Removes trailing zeros and then a dangling point, but never the first character.
char* Trim(char* text, char* end) {
    while (end > text + 1 && end[-1] == '0') {
        --end;
    }
    return end > text + 1 && end[-1] == '.' ? end - 1 : end;
}

/// The rule character by character, for what is too large for the exact path.
char* WriteLargeReal(char* out, float value) {
    char* const printed = WriteFixed(out, value);
    char* const end = Trim(out, printed);
    return printed - out > kMostCharacters ? std::min(end, out + kMostCharacters) : end;
}

}  // namespace

char* WriteInteger(char* out, std::int32_t value) {
    return std::to_chars(out, out + kMaxNumberText, value).ptr;
}

char* WriteFourDigits(char* out, std::uint16_t value) {
    constexpr char kDigits[] = "0123456789abcdef";
    for (unsigned shift = 16; shift > 0;) {
        shift -= 4;
        *out++ = kDigits[(unsigned{value} >> shift) & 0xFU];
    }
    return out;
}

char* WriteUnsigned(char* out, std::uint32_t value) {
    return std::to_chars(out, out + kMaxNumberText, value).ptr;
}

char* WriteFixed(char* out, float value) {
    std::uint64_t millionths = 0;
    if (!ToMillionths(std::fabs(value), millionths)) {
        return std::to_chars(out, out + kMaxNumberText, static_cast<double>(value), std::chars_format::fixed,
                             kDecimals)
            .ptr;
    }
    if (std::signbit(value)) {
        *out++ = '-';
    }
    out = WriteUnsigned(out, static_cast<std::uint32_t>(millionths / kMillion));
    return WriteDecimals(out, static_cast<std::uint32_t>(millionths % kMillion));
}

char* WriteReal(char* out, float value) {
    std::uint64_t millionths = 0;
    if (!ToMillionths(std::fabs(value), millionths)) {
        return WriteLargeReal(out, value);
    }
    if (std::signbit(value) && millionths != 0) {
        *out++ = '-';
    }
    out = WriteUnsigned(out, static_cast<std::uint32_t>(millionths / kMillion));
    const auto decimals = static_cast<std::uint32_t>(millionths % kMillion);
    return decimals == 0 ? out : Trim(out, WriteDecimals(out, decimals));
}

std::string FormatReal(float value) {
    char text[kMaxNumberText];
    return {text, WriteReal(text, value)};
}

}  // namespace zorvan
