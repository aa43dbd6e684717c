// By way of the shell, which finds Ghostscript as well as the program and the Wine around it.
#include "support/system.h"
#include "tests/cli/program_run.h"
#include "tests/cli/scratch_folder.h"

namespace zorvan::cli {

RunResult Run(const std::vector<std::string>& command) {
    const ScratchFolder scratch;
    std::string line;
    for (const std::string& word : command) {
        line += test::ShellWord(word) + " ";
    }
    const auto in = [&scratch](const char* name) { return test::ShellWord(scratch.Path(name)); };
    const test::Outcome outcome = test::RunShell(line + ">" + in("out") + " 2>" + in("err"));
    return {outcome.status, FileText(scratch.Path("out")), FileText(scratch.Path("err"))};
}

RunResult RunZorvan(const std::vector<std::string>& arguments) {
    std::vector<std::string> command = {ZORVAN_PROGRAM};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return Run(command);
}

}  // namespace zorvan::cli
