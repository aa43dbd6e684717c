#!/usr/bin/env python3
# Checks who includes whom: a file includes only its own floor or lower ones, and no headers include in a ring.
"""check_floors.py [ROOT]     prints every include that breaks a rule and ends with 1 when there is one

The floors, lowest first: src/platform, src/pdf, src/ps, src/content, src/fonts and src/paint (beside each other),
src/api. Every floor may include the doors of api/ that include nothing of the house themselves. cli/ and filter/
include include/zorvan and their own folder.
"""
import pathlib
import re
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)
FLOORS = {"platform": 1, "pdf": 2, "ps": 3, "content": 4, "fonts": 5, "paint": 5, "api": 6}
DOORS = {"api/status.h", "api/error_record.h", "api/current_job.h", "api/error_table.inc"}
APART = ("cli", "filter")
KINDS = (".h", ".cpp", ".c", ".inc")


def files(root):
    for folder in ("src", *APART, "include"):
        yield from (path for path in sorted((root / folder).rglob("*")) if path.suffix in KINDS)


def resolve(root, path, name):
    """The file of the house that an include names, or None (what is made at build time has no file here)."""
    places = (path.parent, root / "src", root / "include", root)
    return next(((place / name).resolve() for place in places if (place / name).exists()), None)


def allowed(source, target):
    """Whether a file may include another; both as parts of their paths below the root."""
    if target[0] == "include" or source[:1] == target[:1] != ("src",):
        return True
    if source[0] != "src" or target[0] != "src":
        return False
    own, other = source[1], target[1]
    if "/".join(target[1:]) in DOORS:
        return True
    return own == other or FLOORS[other] < FLOORS[own]


def ring(graph):
    """One ring of includes as a list of files, or an empty list."""
    done, path = set(), []

    def visit(node):
        if node in path:
            return path[path.index(node) :] + [node]
        if node in done:
            return []
        path.append(node)
        found = next(filter(None, map(visit, graph.get(node, []))), [])
        path.pop()
        done.add(node)
        return found

    return next(filter(None, map(visit, graph)), [])


def main(root):
    graph, found = {}, []
    for path in files(root):
        source = path.relative_to(root)
        graph[source] = []
        for name in INCLUDE.findall(path.read_text("utf-8")):
            included = resolve(root, path, name)
            if included is None or not included.is_relative_to(root):
                continue
            target = included.relative_to(root)
            graph[source].append(target)
            if not allowed(source.parts, target.parts):
                found.append(f"{source} includes {target}, which stands higher or apart")
    circle = ring(graph)
    if circle:
        found.append("a ring of includes: " + " -> ".join(map(str, circle)))
    print("\n".join(found) or f"{len(graph)} files, each on its floor")
    return 1 if found else 0


if __name__ == "__main__":
    if "--help" in sys.argv:
        print(__doc__)
        sys.exit(0)
    here = pathlib.Path(__file__).resolve().parent.parent
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve() if len(sys.argv) > 1 else here))
