// The taking of queue files, the work of each second and the quiet time around midnight.

#include "app/clock.h"
#include "app/options.h"
#include "link/tlg_thread.h"
#include "records/send_model.h"
#include "tests/procedures/cks_desk.h"
#include "tests/support/no_ordinary_file.h"
#include "tests/support/row.h"

#include <QtTest>

class TestCksSend : public QObject
{
    Q_OBJECT

private slots:
    void fileGoesOutUnderTheNextNumber();
    void emptyFileGoesOutAndCounts();
    void textEndsAtTheFirstZeroByte();
    void numberIsSpentBeforeACharacterGoesOut();
    void wrapsFromNineHundredNinetyNine();
    void countersThatDifferEndTheAutomaticMode();
    void badMarkBlocksWithoutALine();
    void unreadableFileKeepsItsRow();
    void specialFileCountsAsUnreadable_data() { specialFiles(); }
    void specialFileCountsAsUnreadable();
    void clearOutEmptiesTheSendBuffer();
    void askCountdown_data();
    void askCountdown();
    void receiptCountdown_data();
    void receiptCountdown();
    void requestGoesBeforeReceipt();
    void countdownsStandStillWhileTheLineTalks();
    void linkDownHoldsTheRequestButLosesTheReceipt();
    void whileStoppingNothingIsSent();
    void bufferIsReadOnNewTextOrEachFifthSecond();
    void quietTimeBegins_data();
    void quietTimeBegins();
    void quietTimeEnds_data();
    void quietTimeEnds();
};

namespace
{
CTableViewModelItem_Send queueRow(const QString &name)
{
    CTableViewModelItem_Send item;
    item.fileName = name;
    item.toCKS = true;
    item.trys = 1;
    return item;
}

/// A desk with the link up and the line quiet.
struct OpenDesk : CksDesk {
    template <class... Args> explicit OpenDesk(Args... args) : CksDesk(args...)
    {
        TlgThread.connected = true;
        State.tlgMode = 3;
        State.secondsSinceRx = 11; // no multiple of five: the buffer is left alone
    }
};
} // namespace

void TestCksSend::fileGoesOutUnderTheNextNumber()
{
    const OpenDesk desk;
    desk.write("out/20260731u001", "П123456\r\nпривет = 1<>");
    State.PK_out = State.CKS_in = 7;
    auto item = queueRow("20260731u001");
    ProcessCKS.checkForSendNewTlg(item);
    QCOMPARE(desk.sent(), QStringLiteral("|ЗЦЗЦ 008 П123456\r\nПРИВЕТ = 1\r\n НННН  "));
    QVERIFY(State.fileInProgress);
    QCOMPARE(State.currentFile, QStringLiteral("20260731u001"));
    QCOMPARE(State.PK_out, 8);
    QCOMPARE(desk.noted(), QStringList("312:00:00 Отправка файла: 20260731u001"));
}

void TestCksSend::emptyFileGoesOutAndCounts()
{
    const OpenDesk desk;
    desk.write("out/20260731u001", "");
    State.PK_out = State.CKS_in = 7;
    auto item = queueRow("20260731u001");
    ProcessCKS.checkForSendNewTlg(item);
    QCOMPARE(desk.sent(), QStringLiteral("|ЗЦЗЦ 008  НННН  "));
    QCOMPARE(State.PK_out, 8);
}

void TestCksSend::textEndsAtTheFirstZeroByte()
{
    const OpenDesk desk;
    desk.write("out/20260731u001", QByteArray("ДО\0ПОСЛЕ", 13));
    auto item = queueRow("20260731u001");
    ProcessCKS.checkForSendNewTlg(item);
    QCOMPARE(desk.sent(), QStringLiteral("|ЗЦЗЦ 001 ДО НННН  "));
}

void TestCksSend::numberIsSpentBeforeACharacterGoesOut()
{
    const OpenDesk desk;
    desk.write("out/20260731u001", "ТЕКСТ");
    auto item = queueRow("20260731u001");
    ProcessCKS.checkForSendNewTlg(item);
    QVERIFY(desk.read("velda_state.ini").contains("PK_out=1"));
}

void TestCksSend::wrapsFromNineHundredNinetyNine()
{
    const OpenDesk desk;
    desk.write("out/20260731u001", "ТЕКСТ");
    State.PK_out = State.CKS_in = 999;
    auto item = queueRow("20260731u001");
    ProcessCKS.checkForSendNewTlg(item);
    QCOMPARE(desk.sent(), QStringLiteral("|ЗЦЗЦ 000 ТЕКСТ НННН  "));
    QCOMPARE(State.PK_out, 0);
}

