// The command line.
#pragma once

#include <optional>
#include <string>
#include <variant>

#include "cli/page_ranges.h"

namespace zorvan::cli {

struct Options {
    std::string input;
    std::string output;  // "-" is standard output; empty for --info
    PageRanges pages;
    std::optional<std::string> password;
    std::optional<std::string> passwordFile;  // "-" is standard input
    unsigned timeout = 0;                     // in seconds; 0 for none
    std::optional<std::string> filterFolder;
    bool askForPageSize = true;
    bool keepGoing = false;
    bool quiet = false;
    bool info = false;
    bool json = false;
};

// What --help or --version asks to print instead of a conversion.
struct Notice {
    std::string text;
};

// Throws a usage Failure for a command line that makes no sense.
std::variant<Options, Notice> ParseOptions(int argc, const char* const* argv);

// The input's name beside the input, with ".ps" for its ".pdf" or behind what else it ends in.
std::string DefaultOutput(const std::string& input);

}  // namespace zorvan::cli
