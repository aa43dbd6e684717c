# Makes pictures of the pages of a PDF and of the PostScript that was written for it, all on one pixel grid.
import dataclasses
import json
import math
import pathlib
import subprocess

import measure

BOXES = ("/BleedBox", "/CropBox", "/MediaBox")  # in the order in which the first one decides what shows
INHERITED = BOXES + ("/Rotate",)
GHOSTSCRIPT = ["gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-dTextAlphaBits=4", "-dGraphicsAlphaBits=4"]


@dataclasses.dataclass
class Page:
    reference: str
    dictionary: dict
    box: tuple  # x0 y0 x1 y1 in points, as given
    rotation: int  # 0, 90, 180 or 270

    @property
    def visible(self):
        """Corner and size of what shows: the box, its sides exchanged on a turned page."""
        x0, y0, x1, y1 = self.box
        width, height = x1 - x0, y1 - y0
        return (x0, y0, height, width) if self.rotation % 180 else (x0, y0, width, height)


class Document:
    """A PDF as qpdf tells it."""

    def __init__(self, path):
        command = ["qpdf", "--json=2", "--json-key=qpdf", "--json-stream-data=none", str(path), "-"]
        result = subprocess.run(command, capture_output=True, timeout=120, check=False)
        if result.returncode not in (0, 3):
            raise RuntimeError(f"qpdf cannot read {path}: {result.stderr[:500]!r}")
        self.header, self.objects = json.loads(result.stdout.decode("utf-8", "surrogateescape"))["qpdf"]
        root = self.resolve(self.objects["trailer"]["value"]["/Root"])
        self.pages = list(self.walk(root.get("/Pages"), {}))

    def resolve(self, value):
        while isinstance(value, str) and "obj:" + value in self.objects:
            held = self.objects["obj:" + value]
            value = held["value"] if "value" in held else held["stream"]["dict"]
        return value

    def walk(self, reference, inherited):
        dictionary = self.resolve(reference)
        if not isinstance(dictionary, dict):
            return
        inherited = {**inherited, **{key: dictionary[key] for key in INHERITED if key in dictionary}}
        if dictionary.get("/Type") == "/Pages":
            for kid in self.resolve(dictionary.get("/Kids", [])):
                yield from self.walk(kid, inherited)
        else:
            box = next((self.resolve(inherited[key]) for key in BOXES if key in inherited), [0, 0, 0, 0])
            rotation = self.resolve(inherited.get("/Rotate", 0)) % 360
            yield Page(reference, dictionary, tuple(float(self.resolve(side)) for side in box), rotation)


def resolution(pages):
    """Dots per inch: 144, more for pages of stamp size, less for pages of poster size."""
    sides = [side for page in pages for side in page.visible[2:]]
    return 144 if 50 <= max(sides) <= 1000 else max(4, 144 * 300 // max(sides))


def whole_pixels(page, dots):
    """The page's box, widened on the visible right and top to whole pixels."""
    unit = 72 / dots
    x0, y0, x1, y1 = page.box
    right, top = (math.ceil(side / unit - 1e-6) * unit - side for side in page.visible[2:])
    left_bottom_right_top = {0: (0, 0, right, top), 90: (top, 0, 0, right), 180: (right, top, 0, 0),
                             270: (0, right, top, 0)}[page.rotation]
    left, bottom, right, top = left_bottom_right_top
    return [round(side, 6) for side in (x0 - left, y0 - bottom, x1 + right, y1 + top)]


def write_reference(source, target):
    """Copies a PDF, or a job ticket as a PDF, so that exactly the visible box of each page is its MediaBox."""
    data = pathlib.Path(source).read_bytes()
    target.write_bytes(b"%PDF-" + data[5:] if data.startswith(b"%JTF-") else data)
    document = Document(target)
    dots = resolution(document.pages)
    changed = {}
    for page in document.pages:
        entries = {key: value for key, value in page.dictionary.items() if key not in BOXES}
        box = whole_pixels(page, dots)
        changed["obj:" + page.reference] = {"value": {**entries, "/MediaBox": box, "/CropBox": box,
                                                      "/Rotate": page.rotation}}
    update = target.with_suffix(".json")
    update.write_text(json.dumps({"qpdf": [document.header, changed]}), "utf-8", "surrogateescape")
    copy = target.with_suffix(".copy.pdf")
    target.rename(copy)
    measure.check(["qpdf", f"--update-from-json={update}", copy, target], codes=(0, 3))
    return document.pages, dots


def by_poppler(pdf, folder, dots):
    measure.check(["pdftoppm", "-r", str(dots), pdf, folder / "poppler"])
    return sorted(folder.glob("poppler-*.ppm"))


def by_ghostscript(arguments, folder, name, dots):
    """Runs Ghostscript; returns the pages' pictures and what it complained of (with -q it says nothing else)."""
    output = f"-sOutputFile={folder / name}-%04d.ppm"
    said = measure.check([*GHOSTSCRIPT, f"-r{dots}", "-sDEVICE=ppmraw", output, *arguments])
    return sorted(folder.glob(name + "-*.ppm")), said.strip()


def of_pdf(path, folder, dots):
    """Ghostscript's pictures of a PDF; its complaints do not count, as it has some about blank pages."""
    return by_ghostscript([path], folder, "pdf", dots)[0]


def of_postscript(arguments, folder, name, dots):
    pictures, said = by_ghostscript(arguments, folder, name, dots)
    if said:
        raise RuntimeError(f"Ghostscript says: {said[:2000]}")
    return pictures


def of_plain_postscript(path, pages, folder, dots):
    """Pages that set no media: each visible box in turn is put on a sheet of its size by an Install procedure."""
    found = {}
    for box in {page.visible for page in pages}:
        x0, y0, width, height = box
        numbers = [at + 1 for at, page in enumerate(pages) if page.visible == box]
        install = folder / f"install-{numbers[0]}.ps"
        install.write_text(f"<< /Install {{ {-x0:f} {-y0:f} translate }} >> setpagedevice\n")
        size = "x".join(str(math.ceil(side * dots / 72 - 1e-6)) for side in (width, height))
        arguments = [f"-g{size}", "-dFIXEDMEDIA", "-sPageList=" + ",".join(map(str, numbers)), install, path]
        pictures = of_postscript(arguments, folder, f"plain-{numbers[0]}", dots)
        found.update(zip(numbers, pictures, strict=True))
    return [found[number] for number in sorted(found)]
