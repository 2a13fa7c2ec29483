#include "tests/support/full_disk.h"
#include "tests/support/no_ordinary_file.h"
#include "tests/support/read_only.h"
#include "tests/ui/window/editor_room.h"

#include <QDir>

/// Texts that the editor reads from files and writes into them, without the template store.
class TestEditorFiles : public QObject
{
    Q_OBJECT

private slots:
    void dialogsAreAskedForTheirFiles();
    void fileIsReadInItsCoding_data();
    void fileIsReadInItsCoding();
    void placeOfAFileIsRemembered();
    void placeOfTheSettingsComesFirst_data();
    void placeOfTheSettingsComesFirst();
    void nothingChosenChangesNothing();
    void unreadableFileLeavesTheText_data();
    void unreadableFileLeavesTheText();
    void specialFileLeavesTheText_data();
    void specialFileLeavesTheText();
    void hugeFileLeavesTheText();
    void binaryFileShowsWhatTheCodeHas();
    void textIsWrittenWithTheLinesEnds();
    void cipherIsWrittenWithItsCarriageReturns();
    void suffixFollowsTheFilter_data();
    void suffixFollowsTheFilter();
    void fileUnderTheSuffixedNameIsReplacedOnlyIfAgreed_data();
    void fileUnderTheSuffixedNameIsReplacedOnlyIfAgreed();
    void failedWriteIsJournalledOnly_data();
    void failedWriteIsJournalledOnly();
    void fullDiskLeavesTheFormerFile();
    void currentDirectoryIsTheSameAfterADialog();
    void savedTextIsLoadedAgain_data();
    void savedTextIsLoadedAgain();
};

namespace
{
const QString TextFilter = QStringLiteral("Текст (*.txt)");
const QString AllFilter = QStringLiteral("Все (*.*)");

void load(EditorRoom &room, const QString &path)
{
    room.answers.opened << path;
    EditorRoom::click(room.page.load);
}

void save(EditorRoom &room, const QString &path, const QString &filter = TextFilter)
{
    room.answers.names << FilteredFile{path, filter};
    EditorRoom::click(room.page.save);
}
} // namespace

void TestEditorFiles::dialogsAreAskedForTheirFiles()
{
    EditorRoom room;
    EditorRoom::click(room.page.load);
    QCOMPARE(room.asked(), QStringList("Загрузка//Все (*.*)"));
    room.type("А");
    EditorRoom::click(room.page.save);
    QCOMPARE(room.asked(), QStringList("Сохранение файла из редактора//Текст (*.txt);;Все (*.*)"));
    QCOMPARE(room.news(), QStringList());
}

void TestEditorFiles::fileIsReadInItsCoding_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("shows");
    row("UTF-8", QByteArray("Привет\r\nмир"), "ПРИВЕТ\nМИР");
    row("CP1251", QByteArray("\xCC\xC8\xD0 \xEC\xE8\xF0"), "МИР МИР");
    row("CP866", QByteArray("\x8C\x88\x90"), "МИР");
    row("figures", QByteArray("12:30\r\n"), "12:30\n");
    row("empty", QByteArray(), "");
}

void TestEditorFiles::fileIsReadInItsCoding()
{
    QFETCH(QByteArray, content);
    EditorRoom room;
    room.type("БЫЛО");
    room.desk.write("a.txt", content);
    load(room, room.desk.path("a.txt"));
    QTEST(room.text(), "shows");
    QCOMPARE(room.news(), QStringList());
}

void TestEditorFiles::placeOfAFileIsRemembered()
{
    EditorRoom room;
    room.desk.write("from/a.txt", "A");
    room.desk.write("to/a.txt", "A");
    load(room, room.desk.path("from/a.txt"));
    save(room, room.desk.path("to/b.txt"));
    QCOMPARE(Options.lastOpenFilePath, room.desk.path("from"));
    QCOMPARE(Options.lastSaveFilePath, room.desk.path("to"));
    (void)room.asked();
    EditorRoom::click(room.page.load);
    EditorRoom::click(room.page.save);
    QCOMPARE(room.asked(), (QStringList{"Загрузка/" + room.desk.path("from") + "/Все (*.*)",
                                        "Сохранение файла из редактора/" + room.desk.path("to") +
                                            "/Текст (*.txt);;Все (*.*)"}));
}

void TestEditorFiles::placeOfTheSettingsComesFirst_data()
{
    QTest::addColumn<bool>("isThere");
    row("a directory", true);
    row("none any more", false);
}

