#include "app/options.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "procedures/process_cks.h"
#include "procedures/process_direct.h"
#include "procedures/process_skk.h"
#include "records/protocol.h"
#include "tests/support/row.h"
#include "tests/support/sessions.h"
#include "tests/ui/window/station.h"
#include "ui/form_main.h"

#include <QTimer>
#include <QtTest>

#include <climits>

/// Received text is taken in turns of the event loop. Here a turn has no time at all, so that each piece has
/// one of its own; that must show in nothing but the ticks that come in between.
class TestReceiveTurns : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Sessions::workInMemory(); }
    void piecewiseIsAsAtOnce_data();
    void piecewiseIsAsAtOnce();
    void tickComesBetweenTurns();
    void textThatComesBetweenTurnsKeepsItsPlace();
    void nothingIsTakenWhileOtherTextIsTaken();
    void incompleteCommandAsksForNoTurns();
    void waitingTextIsNoSilence();
    void automaticSendWaitsForTheTextThatHasCome();
    void endTakesWhatWaits();
    void endDoesNotWaitForAFarEndThatTalksOn();
    void windowGoneTakesNothingMore();
};

namespace
{
constexpr int AtOnce = INT_MAX;
constexpr int Piecewise = 0;

// clang-format off
/// What may come from the line, as words in any order: forms of all procedures, whole and torn, and noise.
const QStringList Words = {
    "@C", "@E", "@H", "@S", "@I", "@12*", "@57X", "@N123@", "@n7+", "@", "@5", "#*",
    "ЗЦЗЦ ", "ЗЦЗЦ ", "НННН  ", "НННН  ", "001 ", "002 ", "\r\n", "\r\n", "ТЕКСТ ", "Я\n", "|#&", "НН",
    "ВАШ 000 ", "НАШ 000 ", "СВЯЗЬ ОТКРЫТА ", "ZCZC NNNN  ",
    "ЗЦЗЦ ВАШ 000 НАШ 000 НННН  \r\n", "ЗЦЗЦ 001 ТЕКСТ НННН  \r\n",
    "ЗЦЗЦ #002 ТЕКСТ НННН  1200\r\n", "ЗЦЗЦ ПРОВЕРЬТЕ СВОЙ АВТООТВЕТ НННН  ",
    "!>ВЫЗОВ\n", "!>ОТБОЙ\n", " КРПТ КРПТ КРПТ ", "ЮЮЮЮЮЮЮЮЮ",
    "\r\n&GA #", "\r\n&OCC", "\r\n #12.00",
};
// clang-format on

Session randomSession(quint32 seed)
{
    QRandomGenerator random(seed);
    Session session;
    session.seed = seed;
    for (int i = 2 + random.bounded(15); i > 0; --i) {
        Session::Step step;
        for (int words = 1 + random.bounded(30); words > 0; --words)
            step.text += Words.at(random.bounded(Words.size()));
        step.size = random.bounded(4); // ticks behind it
        session.steps << step;
    }
    return session;
}

// clang-format off
QVector<int> figures()
{
    return {
        State.PK_in, State.PK_out, State.CKS_in, State.CKS_out, State.SKK_in, State.SKK_out,
        State.tlgMode, State.tlgModeSeconds, State.scanCountdown, State.askReceiptCountdown,
        State.sendReceiptCountdown, State.sendAOCountdown, State.idleSeconds, State.callState,
        State.hangUpPause, State.callDirection, State.callResult, State.waitTimeAfterCallEstablished,
        State.secondsSinceRx, State.secondsSinceTx, int(State.manualMode), int(State.ignoreAO),
        int(State.connectionActive), int(ProcessSKK.lastCmdIn), ProcessSKK.secondsSinceCmdIn,
        ProcessSKK.secondsSinceCmdOut,
    };
}
// clang-format on

/// Everything that a session may leave behind, a line each.
QStringList leftBehind(const Station &station)
{
    QStringList all = station.desk.journal();
    all << station.desk.sent() << TlgThread.recvBuffer.mGet() << State.connectionText << State.channelName;
    all << ProcessCKS.receiveBuffer << ProcessSKK.receiveBuffer << ProcessDirect.receiveBuffer;
    for (const int figure : figures())
        all << QString::number(figure);
    return all + Sessions::files(station.desk, QStringLiteral("."));
}

void takeAll(const Station &station)
{
    while (station.form->receiver.moreToReceive)
        QCoreApplication::processEvents();
}

QStringList run(int mode, bool tcp, const Session &session, int milliseconds)
{
    Station station(mode, [tcp] {
        Options.TcpMode = tcp;
        Options.SKKTiming[0].Idle_Time_Before_HangUp = 5;
    });
    station.form->receiver.receiveMilliseconds = milliseconds;
    station.setLinkUp(true);
    QStringList seen;
    for (const Session::Step &step : session.steps) {
        station.receive(step.text);
        takeAll(station);
        station.tick(step.size);
        seen << leftBehind(station).join(QLatin1Char('\n'));
    }
    return seen;
}

/// A window that takes one piece in a turn, with a journal that has nothing to tell yet.
struct SlowStation : Station {
    explicit SlowStation(int mode = Direct) : Station(mode)
    {
        form->receiver.receiveMilliseconds = Piecewise;
        (void)news();
    }
};
} // namespace

