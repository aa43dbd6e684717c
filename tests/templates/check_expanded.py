#!/usr/bin/python3
# Tests the template expander: qpdf accepts each expanded file, and every coded stream decodes to the same drawing.
"""check_expanded.py FOLDER     FOLDER holds the expanded files, visual/*.pdf among them."""
import pathlib
import subprocess
import sys

# Odd on purpose, and qpdf says so: another header, and content that ends inside an array.
ODD = {"job_ticket": "can't find PDF header", "operands_left_over": "parse error while reading object"}


def qpdf(*arguments):
    return subprocess.run(["qpdf", *map(str, arguments)], capture_output=True, check=False)


def complaint_about(path):
    result = qpdf("--check", path)
    expected = ODD.get(path.stem)
    if expected is None:
        return "" if result.returncode == 0 else result.stderr.decode()
    return "" if expected.encode() in result.stderr else f"qpdf does not say \"{expected}\""


def check_entries(path):
    """Every entry of every section is 20 bytes, and its offset leads to the object of that number."""
    data = path.read_bytes()
    for section in data.split(b"\nxref\n")[1:]:
        lines = section[: section.index(b"trailer")].split(b"\n")
        number = 0
        for line in lines:
            if len(line) == 19 and line.endswith(b" n "):
                offset, generation = int(line[:10]), int(line[11:16])
                if not data.startswith(b"%d %d obj" % (number, generation), offset):
                    return f"the entry of object {number} leads elsewhere"
                number += 1
            elif len(line) == 19 and line.endswith(b" f "):
                number += 1
            elif len(line.split()) == 2:
                number = int(line.split()[0])
            elif line:
                return f"a cross-reference line that is neither header nor entry: {line!r}"
    return ""


def main(folder):
    files = sorted(folder.glob("**/*.pdf"))
    found = [f"{path}: {text}" for path in files for text in (complaint_about(path), check_entries(path)) if text]
    drawings = {path.stem: qpdf("--show-object=4", "--filtered-stream-data", path).stdout
                for path in folder.glob("visual/filter_*.pdf")}
    if len(drawings) < 8 or len(set(drawings.values())) != 1 or b"100 45 l" not in next(iter(drawings.values())):
        found.append(f"the coded streams of {sorted(drawings)} differ")
    print("\n".join(found) or f"{len(files)} files are as they should be")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1])))
