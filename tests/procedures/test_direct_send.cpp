#include "app/clock.h"
#include "link/tlg_thread.h"
#include "tests/procedures/direct_desk.h"
#include "tests/support/no_ordinary_file.h"
#include "tests/support/row.h"
#include "text/mtk2.h"

#include <QtTest>

namespace
{
const QString Plain = "20260731u001.260731_115900";
const QString Protected = "20260731g001.260731_115900";

QString sendingNote(const QString &name)
{
    return "312:00:00 Отправка файла: " + name;
}

QString movingNote(const QString &name)
{
    return "312:00:00 ПЕРЕИМЕНОВАНИЕ out/" + name + " В out/20260731/" + name;
}
} // namespace

/// Sending of queue files over a direct link.
class TestDirectSend : public QObject
{
    Q_OBJECT

private slots:
    void fileGoesAsItStands();
    void secondFileWaitsForTheFirst();
    void textOfTheFile_data();
    void textOfTheFile();
    void nationalLettersAreMasked();
    void largeFileGoesWhole();
    void vanishedFileIsTriedAgain();
    void specialFileCountsAsUnreadable_data() { specialFiles(); }
    void specialFileCountsAsUnreadable();
    void fileWithoutTextIsDoneAtOnce_data();
    void fileWithoutTextIsDoneAtOnce();
    void emptyFileThatCannotBeMovedStopsTheQueue();
    void counterTurnsOverAfter999();
    void guaranteedTransfer_data();
    void guaranteedTransfer();
    void guaranteedTransferEndsWithoutTheOption();
    void plainFileLeavesGuaranteedTransferOn();
    void sentFileIsMovedToItsDay();
    void movedFileCarriesNoNewMark();
    void printing_data();
    void printing();
    void printedTextEndsAtTheFirstNul();
    void vanishedFileIsNotPrinted();
    void unmovableFileStopsTheQueue();
};

void TestDirectSend::fileGoesAsItStands()
{
    const DirectDesk desk;
    desk.send(Plain, "ЗЦЗЦ 1\r\nтекст <1>\r\nНННН  ");

    QCOMPARE(desk.sent(), "ЗЦЗЦ 1\r\nТЕКСТ <1>\r\nНННН  ");
    QVERIFY(State.fileInProgress);
    QCOMPARE(State.currentFile, Plain);
    QCOMPARE(State.PK_out, 1);
    QVERIFY(desk.read("velda_state.ini").contains("PK_out=1"));
    QCOMPARE(desk.notes(), QStringList{sendingNote(Plain)});
    QCOMPARE(desk.names("out", "*u*"), QStringList{Plain});
}

void TestDirectSend::secondFileWaitsForTheFirst()
{
    const DirectDesk desk;
    desk.send(Plain, "А");
    desk.send("20260731u002.260731_115900", "Б");

    QCOMPARE(desk.sent(), "А");
    QCOMPARE(State.currentFile, Plain);
    QCOMPARE(State.PK_out, 1);
    QCOMPARE(desk.notes(), QStringList{sendingNote(Plain)});
}

void TestDirectSend::textOfTheFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("line");

    row("up to the first NUL", QByteArray("AB\0CD", 5), "AB");
    row("angle brackets stay", QByteArray("<A>"), "<A>");
    row("bytes that are no UTF-8",
        QByteArray("A\xC0\xFF"
                   "B"),
        "A\uFFFD\uFFFDB");
    row("torn character at the end", QByteArray("A\xD0"), "A\uFFFD");
    row("control command", QByteArray("A@n1@"), "A@N1@");
    row("blank", QByteArray(" "), " ");
}

void TestDirectSend::textOfTheFile()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, line);
    const DirectDesk desk;
    desk.send(Plain, content);
    QCOMPARE(desk.sent(), line);
    QVERIFY(State.fileInProgress);
}

void TestDirectSend::nationalLettersAreMasked()
{
    const DirectDesk desk;
    Options.nationalLanguageUse = 1;
    initMTK2Table();
    desk.send(Plain, "Ә<");
    QCOMPARE(desk.sent(), "\?\?\?<");
}

