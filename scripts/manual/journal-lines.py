#!/usr/bin/env python3
"""Makes the manual's table of all lines that the journal can have, from the sources of the program and the
meanings in docs/manual/journal-lines.txt.

    journal-lines.py --table OUT.adoc [--tree TREE]   writes the table
    journal-lines.py --check [--tree TREE]            only compares; TREE is another copy of the tree
    journal-lines.py --list [--tree TREE]             prints the lines found, with their places

Status 1, with one message for each fault, if a line of the sources has no meaning, a meaning has no line, or
a source writes to the journal in a way that is not understood here.

Why no line escapes:

1. A line enters the journal through three members of CProtocol alone, add(), addServiceString() and
   addCacheServiceString(), and the program has one CProtocol, "Log". Every mention of "Log" and of the two
   longer names is looked at: it is one of the harmless forms of ALLOWED, or a call that is taken apart, or a
   fault. add() is for text of the line, which is no event: its second argument has to say so. A file that
   names the class itself and so might reach the journal by another way must be in HOLDERS.
2. The text of each call is taken apart by text_of(), which knows literals, "+", "?:", arg(), asprintf(),
   local and file constants, and functions that return a text. What varies at run time must be named in VALUES;
   anything else is a fault.
3. Where the text, or a part of it, is a parameter of the function around the call, that function writes
   journal lines itself: all its calls are found and taken apart in the same way, and so on. It may be called
   only: its name without a call, which might hand it to somebody else, is a fault.
4. Two lists carry texts from other threads (RELAYS). What fills them counts as a call that writes; that
   nothing else does is looked at, too.
"""
import argparse
import pathlib
import re
import sys

sys.dont_write_bytecode = True
from journal_reader import Reader  # noqa: E402

MEANINGS = "docs/manual/journal-lines.txt"


class Meanings:
    """Sections "== Название", in them a line of the journal from the first column on, then indented what it
    means and, behind "->", what is to be done. "=== " begins the section of the beginnings of a link's texts."""

    def __init__(self, path):
        self.sections = []
        self.faults = []
        self.entries = {}
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            self.take(line.rstrip(), f"{path.name}:{number}")
        for text, entry in self.entries.items():
            if not entry["means"] or not entry["do"]:
                self.faults.append(f"{path.name}: no meaning or nothing to do: {text}")

    def take(self, line, place):
        if line.startswith("#") or not line:
            return
        if line.startswith("== "):
            self.sections.append((line[3:], []))
        elif line[0] != " ":
            text = "" if line == "(пустая строка)" else line
            if text in self.entries or not self.sections:
                self.faults.append(f"{place}: twice, or outside of a section: {line}")
                return
            self.entries[text] = {"means": "", "do": "", "last": "means"}
            self.sections[-1][1].append(text)
        else:
            entry = self.entries[self.sections[-1][1][-1]]
            text = line.strip()
            if text.startswith("->"):
                entry["last"], text = "do", text[2:].strip()
            entry[entry["last"]] = (entry[entry["last"]] + " " + text).strip()


def compare(reader, meanings):
    faults = reader.faults + meanings.faults
    found = {**reader.lines, **reader.prefixes}
    for text, places in found.items():
        if text not in meanings.entries:
            faults.append(f"{places[0]}: no meaning for: {text or '(пустая строка)'}")
    for text in meanings.entries:
        if text not in found:
            faults.append(f"{MEANINGS}: no such line in the sources: {text}")
    return faults


def shown(text):
    """A line of the journal in AsciiDoc: what varies in italics, nothing of it taken for markup."""
    if not text:
        return "_(только время)_"
    cell = ""
    for part in re.split(r"(<[^<>]*>)", text):
        if re.fullmatch(r"<[^<>]*>", part):
            cell += "__‹" + part[1:-1] + "›__"
        elif part:
            cell += "+++" + part.replace("&", "&amp;").replace("|", "&#124;").replace("<", "&lt;") + "+++"
    return cell


def table(meanings):
    out = ["// Made by scripts/manual/journal-lines.py"]
    for title, texts in meanings.sections:
        out += ["", f"=== {title}", "", '[cols="32,38,30",options="header"]', "|===",
                "|Строка журнала |Что означает |Что делать"]
        for text in texts:
            entry = meanings.entries[text]
            out += ["", f"|{shown(text)}", f"|{entry['means']}", f"|{entry['do']}"]
        out.append("|===")
    return "\n".join(out) + "\n"


def main():
    arguments = argparse.ArgumentParser(description=__doc__.partition("\n")[0])
    arguments.add_argument("--tree", type=pathlib.Path, default=pathlib.Path(__file__).resolve().parents[2])
    what = arguments.add_mutually_exclusive_group(required=True)
    what.add_argument("--table", type=pathlib.Path, metavar="OUT.adoc")
    what.add_argument("--check", action="store_true")
    what.add_argument("--list", action="store_true")
    given = arguments.parse_args()
    reader = Reader(given.tree.resolve()).read()
    if given.list:
        for text, places in [*reader.prefixes.items(), *reader.lines.items()]:
            print(text, "  [" + ", ".join(places) + "]")
        print(*reader.faults, sep="\n", file=sys.stderr)
        return 1 if reader.faults else 0
    meanings = Meanings(given.tree / MEANINGS)
    faults = compare(reader, meanings)
    print(*faults, sep="\n", end="\n" if faults else "", file=sys.stderr)
    if faults:
        return 1
    if given.table:
        given.table.parent.mkdir(parents=True, exist_ok=True)
        given.table.write_text(table(meanings), encoding="utf-8")
    print(f"{len(reader.lines)} lines of the journal, {len(reader.prefixes)} beginnings of a link's texts")
    return 0


if __name__ == "__main__":
    sys.exit(main())
