// The scan takes up where it can; what comes of it is that of a scan from the start.

#include "tests/procedures/skk_desk.h"

#include <QFileInfo>
#include <QRandomGenerator>
#include <QtTest>

class TestSkkScanMemory : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void equalsAPlainScan_data();
    void equalsAPlainScan();
    void randomBuffersInEveryState_data();
    void randomBuffersInEveryState();
    void emptiedBufferIsANewOne();
    void whatStandsBehindAnAnswerbackIsReadWithTheNextPiece_data();
    void whatStandsBehindAnAnswerbackIsReadWithTheNextPiece();
};

namespace
{
/// Forms of the line, whole and torn, by how often they come; the rare ones end a connection.
const QStringList Common = {"ТЕКСТ ",
                            "#*",
                            "\r\n",
                            "А",
                            "#\r\n",
                            "#\r\n123456 АБОНЕНТ-----",
                            "\r\n#01 |ЦКС&12.00",
                            "ЗЦЗЦ ",
                            "НННН  ",
                            "НННН ",
                            " ",
                            " КРПТ КРПТ КРПТ ",
                            "ЮЮЮЮЮЮЮЮЮ",
                            "ЮЮЮ",
                            "@E",
                            "@C",
                            "@S",
                            "@I",
                            "@",
                            "!>ВЫЗОВ",
                            "ТОЧКА КАНАЛ: АБ-123/45",
                            "=>ВЫЗОВ ПРИНЯТ",
                            "\r\n #12.00",
                            "&DF",
                            "#12",
                            "|#&<>",
                            "ЗЦЗЦ А#*Б НННН  "};
const QStringList Rare = {
    "@H",          "!>ОТБОЙ",   "!>ОТБОЙ\n", "!>СИГНАЛ NP\n", "\r\n&OCC",
    "\r\n&BK\r\n", "\r\n&GA #", "@C",        "!>ВЫЗОВ\n",     "ЗЦЗЦ ПРОВЕРЬТЕ СВОЙ АВТООТВЕТ НННН  "};

QString randomLine(QRandomGenerator &random, int forms)
{
    QString line;
    for (int i = 0; i < forms; ++i) {
        const QStringList &list = random.bounded(25) == 0 ? Rare : Common;
        line += list.at(random.bounded(list.size()));
    }
    return line;
}

/// Everything that the procedure has done up to now.
QString outcome(const SkkDesk &desk)
{
    QStringList all{ProcessSKK.receiveBuffer, desk.sent(), State.currentFile, State.channelName};
    for (const int figure : {State.callState,
                             State.callDirection,
                             State.callResult,
                             State.callNumberResult,
                             State.AutoModeState,
                             State.AutoModeWaitAA,
                             State.AutoModeWaitTimer,
                             State.waitTimeAfterCallEstablished,
                             State.sendAOCountdown,
                             State.hangUpPause,
                             State.PK_in,
                             State.PK_out,
                             State.SKK_in,
                             State.SKK_out,
                             int(State.ignoreAO),
                             int(State.connectionActive),
                             int(State.fileInProgress),
                             int(ProcessSKK.lastCmdIn),
                             ProcessSKK.secondsSinceCmdIn,
                             State.scanCountdown})
        all << QString::number(figure);
    all << QString::number(Log.lines.size()) << Log.lines.mid(Log.lines.size() - 4);
    return all.join(QLatin1Char('/'));
}

/// What the operator, the tick and the line adapter do between two pieces of text.
void between(const SkkDesk &desk, QRandomGenerator &random)
{
    switch (random.bounded(30)) {
    case 0: return desk.automatic(5, 9); // as if a new send were under way
    case 1: return desk.automatic(14, 9, true);
    case 2: State.AutoModeWaitAA = random.bounded(2) == 0 ? 0 : 7 + random.bounded(3); return;
    case 3: return ProcessSKK.setIgnoreAO(random.bounded(2) == 0);
    case 4: return ProcessSKK.setCallDirection(1 + random.bounded(2));
    case 5: State.callState = random.bounded(7); return;
    case 6: return desk.tick();
    case 7: return desk.autoTick();
    case 8:
        if (random.bounded(5) == 0)
            ProcessSKK.clearSKKConnection();
        return;
    default: return;
    }
}

/// The outcome after each piece of a random session; with \a plain each scan begins at the start.
QStringList session(quint32 seed, bool plain)
{
    QRandomGenerator random(seed);
    const SkkDesk desk;
    Options.TcpMode = random.bounded(2) == 0;
    Options.CKS_Type = random.bounded(5);
    Options.noCheckAOText = random.bounded(4) == 0;
    Options.noCheckAOAbonent = random.bounded(2) == 0;
    const QString line = randomLine(random, 150);
    const int longest = 1 + random.bounded(40);
    desk.connect(1 + random.bounded(2));
    QStringList all;
    for (int at = 0; at < line.size();) {
        const int length = 1 + random.bounded(longest);
        CScanPosition::beginAnew = plain;
        desk.receive(line.mid(at, length));
        CScanPosition::beginAnew = false;
        at += length;
        all << outcome(desk);
        between(desk, random);
    }
    return all << desk.names("inp/20260731") << desk.names("out/20260731");
}
} // namespace

/// The sessions store some ten thousand files, each flushed to the disk: one in memory is quicker.
void TestSkkScanMemory::initTestCase()
{
    if (QFileInfo(QStringLiteral("/dev/shm")).isWritable())
        qputenv("TMPDIR", "/dev/shm");
}

void TestSkkScanMemory::equalsAPlainScan_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 20; ++seed)
        QTest::addRow("%u", seed) << seed * 1000;
}

void TestSkkScanMemory::equalsAPlainScan()
{
    QFETCH(quint32, seed);
    for (quint32 run = seed; run < seed + 10; ++run) {
        const QStringList plain = session(run, true);
        const QStringList remembering = session(run, false);
        QCOMPARE(remembering.size(), plain.size());
        for (int i = 0; i < plain.size(); ++i)
            QVERIFY2(remembering.at(i) == plain.at(i),
                     qPrintable(QStringLiteral("seed %1, piece %2:\n%3\ninstead of\n%4")
                                    .arg(run)
                                    .arg(i)
                                    .arg(remembering.at(i), plain.at(i))));
    }
}

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
    QTest::newRow("subscriber") << 7 << QStringLiteral("#\r\n123456-----------");
    QTest::newRow("short centre") << 8 << QStringLiteral("\r\n#01 |ЦКС&---------");
    QTest::newRow("telegram of the centre") << 9 << QString("\r\n#" + QString(45, '-') + "ЗЦЗЦ ТЕКСТ НННН  ");
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

QTEST_GUILESS_MAIN(TestSkkScanMemory)
#include "test_skk_scan_memory.moc"