void TestDirectSend::largeFileGoesWhole()
{
    const DirectDesk desk;
    const int letters = 2500000; // 5 MB
    desk.send(Plain, QString(letters, QChar(0x0411)).toUtf8());
    QCOMPARE(desk.sent(), QString(letters, QChar(0x0411)));
    QVERIFY(ProcessDirect.fileSended());
    QCOMPARE(desk.names("out/20260731"), QStringList{Plain});
}

void TestDirectSend::specialFileCountsAsUnreadable()
{
    QFETCH(SpecialFile, kind);
    const DirectDesk desk;
    place(desk, kind, QLatin1String("out/") + Plain);
    DirectDesk::dispatch(Plain);
    QVERIFY(!State.fileInProgress);
    QCOMPARE(State.PK_out, 0);
    QCOMPARE(desk.notes(), QStringList({sendingNote(Plain), "412:00:00 Невозможно прочитать файл"}));
}

void TestDirectSend::vanishedFileIsTriedAgain()
{
    const DirectDesk desk;
    DirectDesk::dispatch(Plain);
    QVERIFY(!State.fileInProgress);
    QCOMPARE(State.currentFile, "");
    QCOMPARE(State.PK_out, 0);
    QCOMPARE(desk.sent(), "");
    QStringList notes{sendingNote(Plain), "412:00:00 Невозможно прочитать файл"};
    QCOMPARE(desk.notes(), notes);

    desk.send(Plain, "А");
    notes << sendingNote(Plain);
    QCOMPARE(desk.notes(), notes);
    QCOMPARE(desk.sent(), "А");
}

void TestDirectSend::fileWithoutTextIsDoneAtOnce_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");

    row("empty", Plain, QByteArray());
    row("NUL in front", Plain, QByteArray("\0AB", 3));
    row("byte order mark alone", Plain, QByteArray("\xEF\xBB\xBF"));
    row("under guaranteed transfer", Protected, QByteArray());
}

void TestDirectSend::fileWithoutTextIsDoneAtOnce()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    const DirectDesk desk;
    Options.enableProtectedSend = true;
    State.scanCountdown = 20;
    desk.send(name, content);

    QVERIFY(!State.fileInProgress);
    QVERIFY(!TlgThread.protectedMode);
    QCOMPARE(State.currentFile, "");
    QCOMPARE(State.scanCountdown, 0);
    QCOMPARE(desk.sent(), "");
    QCOMPARE(desk.read("out/20260731/" + name), content);
    QCOMPARE(desk.names("out", "2026*.*"), QStringList());
    QCOMPARE(desk.notes(),
             (QStringList{sendingNote(name), "312:00:00 Файл пуст, передавать нечего", movingNote(name)}));
}

void TestDirectSend::emptyFileThatCannotBeMovedStopsTheQueue()
{
    const DirectDesk desk;
    desk.write("out/20260731", "a file in the directory's place");
    desk.send(Plain, "");
    QVERIFY(State.manualMode);
    QVERIFY(!State.fileInProgress);
    QCOMPARE(desk.notes(),
             (QStringList{sendingNote(Plain), "312:00:00 Файл пуст, передавать нечего", movingNote(Plain),
                          "412:00:00 Ошибка переименования", "312:00:00 Установлен РУЧНОЙ режим"}));
}

void TestDirectSend::counterTurnsOverAfter999()
{
    const DirectDesk desk;
    State.PK_out = 999;
    desk.send(Plain, "А");
    QCOMPARE(State.PK_out, 0);
}

void TestDirectSend::guaranteedTransfer_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("on");

    row("g", true, Protected, true);
    row("g, not enabled", false, Protected, false);
    row("u", true, Plain, false);
    row("capital G", true, "20260731G001.260731_115900", false);
    row("nine characters", true, "20260731g", true);
    row("eight characters", true, "2026073g", false);
    row("g in another place", true, "2026073gg", true);
    row("g as the tenth", true, "202607311g01", false);
}

void TestDirectSend::guaranteedTransfer()
{
    QFETCH(bool, enabled);
    QFETCH(QString, name);
    QFETCH(bool, on);
    const DirectDesk desk;
    Options.enableProtectedSend = enabled;
    desk.send(name, "А");
    QCOMPARE(bool(TlgThread.protectedMode), on);
    QCOMPARE(desk.sent(), "А");

    QVERIFY(ProcessDirect.fileSended());
    QVERIFY(!TlgThread.protectedMode);
}

