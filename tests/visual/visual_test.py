#!/usr/bin/python3
# The visual test of one PDF: its PostScript, printed by Ghostscript, shows what the PDF shows.
"""visual_test.py --zorvan PROGRAM --folder FOLDER FILE.pdf

Converts FILE.pdf, prints the PostScript with Ghostscript (which must not complain), and compares each page with
pdftoppm's and Ghostscript's pictures of the PDF itself; the tolerances stand in ../tools/page_compare.py. The
pictures stay in FOLDER. Ends with 1 when something differs.
"""
import argparse
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tools"))
import convert_and_compare  # noqa: E402  (found through the line above)

# Where one of the engines shows the PDF itself otherwise than everyone else does.
NO_REFERENCE = {
    "stray_restores": convert_and_compare.POPPLER,  # leaves a page blank that begins with Q
    "paths_left_over": convert_and_compare.GHOSTSCRIPT,  # paints the path on the next page
    "pattern_painting": convert_and_compare.POPPLER,  # strokes text in black, and knows no glyphs in patterns
    "pattern_places": convert_and_compare.GHOSTSCRIPT,  # places the patterns of forms as it does the page's
    "pattern_turned": convert_and_compare.POPPLER,  # puts turned cells on pixels of its own
}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--zorvan", required=True)
    parser.add_argument("--folder", required=True, type=pathlib.Path)
    parser.add_argument("pdf")
    arguments = parser.parse_args()
    without = NO_REFERENCE.get(pathlib.Path(arguments.pdf).stem)
    return 0 if convert_and_compare.report(arguments.zorvan, arguments.pdf, arguments.folder, without) else 1


if __name__ == "__main__":
    sys.exit(main())