void TestEditorFiles::placeOfTheSettingsComesFirst()
{
    QFETCH(bool, isThere);
    EditorRoom room;
    Options.pathForSaveLoadInEditop = room.desk.path("set");
    Options.lastOpenFilePath = Options.lastSaveFilePath = room.desk.path("last");
    if (isThere)
        QVERIFY(QDir().mkdir(room.desk.path("set")));
    room.type("А");
    EditorRoom::click(room.page.load);
    EditorRoom::click(room.page.save);
    const QString place = room.desk.path(isThere ? "set" : "last");
    QCOMPARE(room.asked(),
             (QStringList{"Загрузка/" + place + "/Все (*.*)",
                          "Сохранение файла из редактора/" + place + "/Текст (*.txt);;Все (*.*)"}));
}

void TestEditorFiles::nothingChosenChangesNothing()
{
    EditorRoom room;
    room.type("ТЕКСТ");
    EditorRoom::click(room.page.load);
    EditorRoom::click(room.page.save);
    QCOMPARE(room.text(), QString("ТЕКСТ"));
    QCOMPARE(Options.lastOpenFilePath, QString());
    QCOMPARE(Options.lastSaveFilePath, QString());
}

void TestEditorFiles::unreadableFileLeavesTheText_data()
{
    QTest::addColumn<bool>("isThere");
    row("a file without the right to it", true);
    row("no file", false);
}

void TestEditorFiles::unreadableFileLeavesTheText()
{
    QFETCH(bool, isThere);
    EditorRoom room;
    room.type("ТЕКСТ");
    if (isThere)
        room.desk.write("kept/a.txt", "ИНОЙ");
    const QString path = room.desk.path("kept/a.txt");
    {
        const ReadOnly locked(room.desk, "kept", ReadOnly::Refused);
        load(room, path);
    }
    QCOMPARE(room.text(), QString("ТЕКСТ"));
    QCOMPARE(Options.lastOpenFilePath, QString());
    QCOMPARE(room.answers.told, QStringList());
    QCOMPARE(room.news(), QStringList("412:00:00 Невозможно прочитать файл:" + path));
}

void TestEditorFiles::specialFileLeavesTheText_data()
{
    specialFiles();
}

void TestEditorFiles::specialFileLeavesTheText()
{
    QFETCH(SpecialFile, kind);
    EditorRoom room;
    room.type("ТЕКСТ");
    place(room.desk, kind, "a.txt");
    load(room, room.desk.path("a.txt"));
    QCOMPARE(room.text(), QString("ТЕКСТ"));
    save(room, room.desk.path("a.txt"));
    QVERIFY(stands(room.desk, kind, "a.txt"));
    QCOMPARE(room.news(), (QStringList{"412:00:00 Невозможно прочитать файл:" + room.desk.path("a.txt"),
                                       "412:00:00 Ошибка записи файла " + room.desk.path("a.txt")}));
}

void TestEditorFiles::hugeFileLeavesTheText()
{
    EditorRoom room;
    room.type("ТЕКСТ");
    QFile file(room.desk.path("a.txt"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.resize(20LL * 1024 * 1024 * 1024)); // takes no room on the disk
    file.close();
    load(room, file.fileName());
    QCOMPARE(room.text(), QString("ТЕКСТ"));
    QCOMPARE(room.news(), QStringList("412:00:00 Невозможно прочитать файл:" + file.fileName()));
}

void TestEditorFiles::binaryFileShowsWhatTheCodeHas()
{
    EditorRoom room;
    QByteArray bytes("ABC\x01\x1B\xFF~");
    for (int i = 255; i >= 0; --i)
        bytes += char(i);
    room.desk.write("a.bin", bytes);
    load(room, room.desk.path("a.bin"));
    QVERIFY2(room.text().startsWith("ABC"), qPrintable(room.text()));
}

void TestEditorFiles::textIsWrittenWithTheLinesEnds()
{
    EditorRoom room;
    room.type("Привет\n$ [");
    save(room, room.desk.path("a.txt"));
    QCOMPARE(room.desk.read("a.txt"), QByteArray("Привет\r\n$ ["));
    QCOMPARE(room.news(),
             QStringList("312:00:00 Содержимое редактора сохранено в " + room.desk.path("a.txt")));
}

void TestEditorFiles::cipherIsWrittenWithItsCarriageReturns()
{
    EditorRoom room;
    room.page.cryptoMode->setChecked(true);
    room.type("12345<\n67890<<\n");
    save(room, room.desk.path("a.txt"));
    QCOMPARE(room.desk.read("a.txt"), QByteArray("12345\r\n67890\r\r\n"));
}

void TestEditorFiles::suffixFollowsTheFilter_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QString>("written");
    row("a text without it", "a", TextFilter, "a.txt");
    row("a text with it", "a.txt", TextFilter, "a.txt");
    row("a text with it in capitals", "a.TXT", TextFilter, "a.TXT");
    row("a text with another", "a.b", TextFilter, "a.b.txt");
    row("any file", "a", AllFilter, "a");
}