void TestDirectSend::guaranteedTransferEndsWithoutTheOption()
{
    const DirectDesk desk;
    Options.enableProtectedSend = true;
    desk.send(Protected, "А");
    Options.enableProtectedSend = false;
    QVERIFY(ProcessDirect.fileSended());
    QVERIFY(!TlgThread.protectedMode);
}

void TestDirectSend::plainFileLeavesGuaranteedTransferOn()
{
    const DirectDesk desk;
    TlgThread.startProtectedMode(); // by the operator's key
    desk.send(Plain, "А");
    QVERIFY(ProcessDirect.fileSended());
    QVERIFY(TlgThread.protectedMode);
}

void TestDirectSend::sentFileIsMovedToItsDay()
{
    const DirectDesk desk;
    desk.send(Plain, "А");
    QVERIFY(ProcessDirect.fileSended());

    QCOMPARE(desk.read("out/20260731/" + Plain), QByteArray("А"));
    QCOMPARE(desk.names("out", "*u*"), QStringList());
    QVERIFY(!State.fileInProgress);
    QCOMPARE(State.currentFile, "");
    QVERIFY(!State.manualMode);
    QCOMPARE(desk.notes(), (QStringList{sendingNote(Plain), movingNote(Plain)}));
    QVERIFY(!desk.names("").contains("printed"));
}

void TestDirectSend::movedFileCarriesNoNewMark()
{
    const DirectDesk desk;
    Options.markNewFilesInOut = true;
    desk.send(Plain, "А");
    QVERIFY(ProcessDirect.fileSended());
    QVERIFY(!CFileAttr(desk.path("out/20260731/" + Plain)).checkNew());
}

void TestDirectSend::printing_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("printed");

    row("none", 0, false);
    row("received", 1, false);
    row("sent", 2, true);
    row("both", 3, true);
    row("unknown", 6, false);
}

void TestDirectSend::printing()
{
    QFETCH(int, mode);
    QFETCH(bool, printed);
    const DirectDesk desk;
    Options.autoPrintMode = mode;
    desk.send(Plain, "текст\r\n#1<2>");
    QVERIFY(ProcessDirect.fileSended());

    QStringList notes{sendingNote(Plain)};
    if (printed)
        notes << "312:00:00 Печать файла";
    notes << movingNote(Plain);
    QCOMPARE(desk.notes(), notes);
    QCOMPARE(QString::fromUtf8(desk.readPrinted()), printed ? "текст\r\n12" : "");
}

void TestDirectSend::printedTextEndsAtTheFirstNul()
{
    const DirectDesk desk;
    Options.autoPrintMode = 2;
    desk.send(Plain, QByteArray("AB\0CD", 5));
    QVERIFY(ProcessDirect.fileSended());
    QCOMPARE(desk.readPrinted(), QByteArray("AB"));
}

void TestDirectSend::vanishedFileIsNotPrinted()
{
    const DirectDesk desk;
    Options.autoPrintMode = 2;
    desk.send(Plain, "А");
    QVERIFY(QFile::remove(desk.path("out/" + Plain)));
    QVERIFY(ProcessDirect.fileSended());

    QVERIFY(!desk.names("").contains("printed"));
    QCOMPARE(desk.notes(),
             (QStringList{sendingNote(Plain), movingNote(Plain), "412:00:00 Ошибка переименования",
                          "312:00:00 Установлен РУЧНОЙ режим"}));
}

void TestDirectSend::unmovableFileStopsTheQueue()
{
    const DirectDesk desk;
    desk.write("out/20260731", "a file in the directory's place");
    desk.send(Plain, "А");
    QVERIFY(ProcessDirect.fileSended());

    QVERIFY(State.manualMode);
    QVERIFY(!State.fileInProgress);
    QCOMPARE(State.currentFile, "");
    QCOMPARE(State.scanCountdown, 3);
    QCOMPARE(desk.read("out/" + Plain), QByteArray("А"));
    QCOMPARE(desk.notes(),
             (QStringList{sendingNote(Plain), movingNote(Plain), "412:00:00 Ошибка переименования",
                          "312:00:00 Установлен РУЧНОЙ режим"}));
}

QTEST_GUILESS_MAIN(TestDirectSend)
#include "test_direct_send.moc"
