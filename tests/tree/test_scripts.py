#!/usr/bin/env python3
"""Runs test.sh and scripts/check-style.sh in small trees, where what they call only tells how it was called."""
import atexit
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

root = pathlib.Path(sys.argv.pop())


class Tree:
    """A tree with one script of this one."""

    def __init__(self, script):
        self.path = pathlib.Path(tempfile.mkdtemp())
        atexit.register(shutil.rmtree, self.path)
        self.script = self.path / script
        for name in [script, "scripts/clean-environment.sh"]:
            (self.path / name).parent.mkdir(exist_ok=True)
            shutil.copy(root / name, self.path / name)
        self.write("scripts/install-deps.sh", "#!/bin/sh\necho installed\n")
        self.write("scripts/build-environment.sh", 'build() { echo "built $*"; }\n')
        for program in ["ctest", "clang-format", "clang-tidy"]:
            self.write(f"programs/{program}", f'#!/bin/sh\necho {program} "$@"\n')

    def write(self, name, text):
        (self.path / name).parent.mkdir(parents=True, exist_ok=True)
        (self.path / name).write_text(text)
        (self.path / name).chmod(0o755)

    def run(self, *arguments):
        path = f"{self.path}/programs:{os.environ['PATH']}"
        return subprocess.run([self.script, *arguments], env={"PATH": path, "HOME": str(self.path)},
                              capture_output=True, text=True)

    def git(self, *arguments, date=None):
        who = {"GIT_AUTHOR_NAME": "a", "GIT_AUTHOR_EMAIL": "a", "GIT_COMMITTER_NAME": "a", "GIT_COMMITTER_EMAIL": "a",
               "GIT_CONFIG_GLOBAL": os.devnull, "PATH": os.environ["PATH"]}
        if date:
            who.update(GIT_AUTHOR_DATE=date, GIT_COMMITTER_DATE=date)
        subprocess.run(["git", *arguments], cwd=self.path, env=who, check=True, capture_output=True)

    def commit(self, date):
        self.git("add", "-A")
        self.git("commit", "-m", "change", date=date)


class Options(unittest.TestCase):
    def test_help_names_every_option_and_does_nothing(self):
        result = Tree("test.sh").run("--help")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        known = re.findall(r"^    (--\w+)", (root / "test.sh").read_text(), re.M)
        self.assertEqual(re.findall(r"^  (--\w+)", result.stdout, re.M), known)
        self.assertEqual(known, ["--asan", "--tsan", "--day", "--kill", "--cuts", "--fuzz", "--bench", "--package", "--windows", "--help"])
        self.assertNotIn("installed", result.stdout)

    def test_unknown_option_is_refused_with_the_help(self):
        result = Tree("test.sh").run("--tsam")
        self.assertEqual((result.returncode, result.stdout), (2, ""))
        self.assertTrue(result.stderr.startswith("test.sh: unknown option --tsam\nusage: ./test.sh"), result.stderr)

    def test_the_rest_goes_to_ctest(self):
        for arguments, preset, rest in [
            (["-R", "direct"], "debug", '-R direct'),
            (["--asan", "-R", "a b", "--repeat", "until-fail:3"], "asan", "-R a b --repeat until-fail:3"),
            (["--day", "--stop-on-failure"], "debug", "-L day --stop-on-failure"),
        ]:
            lines = Tree("test.sh").run(*arguments).stdout.splitlines()
            self.assertEqual(lines[:2], ["installed", f"built {preset}"])
            self.assertTrue(lines[2].startswith(f"ctest --test-dir build/{preset} "), lines[2])
            self.assertTrue(lines[2].endswith(rest), lines[2])


    def test_package_is_built_and_tried_in_a_clean_root(self):
        tree = Tree("test.sh")
        tree.write("scripts/package-deb.sh",
                   "#!/bin/sh\nmkdir -p build/package; touch build/package/velda_1_amd64.deb "
                   "build/package/velda-dbgsym_1_amd64.deb build/package/velda_1.dsc; echo packed\n")
        tree.write("tests/packaging/clean_root.sh", '#!/bin/sh\necho tried "$@"\n')
        result = tree.run("--package")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertEqual(result.stdout.splitlines(), ["packed", "tried build/package/velda_1_amd64.deb"])
        tree.write("scripts/package-deb.sh", "#!/bin/sh\nexit 1\n")
        result = tree.run("--package")
        self.assertEqual((result.returncode, result.stdout), (1, ""))