void TestEditorFiles::suffixFollowsTheFilter()
{
    QFETCH(QString, typed);
    QFETCH(QString, filter);
    QFETCH(QString, written);
    EditorRoom room;
    QVERIFY(QDir().mkdir(room.desk.path("to")));
    room.type("А");
    save(room, room.desk.path("to/" + typed), filter);
    QCOMPARE(room.desk.names("to"), QStringList(written));
}

void TestEditorFiles::fileUnderTheSuffixedNameIsReplacedOnlyIfAgreed_data()
{
    QTest::addColumn<bool>("agrees");
    QTest::addColumn<QByteArray>("content");
    row("agreed", true, QByteArray("НОВЫЙ"));
    row("refused", false, QByteArray("ПРЕЖНИЙ"));
}

void TestEditorFiles::fileUnderTheSuffixedNameIsReplacedOnlyIfAgreed()
{
    QFETCH(bool, agrees);
    EditorRoom room;
    room.desk.write("a.txt", "ПРЕЖНИЙ");
    room.type("НОВЫЙ");
    room.answers.yes << agrees;
    save(room, room.desk.path("a"));
    QTEST(room.desk.read("a.txt"), "content");
    QCOMPARE(room.asked().last(), QString("Сохранение/Файл a.txt уже существует. Заменить его?"));
    QCOMPARE(room.news().size(), agrees ? 1 : 0);
    save(room, room.desk.path("a.txt")); // the dialog has asked about this name itself
    QCOMPARE(room.desk.read("a.txt"), QByteArray("НОВЫЙ"));
}

void TestEditorFiles::failedWriteIsJournalledOnly_data()
{
    QTest::addColumn<QString>("name");
    row("in a directory without the right to it", "locked/a.txt");
    row("in no directory", "none/a.txt");
}

void TestEditorFiles::failedWriteIsJournalledOnly()
{
    QFETCH(QString, name);
    EditorRoom room;
    room.type("ТЕКСТ");
    room.desk.write("locked/b.txt", "B");
    {
        const ReadOnly locked(room.desk, "locked");
        save(room, room.desk.path(name));
    }
    QCOMPARE(room.text(), QString("ТЕКСТ"));
    QCOMPARE(room.desk.names("locked"), QStringList("b.txt"));
    QCOMPARE(Options.lastSaveFilePath, QString());
    QCOMPARE(room.answers.told, QStringList());
    QCOMPARE(room.news(), QStringList("412:00:00 Ошибка записи файла " + room.desk.path(name)));
}

void TestEditorFiles::fullDiskLeavesTheFormerFile()
{
    EditorRoom room;
    room.desk.write("a.txt", "ПРЕЖНИЙ");
    room.type(QString(1000, 'A'));
    {
        const FullDisk full(100);
        save(room, room.desk.path("a.txt"));
    }
    QCOMPARE(room.desk.read("a.txt"), QByteArray("ПРЕЖНИЙ"));
}

void TestEditorFiles::currentDirectoryIsTheSameAfterADialog()
{
    EditorRoom room;
    QVERIFY(QDir().mkdir(room.desk.path("elsewhere")));
    const QString former = QDir::currentPath();
    const auto goElsewhere = [&room] { QVERIFY(QDir::setCurrent(room.desk.path("elsewhere"))); };
    pickFileInHandler = [&](QWidget *, const QString &, const QString &, const QString &) {
        goElsewhere();
        return QString();
    };
    pickNameHandler = [&](QWidget *, const QString &, const QString &, const QString &) {
        goElsewhere();
        return FilteredFile();
    };
    room.type("А");
    for (const bool store : {false, true}) {
        Options.editorUseShablonFiles = store;
        for (QPushButton *button : {room.page.load, room.page.save}) {
            room.answers.yes << true;
            EditorRoom::click(button);
            QCOMPARE(QDir::currentPath(), former);
        }
    }
}

void TestEditorFiles::savedTextIsLoadedAgain_data()
{
    QTest::addColumn<bool>("cipher");
    QTest::addColumn<QString>("text");
    row("plain", false, "ПРИВЕТ\nМИР $ [ { }\n\n");
    row("cipher", true, "12345<\n67890<\n");
}

void TestEditorFiles::savedTextIsLoadedAgain()
{
    QFETCH(bool, cipher);
    QFETCH(QString, text);
    EditorRoom room;
    room.page.cryptoMode->setChecked(cipher);
    room.type(text);
    save(room, room.desk.path("a.txt"));
    room.type("ИНОЙ");
    load(room, room.desk.path("a.txt"));
    QCOMPARE(room.text(), text);
}

QTEST_MAIN(TestEditorFiles)
#include "test_editor_files.moc"
