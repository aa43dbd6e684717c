# Runs one command under a time limit and tells how it ended and what it took.
import dataclasses
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import time


@dataclasses.dataclass
class Run:
    code: int  # exit code; 128 + n when signal n ended it
    timed_out: bool
    output: str  # standard output and standard error
    cpu_seconds: float  # user and system
    wall_seconds: float
    peak_bytes: int


STARTER = pathlib.Path(__file__).with_name("start_measured.py")


def wait(process, timeout):
    """Waits for a process that leads a session; returns whether it had to be ended with all that it started."""
    try:
        process.wait(timeout)
        return False
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, signal.SIGKILL)
        process.wait()
        return True


def run(command, timeout=60, environment=None):
    command = [str(word) for word in command]
    with tempfile.TemporaryFile() as sink, tempfile.NamedTemporaryFile() as usage:
        begin = time.monotonic()
        starter = [sys.executable, "-I", "-S", STARTER, usage.name, *command]
        process = subprocess.Popen(starter, stdin=subprocess.DEVNULL, stdout=sink, stderr=sink,
                                   env={**os.environ, **(environment or {})}, start_new_session=True)
        timed_out = wait(process, timeout)
        seconds = time.monotonic() - begin
        sink.seek(0)
        output = sink.read(1 << 20).decode("utf-8", "replace")
        told = usage.read().split()
    if timed_out:
        return Run(128 + signal.SIGKILL, True, output, 0.0, seconds, 0)
    if not told:
        raise FileNotFoundError(f"{command[0]} cannot be started: {output}")
    return Run(int(told[0]), False, output, float(told[1]), seconds, int(told[2]))


def check(command, timeout=120, codes=(0,), environment=None):
    """Runs a command that has to end with one of `codes`; returns its output."""
    result = run(command, timeout, environment)
    if result.timed_out or result.code not in codes:
        how = "timed out" if result.timed_out else f"ended with {result.code}"
        raise RuntimeError(f"{' '.join(map(str, command))} {how}: {result.output[:2000]}")
    return result.output


def name_of_signal(code):
    """"SIGSEGV" for 139; an empty text for an ordinary exit code."""
    return signal.Signals(code - 128).name if code - 128 in signal.valid_signals() else ""
