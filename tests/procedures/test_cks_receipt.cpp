// Receipts, renumbering and distortion: the messages that move counters and files.

#include "app/options.h"
#include "tests/procedures/cks_desk.h"
#include "tests/support/row.h"

#include <QDir>
#include <QSignalSpy>
#include <QtTest>

class TestCksReceipt : public QObject
{
    Q_OBJECT

private slots:
    void receiptOfTwoFieldsTakesCountersWithoutAMode();
    void yourWithoutBlankIsNoReceipt();
    void tornReceiptOnlyEndsTheAsking_data();
    void tornReceiptOnlyEndsTheAsking();
    void figureCutOffAtTheEndCountsAsZero();
    void words_data();
    void words();
    void channelNameIsTheThirdWord();
    void confirmationWordsAskForTheLastNumber();
    void matchingReceiptMovesTheFile();
    void receiptWithoutFileInTransitRenamesNothing();
    void mismatchSetsTheFileAside();
    void mismatchFindsAFreeName();
    void mismatchTakesTheLastFreeName();
    void mismatchGivesUpAfterTenNames();
    void sendMismatchWithoutFileOnlyGoesManual();
    void receiveMismatchStopsTheOpenChannel();
    void receiveMismatchInOtherModesSendsNothing();
    void morningGrace_data();
    void morningGrace();
    void openingReceiptIsAnsweredInThreeSeconds_data();
    void openingReceiptIsAnsweredInThreeSeconds();
    void renumberingIsGoodOrBad_data();
    void renumberingIsGoodOrBad();
    void goodRenumberingIsAnswered_data();
    void goodRenumberingIsAnswered();
    void renumberingOutlivesARestart();
    void renumberingOfOneFieldIsIgnored();
    void distortionSetsTheFileAside_data();
    void distortionSetsTheFileAside();
    void distortionInAnotherModeIsIgnored();
    void distortionWithoutFileOnlyClosesTheChannel();
    void distortionThatCannotMoveIsJournalledOnce();
};

namespace
{
const QString ManualLine = QStringLiteral("312:00:00 Установлен РУЧНОЙ режим");
} // namespace

void TestCksReceipt::receiptOfTwoFieldsTakesCountersWithoutAMode()
{
    const CksDesk desk;
    State.tlgMode = 4;
    State.PK_out = 5;
    State.PK_in = 3;
    State.askReceiptCountdown = 9;
    State.askSent = true;
    ProcessCKS.ProcessKG(QStringLiteral("ВАШ 005 НАШ 003"));
    QCOMPARE(State.CKS_in, 5);
    QCOMPARE(State.CKS_out, 3);
    QCOMPARE(State.tlgMode, 4);
    QCOMPARE(State.askReceiptCountdown, 0);
    QVERIFY(!State.askSent);
    QVERIFY(!State.manualMode);
    QCOMPARE(desk.noted(), QStringList());
}

void TestCksReceipt::yourWithoutBlankIsNoReceipt()
{
    const CksDesk desk;
    State.askSent = true;
    ProcessCKS.ProcessKG(QStringLiteral("ВАШ"));
    QVERIFY(State.askSent);
}

void TestCksReceipt::tornReceiptOnlyEndsTheAsking_data()
{
    QTest::addColumn<QString>("text");
    row("no blank before the second figure", "ВАШ 005 НАШ");
    row("first figure short", "ВАШ 05 НАШ 003 ПОСЛЕДНИЕ СВЯЗЬ ОТКРЫТА");
    row("second figure short", "ВАШ 005 НАШ 03 ПОСЛЕДНИЕ");
    row("letters", "ВАШ АБВ НАШ 003");
}

void TestCksReceipt::tornReceiptOnlyEndsTheAsking()
{
    QFETCH(QString, text);
    const CksDesk desk;
    State.askSent = true;
    State.askReceiptCountdown = 7;
    ProcessCKS.ProcessKG(text);
    QVERIFY(!State.askSent);
    QCOMPARE(State.askReceiptCountdown, 7);
    QCOMPARE(State.CKS_in, 0);
    QCOMPARE(State.CKS_out, 0);
    QCOMPARE(State.tlgMode, 0);
    QVERIFY(!State.manualMode);
}

void TestCksReceipt::figureCutOffAtTheEndCountsAsZero()
{
    const CksDesk desk;
    State.PK_out = 5;
    ProcessCKS.ProcessKG(QStringLiteral("ВАШ 005 НАШ "));
    QCOMPARE(State.CKS_in, 5);
    QCOMPARE(State.CKS_out, 0);
}

