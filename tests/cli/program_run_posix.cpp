// fork, exec, wait.
#include <array>
#include <csignal>
#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/cli/posix_run.h"
#include "tests/cli/scratch_folder.h"

namespace zorvan::cli {
namespace {

struct Pipe {
    Pipe() {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
            throw std::runtime_error("no pipe");
        }
        readEnd = ends[0];
        writeEnd = ends[1];
    }
    int readEnd = -1;
    int writeEnd = -1;
};

pid_t Start(const std::vector<std::string>& command, int out, int err, const std::function<void()>& prepare) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& argument : command) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    const pid_t process = ::fork();
    if (process == 0) {
        ::dup2(out, STDOUT_FILENO);
        ::dup2(err, STDERR_FILENO);
        if (prepare) {
            prepare();
        }
        ::execvp(arguments[0], arguments.data());
        ::_exit(127);
    }
    return process;
}

int WaitFor(pid_t process) {
    int status = 0;
    ::waitpid(process, &status, 0);
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

std::string Drain(int descriptor) {
    std::string text;
    std::array<char, 65536> chunk{};
    for (ssize_t got = 0; (got = ::read(descriptor, chunk.data(), chunk.size())) > 0;) {
        text.append(chunk.data(), static_cast<std::size_t>(got));
    }
    ::close(descriptor);
    return text;
}

void FillPipe(int descriptor) {
    ::fcntl(descriptor, F_SETFL, O_NONBLOCK);
    while (::write(descriptor, "x", 1) == 1) {}
    ::fcntl(descriptor, F_SETFL, 0);
}

std::vector<std::string> ZorvanCommand(const std::vector<std::string>& arguments) {
    std::vector<std::string> command = {ZORVAN_PROGRAM};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return command;
}

RunResult RunPrepared(const std::vector<std::string>& command, const std::function<void()>& prepare) {
    const ScratchFolder scratch;
    const std::string errPath = scratch.Write("stderr", "");
    const int err = ::open(errPath.c_str(), O_WRONLY | O_CLOEXEC);
    const Pipe out;
    const pid_t process = Start(command, out.writeEnd, err, prepare);
    ::close(out.writeEnd);
    ::close(err);
    RunResult result;
    result.out = Drain(out.readEnd);
    result.exitCode = WaitFor(process);
    result.err = FileText(errPath);
    return result;
}

}  // namespace

RunResult Run(const std::vector<std::string>& command) {
    return RunPrepared(command, {});
}

RunResult RunZorvan(const std::vector<std::string>& arguments) {
    return Run(ZorvanCommand(arguments));
}

RunResult RunZorvan(const std::vector<std::string>& arguments, const std::function<void()>& prepare) {
    return RunPrepared(ZorvanCommand(arguments), prepare);
}

StuckZorvan::StuckZorvan(const std::vector<std::string>& arguments, const std::function<void()>& prepare) {
    const Pipe err;
    FillPipe(err.writeEnd);
    process_ = Start(ZorvanCommand(arguments), STDOUT_FILENO, err.writeEnd, prepare);
    ::close(err.writeEnd);
    pipe_ = err.readEnd;
}

StuckZorvan::~StuckZorvan() {
    if (process_ > 0) {
        ::kill(process_, SIGKILL);
        Wait();
    }
    if (pipe_ >= 0) {
        ::close(pipe_);
    }
}

void StuckZorvan::Send(int signal) const {
    ::kill(process_, signal);
}

void StuckZorvan::Release() {
    Drain(std::exchange(pipe_, -1));
}

int StuckZorvan::Wait() {
    return WaitFor(std::exchange(process_, -1));
}

}  // namespace zorvan::cli
