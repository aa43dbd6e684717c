// Text from files and file names, made fit for one line on a terminal.
#pragma once

#include <string>
#include <string_view>

namespace zorvan::cli {

// Control characters become "\n", "\r", "\t" or "\xHH"; all else, UTF-8 included, stays.
std::string OneLine(std::string_view text);

// Bytes of any kind between double quotes: what is not printable ASCII becomes an escape as above, and quotes
// and backslashes get a backslash.
std::string QuotedBytes(std::string_view bytes);

}  // namespace zorvan::cli