void TestCksReceipt::words_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<int>("mode");
    row("asked to open", "ОТКРОЙТЕ СВЯЗЬ ", 2);
    row("open", "СВЯЗЬ ОТКРЫТА ", 3);
    row("closed", "СВЯЗЬ ЗАКРЫТА ", 1);
    row("unknown state", "СВЯЗЬ НЕЯСНА ", 0);
    row("closed till", "ЗАКРЫТО ПО ", 4);
    row("closed otherwise", "ЗАКРЫТО ДО ", 1);
    row("another word", "ПРИВЕТ ВАМ ", 1);
    row("one word is too few", "СВЯЗЬ", 1);
}

void TestCksReceipt::words()
{
    QFETCH(QString, words);
    QFETCH(int, mode);
    const CksDesk desk;
    State.tlgMode = 1;
    ProcessCKS.ProcessKG(QStringLiteral("ВАШ 000 НАШ 000 ПОСЛЕДНИЕ ") + words);
    QCOMPARE(State.tlgMode, mode);
}

void TestCksReceipt::channelNameIsTheThirdWord()
{
    const CksDesk desk;
    ProcessCKS.ProcessKG(QStringLiteral("ВАШ 000 НАШ 000 ПОСЛЕДНИЕ СВЯЗЬ ОТКРЫТА АБВ123/4 "));
    QCOMPARE(State.channelName, QStringLiteral("АБВ123/4"));
    ProcessCKS.ProcessKG(QStringLiteral("ВАШ 000 НАШ 000 ПОСЛЕДНИЕ СВЯЗЬ ОТКРЫТА"));
    QCOMPARE(State.channelName, QStringLiteral("АБВ123/4"));
}

void TestCksReceipt::confirmationWordsAskForTheLastNumber()
{
    const CksDesk desk;
    State.PK_in = 8;
    QSignalSpy due(&ProcessCKS, &CProcessCKS::confirmationDue);
    ProcessCKS.ProcessKG(QStringLiteral("ВАШ 000 НАШ 008 ПОСЛЕДНИЕ ПОДТВЕРДИТЕ ПРИЕМ Р "));
    QCOMPARE(due.count(), 1);
    QCOMPARE(due.at(0).at(0).toInt(), 8);
    QCOMPARE(State.tlgMode, 5);
    ProcessCKS.ProcessKG(QStringLiteral("ВАШ 000 НАШ 008 ПОСЛЕДНИЕ ПОДТВЕРДИТЕ ПРИЕМ К "));
    QCOMPARE(due.count(), 1);
}

void TestCksReceipt::matchingReceiptMovesTheFile()
{
    const CksDesk desk;
    desk.inTransit();
    State.PK_out = 1;
    ProcessCKS.ProcessKG(QStringLiteral("ВАШ 001 НАШ 000 ПОСЛЕДНИЕ СВЯЗЬ ОТКРЫТА "));
    QCOMPARE(desk.names("out/20260731"), QStringList("20260731u001.001"));
    QCOMPARE(desk.read("out/20260731/20260731u001.001"), QByteArray("ТЕКСТ"));
    QCOMPARE(State.scanCountdown, 0);
    QVERIFY(!State.fileInProgress);
    QCOMPARE(State.currentFile, QString());
    QVERIFY(!State.manualMode);
}

void TestCksReceipt::receiptWithoutFileInTransitRenamesNothing()
{
    const CksDesk desk;
    desk.write("out/20260731u001", "ТЕКСТ");
    ProcessCKS.ProcessKG(QStringLiteral("ВАШ 000 НАШ 000 ПОСЛЕДНИЕ СВЯЗЬ ОТКРЫТА "));
    QCOMPARE(desk.names("out"), QStringList("20260731u001"));
    QCOMPARE(desk.noted(), QStringList());
}

void TestCksReceipt::mismatchSetsTheFileAside()
{
    const CksDesk desk;
    desk.inTransit();
    State.PK_out = 2;
    ProcessCKS.ProcessKG(QStringLiteral("ВАШ 001 НАШ 000 ПОСЛЕДНИЕ СВЯЗЬ ОТКРЫТА "));
    QVERIFY(State.manualMode);
    QCOMPARE(desk.names("out"), QStringList("20260731u001.b002"));
    QCOMPARE(State.scanCountdown, 0);
    QVERIFY(!State.fileInProgress);
    QCOMPARE(State.currentFile, QString());
    QCOMPARE(desk.noted(),
             QStringList({ManualLine, "312:00:00 ПЕРЕИМЕНОВАНИЕ out/20260731u001 В out/20260731u001.b002"}));
}

