// The program: from the command line to the exit code.
#pragma once

namespace zorvan::cli {

int RunProgram(int argc, const char* const* argv);

}  // namespace zorvan::cli
