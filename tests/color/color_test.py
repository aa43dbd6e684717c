#!/usr/bin/python3
# The tests of colour by numbers: what the PostScript of a PDF makes of a device's values.
"""color_test.py --zorvan PROGRAM --folder FOLDER [--summary] TOPIC

Expands the templates beside this file, converts them in FOLDER, prints the PostScript with Ghostscript and reads the
device's values back. TOPIC is one of those that --help lists. With --summary it
also prints the largest differences. Ends with 1 when a value is not what the PDF asks for.
"""
import argparse
import importlib
import pathlib
import sys
import unittest

TOPICS = {
    "spaces": ("process_colors", "AllSpaces"),
    "lab_tables": ("process_colors", "LabTables"),
    "tint_transforms": ("process_colors", "TintTransforms"),
    "default_spaces": ("process_colors", "DefaultSpaces"),
    "separations": ("separations", "Separations"),
    "graphics_states": ("graphics_states", "GraphicsStates"),
    "spot_functions": ("spot_functions", "SpotFunctions"),
}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--zorvan", required=True)
    parser.add_argument("--folder", required=True, type=pathlib.Path)
    parser.add_argument("--summary", action="store_true")
    parser.add_argument("topic", choices=TOPICS)
    arguments = parser.parse_args()
    arguments.folder.mkdir(parents=True, exist_ok=True)
    for old in arguments.folder.iterdir():
        old.unlink()
    module, name = TOPICS[arguments.topic]
    tests = getattr(importlib.import_module(module), name)
    tests.zorvan, tests.folder = arguments.zorvan, arguments.folder
    result = unittest.TextTestRunner().run(unittest.defaultTestLoader.loadTestsFromTestCase(tests))
    if arguments.summary:
        for key, value in sorted(getattr(tests, "worst", {}).items()):
            print(*key, f"{value:.1f}")
    return 0 if result.wasSuccessful() and result.testsRun else 1


if __name__ == "__main__":
    sys.exit(main())
