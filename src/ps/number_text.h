// The one rule by which numbers become PostScript text. No other file writes digits.
#pragma once

#include <cstdint>
#include <string>

namespace zorvan {

/// Room that every number text below fits into.
constexpr std::size_t kMaxNumberText = 64;

/// Each writes at `out`, which has kMaxNumberText bytes, and returns the end of the text.

/// Decimal, with a leading "-" when negative.
char* WriteInteger(char* out, std::int32_t value);
char* WriteUnsigned(char* out, std::uint32_t value);

/// Four hexadecimal digits, "%04x".
char* WriteFourDigits(char* out, std::uint16_t value);

/// "%f" of the value: six decimals, rounded to the nearest (ties to even), the separator always a point.
char* WriteFixed(char* out, float value);

/// "%f" without trailing zeros and without a dangling point, "-0" as "0", cut to 31 characters when "%f"
/// gives 32 or more.
char* WriteReal(char* out, float value);

/// WriteReal as a string: the real-number rule.
std::string FormatReal(float value);

}  // namespace zorvan