void TestCksReceipt::mismatchFindsAFreeName()
{
    const CksDesk desk;
    desk.inTransit();
    for (const char *taken : {"out/20260731u001.b002", "out/20260731u001.b002_0", "out/20260731u001.b002_1"})
        desk.write(taken, "ЗАНЯТО");
    State.PK_out = 2;
    ProcessCKS.ProcessKG(QStringLiteral("ВАШ 001 НАШ 000 "));
    QCOMPARE(desk.read("out/20260731u001.b002_2"), QByteArray("ТЕКСТ"));
    QVERIFY(!State.fileInProgress);
    QCOMPARE(desk.noted(),
             QStringList({ManualLine, "312:00:00 ПЕРЕИМЕНОВАНИЕ out/20260731u001 В out/20260731u001.b002",
                          "412:00:00 Ошибка переименования"}));
}

void TestCksReceipt::mismatchTakesTheLastFreeName()
{
    const CksDesk desk;
    desk.inTransit();
    desk.write("out/20260731u001.b002", "ЗАНЯТО");
    for (int i = 0; i <= 8; ++i)
        desk.write(QStringLiteral("out/20260731u001.b002_%1").arg(i), "ЗАНЯТО");
    State.PK_out = 2;
    ProcessCKS.ProcessKG(QStringLiteral("ВАШ 001 НАШ 000 "));
    QCOMPARE(desk.read("out/20260731u001.b002_9"), QByteArray("ТЕКСТ"));
    QVERIFY(!QFile::exists("out/20260731u001"));
}

void TestCksReceipt::mismatchGivesUpAfterTenNames()
{
    const CksDesk desk;
    desk.inTransit();
    desk.write("out/20260731u001.b002", "ЗАНЯТО");
    for (int i = 0; i <= 9; ++i)
        desk.write(QStringLiteral("out/20260731u001.b002_%1").arg(i), "ЗАНЯТО");
    State.PK_out = 2;
    ProcessCKS.ProcessKG(QStringLiteral("ВАШ 001 НАШ 000 "));
    QCOMPARE(desk.read("out/20260731u001"), QByteArray("ТЕКСТ"));
    QCOMPARE(desk.names("out").size(), 12);
    QVERIFY(!State.fileInProgress);
    QCOMPARE(desk.noted().filter("Ошибка переименования").size(), 1);
}

void TestCksReceipt::sendMismatchWithoutFileOnlyGoesManual()
{
    const CksDesk desk;
    State.PK_out = 2;
    ProcessCKS.ProcessKG(QStringLiteral("ВАШ 001 НАШ 000 "));
    QVERIFY(State.manualMode);
    QCOMPARE(desk.noted(), QStringList({ManualLine}));
}

void TestCksReceipt::receiveMismatchStopsTheOpenChannel()
{
    const CksDesk desk;
    State.tlgMode = 3;
    State.PK_in = 4;
    ProcessCKS.ProcessKG(QStringLiteral("ВАШ 000 НАШ 005 "));
    QCOMPARE(desk.sent(), QStringLiteral("|ЗЦЗЦ КС СТОП НННН  "));
    QVERIFY(State.manualMode);
    QCOMPARE(desk.noted(), QStringList({ManualLine, "412:00:00 РАСХОЖДЕНИЕ СЧЕТЧИКОВ"}));
}

void TestCksReceipt::receiveMismatchInOtherModesSendsNothing()
{
    for (const int mode : {0, 1, 2, 4, 5}) {
        const CksDesk desk;
        State.tlgMode = mode;
        State.PK_in = 4;
        ProcessCKS.ProcessKG(QStringLiteral("ВАШ 000 НАШ 005 "));
        QCOMPARE(desk.sent(), QString());
        QVERIFY(State.manualMode);
        QCOMPARE(desk.noted().filter("РАСХОЖДЕНИЕ").size(), 1);
    }
}

void TestCksReceipt::morningGrace_data()
{
    QTest::addColumn<QTime>("time");
    QTest::addColumn<int>("sent");
    QTest::addColumn<bool>("mismatch");
    row("00:04, none sent", QTime(0, 4), 0, false);
    row("00:06, none sent", QTime(0, 6, 59), 0, false);
    row("00:07, none sent", QTime(0, 7), 0, true);
    row("00:04, one sent", QTime(0, 4), 1, true);
}

