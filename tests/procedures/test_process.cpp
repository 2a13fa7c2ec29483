#include "app/options.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "procedures/process_cks.h"
#include "procedures/process_direct.h"
#include "procedures/process_skk.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"
#include "text/mtk2.h"

#include <QtTest>

/// The door to the line that the procedures share.
class TestProcess : public QObject
{
    Q_OBJECT

private slots:
    void textReachesTheLine_data();
    void textReachesTheLine();
    void nationalLettersAreMaskedInTatarAlone_data();
    void nationalLettersAreMaskedInTatarAlone();
    void textIsAppendedToWhatWaits();
    void emptyTextLeavesTheBufferAlone();
    void bothNumberedProceduresHaveTheSameDoor();
    void directTimerDoesNothing();
    void directTakesNoAdapterCommand();
};

void TestProcess::textReachesTheLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("line");

    row("angle brackets become CR and LF", "<>А<<Б>>", "\r\nА\r\rБ\n\n");
    row("CR and LF stay", "А\r\nБ", "А\r\nБ");
    row("small letters become capitals", "привет Abc ё", "ПРИВЕТ ABC Ё");
    row("register marks stay", "|зцзц #001 &A", "|ЗЦЗЦ #001 &A");
    row("hang-up command", "@H", "@H");
    row("dialling command", "@C@N2345@", "@C@N2345@");
    row("small letter of a command is lost", "@C@n", "@C@N");
    row("command amid text", "а@H<б", "А@H\rБ");
    row("Georgian letters stay", QString(QChar(0x10D0)) + QChar(0x10FA),
        QString(QChar(0x10D0)) + QChar(0x10FA));
    row("blanks", "   ", "   ");
}

void TestProcess::textReachesTheLine()
{
    QFETCH(QString, text);
    QFETCH(QString, line);
    const Desk desk;
    ProcessCKS.SendTlgText(text);
    QCOMPARE(desk.sent(), line);
}

void TestProcess::nationalLettersAreMaskedInTatarAlone_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("line");

    row("none", 0, "АӘҺӘ");
    row("Tatar, a small letter is not masked", 1, "А\?\?\?'''Ә");
    row("Georgian", 2, "АӘҺӘ");
    row("Armenian", 4, "АӘҺӘ");
}

void TestProcess::nationalLettersAreMaskedInTatarAlone()
{
    QFETCH(int, language);
    QFETCH(QString, line);
    const Desk desk;
    Options.nationalLanguageUse = language;
    initMTK2Table();
    ProcessCKS.SendTlgText("АӘҺә");
    QCOMPARE(desk.sent(), line);
}

void TestProcess::textIsAppendedToWhatWaits()
{
    const Desk desk;
    ProcessCKS.SendTlgText("А");
    ProcessCKS.SendTlgText("б<");
    QCOMPARE(desk.sent(), "АБ\r");
}

void TestProcess::emptyTextLeavesTheBufferAlone()
{
    const Desk desk;
    ProcessCKS.SendTlgText("А");
    ProcessCKS.SendTlgText("");
    ProcessCKS.SendTlgText(QString());
    QCOMPARE(desk.sent(), "А");
}

void TestProcess::bothNumberedProceduresHaveTheSameDoor()
{
    const Desk desk;
    CProcess *const procedures[] = {&ProcessCKS, &ProcessSKK};
    for (CProcess *procedure : procedures) {
        procedure->SendTlgText("зз<>");
        QCOMPARE(desk.sent(), "ЗЗ\r\n");
    }
}

void TestProcess::directTimerDoesNothing()
{
    const Desk desk;
    Options.processMode = 2;
    const QStringList journal = desk.journal();
    State.tlgModeSeconds = 7;
    State.askReceiptCountdown = 2;
    State.sendReceiptCountdown = 2;
    State.AutoModeWaitTimer = 2;
    State.fileInProgress = true;
    for (int second = 0; second < 100; ++second)
        ProcessDirect.timeCheck1sec();

    QCOMPARE(desk.sent(), "");
    QCOMPARE(desk.journal(), journal);
    QCOMPARE(State.tlgMode, 0);
    QCOMPARE(State.tlgModeSeconds, 7);
    QCOMPARE(State.askReceiptCountdown, 2);
    QCOMPARE(State.sendReceiptCountdown, 2);
    QCOMPARE(State.AutoModeWaitTimer, 2);
    QVERIFY(State.fileInProgress);
}

void TestProcess::directTakesNoAdapterCommand()
{
    const Desk desk;
    Options.processMode = 2;
    ProcessDirect.receiveBuffer = "ЗЦЗЦ ";
    CProcess *const procedure = &ProcessDirect;
    procedure->processReceiveCmd("@H");
    QCOMPARE(ProcessDirect.receiveBuffer, "ЗЦЗЦ ");
    QCOMPARE(desk.sent(), "");
}

QTEST_GUILESS_MAIN(TestProcess)
#include "test_process.moc"
