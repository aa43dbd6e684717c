// Quoting words and taking lines apart.
#include "support/shell_text.h"

#include <algorithm>
#include <sstream>

#include "support/system.h"

namespace zorvan::test {

std::string ShellWord(const std::string& text) {
    std::string word = "'";
    for (const char letter : text) {
        word += letter == '\'' ? std::string("'\\''") : std::string(1, letter);
    }
    return word + "'";
}

std::vector<std::string> SortedLines(std::string_view text) {
    std::istringstream stream{std::string(text)};
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

}  // namespace zorvan::test
