#!/usr/bin/python3
# Text in Chinese, Japanese or Korean fonts that are not embedded: by predefined CMaps it selects what the PDF says.
"""national_test.py --zorvan PROGRAM --folder FOLDER FILE.pdf

Converts FILE.pdf and runs the PostScript on a Ghostscript that has one font of its own for all four collections. Of
each page,
- the codes, as the device txtwrite tells them, are the text that pdftotext reads in the PDF;
- the CIDs, as they stand in a PDF that is distilled from the PostScript, are that text;
- the picture is that of the PDF in pdftoppm and in Ghostscript, which are given the same font.
Ends with 1 when something differs.
"""
import argparse
import os
import pathlib
import sys

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "tools"))
import convert_and_compare  # noqa: E402  (found through the line above)
import measure  # noqa: E402

FONT = pathlib.Path("/usr/share/fonts/truetype/wqy/wqy-zenhei.ttc")
COLLECTIONS = ("GB1", "CNS1", "Japan1", "Korea1")
ENCODINGS = ("utf-16-be", "gbk", "big5hkscs", "cp932", "euc-jp", "cp949")


def use_one_font(folder):
    """Gives Ghostscript and Poppler's fontconfig this one font, by files of the test's own, not the system's."""
    if not FONT.exists():
        raise RuntimeError(f"{FONT} is missing: script/setup installs it")
    folder.mkdir(parents=True, exist_ok=True)
    (folder / "cidfmap").write_text("".join(
        f"/Adobe-{name} << /FileType /TrueType /Path ({FONT}) /SubfontID 0 /CSI [({name}) 6] >> ;\n"
        for name in COLLECTIONS))
    fonts = folder / "fonts.conf"
    fonts.write_text(f"<fontconfig><dir>{FONT.parent}</dir><cachedir>{folder / 'cache'}</cachedir></fontconfig>\n")
    os.environ.update(GS_LIB=str(folder), FONTCONFIG_FILE=str(fonts))


def without_spaces(text):
    return "".join(text.split())


def pages_of_pdf(pdf, folder):
    target = folder / "pdf.txt"
    measure.check(["pdftotext", "-q", "-enc", "UTF-8", pdf, target])
    return [without_spaces(page) for page in target.read_text("utf-8").split("\f")[:-1]]


def run_ghostscript(device, target, postscript):
    options = ["-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", f"-sDEVICE={device}", "-o", target]
    said = measure.check(["gs", *options, postscript])
    if said:
        raise RuntimeError(f"Ghostscript says: {said[:2000]}")


def pages_by_txtwrite(postscript, folder):
    run_ghostscript("txtwrite", folder / "page-%02d.txt", postscript)
    return [without_spaces(page.read_text("utf-8")) for page in sorted(folder.glob("page-*.txt"))]


def pages_by_distilling(postscript, folder):
    run_ghostscript("pdfwrite", folder / "distilled.pdf", postscript)
    return pages_of_pdf(folder / "distilled.pdf", folder)


def are_codes_of(expected, found):
    """txtwrite takes two-byte codes for Unicode. What it makes of others is, byte by byte, the codes themselves."""
    for encoding in ENCODINGS:
        try:
            if found.encode("utf-16-be").decode(encoding) == expected:
                return True
        except UnicodeDecodeError:
            pass
    return False


def text_complaints(zorvan, pdf, folder):
    folder.mkdir(parents=True, exist_ok=True)
    for old in folder.iterdir():
        old.unlink()
    postscript = folder / "none.ps"
    convert_and_compare.convert(zorvan, "none", pdf, postscript)
    expected = pages_of_pdf(pdf, folder)
    codes, cids = pages_by_txtwrite(postscript, folder), pages_by_distilling(postscript, folder)
    if not all(expected) or not len(expected) == len(codes) == len(cids):
        yield f"{len(codes)} pages of codes and {len(cids)} of CIDs for {expected}"
    for at, (text, code, cid) in enumerate(zip(expected, codes, cids)):
        if not are_codes_of(text, code):
            yield f"page {at + 1} has the codes {code!r} for {text!r}"
        if cid != text:
            yield f"page {at + 1} has the CIDs of {cid!r} instead of {text!r}"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--zorvan", required=True)
    parser.add_argument("--folder", required=True, type=pathlib.Path)
    parser.add_argument("pdf")
    arguments = parser.parse_args()
    try:
        use_one_font(arguments.folder / "device")
        found = list(text_complaints(arguments.zorvan, arguments.pdf, arguments.folder / "text"))
    except RuntimeError as error:
        found = [str(error)]
    for text in found:
        print(f"{arguments.pdf}: {text}")
    looks_right = convert_and_compare.report(arguments.zorvan, arguments.pdf, arguments.folder / "pages")
    return 0 if looks_right and not found else 1


if __name__ == "__main__":
    sys.exit(main())