void TestCksReceipt::morningGrace()
{
    QFETCH(QTime, time);
    QFETCH(int, sent);
    QFETCH(bool, mismatch);
    const CksDesk desk(time);
    State.tlgMode = 3;
    State.PK_out = sent;
    ProcessCKS.ProcessKG(QStringLiteral("ВАШ 123 НАШ 123 "));
    QCOMPARE(State.manualMode, mismatch);
    QCOMPARE(desk.sent(), mismatch ? QStringLiteral("|ЗЦЗЦ КС СТОП НННН  ") : QString());
}

void TestCksReceipt::openingReceiptIsAnsweredInThreeSeconds_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<bool>("manual");
    QTest::addColumn<int>("countdown");
    row("automatic", "ОТКРОЙТЕ СВЯЗЬ", false, 3);
    row("manual", "ОТКРОЙТЕ СВЯЗЬ", true, 0);
    row("another word", "СВЯЗЬ ОТКРЫТА", false, 0);
    row("one word is too few", "ОТКРОЙТЕ", false, 0);
}

void TestCksReceipt::openingReceiptIsAnsweredInThreeSeconds()
{
    QFETCH(QString, words);
    QFETCH(bool, manual);
    QFETCH(int, countdown);
    const CksDesk desk;
    State.manualMode = manual;
    ProcessCKS.ProcessKG(QStringLiteral("ВАШ 000 НАШ 000 ПОСЛЕДНИЕ ") + words);
    QCOMPARE(State.sendReceiptCountdown, countdown);
}

void TestCksReceipt::renumberingIsGoodOrBad_data()
{
    QTest::addColumn<int>("prevIn");
    QTest::addColumn<int>("prevOut");
    QTest::addColumn<bool>("good");
    row("five lost", 35, 12, true);
    row("none lost", 40, 12, true);
    row("nine lost", 31, 12, true);
    row("ten lost", 30, 12, false);
    row("more than the centre sent", 41, 12, false);
    row("one of ours more", 40, 13, false);
    row("one of ours less", 40, 11, false);
}

void TestCksReceipt::renumberingIsGoodOrBad()
{
    QFETCH(int, prevIn);
    QFETCH(int, prevOut);
    QFETCH(bool, good);
    const CksDesk desk;
    State.prevPK_in = prevIn;
    State.prevPK_out = prevOut;
    State.prevCKS_in = 7;
    State.prevCKS_out = 8;
    State.PK_in = 1;
    State.PK_out = 2;
    State.dayChangeQuiet = true;
    ProcessCKS.ProcessKG(QStringLiteral("СМЕНА НУМЕРАЦИИ ПРИН 0012 ПЕР 0040 "));
    QCOMPARE(State.PK_in, 0);
    QCOMPARE(State.PK_out, 0);
    QVERIFY(!State.dayChangeQuiet);
    QCOMPARE(State.manualMode, !good);
    QCOMPARE(desk.sent(), QString());
    if (good)
        QCOMPARE(desk.noted(), QStringList({"312:00:00 Счетчики сброшены"}));
    else
        QCOMPARE(desk.noted(), QStringList({"412:00:00 Расхождение за предыдущие сутки: ПРИН 0007 ПЕР 0008",
                                            ManualLine, "312:00:00 Счетчики сброшены"}));
}

void TestCksReceipt::goodRenumberingIsAnswered_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<bool>("manual");
    QTest::addColumn<QString>("answer");
    const QString answer = QStringLiteral("\r\n|ЗЦЗЦ КС ВАШ 040=040 НННН  ");
    row("automatic", "ОТКРОЙТЕ СВЯЗЬ ", false, answer);
    row("one word suffices", "ОТКРОЙТЕ", false, answer);
    row("manual", "ОТКРОЙТЕ СВЯЗЬ ", true, "");
    row("another word", "СВЯЗЬ ОТКРЫТА ", false, "");
}

void TestCksReceipt::goodRenumberingIsAnswered()
{
    QFETCH(QString, words);
    QFETCH(bool, manual);
    QFETCH(QString, answer);
    const CksDesk desk;
    State.prevPK_in = 40;
    State.prevPK_out = 12;
    State.manualMode = manual;
    ProcessCKS.ProcessKG(QStringLiteral("СМЕНА НУМЕРАЦИИ ПРИН 0012 ПЕР 0040 ") + words);
    QCOMPARE(desk.sent(), answer);
    QCOMPARE(State.manualMode, manual);
}