void TestCksSend::countersThatDifferEndTheAutomaticMode()
{
    const OpenDesk desk;
    desk.write("out/20260731u001", "ТЕКСТ");
    State.PK_out = 7;
    State.CKS_in = 6;
    auto item = queueRow("20260731u001");
    ProcessCKS.checkForSendNewTlg(item);
    QVERIFY(State.manualMode);
    QCOMPARE(State.askReceiptCountdown, 2);
    QVERIFY(!State.fileInProgress);
    QCOMPARE(State.PK_out, 7);
    QCOMPARE(desk.sent(), QString());
    QCOMPARE(desk.noted(), QStringList({"312:00:00 Расхождение счетчиков, отправка  20260731u001 отменена",
                                        "312:00:00 Установлен РУЧНОЙ режим"}));
}

void TestCksSend::badMarkBlocksWithoutALine()
{
    const OpenDesk desk;
    desk.write("out/20260731u001", "ТЕКСТ");
    auto item = queueRow("20260731u001");
    item.bad = true;
    ProcessCKS.checkForSendNewTlg(item);
    QVERIFY(!State.fileInProgress);
    QCOMPARE(State.PK_out, 0);
    QCOMPARE(desk.noted(), QStringList());
}

void TestCksSend::unreadableFileKeepsItsRow()
{
    const OpenDesk desk;
    auto item = queueRow("20260731u001");
    for (int attempt = 0; attempt < 2; ++attempt) {
        ProcessCKS.checkForSendNewTlg(item);
        QVERIFY(!State.fileInProgress);
        QCOMPARE(State.currentFile, QString());
        QCOMPARE(State.PK_out, 0);
    }
    const QStringList once{"312:00:00 Отправка файла: 20260731u001", "412:00:00 Невозможно прочитать файл"};
    QCOMPARE(desk.noted(), once + once);
}

void TestCksSend::specialFileCountsAsUnreadable()
{
    QFETCH(SpecialFile, kind);
    const OpenDesk desk;
    place(desk, kind, "out/20260731u001");
    auto item = queueRow("20260731u001");
    ProcessCKS.checkForSendNewTlg(item);
    QVERIFY(!State.fileInProgress);
    QCOMPARE(State.PK_out, 0);
    QCOMPARE(desk.noted(),
             QStringList({"312:00:00 Отправка файла: 20260731u001", "412:00:00 Невозможно прочитать файл"}));
}

void TestCksSend::clearOutEmptiesTheSendBuffer()
{
    const OpenDesk desk;
    ProcessCKS.SendTlgText("ТЕКСТ");
    ProcessCKS.clearOut();
    QCOMPARE(desk.sent(), QString());
}

void TestCksSend::askCountdown_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    QTest::addColumn<QString>("line");
    row("off", 0, 0, "");
    row("the tick before the last", 2, 1, "");
    row("the last tick", 1, 0, "|ЗЗ ");
}

void TestCksSend::askCountdown()
{
    QFETCH(int, before);
    QFETCH(int, after);
    QFETCH(QString, line);
    const OpenDesk desk;
    State.askReceiptCountdown = before;
    ProcessCKS.timeCheck1sec();
    QCOMPARE(State.askReceiptCountdown, after);
    QCOMPARE(desk.sent(), line);
    QCOMPARE(State.askSent, !line.isEmpty());
}

void TestCksSend::receiptCountdown_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    QTest::addColumn<QString>("line");
    row("off", 0, 0, "");
    row("the tick before the last", 2, 1, "");
    row("the last tick", 1, 0, "|ЗЦЗЦ КС ВАШ 009=009 НННН  ");
}

void TestCksSend::receiptCountdown()
{
    QFETCH(int, before);
    QFETCH(int, after);
    QFETCH(QString, line);
    const OpenDesk desk;
    State.PK_in = 9;
    State.sendReceiptCountdown = before;
    ProcessCKS.timeCheck1sec();
    QCOMPARE(State.sendReceiptCountdown, after);
    QCOMPARE(desk.sent(), line);
}

void TestCksSend::requestGoesBeforeReceipt()
{
    const OpenDesk desk;
    State.askReceiptCountdown = 2;
    State.sendReceiptCountdown = 1;
    ProcessCKS.timeCheck1sec();
    QCOMPARE(State.sendReceiptCountdown, 1);
    ProcessCKS.timeCheck1sec();
    QCOMPARE(desk.sent(), QStringLiteral("|ЗЗ "));
    QCOMPARE(State.sendReceiptCountdown, 1);
    ProcessCKS.timeCheck1sec();
    QCOMPARE(desk.sent(), QStringLiteral("|ЗЦЗЦ КС ВАШ 000=000 НННН  "));
}

