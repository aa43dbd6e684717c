// The words and lines of shell commands.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zorvan::test {

std::vector<std::string> SortedLines(std::string_view text);

}  // namespace zorvan::test
