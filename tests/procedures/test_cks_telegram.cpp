// The storing, printing, marking and forwarding of a numbered telegram.

#include "app/options.h"
#include "records/file_attr.h"
#include "tests/procedures/cks_desk.h"
#include "tests/support/row.h"

#include <QDir>
#include <QFile>
#include <QtTest>

class TestCksTelegram : public QObject
{
    Q_OBJECT

private slots:
    void storedAsItCame();
    void wrongNumberStopsTheLineWhenAutomatic();
    void wrongNumberInManualModeOnlyTells();
    void afterNineHundredNinetyNineEveryNumberMismatches();
    void headerGivesTheTimePart_data();
    void headerGivesTheTimePart();
    void registersAreRemovedOnRequest();
    void newMark_data();
    void newMark();
    void unwritableDirectoryKeepsTheCounter();
    void printsEvenWhatCouldNotBeSaved();
    void printing_data();
    void printing();
    void forwarded_data();
    void forwarded();
    void forwardingThatFailsIsDroppedWithoutAWord();
};

namespace
{
const QString Saved = QStringLiteral("312:00:00 Файл сохранен:");
}

void TestCksTelegram::storedAsItCame()
{
    const CksDesk desk;
    ProcessCKS.ProcessTlg(1, "П01 123456 12\r\nТЕКСТ ", "ЗЦЗЦ 001 ", "НННН  1200");
    QCOMPARE(QString::fromUtf8(desk.read("inp/20260731/20260731u456.001")),
             QStringLiteral("ЗЦЗЦ 001 П01 123456 12\r\nТЕКСТ НННН  1200"));
    QCOMPARE(State.PK_in, 1);
    QVERIFY(desk.read("velda_state.ini").contains("PK_in=1"));
    QCOMPARE(desk.noted(), QStringList(Saved + "inp/20260731/20260731u456.001"));
    QCOMPARE(desk.sent(), QString());
}

void TestCksTelegram::wrongNumberStopsTheLineWhenAutomatic()
{
    for (const int number : {4, 5, 7, 0}) {
        const CksDesk desk;
        State.PK_in = 5;
        State.tlgMode = 3;
        ProcessCKS.ProcessTlg(number, "ТЕКСТ ", "ЗЦЗЦ 004 ", "НННН  ");
        QCOMPARE(desk.sent(), QStringLiteral("|ЗЦЗЦ КС СТОП НННН  "));
        QCOMPARE(desk.noted(), QStringList("412:00:00 РАСХОЖДЕНИЕ СЧЕТЧИКОВ"));
        QCOMPARE(State.PK_in, 5);
        QCOMPARE(State.tlgMode, 3);
        QVERIFY(!State.manualMode);
        QVERIFY(desk.names("inp/20260731").isEmpty());
    }
}

void TestCksTelegram::wrongNumberInManualModeOnlyTells()
{
    const CksDesk desk;
    State.manualMode = true;
    ProcessCKS.ProcessTlg(2, "ТЕКСТ ", "ЗЦЗЦ 002 ", "НННН  ");
    QCOMPARE(desk.sent(), QString());
    QCOMPARE(desk.noted(), QStringList("412:00:00 РАСХОЖДЕНИЕ СЧЕТЧИКОВ"));
}

void TestCksTelegram::afterNineHundredNinetyNineEveryNumberMismatches()
{
    for (const int number : {0, 1, 999}) {
        const CksDesk desk;
        State.PK_in = 999;
        ProcessCKS.ProcessTlg(number, "ТЕКСТ ", "ЗЦЗЦ ", "НННН  ");
        QCOMPARE(State.PK_in, 999);
        QCOMPARE(desk.noted(), QStringList("412:00:00 РАСХОЖДЕНИЕ СЧЕТЧИКОВ"));
    }
}

void TestCksTelegram::headerGivesTheTimePart_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<QString>("name");
    row("first form", "П12 123456 7\r\n", "u456");
    row("first form, three letters", "АБВ12 123456 7\r\n", "u456");
    row("first form, Latin C", "C12 123456 7\r\n", "q456");
    row("first form, Cyrillic С", "С12 123456 7\r\n", "u456");
    row("first form, no last number", "П12 123456\r\n", "u000");
    row("second form", "П123 456 7\r\n", "u456");
    row("third form", "П123=123 12 654789 \r\n", "u789");
    row("third form, Latin C", "C123=123 12 654789 \r\n", "q789");
    row("third form with its last number read", "П123=123 12 654789 5\r\n", "u000");
    row("third form, figures that differ", "П123=124 12 654789 \r\n", "u000");
    row("no header", "ТЕКСТ\r\n", "u000");
    row("nothing at all", "", "u000");
    row("a category from a failed attempt", "C TEXT\r\n", "q000");
    row("register marks stand in the way", "П#12 123456 7\r\n", "u000");
}

void TestCksTelegram::headerGivesTheTimePart()
{
    QFETCH(QString, body);
    QFETCH(QString, name);
    const CksDesk desk;
    ProcessCKS.ProcessTlg(1, body, "ЗЦЗЦ 001 ", "НННН  ");
    QCOMPARE(desk.names("inp/20260731"), QStringList("20260731" + name + ".001"));
}

void TestCksTelegram::registersAreRemovedOnRequest()
{
    const CksDesk desk;
    Options.removeRegisterInInputFiles = true;
    ProcessCKS.ProcessTlg(1, "|ВЕ4ЕР #12&A ", "ЗЦЗЦ #001 ", "НННН  ");
    QCOMPARE(QString::fromUtf8(desk.read("inp/20260731/20260731u000.001")),
             QStringLiteral("ЗЦЗЦ 001 ВЕЧЕР 12A НННН  "));
}

