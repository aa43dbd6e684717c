#!/usr/bin/env python3
"""Turns the prolog's readable PostScript files into the bytes that the library stores.

Usage: store_prolog.py SOURCE_DIR OUTPUT_DIR

Comments, indentation, empty lines and blanks that separate nothing go, lines end in CR LF, and DSC comments ("%%" at the start of
a line) stay. Written are one file a resource, <identifier>.ps, and prolog_data.cpp with all of them. The same input gives the same
bytes on every run.
"""
import pathlib
import re
import sys

# Identifier and source of each resource, by identifier.
RESOURCES = [
    (7003, "l3check.ps"),
    (7004, "pdfvars.ps"),
    (7005, "pdfutil.ps"),
    (7006, "pdf.ps"),
    (7007, "pdflev3.ps"),
    (7008, "pdftext.ps"),
    (7009, "encoding.ps"),
    (7010, "pdfimage.ps"),
    (7012, "spots.ps"),
]
# A device takes one token of source at a time; DSC 3.0 asks for lines no longer than this.
LONGEST_LINE = 255
BYTES_A_ROW = 24


# Blanks beside these separate nothing. (A slash needs none in front of it, but what stands behind it is its name.)
NEEDLESS_BLANKS = re.compile(r" *(<<|>>|[\[\]{}]) *| +(?=/)")


def compact(text):
    """A line of code without needless blanks. Hosts look for some lines as they stand: those are written with blanks
    inside their braces, which no other line is, and are kept."""
    if "{ " in text or "(" in text or ")" in text or "<~" in text:
        return text
    return NEEDLESS_BLANKS.sub(r"\1", re.sub(" +", " ", text))


class Stripper:
    """Strips one file. A string may run over several lines, so what it stands in is kept from line to line."""

    def __init__(self):
        self.parentheses = 0  # open parentheses of a literal string
        self.ascii85 = False  # inside <~ ... ~>

    def strip(self, line):
        """The line as it is stored; empty when nothing of it stays."""
        inside = self.parentheses > 0 or self.ascii85
        if not inside and line.startswith("%%"):
            return line.rstrip()
        text = line[: self._code_length(line)]
        if not inside:
            text = text.lstrip()
        if self.parentheses == 0:
            text = text.rstrip()
        return text if inside else compact(text)

    def _code_length(self, line):
        """How much of the line stands before its comment."""
        at = 0
        while at < len(line):
            if self.parentheses == 0 and not self.ascii85 and line[at] == "%":
                return at
            at += self._step(line, at)
        return len(line)

    def _step(self, line, at):
        """Takes note of the character or pair at this place; its length."""
        pair = line[at : at + 2]
        if self.ascii85:
            self.ascii85 = pair != "~>"
            return 1 if self.ascii85 else 2
        if self.parentheses and line[at] == "\\":
            return 2
        if line[at] == "(":
            self.parentheses += 1
        elif line[at] == ")" and self.parentheses:
            self.parentheses -= 1
        elif not self.parentheses and pair == "<~":
            self.ascii85 = True
            return 2
        return 1

    def is_open(self):
        return self.parentheses > 0 or self.ascii85


def stored_bytes(source):
    stripper = Stripper()
    lines = []
    for number, line in enumerate(source.read_text(encoding="ascii").splitlines(), 1):
        was_open = stripper.is_open()
        text = stripper.strip(line)
        if len(text) > LONGEST_LINE:
            sys.exit(f"{source}:{number}: line of {len(text)} characters")
        if text or was_open:
            lines.append(text)
    if stripper.is_open():
        sys.exit(f"{source}: string without an end")
    return "".join(line + "\r\n" for line in lines).encode("ascii")


def array_text(identifier, data):
    rows = (data[at : at + BYTES_A_ROW] for at in range(0, len(data), BYTES_A_ROW))
    body = "\n".join("    " + ", ".join(str(byte) for byte in row) + "," for row in rows)
    return f"const unsigned char kResource{identifier}[] = {{\n{body}\n}};\n"


def cpp_text(resources):
    arrays = "\n".join(array_text(identifier, data) for identifier, data in resources)
    rows = "\n".join(
        f"    {{{identifier}, kResource{identifier}, sizeof kResource{identifier}}}," for identifier, _ in resources
    )
    return (
        "// The stored prolog, written by cmake/store_prolog.py from src/ps/prolog: do not edit.\n"
        '#include "ps/prolog_data.h"\n\nnamespace zorvan {\nnamespace {\n\n'
        f"{arrays}\n}}  // namespace\n\n"
        f"const PrologResource kPrologResources[kPrologResourceCount] = {{\n{rows}\n}};\n\n"
        "}  // namespace zorvan\n"
    )


def main(source_dir, output_dir):
    resources = [(identifier, stored_bytes(source_dir / name)) for identifier, name in RESOURCES]
    output_dir.mkdir(parents=True, exist_ok=True)
    for identifier, data in resources:
        (output_dir / f"{identifier}.ps").write_bytes(data)
    (output_dir / "prolog_data.cpp").write_bytes(cpp_text(resources).encode("ascii"))


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]))
