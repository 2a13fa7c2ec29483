// What the exchange of the switched-channel network holds against a terminal, and what it does not.

#include "tests/linesim/exchange_desk.h"
#include "tests/support/row.h"

class TestLinesimSwitchBreaches : public QObject
{
    Q_OBJECT

private slots:
    void breaches_data();
    void breaches();
    void silenceIsABreach_data();
    void silenceIsABreach();
    void textUnderWayAsTheNetworkHangsUpIsNone();
    void lostLinkEndsTheConnection();
    void remainsOfALostConnectionAreNoBreach();
    void callerWaitsForTheEndOfTheRemains();
    void callerWaitsNoLongerForATerminalThatHasForgotten();
};

namespace
{
void loseWithACallerWaiting(Exchange &exchange)
{
    exchange.connectTo(QStringLiteral("112233"));
    exchange.line.lineLost();
    exchange.line.call(QStringLiteral("112233"), SwitchedLine::callersHabits());
}
} // namespace

void TestLinesimSwitchBreaches::breaches_data()
{
    QTest::addColumn<QString>("before"); // a number dialled before, empty for an idle line
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("breach");
    row("text without a connection", "", "ПРИВЕТ", "text without a connection: ПРИВЕТ");
    row("question without a connection", "", "#*", "text without a connection: #*");
    row("answerback without a connection", "", own, "text without a connection: #\\r\\n654321 ЗНАМЯ");
    row("text before the result", "", "@C@N112233@ПРИВЕТ", "text without a connection: ПРИВЕТ");
    row("dialling while connected", "112233", "@C@N112233@", "dialling while connected");
    row("dialling behind a refusal", "222222", "@C@N112233@", "dialling without a hang-up");
    row("text behind a refusal", "222222", "ПРИВЕТ", "text without a connection: ПРИВЕТ");
    row("seizure while connected", "112233", "@E", "seizure of a busy line");
    row("no number", "", "@C@N@", "no number");
    row("unknown command", "", "@S", "no command @S");
}

void TestLinesimSwitchBreaches::breaches()
{
    QFETCH(QString, before);
    QFETCH(QString, line);
    QFETCH(QString, breach);
    Exchange exchange(zarya + QStringLiteral("\n222222:А:busy"));
    if (!before.isEmpty()) {
        exchange.hear(QStringLiteral("@C@N") + before + QLatin1Char('@'));
        exchange.pass(3);
    }
    exchange.hear(line);
    QCOMPARE(exchange.violations(), QStringList(QStringLiteral("violation: ") + breach));
    QCOMPARE(exchange.log.violations, 1);
}

void TestLinesimSwitchBreaches::silenceIsABreach_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("seconds"); // that are still allowed
    QTest::addColumn<QString>("breach");
    row("no number", "@C", 30, "no hang-up in a call");
    row("no hang-up without a result", "@C@N333333@", 100, "no hang-up in a call");
    row("silent connection", "@C@N112233@", 123, "no hang-up in a silent connection");
    row("call not accepted", "ring", 30, "call not accepted");
    row("no hang-up behind the network's", "release", 30, "no hang-up");
    row("no answerback", "asked", 30, "no answerback in 30 s");
}

void TestLinesimSwitchBreaches::silenceIsABreach()
{
    QFETCH(QString, line);
    QFETCH(int, seconds);
    QFETCH(QString, breach);
    Exchange exchange(zarya + QStringLiteral("\n333333:А:nothing\n444444:А:ask@connect+1"));
    exchange.pass(4);
    if (line == QStringLiteral("ring")) {
        exchange.line.call(QStringLiteral("112233"), Habits());
        exchange.pass(1);
    } else if (line == QStringLiteral("release")) {
        exchange.connectTo(QStringLiteral("112233"));
        exchange.line.hangUp();
    } else if (line == QStringLiteral("asked")) {
        exchange.connectTo(QStringLiteral("444444"));
        exchange.pass(1);
    } else {
        exchange.hear(line);
    }
    exchange.pass(seconds - 1);
    QCOMPARE(exchange.violations(), QStringList());
    exchange.pass(2);
    QCOMPARE(exchange.violations(), QStringList(QStringLiteral("violation: ") + breach));
}

void TestLinesimSwitchBreaches::textUnderWayAsTheNetworkHangsUpIsNone()
{
    Exchange exchange(zarya + QStringLiteral("hang@connect+1"));
    exchange.connectTo(QStringLiteral("112233"));
    exchange.pass(1);
    QCOMPARE(exchange.speech(), QStringLiteral("@H"));
    exchange.hear(QStringLiteral("ПРИВЕТ#*"));
    exchange.hear(QStringLiteral("@H"));
    QCOMPARE(int(exchange.line.state()), int(SwitchedLine::Idle));
    QCOMPARE(exchange.violations(), QStringList());
}

void TestLinesimSwitchBreaches::lostLinkEndsTheConnection()
{
    Exchange exchange(zarya);
    exchange.connectTo(QStringLiteral("112233"));
    exchange.line.lineLost();
    QCOMPARE(int(exchange.line.state()), int(SwitchedLine::Idle));
    QVERIFY(exchange.lines.contains(QStringLiteral("down: 112233 by loss of the link")));
}

void TestLinesimSwitchBreaches::callerWaitsForTheEndOfTheRemains()
{
    Exchange exchange(zarya);
    loseWithACallerWaiting(exchange);
    exchange.pass(10);
    exchange.hear(QStringLiteral("ПРИВЕТ"));
    QCOMPARE(exchange.speech(), QString());
    exchange.hear(QStringLiteral("@H"));
    exchange.pass(5);
    QCOMPARE(exchange.speech(), QStringLiteral("@C"));
    QCOMPARE(exchange.violations(), QStringList());
}

// A terminal that was killed has nothing left to say, and no hang-up.
void TestLinesimSwitchBreaches::callerWaitsNoLongerForATerminalThatHasForgotten()
{
    Exchange exchange(zarya);
    loseWithACallerWaiting(exchange);
    exchange.pass(60);
    exchange.hear(QStringLiteral("ПРИВЕТ"));
    exchange.pass(120); // the longest silence
    QCOMPARE(exchange.speech(), QString());
    exchange.pass(2);
    QCOMPARE(exchange.speech(), QStringLiteral("@C"));
    QCOMPARE(exchange.violations(), QStringList());
}

// What waits as the link is lost goes out on the next one, up to the hang-up behind it and no further.
void TestLinesimSwitchBreaches::remainsOfALostConnectionAreNoBreach()
{
    Exchange exchange(zarya);
    exchange.connectTo(QStringLiteral("112233"));
    exchange.line.lineLost();
    exchange.line.lineLost();
    exchange.hear(QStringLiteral("ПРИВЕТ"));
    QCOMPARE(exchange.violations(), QStringList());
    QVERIFY(exchange.lines.contains(QStringLiteral("remains: ПРИВЕТ")));
    exchange.hear(QStringLiteral("@H"));
    exchange.hear(QStringLiteral("ПРИВЕТ"));
    QCOMPARE(exchange.violations(),
             QStringList(QStringLiteral("violation: text without a connection: ПРИВЕТ")));
}

QTEST_GUILESS_MAIN(TestLinesimSwitchBreaches)
#include "test_linesim_switch_breaches.moc"
