#!/usr/bin/env python3
"""same_output.py PROGRAM OTHER FOLDER: two builds of the program write the same bytes, and end with the same code, for
every PDF below the folder. Type 3 fonts without a name get another number in each run, which is not compared."""
import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys
import tempfile


def without_made_names(text):
    for name in set(re.findall(rb"^%%BeginResource: font /(\d+)$", text, re.MULTILINE)):
        text = re.sub(rb"/" + name + rb"\b", b"/made", text)
    return text


def converted(program, pdf):
    with tempfile.TemporaryDirectory() as folder:
        output = pathlib.Path(folder) / "out.ps"
        command = [program, "--quiet", "--keep-going", pdf, output]
        code = subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=300, check=False)
        return code.returncode, without_made_names(output.read_bytes()) if output.exists() else None


def differs(programs, pdf):
    first, second = (converted(program, pdf) for program in programs)
    return None if first == second else f"{pdf}: differs (exit codes {first[0]} and {second[0]})"


def main(*arguments):
    *programs, folder = (pathlib.Path(argument).resolve() for argument in arguments)
    pdfs = sorted(folder.rglob("*.pdf"))
    with concurrent.futures.ThreadPoolExecutor(2 * os.cpu_count()) as pool:
        found = list(filter(None, pool.map(lambda pdf: differs(programs, pdf), pdfs)))
    print("\n".join(found) or f"{len(pdfs)} files, the same bytes")
    return 1 if found or not pdfs else 0


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