void TestCksReceipt::renumberingOutlivesARestart()
{
    const CksDesk desk;
    State.prevPK_in = State.PK_in = 40;
    State.prevPK_out = State.PK_out = 12;
    State.Save();
    ProcessCKS.ProcessKG(QStringLiteral("СМЕНА НУМЕРАЦИИ ПРИН 0012 ПЕР 0040 ОТКРОЙТЕ СВЯЗЬ "));
    State.PK_in = State.PK_out = 1;
    State.Load();
    QCOMPARE(State.PK_in, 0);
    QCOMPARE(State.PK_out, 0);
}

void TestCksReceipt::renumberingOfOneFieldIsIgnored()
{
    const CksDesk desk;
    State.PK_in = 4;
    State.dayChangeQuiet = true;
    ProcessCKS.ProcessKG(QStringLiteral("СМЕНА НУМЕРАЦИИ ПРИН 0012 ПЕР 040 "));
    QCOMPARE(State.PK_in, 4);
    QVERIFY(State.dayChangeQuiet);
    QCOMPARE(desk.noted(), QStringList());
}

void TestCksReceipt::distortionSetsTheFileAside_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<int>("centreIn");
    row("both numbers", "ИСКАЖЕНИЕ 7 ВАШ 12", ".b07", 12);
    row("first number alone", "ИСКАЖЕНИЕ 7 ", ".b07", 6);
    row("plural", "ИСКАЖЕНИЯ 123 ЕЩЕ", ".b23", 6);
    row("plural without a number", "ИСКАЖЕНИЯ", ".brk", 6);
    row("singular without a number", "ИСКАЖЕНИЕ ВАШ 12", ".brk", 6);
}

void TestCksReceipt::distortionSetsTheFileAside()
{
    QFETCH(QString, text);
    QFETCH(QString, suffix);
    QFETCH(int, centreIn);
    const CksDesk desk;
    desk.inTransit();
    State.tlgMode = 3;
    State.CKS_in = 6;
    ProcessCKS.SendTlgText(QStringLiteral("ОСТАТОК"));
    ProcessCKS.ProcessKG(text);
    QCOMPARE(State.tlgMode, 2);
    QVERIFY(State.manualMode);
    QCOMPARE(desk.sent(), QString());
    QCOMPARE(State.CKS_in, centreIn);
    QCOMPARE(desk.names("out"), QStringList(QStringLiteral("20260731u001") + suffix));
    QVERIFY(!State.fileInProgress);
    QCOMPARE(State.currentFile, QString());
    QCOMPARE(State.scanCountdown, 0);
    QCOMPARE(desk.noted(),
             QStringList(
                 {ManualLine,
                  QStringLiteral("312:00:00 ПЕРЕИМЕНОВАНИЕ out/20260731u001 В out/20260731u001") + suffix}));
}

void TestCksReceipt::distortionInAnotherModeIsIgnored()
{
    for (const int mode : {0, 1, 2, 4, 5}) {
        const CksDesk desk;
        desk.inTransit();
        State.tlgMode = mode;
        ProcessCKS.ProcessKG(QStringLiteral("ИСКАЖЕНИЕ 7 ВАШ 12"));
        QCOMPARE(State.tlgMode, mode);
        QCOMPARE(State.CKS_in, 0);
        QVERIFY(State.fileInProgress);
        QVERIFY(!State.manualMode);
    }
}

void TestCksReceipt::distortionWithoutFileOnlyClosesTheChannel()
{
    const CksDesk desk;
    State.tlgMode = 3;
    ProcessCKS.ProcessKG(QStringLiteral("ИСКАЖЕНИЕ 7 ВАШ 12"));
    QCOMPARE(State.tlgMode, 2);
    QVERIFY(State.manualMode);
    QCOMPARE(State.CKS_in, 0);
    QCOMPARE(desk.noted(), QStringList({ManualLine}));
}

void TestCksReceipt::distortionThatCannotMoveIsJournalledOnce()
{
    const CksDesk desk;
    desk.inTransit();
    desk.write("out/20260731u001.b07", "ЗАНЯТО");
    State.tlgMode = 3;
    ProcessCKS.ProcessKG(QStringLiteral("ИСКАЖЕНИЕ 7 ВАШ 12"));
    QCOMPARE(desk.names("out"), QStringList({"20260731u001", "20260731u001.b07"}));
    QCOMPARE(desk.noted().filter("412:00:00 Ошибка переименования").size(), 1);
    QVERIFY(!State.fileInProgress);
}

QTEST_GUILESS_MAIN(TestCksReceipt)
#include "test_cks_receipt.moc"