class Style(unittest.TestCase):
    def tree(self):
        tree = Tree("scripts/check-style.sh")
        path = tree.path.resolve()
        tree.write("build/tidy/compile_commands.json", json.dumps([
            {"directory": f"{path}/build/tidy", "command": f"c++ -I{path} -o x.o -c {path}/{name}", "file": f"{path}/{name}"}
            for name in ["app/old.cpp", "app/new.cpp", "ui/edited.cpp"]], indent=0))
        tree.write("programs/cmake", "#!/bin/sh\n")
        tree.write(".clang-tidy", "Checks: '*'\n")
        tree.write(".gitignore", "/build/\n/programs/\n/.cache/\n")
        shutil.copy(root / "scripts/tidy.py", tree.path / "scripts")
        tree.git("init", "-b", "main")
        return tree

    def test_checks_what_six_hours_have_changed(self):
        tree = self.tree()
        for name in ["app/old.cpp", "ui/edited.cpp"]:
            tree.write(name, "")
        tree.commit("2026-07-31T05:00:00Z")
        for name in ["app/new.cpp", "app/new_win.cpp", "tests/new.cpp"]:
            tree.write(name, "")
        tree.commit("2026-07-31T07:00:00Z")
        tree.git("commit", "--allow-empty", "-m", "last", date="2026-07-31T12:00:00Z")
        tree.write("ui/edited.cpp", "int edited;\n")

        result = tree.run()
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertCountEqual(re.findall(r"^clang-tidy .* (\S+)$", result.stdout, re.M), ["app/new.cpp", "ui/edited.cpp"])
        formatted = re.findall(r"^clang-format .*$", result.stdout, re.M)
        self.assertEqual(formatted, ["clang-format --dry-run -Werror app/new.cpp app/new_win.cpp app/old.cpp "
                                     "tests/new.cpp ui/edited.cpp"])

    def test_reaches_back_to_where_the_branch_began(self):
        tree = self.tree()
        tree.commit("2026-07-28T12:00:00Z")
        tree.git("update-ref", "refs/remotes/origin/main", "HEAD")
        tree.write("app/old.cpp", "")
        tree.commit("2026-07-29T12:00:00Z")
        tree.git("commit", "--allow-empty", "-m", "last", date="2026-07-31T12:00:00Z")
        self.assertRegex(tree.run().stdout, r"(?m)^clang-tidy .* app/old\.cpp$")

    def test_each_finding_fails(self):
        for program in ["clang-format", "clang-tidy"]:
            tree = self.tree()
            tree.write("app/new.cpp", "")
            tree.commit("2026-07-30T12:00:00Z")
            tree.write("app/new.cpp", "int edited;\n")
            self.assertEqual(tree.run().returncode, 0)
            tree.write(f"programs/{program}", "#!/bin/sh\n[ $1 = --version ] || { echo found; exit 1; }\n")
            tree.write("app/new.cpp", "int again;\n")
            for _ in range(2):
                result = tree.run()
                self.assertNotEqual(result.returncode, 0)
                self.assertIn("found", result.stdout)

    def test_looks_again_only_where_words_have_changed(self):
        tree = self.tree()
        looked = "#!/bin/sh\n[ $1 = --version ] && cat version || echo looked\n"
        for name, text in [("app/new.cpp", '#include "app/new.h"\n'), ("app/new.h", ""), ("version", "14\n"),
                           ("programs/clang-tidy", looked)]:
            tree.write(name, text)
        tree.commit("2026-07-30T12:00:00Z")
        tree.write("app/new.cpp", '#include "app/new.h"\nint edited;\n')
        looks = lambda: tree.run().stdout.count("looked")
        self.assertEqual((looks(), looks()), (1, 0))
        for name, text in [("app/new.h", "int other;\n"), (".clang-tidy", "Checks: 'a'\n"), ("version", "15\n")]:
            tree.write(name, text)
            self.assertEqual((name, looks(), looks()), (name, 1, 0))


if __name__ == "__main__":
    unittest.main()
