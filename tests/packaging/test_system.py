#!/usr/bin/env python3
"""What an installation for every user of a system holds: test_system.py BUILD SOURCE PLACE."""
import configparser
import os
import pathlib
import re
import shutil
import subprocess
import sys
import unittest

build, source, place = (pathlib.Path(argument) for argument in sys.argv[1:])
del sys.argv[1:]


def output(*command, **options):
    return subprocess.run(command, capture_output=True, text=True, check=True, **options).stdout


def parts():
    usage = subprocess.run([place / "bin/linesim"], capture_output=True, text=True)
    return re.findall(r"^  ([a-z]+) ", usage.stderr, re.M)


def options_of(part):
    return re.findall(r"^  (?:-\w, )?(--[\w-]+)", output(place / "bin/linesim", part, "--help"), re.M)


def version():
    return re.search(r"^## ([\d.]+)$", (source / "CHANGELOG.md").read_text(), re.M)[1]


class SystemTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        shutil.rmtree(place, ignore_errors=True)
        output("cmake", "--install", build, "--component", "system", "--prefix", place)

    def test_everything_stands_in_the_folders_of_a_system(self):
        found = {str(path.relative_to(place)) for path in place.rglob("*") if path.is_file()}
        sounds = {f"share/velda/sound/{name}.wav" for name in ["category", "input", "raketa"]}
        icons = {f"share/icons/hicolor/{size}x{size}/apps/velda.png" for size in [32, 48, 64, 128, 256]}
        manual = "docs/Velda. Руководство пользователя.pdf"
        self.assertEqual(found - {f"share/velda/{manual}"}, sounds | icons | {
            "bin/velda", "bin/velda-books", "bin/linesim", "lib/udev/rules.d/60-velda.rules", "share/applications/velda.desktop",
            "share/bash-completion/completions/linesim", "share/bash-completion/completions/velda-books",
            "share/doc/velda/examples/velda-autostart.desktop",
            "share/icons/hicolor/scalable/apps/velda.svg", "share/man/man1/linesim.1", "share/man/man1/velda.1",
            "share/man/man1/velda-books.1",
            "share/metainfo/local.velda.velda.metainfo.xml"})
        self.assertEqual(f"share/velda/{manual}" in found, (source / manual).exists())

    def test_menu_entries_are_valid(self):
        for name in ["applications/velda.desktop", "doc/velda/examples/velda-autostart.desktop"]:
            self.assertEqual(output("desktop-file-validate", place / "share" / name), "")
        entry = configparser.ConfigParser(interpolation=None)
        entry.read(place / "share/applications/velda.desktop")
        self.assertEqual(entry["Desktop Entry"]["Exec"], "velda")  # without a directory: the user's own

    def test_description_for_software_centres_is_valid(self):
        metainfo = place / "share/metainfo/local.velda.velda.metainfo.xml"
        output("appstreamcli", "validate", "--no-net", metainfo)
        self.assertIn(f'<release version="{version()}" date="{"-".join(version().split(".")[:3])}"/>',
                      metainfo.read_text())

    def test_icons_have_their_sizes(self):
        for path in (place / "share/icons/hicolor").rglob("*.png"):
            header = path.read_bytes()[:24]
            size = f"{int.from_bytes(header[16:20], 'big')}x{int.from_bytes(header[20:24], 'big')}"
            self.assertEqual(size, path.parts[-3])

    def test_manual_page_tells_every_option(self):
        page = (place / "share/man/man1/linesim.1").read_text().replace("\\-", "-")
        sections = dict(re.findall(r"^\.SS linesim (\w+)\n(.*?)(?=^\.S)", page, re.M | re.S))
        self.assertEqual(list(sections), parts())
        for part in parts():
            told = re.findall(r"^\\fB(?:-\w, )?(--[\w-]+)\\fP", sections[part], re.M)
            self.assertEqual(told, [name for name in options_of(part) if "help" not in name])
            self.assertGreater(len(told), 3)
        for command in ["flood", "announce-renumber", "call", "grant", "lose-echo", "jam", "fault"]:
            self.assertRegex(page, rf"(?m)^([a-z-]+, )*{command}(,|$)")

    def test_manual_pages_give_no_warning(self):
        for name in ["velda", "velda-books", "linesim"]:
            page = subprocess.run(["groff", "-man", "-K", "utf8", "-T", "utf8", "-ww", "-z",
                                   place / f"share/man/man1/{name}.1"], capture_output=True, text=True)
            self.assertEqual((page.returncode, page.stderr), (0, ""))

    def completed(self, *words):
        script = f"""source '{place}/share/bash-completion/completions/linesim'
            COMP_WORDS=(linesim "$@"); COMP_CWORD=$#; _linesim; printf '%s\\n' "${{COMPREPLY[@]}}" """
        path = f"{place}/bin:{os.environ['PATH']}"
        return output("bash", "-c", script, "-", *words, cwd=source, env={**os.environ, "PATH": path}).split()

    def test_parts_and_options_are_completed(self):
        self.assertEqual(self.completed(""), parts())
        self.assertIn("perforator", parts())
        self.assertEqual(self.completed("pe"), ["peer", "perforator"])
        self.assertEqual(self.completed("perforator", ""), options_of("perforator"))
        self.assertEqual(self.completed("peer", "--con"), ["--confirm", "--connect"])
        self.assertEqual(self.completed("adapter", "--port", "x", "sw"), ["switch"])
        self.assertEqual(self.completed("adapter", "switch", "--subscriber"), ["--subscribers", "--subscriber"])

    def test_values_are_completed_by_their_kind(self):
        self.assertEqual(self.completed("peer", "--scenario", "CHANGEL"), ["CHANGELOG.md"])
        self.assertEqual(self.completed("peer", "--store", "proced"), ["procedures"])
        self.assertEqual(self.completed("peer", "--store", "CHANGEL"), [])
        self.assertEqual(self.completed("peer", "--listen", ""), [])
        self.assertEqual(self.completed("peer", "--store", "centre", "--header"), [])  # a directory of that name

    def test_package_has_the_version_of_the_changes(self):
        newest = (source / "debian/changelog").read_text().splitlines()[0]
        self.assertTrue(newest.startswith(f"velda ({version()}) "), newest)


if __name__ == "__main__":
    unittest.main()