void TestReceiveTurns::piecewiseIsAsAtOnce_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("tcp");
    row("centre", int(CKS), true);
    row("dialled, adapter", int(SKK), false);
    row("dialled, TCP", int(SKK), true);
    row("direct", int(Direct), true);
}

void TestReceiveTurns::piecewiseIsAsAtOnce()
{
    QFETCH(int, mode);
    QFETCH(bool, tcp);
    const QByteArray difference = Sessions::compare(
        Sessions::count(25), randomSession, [mode, tcp](const Session &session, bool atOnce) {
            return run(mode, tcp, session, atOnce ? AtOnce : Piecewise);
        });
    QVERIFY2(difference.isEmpty(), difference.constData());
}

void TestReceiveTurns::tickComesBetweenTurns()
{
    SlowStation station;
    QStringList ticks;
    QTimer second; // due with each turn of the event loop
    connect(&second, &QTimer::timeout, [&] {
        ticks << TlgThread.recvBuffer.mGet();
        station.tick();
    });
    second.start(0);
    station.receive(QStringLiteral("А@CБ@H"));
    takeAll(station);
    QVERIFY(ticks.contains(QStringLiteral("Б@H")) && ticks.contains(QStringLiteral("@H")));
    QCOMPARE(station.news(), QStringList{QStringLiteral("1А@CБ@H")});
}

void TestReceiveTurns::textThatComesBetweenTurnsKeepsItsPlace()
{
    SlowStation station;
    station.receive(QStringLiteral("А@CБ@5"));
    QVERIFY(station.form->receiver.moreToReceive);
    station.receive(QStringLiteral("7*В@"));
    station.receive(QStringLiteral("H"));
    QCOMPARE(TlgThread.recvBuffer.mGet(), QStringLiteral("@CБ@57*В@H")); // only turns take it
    takeAll(station);
    QCOMPARE(station.news(), QStringList{QStringLiteral("1А@CБ@57*В@H")});
    QCOMPARE(ProcessDirect.receiveBuffer, QStringLiteral("АБВ"));
}

void TestReceiveTurns::nothingIsTakenWhileOtherTextIsTaken()
{
    for (const int milliseconds : {AtOnce, Piecewise}) {
        Station station(Direct);
        (void)station.news();
        station.form->receiver.receiveMilliseconds = milliseconds;
        QStringList waiting;
        // As if each piece let the event loop run, and the link thread with it.
        connect(&Log, &CProtocol::Changed, station.form.get(), [&] {
            if (waiting.size() < 2)
                station.receive(QStringLiteral("В@H"));
            QCoreApplication::processEvents();
            waiting << TlgThread.recvBuffer.mGet();
        });
        station.receive(QStringLiteral("А@CБ@5"));
        takeAll(station);
        QVERIFY(waiting.at(0).endsWith(QStringLiteral("В@H")));
        QVERIFY(waiting.at(1).endsWith(QStringLiteral("В@H")));
        QCOMPARE(station.news(), QStringList{QStringLiteral("1А@CБ@5В@HВ@H")});
    }
}

