#!/usr/bin/python3
# Runs the program over a collection of real and of damaged PDFs that the project does not carry.
"""corpus_test.py --zorvan PROGRAM --folder FOLDER vector|text|open|hostile

The collection is the folder that the environment names in ZORVAN_CORPUS; without it the test is skipped.

  vector    the files of open/ that index.csv says need nothing but vector pages: compared page by page, as the
            visual test does
  text      the files of open/ whose words can be had from their PostScript as well: those that need nothing but vector
            pages, text and images, and all of whose fonts are Type 1 fonts in an encoding of glyph names that
            everyone knows. Not TrueType fonts, whose glyphs have numbers for names; not glyph fonts and CID fonts; not
            Symbol and ZapfDingbats, about whose characters the two programs disagree. Nor files in which the programs
            find other words to begin with. There must be at least ten; tests/tools/compare_text.py says what is
            compared
  open      the other files of open/: each ends by itself with an exit code of the program's own, within a minute
            and a GiB, and Ghostscript has nothing to say about the PostScript
  hostile   the files of hostile/: the same, but for Ghostscript
"""
import argparse
import concurrent.futures
import csv
import os
import pathlib
import re
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tools"))
import compare_text  # noqa: E402  (found through the line above)
import convert_and_compare  # noqa: E402
import measure  # noqa: E402
import survival  # noqa: E402

SKIPPED = 77
SECONDS, BYTES = 60, 1 << 30
TEXT_NEEDS = {"vector", "text", "image"}
TEXT_FONTS = {"Type 1", "Type 1C"}
TEXT_ENCODINGS = {"Standard", "WinAnsi", "MacRoman", "Custom"}  # Custom: one with Differences
LEAST_TEXT_FILES = 10


def index(folder):
    with open(folder / "index.csv", encoding="utf-8", newline="") as file:
        return list(csv.DictReader(file))


def complaint_about_postscript(path):
    """What Ghostscript has to say about the pages, which it runs without painting them."""
    if not path.exists():
        return ""
    run = measure.run(["gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=nullpage", path], 4 * SECONDS)
    return f"Ghostscript says: {run.output[:1500]}" if run.output or run.code else ""


def is_well(zorvan, path, password, printed):
    options = ["--password", password] if password else []
    with tempfile.TemporaryDirectory() as folder:
        output = pathlib.Path(folder) / "out.ps"
        text = survival.complaint(survival.run(zorvan, path, output, SECONDS, options), SECONDS, BYTES)
        if not text and printed:
            text = complaint_about_postscript(output)
    if text:
        print(f"{path}: {text}", flush=True)
    return not text


def run_all(jobs):
    """Runs the jobs (functions without arguments) on all cores and tells how many of them came out well."""
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        results = list(pool.map(lambda job: job(), jobs))
    print(f"{sum(results)} of {len(results)} files are well")
    return 0 if results and all(results) else 1


def vector_jobs(corpus, arguments):
    for row in index(corpus):
        if row["needs"] == "vector":
            pdf = corpus / "open" / row["file"]
            folder = arguments.folder / pdf.stem
            yield lambda pdf=pdf, folder=folder: convert_and_compare.report(arguments.zorvan, pdf, folder)


def fonts_have_known_names(pdf):
    """Are there fonts, and all of them such whose text can be told from the PostScript?"""
    lines = measure.check(["pdffonts", pdf]).splitlines()
    rule = next((at for at, line in enumerate(lines) if line.startswith("-----")), len(lines) - 1)
    if rule + 1 >= len(lines):
        return False
    kind, encoding = ([slice(*found.span()) for found in re.finditer("-+", lines[rule])][at] for at in (1, 2))
    return all(line[kind].strip() in TEXT_FONTS and line[encoding].strip() in TEXT_ENCODINGS
               for line in lines[rule + 1 :])


def text_jobs(corpus, arguments):
    chosen = [corpus / "open" / row["file"] for row in index(corpus)
              if "text" in row["needs"].split() and set(row["needs"].split()) <= TEXT_NEEDS and not row["password"]]
    jobs = [(pdf, arguments.folder / "text" / pdf.stem) for pdf in chosen if fonts_have_known_names(pdf)]
    jobs = [(pdf, folder) for pdf, folder in jobs if compare_text.is_fit(pdf, folder)]
    if len(jobs) < LEAST_TEXT_FILES:
        raise RuntimeError(f"only {len(jobs)} files whose text can be compared")
    for pdf, folder in jobs:
        yield lambda pdf=pdf, folder=folder: compare_text.report(arguments.zorvan, pdf, folder)


def other_jobs(corpus, arguments):
    hostile = arguments.part == "hostile"
    folder = corpus / arguments.part
    for row in index(folder if hostile else corpus):
        if row.get("needs") != "vector":
            path = folder / row["file"]
            yield lambda path=path, row=row: is_well(arguments.zorvan, path, row.get("password"), not hostile)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--zorvan", required=True)
    parser.add_argument("--folder", required=True, type=pathlib.Path)
    parser.add_argument("part", choices=["vector", "text", "open", "hostile"])
    arguments = parser.parse_args()
    if not os.environ.get("ZORVAN_CORPUS"):
        print("skipped: ZORVAN_CORPUS does not name a collection of files")
        return SKIPPED
    corpus = pathlib.Path(os.environ["ZORVAN_CORPUS"])
    arguments.folder.mkdir(parents=True, exist_ok=True)
    jobs = {"vector": vector_jobs, "text": text_jobs}.get(arguments.part, other_jobs)
    return run_all(list(jobs(corpus, arguments)))


if __name__ == "__main__":
    sys.exit(main())
