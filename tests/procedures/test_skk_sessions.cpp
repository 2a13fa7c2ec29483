// The scan of a dialled connection takes up where it can. Beside it stands the one that begins at the start
// of the buffer with each piece, and random sessions that compare them.

#include "tests/procedures/skk_desk.h"
#include "tests/procedures/skk_forms.h"
#include "tests/support/sessions.h"

#include <QtTest>

class TestSkkSessions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Sessions::workInMemory(); }
    void equalsAScanFromTheStart();
};

namespace
{
/// What the operator, the tick and the line adapter do between two pieces of text.
enum Act { Text = 0, Sending, LastAnswer, Kind, Ignore, Direction, CallStep, Tick, AutoTick, Clear, Tcp };

const QStringList Forms = SkkForms::Common + SkkForms::Rare;

Session make(quint32 seed)
{
    QRandomGenerator random(seed);
    Session session;
    session.seed = seed;
    session.steps.append({{}, Direction, 1 + random.bounded(2)});
    for (int day = random.bounded(6); day >= 0; --day) {
        QString line;
        for (int i = random.bounded(25); i >= 0; --i)
            line += Sessions::anyOf(Forms, random);
        for (const QString &piece : Sessions::pieces(line, random)) {
            session.steps.append({piece, Text, 0});
            if (random.bounded(8) == 0)
                session.steps.append({{}, Sending + random.bounded(Tcp), random.bounded(60)});
        }
    }
    return session;
}

void act(const SkkDesk &desk, int kind, int size)
{
    switch (Act(kind)) {
    case Text: return;
    case Sending: return desk.automatic(5, 9); // as if a new send were under way
    case LastAnswer: return desk.automatic(14, 9, true);
    case Kind: State.AutoModeWaitAA = size % 2 == 0 ? 0 : 7 + size % 3; return;
    case Ignore: return ProcessSKK.setIgnoreAO(size % 2 == 0);
    case Direction: return ProcessSKK.setCallDirection(1 + size % 2);
    case CallStep: State.callState = size % 7; return;
    case Tick: return desk.tick();
    case AutoTick: return desk.autoTick();
    case Clear:
        if (size % 5 == 0)
            ProcessSKK.clearSKKConnection();
        return;
    case Tcp: Options.TcpMode = size % 2 == 0; return;
    }
}

QString outcome(const SkkDesk &desk, int &shownLines)
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
    all << Log.lines.mid(shownLines);
    shownLines = qMax(0, Log.lines.size() - 1);
    return all.join(QLatin1Char('/'));
}

QStringList run(const Session &session, bool naive)
{
    const SkkDesk desk;
    QRandomGenerator random(session.seed);
    Options.TcpMode = random.bounded(2) == 0;
    Options.CKS_Type = random.bounded(5);
    Options.noCheckAOText = random.bounded(4) == 0;
    Options.noCheckAOAbonent = random.bounded(2) == 0;
    QStringList all;
    int shownLines = 0;
    for (const Session::Step &step : session.steps) {
        CScanPosition::beginAnew = naive;
        if (step.act == Text)
            desk.receive(step.text);
        else
            act(desk, step.act, step.size);
        CScanPosition::beginAnew = false;
        all << outcome(desk, shownLines);
    }
    return all << Sessions::files(desk, "inp") << Sessions::files(desk, "out") << desk.journal();
}
} // namespace

void TestSkkSessions::equalsAScanFromTheStart()
{
    const QByteArray difference = Sessions::compare(Sessions::count(1500), make, run);
    QVERIFY2(difference.isEmpty(), difference.constData());
}

QTEST_GUILESS_MAIN(TestSkkSessions)
#include "test_skk_sessions.moc"
