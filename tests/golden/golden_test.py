#!/usr/bin/python3
# The golden test of one topic: its input becomes, byte for byte, what was accepted before.
"""golden_test.py --zorvan PROGRAM --folder FOLDER [--refresh] TOPIC

TOPIC is a folder with a template (input.in, see ../tools/expand_pdf.py) and the PostScript that it becomes
(expected.ps). Expands and converts the template in FOLDER, has Ghostscript run the PostScript, which must say nothing,
and compares it with expected.ps. With --refresh it takes expected.ps's place instead: that is script/refresh-goldens'.
Ends with 1 when something differs.
"""
import argparse
import difflib
import pathlib
import shutil
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tools"))
import expand_pdf  # noqa: E402  (found through the line above)
import measure  # noqa: E402


def make(zorvan, topic, folder):
    """Converts the topic's template; returns the path of the PostScript, which Ghostscript has run."""
    folder.mkdir(parents=True, exist_ok=True)
    pdf, postscript = folder / "input.pdf", folder / "output.ps"
    pdf.write_bytes(expand_pdf.expand(topic / "input.in"))
    measure.check([zorvan, "--quiet", "--page-size=none", pdf, postscript])
    said = measure.check(["gs", "-q", "-dSAFER", "-dNOPAUSE", "-dBATCH", "-sDEVICE=nullpage", postscript])
    if said:
        raise RuntimeError(f"Ghostscript says: {said}")
    return postscript


def difference(expected, postscript):
    """The first lines that differ, with their line ends visible; empty when the files are the same."""
    old, new = (path.read_bytes().decode("latin-1") for path in (expected, postscript))
    if old == new:
        return ""
    lines = difflib.unified_diff([repr(line) for line in old.splitlines(True)],
                                 [repr(line) for line in new.splitlines(True)],
                                 str(expected), str(postscript), lineterm="")
    return "\n".join(list(lines)[:60])


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--zorvan", required=True)
    parser.add_argument("--folder", required=True, type=pathlib.Path)
    parser.add_argument("--refresh", action="store_true")
    parser.add_argument("topic", type=pathlib.Path)
    arguments = parser.parse_args()
    try:
        postscript = make(arguments.zorvan, arguments.topic, arguments.folder)
    except RuntimeError as error:
        print(f"{arguments.topic}: {error}")
        return 1
    expected = arguments.topic / "expected.ps"
    if arguments.refresh:
        shutil.copyfile(postscript, expected)
        return 0
    text = difference(expected, postscript)
    print(text, end="\n" if text else "")
    return 1 if text else 0


if __name__ == "__main__":
    sys.exit(main())
