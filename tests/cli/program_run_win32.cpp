// By way of the shell, which finds Ghostscript as well as the program and the Wine around it.
#include "support/system.h"
#include "tests/cli/program_run.h"
#include "tests/cli/scratch_folder.h"

namespace zorvan::cli {

// What looks like a path is one: the programs of the machine itself know no drives.
RunResult Run(const std::vector<std::string>& command) {
    const ScratchFolder scratch;
    std::string line;
    for (const std::string& word : command) {
        line += test::ShellWord(word.starts_with("Z:") ? test::ShellPath(word) : word) + " ";
    }
    const auto in = [&scratch](const char* name) {
        return test::ShellWord(test::ShellPath(scratch.Path(name)));
    };
    const test::Outcome outcome = test::RunShell(line + ">" + in("out") + " 2>" + in("err"));
    return {outcome.status, FileText(scratch.Path("out")), FileText(scratch.Path("err"))};
}

RunResult RunZorvan(const std::vector<std::string>& arguments) {
    std::vector<std::string> command = {ZORVAN_PROGRAM};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return Run(command);
}

}  // namespace zorvan::cli
