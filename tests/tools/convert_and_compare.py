# Converts one PDF and lays each page of the PostScript beside the PDF's own pictures: the visual test's core.
import pathlib

import measure
import page_compare
import page_pictures


POPPLER, GHOSTSCRIPT = "pdftoppm", "Ghostscript on the PDF"


def convert(zorvan, page_size, source, target):
    """Converts a good file: the program has nothing to say about it."""
    said = measure.check([zorvan, f"--page-size={page_size}", source, target])
    if said:
        raise RuntimeError(f"{zorvan} says: {said}")


def complaints(zorvan, pdf, folder, without):
    """Yields a sentence for everything that is wrong; pictures and PostScript stay in `folder`."""
    folder.mkdir(parents=True, exist_ok=True)
    for old in folder.iterdir():
        old.unlink()
    reference = folder / "reference.pdf"
    pages, dots = page_pictures.write_reference(pdf, reference)
    references = {
        POPPLER: (page_pictures.by_poppler(reference, folder, dots), page_compare.OTHER_ENGINE),
        GHOSTSCRIPT: (page_pictures.of_pdf(reference, folder, dots), page_compare.SAME_ENGINE),
    }
    references.pop(without, None)
    for page_size in ("none", "auto"):
        postscript = folder / f"{page_size}.ps"
        convert(zorvan, page_size, pdf, postscript)
        if page_size == "none":
            pictures = page_pictures.of_plain_postscript(postscript, pages, folder, dots)
        else:
            pictures = page_pictures.of_postscript([postscript], folder, page_size, dots)
        for name, (expected, tolerance) in references.items():
            yield from (f"--page-size={page_size}, against {name}: {text}"
                        for text in compare_pages(pictures, expected, tolerance))


def compare_pages(pictures, expected, tolerance):
    if len(pictures) != len(expected):
        yield f"{len(pictures)} pages instead of {len(expected)}"
    for at, (picture, other) in enumerate(zip(pictures, expected)):
        text = page_compare.differences(page_compare.load(picture), page_compare.load(other), tolerance)
        if text:
            yield f"page {at + 1}: {text}"


def report(zorvan, pdf, folder, without=None):
    """Prints what is wrong with one file, leaving out the engine `without`; returns whether all is well."""
    try:
        found = list(complaints(zorvan, pathlib.Path(pdf), folder, without))
    except RuntimeError as error:
        found = [str(error)]
    for text in found:
        print(f"{pdf}: {text} (see {folder})")
    return not found
