// A password that does not stand on the command line, where others can see it.
#pragma once

#include <string>

namespace zorvan::cli {

// What the file holds, "-" being standard input, without one line end at its end. Throws a Failure when it
// cannot be read.
std::string ReadPasswordFile(const std::string& path);

}  // namespace zorvan::cli
