#!/usr/bin/env python3
"""Runs clang-tidy on sources, unless it has found nothing in the very same words before.

usage: scripts/tidy.py SOURCE...

The words are those of the source, of each header it takes, the system's too, of the rules, the compiler's command and
the tool's version. Their sum is kept in the user's cache where nothing was found; a sum not met for a month goes.
Reads build/tidy/compile_commands.json; called from the root of the tree.
"""
import hashlib
import json
import os
import pathlib
import shlex
import subprocess
import sys
import time

MONTH = 30 * 24 * 3600
root = pathlib.Path.cwd()


def commands():
    """The compiler's command and its directory, by source."""
    entries = json.loads((root / "build/tidy/compile_commands.json").read_text())
    return {pathlib.Path(entry["file"]): (shlex.split(entry["command"]), entry["directory"]) for entry in entries}


def headers(command, directory):
    """The source and all that it takes."""
    output = command.index("-o")
    rule = subprocess.run([*command[:output], *command[output + 2:], "-M"], cwd=directory, check=True,
                          stdout=subprocess.PIPE, text=True).stdout
    return [pathlib.Path(directory, word) for word in rule.replace("\\\n", " ").split()[1:]]


def sum_of(command, directory):
    """One sum of everything that the tool's answer hangs on, wherever the tree lies."""
    words = hashlib.sha256()
    words.update(subprocess.run(["clang-tidy", "--version"], check=True, stdout=subprocess.PIPE).stdout)
    words.update((root / ".clang-tidy").read_bytes())
    words.update(" ".join(command).replace(str(root), "").encode())
    for header in headers(command, directory):
        words.update(hashlib.sha256(header.read_bytes()).digest())
    return words.hexdigest()


def sweep(cache):
    for known in cache.iterdir():
        if known.stat().st_mtime < time.time() - MONTH:
            known.unlink(missing_ok=True)


def main():
    cache = pathlib.Path(os.environ.get("HOME", "build"), ".cache", "velda-tidy")
    cache.mkdir(parents=True, exist_ok=True)
    sweep(cache)
    known = commands()
    found = False
    for source in sys.argv[1:]:
        clean = cache / sum_of(*known[(root / source).resolve()])
        if not clean.exists():
            tidy = ["clang-tidy", "-p", "build/tidy", "--quiet", "--warnings-as-errors=*", source]
            if subprocess.run(tidy).returncode:
                found = True
                continue
        clean.touch()
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
