// The program's entry; all it does can be tested without it.
#include "cli/program.h"

int main(int argc, char** argv) {
    return zorvan::cli::RunProgram(argc, argv);
}
