#!/usr/bin/env python3
"""enlarge_pdf.py INPUT.pdf OUTPUT.pdf MEBIBYTES: the same document with a hole behind its first line, which takes no room
on the disk. The input has one cross-reference section, a classic one."""
import pathlib
import re
import sys


def enlarged(data, hole):
    """The bytes behind the hole: offsets in the table and the table's own."""
    table = data.rindex(b"\nxref")
    moved = re.sub(rb"(?m)^(\d{10})(?= \d{5} n)", lambda entry: b"%010d" % (int(entry[1]) + hole), data[table:])
    return data[:table] + re.sub(rb"(?<=startxref\n)\d+", lambda at: b"%d" % (int(at[0]) + hole), moved)


def main(source, target, mebibytes):
    data = pathlib.Path(source).read_bytes()
    hole = int(mebibytes) << 20
    first = data.index(b"\n") + 1
    with open(target, "wb") as file:
        file.write(data[:first])
        file.seek(first + hole)
        file.write(enlarged(data, hole)[first:])


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    main(*sys.argv[1:])