void TestCksSend::countdownsStandStillWhileTheLineTalks()
{
    const OpenDesk desk;
    State.askReceiptCountdown = 1;
    for (State.secondsSinceRx = 0; State.secondsSinceRx < 3; ++State.secondsSinceRx) {
        ProcessCKS.timeCheck1sec();
        QCOMPARE(State.askReceiptCountdown, 1);
    }
    ProcessCKS.timeCheck1sec(); // three seconds of silence
    QCOMPARE(desk.sent(), QStringLiteral("|ЗЗ "));
    State.sendReceiptCountdown = 1;
    State.secondsSinceRx = 2;
    ProcessCKS.timeCheck1sec();
    QCOMPARE(State.sendReceiptCountdown, 1);
}

void TestCksSend::linkDownHoldsTheRequestButLosesTheReceipt()
{
    const OpenDesk desk;
    TlgThread.connected = false;
    State.askReceiptCountdown = 1;
    State.sendReceiptCountdown = 1;
    ProcessCKS.timeCheck1sec();
    QCOMPARE(State.askReceiptCountdown, 1);
    QCOMPARE(State.sendReceiptCountdown, 0);
    QCOMPARE(desk.sent(), QString());
    TlgThread.connected = true;
    TlgThread.lineError = 1;
    ProcessCKS.timeCheck1sec();
    QCOMPARE(State.askReceiptCountdown, 1);
}

void TestCksSend::whileStoppingNothingIsSent()
{
    const OpenDesk desk;
    State.stopCountdown = 3;
    State.askReceiptCountdown = 1;
    ProcessCKS.timeCheck1sec();
    QCOMPARE(State.askReceiptCountdown, 0);
    State.sendReceiptCountdown = 1;
    ProcessCKS.timeCheck1sec();
    QCOMPARE(State.sendReceiptCountdown, 0);
    QCOMPARE(desk.sent(), QString());
}

void TestCksSend::bufferIsReadOnNewTextOrEachFifthSecond()
{
    const OpenDesk desk;
    const QString opened = QStringLiteral("ЗЦЗЦ СВЯЗЬ ОТКРЫТА НННН  \r\n");
    State.tlgMode = 0;
    ProcessCKS.processReceive(opened);
    QCOMPARE(State.tlgMode, 0);
    QCOMPARE(ProcessCKS.receiveChunks, 1);
    ProcessCKS.timeCheck1sec();
    QCOMPARE(State.tlgMode, 3);
    QCOMPARE(ProcessCKS.receiveChunks, 0);

    State.tlgMode = 0;
    ProcessCKS.receiveBuffer = opened; // without a chunk
    for (State.secondsSinceRx = 11; State.secondsSinceRx < 15; ++State.secondsSinceRx) {
        ProcessCKS.timeCheck1sec();
        QCOMPARE(State.tlgMode, 0);
    }
    ProcessCKS.timeCheck1sec();
    QCOMPARE(State.tlgMode, 3);
}

void TestCksSend::quietTimeBegins_data()
{
    QTest::addColumn<QTime>("time");
    QTest::addColumn<bool>("quiet");
    row("23:55:59", QTime(23, 55, 59), false);
    row("23:56:00", QTime(23, 56, 0), true);
    row("23:59:59", QTime(23, 59, 59), true);
    row("22:58", QTime(22, 58), false);
    row("00:00", QTime(0, 0), false);
}

void TestCksSend::quietTimeBegins()
{
    QFETCH(QTime, time);
    QFETCH(bool, quiet);
    const OpenDesk desk(time);
    ProcessCKS.timeCheck1sec();
    QCOMPARE(State.dayChangeQuiet, quiet);
}

void TestCksSend::quietTimeEnds_data()
{
    QTest::addColumn<QTime>("time");
    QTest::addColumn<bool>("quiet");
    row("23:54", QTime(23, 54, 59), false);
    row("23:55", QTime(23, 55), true);
    row("23:59", QTime(23, 59, 59), true);
    row("00:00", QTime(0, 0, 59), true);
    row("00:01", QTime(0, 1), false);
}

void TestCksSend::quietTimeEnds()
{
    QFETCH(QTime, time);
    QFETCH(bool, quiet);
    const OpenDesk desk(time);
    State.dayChangeQuiet = true;
    ProcessCKS.checkQuietTime();
    QCOMPARE(State.dayChangeQuiet, quiet);
    QCOMPARE(desk.sent(), quiet ? QString() : QStringLiteral("|ЗЗ "));
}

QTEST_GUILESS_MAIN(TestCksSend)
#include "test_cks_send.moc"