void TestReceiveTurns::incompleteCommandAsksForNoTurns()
{
    SlowStation station;
    station.receive(QStringLiteral("@5"));
    QVERIFY(!station.form->receiver.moreToReceive);
    QCOMPARE(TlgThread.recvBuffer.mGet(), QStringLiteral("@5"));
    station.receive(QStringLiteral("7*"));
    takeAll(station);
    QCOMPARE(station.news(), QStringList{QStringLiteral("1@57*")});
}

void TestReceiveTurns::waitingTextIsNoSilence()
{
    SlowStation station(SKK);
    station.receive(QStringLiteral("А@EБ"));
    State.idleSeconds = State.secondsSinceRx = 4;
    takeAll(station);
    QCOMPARE(State.idleSeconds, 0);
    QCOMPARE(State.secondsSinceRx, 0);
}

void TestReceiveTurns::automaticSendWaitsForTheTextThatHasCome()
{
    SlowStation station(SKK);
    station.setLinkUp(true);
    State.scanCountdown = 1000;
    ProcessSKK.setCallDirection(Outgoing);
    State.AutoModeState = AutoBeforeQuestion;
    State.AutoModeWaitTimer = 1;
    station.receive(QStringLiteral("А@EБ"));
    station.tick(2); // the question would wipe out what waits
    QCOMPARE(TlgThread.recvBuffer.mGet(), QStringLiteral("@EБ"));
    QCOMPARE(State.AutoModeWaitTimer, 1);
    takeAll(station);
    station.tick();
    QCOMPARE(station.news(), QStringList{QStringLiteral("1А@EБ")});
    QCOMPARE(station.desk.sent(), QStringLiteral("#*"));
    QCOMPARE(State.connectionText, QStringLiteral("АБ"));
}

void TestReceiveTurns::endTakesWhatWaits()
{
    SlowStation station;
    station.form->show();
    station.receive(QStringLiteral("ЗЦЗЦ 1\r\nОДИН\r\nНННН  @CЗЦЗЦ 2\r\nДВА\r\nНННН  @5"));
    QCOMPARE(State.PK_in, 1);
    State.closeAllowed = true;
    QVERIFY(station.form->close());
    QCOMPARE(State.PK_in, 2);
    QCOMPARE(TlgThread.recvBuffer.mGet(), QStringLiteral("@5")); // what is not whole waits to the end
    QVERIFY(station.news().contains(QStringLiteral("1НННН  @CЗЦЗЦ 2<>")));
}

void TestReceiveTurns::endDoesNotWaitForAFarEndThatTalksOn()
{
    SlowStation station;
    station.form->show();
    station.receive(QStringLiteral("А@CБ"));
    connect(&Log, &CProtocol::Changed, station.form.get(),
            [] { TlgThread.recvBuffer.mAppend(QStringLiteral("@EВ")); });
    State.closeAllowed = true;
    QVERIFY(station.form->close());
    QVERIFY(station.news().join(QString()).startsWith(QStringLiteral("1А@CБ")));
    QVERIFY(!TlgThread.recvBuffer.mIsEmpty());
}

void TestReceiveTurns::windowGoneTakesNothingMore()
{
    SlowStation station;
    station.receive(QStringLiteral("А@CБ"));
    QVERIFY(station.form->receiver.moreToReceive);
    station.form.reset();
    QCoreApplication::processEvents();
    QCOMPARE(TlgThread.recvBuffer.mGet(), QStringLiteral("@CБ"));
}

QTEST_MAIN(TestReceiveTurns)
#include "test_receive_turns.moc"
