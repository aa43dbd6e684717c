# Lays the words of a PDF beside those of the PostScript that was written for it.
"""The words are those of pdftotext and of Ghostscript's txtwrite device, in Unicode's form NFKC, which takes ligatures
apart. Two programs that put text together from single glyphs differ in the order of columns and lines, so words are
compared as a multiset: the share that both have, of the larger one. Where a word ends the programs guess from the gaps
between glyphs, so a PDF is only fit for this comparison when they agree about the PDF itself.
"""
import collections
import pathlib
import unicodedata

import convert_and_compare
import measure

LEAST_SHARE = 0.99
SECONDS = 240


def words(path):
    text = unicodedata.normalize("NFKC", path.read_text("utf-8", "replace"))
    return collections.Counter(text.split())


def words_of_pdf(pdf, folder):
    target = folder / "pdf.txt"
    measure.check(["pdftotext", "-q", "-enc", "UTF-8", pdf, target], SECONDS)
    return words(target)


def words_by_ghostscript(source, folder):
    """The words of a PDF or of PostScript, with what Ghostscript has to say."""
    target = folder / (source.suffix[1:] + ".gs.txt")
    said = measure.check(["gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=txtwrite", "-o", target, source],
                         SECONDS)
    return words(target), said


def share(one, other):
    return (one & other).total() / max(one.total(), other.total(), 1)


def is_fit(pdf, folder):
    """Do the programs find the same words in the PDF, and any at all?"""
    folder.mkdir(parents=True, exist_ok=True)
    expected = words_of_pdf(pdf, folder)
    return bool(expected) and share(expected, words_by_ghostscript(pdf, folder)[0]) >= LEAST_SHARE


def complaint(zorvan, pdf, folder):
    """What is wrong about the text of one file; an empty text when nothing is."""
    folder.mkdir(parents=True, exist_ok=True)
    postscript = folder / "none.ps"
    convert_and_compare.convert(zorvan, "none", pdf, postscript)
    expected = words_of_pdf(pdf, folder)
    found, said = words_by_ghostscript(postscript, folder)
    agreeing = share(expected, found)
    if said or agreeing >= LEAST_SHARE:
        return said and f"Ghostscript says: {said[:2000]}"
    missing, added = (list((a - b).elements())[:10] for a, b in ((expected, found), (found, expected)))
    return f"{agreeing:.2%} of {expected.total()} words agree; missing {missing}, additional {added}"


def report(zorvan, pdf, folder):
    """Prints what is wrong with one file; returns whether all is well."""
    try:
        text = complaint(zorvan, pathlib.Path(pdf), folder)
    except RuntimeError as error:
        text = str(error)
    if text:
        print(f"{pdf}: {text} (see {folder})", flush=True)
    return not text
