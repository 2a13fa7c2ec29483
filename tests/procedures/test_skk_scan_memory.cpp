// The scan takes up where it can; what comes of it is that of a scan from the start.

#include "tests/procedures/skk_desk.h"
#include "tests/procedures/skk_forms.h"
#include "tests/support/row.h"
#include "tests/support/sessions.h"

#include <QRandomGenerator>
#include <QtTest>

class TestSkkScanMemory : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Sessions::workInMemory(); }
    void randomBuffersInEveryState_data();
    void randomBuffersInEveryState();
    void emptiedBufferIsANewOne();
    void whatStandsBehindAnAnswerbackIsReadWithTheNextPiece_data();
    void whatStandsBehindAnAnswerbackIsReadWithTheNextPiece();
    void answerbackThatEndsTheScanLeavesWhatIsBehind_data();
    void answerbackThatEndsTheScanLeavesWhatIsBehind();
};

namespace
{
QString randomLine(QRandomGenerator &random, int forms)
{
    QString line;
    for (int i = 0; i < forms; ++i) {
        const QStringList &list = random.bounded(25) == 0 ? SkkForms::Rare : SkkForms::Common;
        line += list.at(random.bounded(list.size()));
    }
    return line;
}
} // namespace

void TestSkkScanMemory::randomBuffersInEveryState_data()
{
    QTest::addColumn<int>("autoState");
    for (int state = 0; state <= 17; ++state)
        QTest::addRow("%d", state) << state;
}

/// Every branch consumes, advances or ends: whatever the buffer holds, the scan comes to its end, and it
/// never makes the buffer longer.
void TestSkkScanMemory::randomBuffersInEveryState()
{
    QFETCH(int, autoState);
    QRandomGenerator random(quint32(autoState) + 1);
    const SkkDesk desk;
    for (const int direction : {0, 1, 2}) {
        for (const int callState : {0, 1, 2, 4, 5, 6}) {
            for (const int kind : {0, 7, 8, 9}) {
                for (int run = 0; run < 3; ++run) {
                    const QString line = randomLine(random, 20);
                    Options.TcpMode = run != 0;
                    Options.CKS_Type = random.bounded(6);
                    Options.noCheckAOText = random.bounded(2) == 0;
                    Options.timeFormat = random.bounded(2) == 0 ? "" : "hh.mm";
                    State.ignoreAO = random.bounded(2) == 0;
                    State.callDirection = direction;
                    State.callState = callState;
                    State.AutoModeState = autoState;
                    State.AutoModeWaitAA = kind;
                    ProcessSKK.receiveBuffer.clear();
                    desk.receive(line);
                    QVERIFY(line.endsWith(ProcessSKK.receiveBuffer));
                }
            }
        }
    }
}

void TestSkkScanMemory::emptiedBufferIsANewOne()
{
    const SkkDesk desk;
    desk.automatic(13, 1);
    desk.receive(QString(100, 'A'));
    desk.autoTick(); // empties the buffer for the last question
    State.AutoModeState = 13;
    State.AutoModeWaitAA = 0;
    desk.receive("ЗЦЗЦ А НННН  " + QString(200, 'B'));
    QCOMPARE(State.PK_in, 1);
    QCOMPARE(ProcessSKK.receiveBuffer, QString(200, 'B'));
}

void TestSkkScanMemory::whatStandsBehindAnAnswerbackIsReadWithTheNextPiece_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("text"); // taken whole
    row("subscriber", 7, QStringLiteral("#\r\n123456-----------"));
    row("short centre", 8, QStringLiteral("\r\n#01 |ЦКС&---------"));
    row("telegram of the centre", 9, QString("\r\n#" + QString(45, '-') + "ЗЦЗЦ ТЕКСТ НННН  "));
}

/// An answerback leaves the buffer with all that stands in front of it, but the scan goes on at its place,
/// or ends: what has moved up in front of that place is read when more text comes.
void TestSkkScanMemory::whatStandsBehindAnAnswerbackIsReadWithTheNextPiece()
{
    QFETCH(int, kind);
    QFETCH(QString, text);
    for (const bool plain : {true, false}) {
        const SkkDesk desk;
        desk.automatic(kind == 9 ? 14 : 5, 9, kind != 7);
        State.AutoModeWaitAA = kind;
        const QString behind = QString(40, 'B');
        desk.receive(QString(30, 'A') + text + "#*" + behind);
        QCOMPARE(ProcessSKK.receiveBuffer, "#*" + behind);
        QCOMPARE(desk.sent(), "");
        CScanPosition::beginAnew = plain;
        desk.receive("C");
        CScanPosition::beginAnew = false;
        QCOMPARE(ProcessSKK.receiveBuffer, behind + "C");
        // In state 6 the question only cuts the pause short.
        QCOMPARE(State.AutoModeState, kind == 9 ? 14 : 6);
        QCOMPARE(State.AutoModeWaitTimer, kind == 9 ? 9 : 1);
        QCOMPARE(desk.sent(), kind == 9 ? "#\r\n777777 ДЕСК" : "");
    }
}

void TestSkkScanMemory::answerbackThatEndsTheScanLeavesWhatIsBehind_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("answerback");
    QTest::addColumn<QString>("behind");
    QTest::addColumn<int>("timer"); // afterwards; a question that is read makes it 1
    QTest::addColumn<QString>("sent");
    const auto row = [](const char *name, int kind, int state, const char *answerback, const char *behind,
                        int timer, const char *sent) {
        const int length = kind == 9 ? 50 : 20;
        ::row(name, kind, state, QString::fromUtf8(answerback).leftJustified(length, '-'), QString(behind),
              timer, QString(sent));
    };
    row("subscriber, taken", 7, 5, "#\r\n123456", "Б#*", 5, "");
    row("subscriber, refused", 7, 5, "#\r\n000000", "@C", 0, "@H");
    row("long centre, before its time", 9, 11, "\r\n#01 |ЦКС&12.00", "#*Б", 9, "");
    row("long centre, taken", 9, 14, "\r\n#01 |ЦКС&12.00", "#*Б", 15, "");
    row("long centre, refused", 9, 14, "\r\n#02", "@C", 0, "@H");
    row("telegram of the centre without its end", 9, 14, "\r\n#02 ЗЦЗЦ ТЕКСТ", "#*Б", 9, "");
}

/// The call of the scan ends with these answerbacks. What came with them in one piece waits for the next.
void TestSkkScanMemory::answerbackThatEndsTheScanLeavesWhatIsBehind()
{
    QFETCH(int, kind);
    QFETCH(int, state);
    QFETCH(QString, answerback);
    QFETCH(QString, behind);
    QFETCH(int, timer);
    QFETCH(QString, sent);
    const SkkDesk desk;
    desk.automatic(state, 9, kind != 7);
    State.AutoModeWaitAA = kind;
    desk.receive(answerback + behind);
    const bool taken = kind == 7 && sent.isEmpty();
    QCOMPARE(ProcessSKK.receiveBuffer, taken ? behind : answerback + behind);
    QCOMPARE(State.AutoModeWaitTimer, timer);
    QCOMPARE(desk.sent(), sent);
    QCOMPARE(State.callDirection, sent.isEmpty() ? 2 : 0);
}

QTEST_GUILESS_MAIN(TestSkkScanMemory)
#include "test_skk_scan_memory.moc"
