#!/usr/bin/env python3
"""Each picture of the manual is in the list of pictures, is shown in a chapter and is taken by a scene.

    test_pictures.py TREE
"""
import pathlib
import re
import sys
import unittest

TREE = pathlib.Path(sys.argv.pop(1)).resolve()


def listed():
    lines = (TREE / "docs/manual/pictures.txt").read_text(encoding="utf-8").splitlines()
    return [line.split("|")[0] for line in lines if line and not line.startswith("#")]


def shown():
    chapters = (TREE / "docs/manual").glob("*.adoc")
    return {name for chapter in chapters for name in re.findall(r"image::?([\w-]+)\.png\[", chapter.read_text(encoding="utf-8"))}


def taken():
    scenes = (TREE / "tools/pictures").glob("*.cpp")
    return {name for scene in scenes for name in re.findall(r'"([\w-]+)"', scene.read_text(encoding="utf-8"))}


class Pictures(unittest.TestCase):
    def test_no_name_is_listed_twice(self):
        self.assertEqual(sorted(set(listed())), sorted(listed()))

    def test_listed_pictures_are_those_of_the_chapters(self):
        self.assertEqual(sorted(listed()), sorted(shown()))

    def test_listed_pictures_are_taken(self):
        self.assertEqual(sorted(set(listed()) - taken()), [])


if __name__ == "__main__":
    unittest.main()
