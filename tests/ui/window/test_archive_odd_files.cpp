#include "tests/support/no_ordinary_file.h"
#include "tests/support/possible_name.h"
#include "tests/ui/window/archive_room.h"

namespace
{
/// A file of \a size bytes that takes no room on the disk.
void putLarge(const ArchiveRoom &room, const QString &name, qint64 size)
{
    room.put(name, "А");
    QVERIFY(QFile::resize(room.pathOf(name), size));
}
} // namespace

/// Files that are no usual telegrams, as other programs may leave them in a day's directory.
class TestArchiveOddFiles : public QObject
{
    Q_OBJECT

private slots:
    void contentIsShownUpToItsFirstZero_data();
    void contentIsShownUpToItsFirstZero();
    void hugeFileIsListedButNotShown_data() { everyTab(); }
    void hugeFileIsListedButNotShown();
    void oddNameIsListedAndOpened_data();
    void oddNameIsListedAndOpened();
    void directoriesAndFifosAreLeftOut_data() { specialFiles(); }
    void directoriesAndFifosAreLeftOut();
    void fileThatBecomesNoFileIsNotOpened_data() { specialFiles(); }
    void fileThatBecomesNoFileIsNotOpened();
    void hiddenFilesAreLeftOut();
};

void TestArchiveOddFiles::contentIsShownUpToItsFirstZero_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("shown");
    row("empty", QByteArray(), "");
    row("a zero byte first", QByteArray("\0ABC", 4), "");
    row("a zero byte within", QByteArray("AB\0CD", 5), "AB");
    row("binary", QByteArray("\x01\x80\xFF", 3), QString("\x01\uFFFD\uFFFD"));
    row("one long line", QByteArray(300000, 'A'), QString(300000, 'A'));
}

void TestArchiveOddFiles::contentIsShownUpToItsFirstZero()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, shown);
    for (const auto kind : {CArchivePage::Received, CArchivePage::Sent, CArchivePage::Found}) {
        const ArchiveRoom room(kind);
        room.put("a", content);
        room.refresh();
        room.click("a");
        QCOMPARE(room.selected(), "a");
        QCOMPARE(room.text(), shown);
    }
}

void TestArchiveOddFiles::hugeFileIsListedButNotShown()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    putLarge(room, "a", 50 << 20);
    room.put("b", QByteArray(50 << 20, 'A'));
    room.refresh();
    QCOMPARE(room.rows(), (QStringList{"a", "b"}));
    room.click("b");
    QCOMPARE(room.text(), QString());
    QCOMPARE(room.page.text->placeholderText(), "Файл слишком велик, текст не показан");
    QVERIFY(!room.page.toEditor->isEnabled()); // no command acts on a part of it
    QVERIFY(!room.page.print->isEnabled());
}

void TestArchiveOddFiles::oddNameIsListedAndOpened_data()
{
    QTest::addColumn<QString>("name");
    row("blanks", possibleName("  two  words "));
    row("quotes", possibleName("\"it's\""));
    row("line feed", possibleName("one\ntwo"));
    row("Cyrillic", "Телеграмма №1");
    row("200 characters", QString(200, 'n'));
    row("shell and glob", possibleName("$(x)*?[a]"));
    row("markup", possibleName("<b>bold &amp;"));
    row("percent", "%1%n");
    row("latin s", "s");
}

void TestArchiveOddFiles::oddNameIsListedAndOpened()
{
    QFETCH(QString, name);
    for (const auto kind : {CArchivePage::Received, CArchivePage::Sent, CArchivePage::Found}) {
        const ArchiveRoom room(kind);
        room.put("0", "НУЛЬ");
        room.put(name, "ТЕКСТ");
        room.refresh();
        QCOMPARE(room.rows().size(), 2);
        room.click(name);
        QCOMPARE(room.text(), "ТЕКСТ");
        QCOMPARE(room.selected(), name);
    }
}

void TestArchiveOddFiles::directoriesAndFifosAreLeftOut()
{
    QFETCH(SpecialFile, kind);
    for (const auto tab : {CArchivePage::Received, CArchivePage::Sent, CArchivePage::Found}) {
        const ArchiveRoom room(tab);
        place(room.desk, kind, room.place("20260731u1a.001"));
        room.putAndShow({"a"});
        if (kind == SpecialFile::Directory || kind == SpecialFile::Fifo)
            QCOMPARE(room.rows(), QStringList{"a"});
        else // a link stands for whatever it leads to; it is not read, see below
            QCOMPARE(room.rows(), (QStringList{"20260731u1a.001", "a"}));
    }
}

void TestArchiveOddFiles::fileThatBecomesNoFileIsNotOpened()
{
    QFETCH(SpecialFile, kind);
    for (const auto tab : {CArchivePage::Received, CArchivePage::Sent, CArchivePage::Found}) {
        const ArchiveRoom room(tab);
        room.putAndShow({"a", "b"});
        QVERIFY(QFile::remove(room.pathOf("a")));
        place(room.desk, kind, room.place("a"));
        room.click("a"); // before the next scan
        QCOMPARE(room.text(), QString());
        QCOMPARE(room.page.text->placeholderText(), "Невозможно прочитать файл");
        QVERIFY(stands(room.desk, kind, room.place("a")));
    }
}

void TestArchiveOddFiles::hiddenFilesAreLeftOut()
{
    // Among them the marks of new files, where the file system cannot hold them.
    const ArchiveRoom room(CArchivePage::Received);
    room.putAndShow({".a.new", "a"});
    QCOMPARE(room.rows(), QStringList{"a"});
}

QTEST_MAIN(TestArchiveOddFiles)
#include "test_archive_odd_files.moc"
