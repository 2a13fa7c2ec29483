#!/usr/bin/env python3
"""Holds the tree to its table of who may use whom: reads the own includes of every source and prints those
that no row allows. Status 1 if there are any.

    includes.py TREE
"""
import pathlib
import re
import sys

# A folder's own files, and what they may include: folders (whole, with their rooms) and single headers. The first
# row that fits a file counts.
GROUND = ["app", "text"]
JOURNAL = "records/protocol.h"  # a line of the journal may be written from everywhere but text
TABLE = [
    ("text", ["app/options.h", "app/relaxed.h", "text"]),
    ("app/run", ["app", "text", "link", "records", "procedures", "ui"]),
    ("app", ["app", "text", JOURNAL, "records/file_info.h"]),
    ("link", [*GROUND, "link", JOURNAL]),
    ("records", [*GROUND, "records"]),
    ("procedures", [*GROUND, "link", "records", "procedures", "ui/sound.h"]),
    ("ui", ["app", "text", "link", "records", "procedures", "ui"]),
    # Of the workstation only what needs no window, no clock and no settings.
    ("tools/books", ["app", "procedures/centre_words.h", "records/digits.h", "records/file_info.h",
                     "records/journal_types.h", "text/file_coding.h", "text/marks.h", "text/utils.h"]),
    ("tools/linesim", ["tools/linesim"]),
    ("tools/pictures", ["app", "ui", "records", "tools/pictures"]),
]
# The ground floor of app carries the house and knows nothing of the roof.
ROOF = "app/run"
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)


def lies_in(path, place):
    return path == place or path.startswith(place + "/")


def allows(folder, allowed, header):
    if lies_in(header, ROOF) and folder not in (ROOF, "ui"):
        return False
    return any(lies_in(header, place) for place in allowed)


def breaches(tree):
    for folder, allowed in TABLE:
        former = [row for row, _ in TABLE[: [row for row, _ in TABLE].index(folder)]]
        for source in sorted((tree / folder).rglob("*")):
            name = source.relative_to(tree).as_posix()
            if source.suffix not in (".cpp", ".h") or any(lies_in(name, other) for other in former):
                continue
            for header in INCLUDE.findall(source.read_text(encoding="utf-8")):
                if "/" in header and not allows(folder, allowed, header):
                    yield f"{name} includes {header}"


def main():
    found = list(breaches(pathlib.Path(sys.argv[1])))
    print("\n".join(found) if found else "every include is one that the table allows")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
