# Reads the objects of a template, before it becomes a file, as Python values.
import pathlib
import re
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tools"))
import expand_pdf  # noqa: E402  (found through the line above)

OBJECT = re.compile(r"\{\{object (\d+) \d+\}\}\n(.*?)\nendobj", re.DOTALL)
TOKEN = re.compile(r"<<|>>|\[|\]|/[^\s<>\[\]()/{}%]*|\d+ \d+ R|[-+.\d]+|true|false|null|<[0-9A-Fa-f\s]*>|\(.*?\)")


class Name(str):
    """A name without its slash; the text of a name object, #xx undone."""


class Reference(int):
    """The number of an object."""


def undo_escapes(text):
    return re.sub(r"#([0-9A-Fa-f]{2})", lambda match: chr(int(match[1], 16)), text)


def simple(token):
    if token[0].isdigit() and token.endswith("R"):
        return Reference(token.split()[0])
    if token[0] == "/":
        return Name(undo_escapes(token[1:]))
    if token[0] == "(":
        return token[1:-1].encode("latin-1")
    if token[0] == "<":
        return bytes.fromhex(token[1:-1])
    constants = {"true": True, "false": False, "null": None}
    return constants[token] if token in constants else float(token)


def read(tokens):
    token = tokens.pop(0)
    if token == "[":
        items = []
        while tokens[0] != "]":
            items.append(read(tokens))
        tokens.pop(0)
        return items
    if token == "<<":
        entries = {}
        while tokens[0] != ">>":
            key = read(tokens)
            entries[key] = read(tokens)
        tokens.pop(0)
        return entries
    return simple(token)


def parse(text):
    return read(TOKEN.findall(text))


def write(value):
    """A value as PDF text, references included."""
    if isinstance(value, Reference):
        return f"{int(value)} 0 R"
    if isinstance(value, Name):
        return "/" + re.sub(r"[^A-Za-z0-9]", lambda match: f"#{ord(match[0]):02x}", value)
    if isinstance(value, dict):
        return "<< " + " ".join(write(part) for pair in value.items() for part in pair) + " >>"
    if isinstance(value, list):
        return "[" + " ".join(map(write, value)) + "]"
    return expand_pdf.value_text(value)


class Objects:
    """The objects of a template's text; a stream is its dictionary with the decoded data under "data"."""

    def __init__(self, text):
        self.held = {int(number): self.value_of(body) for number, body in OBJECT.findall(text)}

    @staticmethod
    def value_of(body):
        stream = expand_pdf.STREAM.search(body)
        if stream is None:
            return parse(body)
        return {**parse(f"<<{stream[2] or ''}>>"), "data": stream[3].encode("latin-1")}

    def resolve(self, value):
        while isinstance(value, Reference):
            value = self.held[int(value)]
        return value

    def page(self, number):
        return self.resolve(Reference(number))


def pack(bits, *samples):
    """Samples of so many bits as the text of a stream."""
    joined = "".join(f"{sample:0{bits}b}" for sample in samples)
    joined += "0" * (-len(joined) % 8)
    return int(joined, 2).to_bytes(len(joined) // 8, "big").decode("latin-1")


def expand(path, **given):
    """The text of a template with `given` in the places of its names, and its objects."""
    names = {"pack": pack, "min": min, "max": max, "round": round, "range": range, **given}
    text = expand_pdf.Text(path.resolve().parent).expand(path.read_text("latin-1"), names)
    return text, Objects(text)


def write_file(text, target):
    file = expand_pdf.File()
    file.add(text)
    target.write_bytes(bytes(file.out))
