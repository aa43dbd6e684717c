#!/usr/bin/python3
# Times the program for Windows beside the same code for 32-bit Linux, in one run on the same files.
"""bench/windows_speed.py [--repeat N] [FILE.pdf ...]

Builds zorvan.exe (build/windows, which script/windows prepares) and an optimised 32-bit zorvan for this machine
(build/linux32-release), converts each file with both, in turns, and prints the best of N elapsed times and how many
times as long the one for Windows takes under Wine. What Wine takes to start a program, a run of --version, is told
first and taken off: what is compared is the work. Without files those of script/bench are taken.
"""
import argparse
import pathlib
import subprocess
import sys
import tempfile

TOP = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(TOP / "tests" / "tools"))
import measure  # noqa: E402  (found through the line above)

INPUTS = TOP / "build" / "bench-inputs"
BUILDS = {"Linux": TOP / "build/linux32-release", "Windows": TOP / "build/windows"}
LITTLE = 0.1  # seconds: of less the start is too much
PROGRAMS = {"Linux": [BUILDS["Linux"] / "zorvan"], "Windows": [TOP / "script/wine", BUILDS["Windows"] / "zorvan.exe"]}


def build():
    subprocess.run([TOP / "script/target-libs", "linux32"], check=True, stdout=subprocess.DEVNULL)
    options = ["-DCMAKE_BUILD_TYPE=Release", "-DZORVAN_SANITIZE=", "-DZORVAN_TESTS=OFF"]
    subprocess.run(["cmake", "--preset", "linux32", "-B", BUILDS["Linux"], *options], cwd=TOP, check=True,
                   stdout=subprocess.DEVNULL)
    for folder in BUILDS.values():
        subprocess.run(["cmake", "--build", folder, "--target", "zorvan_program", "ZORVAN", "Filter"], check=True,
                       stdout=subprocess.DEVNULL)


def seconds(system, *arguments):
    run = measure.run([*PROGRAMS[system], *arguments], timeout=300)
    if run.code not in (0, 3):
        sys.exit(f"{system}: exit code {run.code}: {run.output}")
    return run.wall_seconds


def best(repeat, *arguments):
    """The shortest time of each, the runs of both in turns."""
    runs = [{system: seconds(system, *arguments) for system in PROGRAMS} for _ in range(repeat)]
    return {system: min(run[system] for run in runs) for system in PROGRAMS}


def tell(name, work):
    told = ", ".join(f"{system} {time:.3f} s" for system, time in work.items())
    print(f"{name}: {told}, x {work['Windows'] / work['Linux']:.2f}", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--repeat", type=int, default=5)
    parser.add_argument("files", nargs="*", type=pathlib.Path)
    arguments = parser.parse_args()
    build()
    if not arguments.files:
        subprocess.run([sys.executable, TOP / "bench/make_inputs.py", INPUTS], check=True)
    start = best(arguments.repeat, "--version")
    print("start: " + ", ".join(f"{system} {time:.3f} s" for system, time in start.items()))
    everything = dict.fromkeys(PROGRAMS, 0.0)
    with tempfile.TemporaryDirectory() as folder:
        for pdf in arguments.files or sorted(INPUTS.glob("*.pdf")):
            options = ["--quiet", "--page-size=none", pdf, pathlib.Path(folder) / "out.ps"]
            work = {system: time - start[system] for system, time in best(arguments.repeat, *options).items()}
            if work["Linux"] < LITTLE:
                print(f"{pdf.name}: too little work to tell")
                continue
            everything = {system: time + work[system] for system, time in everything.items()}
            tell(pdf.name, work)
    tell("all", everything)


if __name__ == "__main__":
    main()