void TestCksTelegram::newMark_data()
{
    QTest::addColumn<bool>("on");
    row("on", true);
    row("off", false);
}

void TestCksTelegram::newMark()
{
    QFETCH(bool, on);
    const CksDesk desk;
    Options.markNewFilesInInp = on;
    ProcessCKS.ProcessTlg(1, "ТЕКСТ ", "ЗЦЗЦ 001 ", "НННН  ");
    QCOMPARE(CFileAttr("inp/20260731/20260731u000.001").checkNew(), on);
}

void TestCksTelegram::unwritableDirectoryKeepsTheCounter()
{
    const CksDesk desk;
    desk.write("inp/20260731", "a file where the directory should be");
    Options.redirectInputTlg = "123456";
    ProcessCKS.ProcessTlg(1, "ТЕКСТ ", "ЗЦЗЦ 001 ", "НННН  ");
    QCOMPARE(State.PK_in, 0);
    QCOMPARE(desk.noted(),
             QStringList("312:00:00 Не получилось сохранить файл:inp/20260731/20260731u000.001"));
    QVERIFY(desk.names("out").isEmpty());
}

void TestCksTelegram::printsEvenWhatCouldNotBeSaved()
{
    const CksDesk desk;
    desk.write("inp/20260731", "a file where the directory should be");
    Options.autoPrintMode = 1;
    Options.PrinterType = 1;
    Options.PrinterCodePage = 2;
    Options.PrinterRawLFCount = 0;
    Options.PrinterRaw = desk.path("paper");
    ProcessCKS.ProcessTlg(1, "ТЕКСТ ", "ЗЦЗЦ 001 ", "НННН  ");
    QCOMPARE(QString::fromUtf8(desk.readPrinted("paper")), QStringLiteral("ЗЦЗЦ 001 ТЕКСТ НННН  "));
    QCOMPARE(desk.noted(),
             QStringList({"312:00:00 Не получилось сохранить файл:inp/20260731/20260731u000.001",
                          "312:00:00 Печать файла"}));
}

void TestCksTelegram::printing_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("printed");
    row("none", 0, false);
    row("received", 1, true);
    row("sent", 2, false);
    row("both", 3, true);
}

void TestCksTelegram::printing()
{
    QFETCH(int, mode);
    QFETCH(bool, printed);
    const CksDesk desk;
    Options.autoPrintMode = mode;
    Options.PrinterType = 1;
    Options.PrinterCodePage = 2;
    Options.PrinterRawLFCount = 0;
    Options.PrinterRaw = desk.path("paper");
    ProcessCKS.ProcessTlg(1, "|ТЕКСТ#12 ", "ЗЦЗЦ 001 ", "НННН  ");
    QCOMPARE(QString::fromUtf8(desk.readPrinted("paper")),
             printed ? QStringLiteral("ЗЦЗЦ 001 ТЕКСТ12 НННН  ") : QString());
}

void TestCksTelegram::forwarded_data()
{
    QTest::addColumn<QString>("index");
    QTest::addColumn<bool>("noHeader");
    QTest::addColumn<QString>("body");
    QTest::addColumn<QString>("file");
    const QString body = QStringLiteral("П12 123456 7 (АБВ)\r\n\r\n |ТЕКСТ#12\r\n| ");
    row("whole", "654321", false, body, "П654321\r\n" + body);
    row("without header", "654321", true, body, "П654321\r\n|ТЕКСТ#12");
    row("without header, none there", "654321", true, "ТЕКСТ \r\n", "П654321\r\nТЕКСТ");
    row("without header, nothing else", "654321", true, "(А)\r\n \r\n", "П654321\r\n");
    row("index of five", "65432", false, body, "");
    row("index of seven", "6543210", false, body, "");
}

void TestCksTelegram::forwarded()
{
    QFETCH(QString, index);
    QFETCH(bool, noHeader);
    QFETCH(QString, body);
    QFETCH(QString, file);
    const CksDesk desk;
    Options.redirectInputTlg = index;
    Options.redirectInputTlgNoHeader = noHeader;
    State.EditorN = 41;
    ProcessCKS.ProcessTlg(1, body, "ЗЦЗЦ 001 ", "НННН  ");
    QCOMPARE(QString::fromUtf8(desk.read("out/20260731u042")), file);
    QCOMPARE(State.EditorN, file.isEmpty() ? 41 : 42);
    // On the disk too: a restart must not give the name of a waiting file again.
    QVERIFY(desk.readText("velda_state.ini").contains(file.isEmpty() ? "EditorN=41\n" : "EditorN=42\n"));
    const QString addition = file.isEmpty() ? QString() : QStringLiteral(", для пересылки out/20260731u042");
    QCOMPARE(desk.noted().size(), 1);
    QVERIFY(desk.noted().at(0).startsWith(Saved + "inp/20260731/20260731u"));
    QCOMPARE(desk.noted().at(0).mid(desk.noted().at(0).indexOf(".001") + 4), addition);
}

void TestCksTelegram::forwardingThatFailsIsDroppedWithoutAWord()
{
    const CksDesk desk;
    Options.redirectInputTlg = "654321";
    QDir().mkpath("out/20260731u001"); // a directory under the very name
    ProcessCKS.ProcessTlg(1, "ТЕКСТ ", "ЗЦЗЦ 001 ", "НННН  ");
    QCOMPARE(State.EditorN, 0);
    QCOMPARE(State.PK_in, 1);
    QCOMPARE(desk.noted(), QStringList(Saved + "inp/20260731/20260731u000.001"));
}

QTEST_GUILESS_MAIN(TestCksTelegram)
#include "test_cks_telegram.moc"
