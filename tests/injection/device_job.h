// A device that knows the word ZRUN and tells when a document has run it.
#pragma once

#include <string>

namespace zorvan::test {

/// What the device says of a document in which nothing ran but the library's own text, from its first line to
/// its last: it has come to the end, and nothing is left on its stack.
constexpr const char* kNothingRan = "ended 0\n";

/// What it says before that each time it runs ZRUN.
constexpr const char* kRan = "ran\n";

/// What the device says of an output.
std::string SaidOfOutput(const std::string& output);

/// Converts the file, which must go well, and lets the device run the output. Lines that a program which cuts
/// documents at their comments would take for pages of the file's own count as run, too.
std::string SaidOf(const std::string& pdf);

}  // namespace zorvan::test
