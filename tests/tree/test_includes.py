#!/usr/bin/env python3
"""Tests includes.py on small trees, each with one include that the table forbids or allows."""
import pathlib
import tempfile
import unittest

import includes


def told(files):
    """What is found in a tree of the given files and the headers that each includes."""
    with tempfile.TemporaryDirectory() as name:
        tree = pathlib.Path(name)
        for path, headers in files.items():
            (tree / path).parent.mkdir(parents=True, exist_ok=True)
            (tree / path).write_text("".join(f'#include "{header}"\n' for header in headers))
        return list(includes.breaches(tree))


class Includes(unittest.TestCase):
    def test_downward_is_allowed(self):
        self.assertEqual(told({"ui/roll/a.cpp": ["ui/b.h", "procedures/c.h", "link/d.h", "app/run/e.h"]}), [])
        self.assertEqual(told({"procedures/a.cpp": ["records/b.h", "link/b.h", "text/b.h", "app/b.h"]}), [])
        self.assertEqual(told({"app/run/a.cpp": ["ui/b.h", "procedures/c.h"]}), [])

    def test_upward_is_told(self):
        for source, header in [
            ("text/a.cpp", "app/state.h"),
            ("text/a.cpp", "records/protocol.h"),
            ("app/a.cpp", "link/b.h"),
            ("app/a.cpp", "app/run/b.h"),
            ("link/a.cpp", "procedures/b.h"),
            ("link/a.h", "records/send_model.h"),
            ("records/a.cpp", "link/b.h"),
            ("procedures/a.cpp", "ui/form_main.h"),
            ("procedures/a.cpp", "app/run/b.h"),
            ("ui/a.cpp", "tools/linesim/b.h"),
            ("tools/linesim/line/a.cpp", "text/mtk2.h"),
        ]:
            self.assertEqual(told({source: [header]}), [f"{source} includes {header}"])

    def test_single_headers_are_allowed(self):
        self.assertEqual(told({"procedures/a.cpp": ["ui/sound.h"], "link/a.cpp": ["records/protocol.h"]}), [])
        self.assertEqual(told({"text/a.cpp": ["app/options.h"], "app/state.h": ["records/file_info.h"]}), [])

    def test_name_that_only_begins_like_a_folder_is_none(self):
        self.assertEqual(told({"text/a.cpp": ["textual/b.h"]}), ["text/a.cpp includes textual/b.h"])

    def test_system_headers_and_neighbours_do_not_count(self):
        with tempfile.TemporaryDirectory() as name:
            (pathlib.Path(name) / "text").mkdir()
            (pathlib.Path(name) / "text/a.cpp").write_text('#include <ui/b.h>\n#include "a.moc"\n')
            self.assertEqual(list(includes.breaches(pathlib.Path(name))), [])


if __name__ == "__main__":
    unittest.main()
