#!/usr/bin/env python3
"""The table of journal lines finds each way in which a source writes to the journal, and holds it against the
meanings.

    test_journal_table.py TREE
"""
import importlib.machinery
import pathlib
import shutil
import subprocess
import sys
import tempfile
import types
import unittest

TREE = pathlib.Path(sys.argv.pop(1)).resolve()
PROGRAM = TREE / "scripts" / "manual" / "journal-lines.py"
ROW = "{}\n  Значит.\n  -> Делать.\n"
HEAD = '#include "records/protocol.h"\n\n'


sys.path.insert(0, str(PROGRAM.parent))
LOADER = importlib.machinery.SourceFileLoader("journal_lines", str(PROGRAM))
journal_lines = types.ModuleType(LOADER.name)
LOADER.exec_module(journal_lines)
import journal_reader  # noqa: E402


def run(tree, *arguments):
    return subprocess.run([sys.executable, "-B", str(PROGRAM), *arguments, "--tree", str(tree)],
                          capture_output=True, encoding="utf-8", check=False)


def faults_of(tree):
    reader = journal_lines.Reader(tree).read()
    return journal_lines.compare(reader, journal_lines.Meanings(tree / journal_lines.MEANINGS))


class JournalTable(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.tree = pathlib.Path(folder.name)

    def write(self, name, text):
        path = self.tree / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")

    def check(self, source, *lines, name="app/a.cpp"):
        self.write(name, HEAD + source)
        self.write("docs/manual/journal-lines.txt", "== Раздел\n" + "".join(ROW.format(line) for line in lines))
        return faults_of(self.tree)

    def passes(self, source, *lines, **more):
        self.assertEqual(self.check(source, *lines, **more), [])

    def fails(self, message, source, *lines, **more):
        self.assertIn(message, "\n".join(self.check(source, *lines, **more)))

    def test_line_with_its_meaning_passes(self):
        self.passes('void f()\n{\n    Log.addCacheServiceString(QStringLiteral("Выход"), ProtocolInfo, false);\n}\n',
                    "Выход")

    def test_line_without_meaning_fails(self):
        self.fails("app/a.cpp:5: no meaning for: Новая",
                   'void f()\n{\n    Log.addServiceString(QStringLiteral("Новая"), ProtocolInfo);\n}\n')

    def test_meaning_without_line_fails(self):
        self.fails("no such line in the sources: Старая", "void f()\n{\n}\n", "Старая")

    def test_meaning_without_what_to_do_fails(self):
        self.check("void f()\n{\n}\n")
        self.write("docs/manual/journal-lines.txt", "== Раздел\nСтрока\n  Значит.\n")
        self.assertIn("no meaning or nothing to do: Строка", "".join(faults_of(self.tree)))

    def test_value_without_a_name_fails(self):
        self.fails("not understood: ownName()", 'void f()\n{\n    Log.addCacheServiceString(QStringLiteral("Имя ") + '
                   "ownName(), ProtocolInfo, true);\n}\n")

    def test_parts_and_choices_are_put_together(self):
        self.passes('void f(bool on)\n{\n    const QString what = on ? QStringLiteral("Пуск") : QStringLiteral("Стоп");\n'
                    '    Log.addCacheServiceString(what + QStringLiteral(", файл %1").arg(shownName(on)), ProtocolInfo,\n'
                    "                              true);\n}\n", "Пуск, файл <файл>", "Стоп, файл <файл>")

    def test_function_that_hands_its_text_on_is_followed(self):
        source = ("namespace\n{\nvoid note(const QString &text)\n{\n    Log.addCacheServiceString(text, ProtocolInfo, true);\n}\n"
                  "} // namespace\n\nvoid g()\n{\n    note(TEXT);\n}\n")
        self.passes(source.replace("TEXT", 'QStringLiteral("Раз")'), "Раз")
        self.fails("no meaning for: Два", source.replace("TEXT", 'QStringLiteral("Два")'), "Раз")
        self.fails("not understood: other", source.replace("TEXT", "other"))

    def test_function_that_is_handed_on_fails(self):
        self.fails("note() is handed on",
                   "namespace\n{\nvoid note(const QString &text)\n{\n    Log.addCacheServiceString(text, ProtocolInfo, true);\n}\n"
                   "} // namespace\n\nvoid g()\n{\n    forEach(&note);\n}\n")

    def test_function_of_another_source_is_followed(self):
        self.write("app/b.cpp", 'void g()\n{\n    noteAll(QStringLiteral("Три"));\n}\n')
        self.passes("void noteAll(const QString &text)\n{\n    Log.addCacheServiceString(text, ProtocolInfo, true);\n}\n",
                    "Три")

    def test_changed_parameter_fails(self):
        self.fails("the parameter text is changed", "void note(QString text)\n{\n    text += QStringLiteral(\"!\");\n"
                   "    Log.addCacheServiceString(text, ProtocolInfo, true);\n}\n")

    def test_unknown_uses_of_the_journal_fail(self):
        self.fails("unknown use of the journal", "void f()\n{\n    CProtocol *log = &Log;\n}\n")
        self.fails("the journal's class in an unknown place", "void f(CProtocol &log)\n{\n    log.add(x, y);\n}\n")
        self.fails("the journal is reached by an unknown way",
                   'void f(T &log)\n{\n    log.addServiceString(QStringLiteral("x"), ProtocolInfo);\n}\n')
        self.fails("unknown use of the journal", "void f()\n{\n    Log.lines.append(text);\n}\n")
        self.fails("unknown use of the journal", "void f()\n{\n    Log.add(text, ProtocolError);\n}\n")

    def test_comment_and_string_are_no_calls(self):
        self.passes('// Log.addServiceString("a", ProtocolInfo)\nvoid f()\n{\n    g("Log.addServiceString");\n}\n')

    def test_new_line_in_the_program_itself_fails(self):
        for folder in [*journal_reader.FOLDERS, "docs/manual"]:
            shutil.copytree(TREE / folder, self.tree / folder,
                            ignore=lambda _, names: [n for n in names if n.endswith((".wav", ".png", ".svg", ".adoc"))])
        source = self.tree / "procedures" / "telegram_files.cpp"
        source.write_text(source.read_text(encoding="utf-8").replace("Печать файла", "Печать листа"), encoding="utf-8")
        self.assertEqual([fault.split(": ", 1)[1] for fault in faults_of(self.tree)],
                         ["no meaning for: Печать листа", "no such line in the sources: Печать файла"])

    def test_fault_is_told_by_the_status(self):
        self.check('void f()\n{\n    Log.addServiceString(QStringLiteral("Новая"), ProtocolInfo);\n}\n')
        done = run(self.tree, "--check")
        self.assertEqual((done.returncode, done.stderr), (1, "app/a.cpp:5: no meaning for: Новая\n"))

    def test_table_shows_each_line_with_its_meaning(self):
        self.check('void f()\n{\n    Log.addCacheServiceString(QStringLiteral("А|Б ") + shownName(x), ProtocolInfo, true);\n}\n',
                   "А|Б <файл>")
        done = run(self.tree, "--table", str(self.tree / "out" / "table.adoc"))
        self.assertEqual(done.returncode, 0, done.stderr)
        table = (self.tree / "out" / "table.adoc").read_text(encoding="utf-8")
        self.assertIn("=== Раздел\n", table)
        self.assertIn("|+++А&#124;Б +++__‹файл›__\n|Значит.\n|Делать.\n", table)


if __name__ == "__main__":
    unittest.main()
