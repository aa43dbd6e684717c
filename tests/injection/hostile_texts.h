// Texts that try to end the token in which they stand, so that the word ZRUN behind them runs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zorvan::test {

/// The texts themselves, byte by byte.
const std::vector<std::string>& HostileTexts();

/// A text as a name of a file: each byte by its number.
std::string AsName(std::string_view text);
/// As a string in parentheses, with a backslash where one is needed.
std::string AsLiteral(std::string_view text);
/// As a string in digits.
std::string AsDigits(std::string_view text);

/// All of them as names, from the longest one that a file may have to the empty one.
std::vector<std::string> HostileNames();
/// All of them as strings, in both forms.
std::vector<std::string> HostileStrings();
/// Strings of contents, which go out in the form in which they stand: those, and some in the very bytes.
std::vector<std::string> HostileContentStrings();

/// Readable in a message.
std::string Shown(std::string_view bytes);

}  // namespace zorvan::test
