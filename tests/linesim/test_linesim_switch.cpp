// The exchange of the switched-channel network in dialogue with a terminal.

#include "tests/linesim/exchange_desk.h"
#include "tests/support/row.h"

#include <QtTest>

class TestLinesimSwitch : public QObject
{
    Q_OBJECT

private slots:
    void putsACallThrough();
    void numberBehindTheGoAhead();
    void refusesACall_data();
    void refusesACall();
    void successShows_data();
    void successShows();
    void terminalThatDoesNotHangUpIsDisconnected();
    void unknownNumberIsWrong();
    void partyAnswersQuestions_data();
    void partyAnswersQuestions();
    void telegramIsTheOneToldLast();
    void repeatedQuestionIsAnsweredOnce();
    void centreAnswersByTheMoment();
    void deedsComeAtTheirMoment_data();
    void deedsComeAtTheirMoment();
    void callerGoesThroughACall();
    void signalsGoAsText();
    void callerWaitsForAFreeLine();
    void dialledNumberIsVoidInACollision();
    void textIsToldWhole();
    void mutedTerminalOwesNoAnswerback();
};

namespace
{
const QString zaryaAnswers = QStringLiteral("#\r\n112233 |ЗАРЯ     ");
} // namespace

void TestLinesimSwitch::putsACallThrough()
{
    Exchange exchange(zarya);
    exchange.hear(QStringLiteral("@C@N112233@"));
    QCOMPARE(int(exchange.line.state()), int(SwitchedLine::Dialled));
    QCOMPARE(exchange.speech(), QString());
    exchange.pass(1);
    QCOMPARE(exchange.speech(), QStringLiteral("@E"));
    exchange.pass(2);
    QCOMPARE(exchange.speech(), QStringLiteral("\r\n #12.34"));
    QCOMPARE(int(exchange.line.state()), int(SwitchedLine::Up));
    exchange.hear(QStringLiteral("@H"));
    QCOMPARE(exchange.speech(), QStringLiteral("@H"));
    QCOMPARE(int(exchange.line.state()), int(SwitchedLine::Idle));
    exchange.hear(QStringLiteral("@H@H")); // it says so more than once
    QCOMPARE(exchange.speech(), QString());
    QCOMPARE(exchange.line.connections, 1);
    QVERIFY(exchange.lines.contains(QStringLiteral("down: 112233 by the terminal")));
    QCOMPARE(exchange.violations(), QStringList());
}

void TestLinesimSwitch::numberBehindTheGoAhead()
{
    Exchange exchange(zarya);
    exchange.hear(QStringLiteral("@E"));
    exchange.pass(1);
    QCOMPARE(exchange.speech(), QStringLiteral("\r\n&GA #"));
    exchange.hear(QStringLiteral("#112233"));
    exchange.pass(2);
    QCOMPARE(exchange.speech(), QStringLiteral("\r\n #12.34"));
    QCOMPARE(int(exchange.line.state()), int(SwitchedLine::Up));
    QCOMPARE(exchange.violations(), QStringList());
}

void TestLinesimSwitch::refusesACall_data()
{
    QTest::addColumn<QString>("said");
    row("busy", "\r\n&OCC\r\n");
    row("broken", "\r\n&BK\r\n\r\n");
    row("signal-der", "!>СИГНАЛ DER\r\n");
    row("drop", "@H");
    row("nothing", "");
}

void TestLinesimSwitch::refusesACall()
{
    QFETCH(QString, said);
    Exchange exchange(zarya + QLatin1String(QTest::currentDataTag()));
    exchange.hear(QStringLiteral("@C@N112233@"));
    exchange.pass(3);
    QCOMPARE(exchange.speech(), QStringLiteral("@E") + said);
    exchange.hear(QStringLiteral("@H"));
    QCOMPARE(int(exchange.line.state()), int(SwitchedLine::Idle));
    QCOMPARE(exchange.line.connections, 0);
    QCOMPARE(exchange.violations(), QStringList());
}

void TestLinesimSwitch::successShows_data()
{
    QTest::addColumn<QString>("said");
    row("stamp", "\r\n #12.34");
    row("df", "\r\n&DF#");
    row("ask", "\r\n#*");
    row("silence", "");
}

void TestLinesimSwitch::successShows()
{
    QFETCH(QString, said);
    Exchange exchange(zarya + QStringLiteral("sign=") + QLatin1String(QTest::currentDataTag()));
    exchange.hear(QStringLiteral("@C@N112233@"));
    exchange.pass(3);
    QCOMPARE(exchange.speech(), QStringLiteral("@E") + said);
    QCOMPARE(int(exchange.line.state()), int(SwitchedLine::Up));
}

void TestLinesimSwitch::terminalThatDoesNotHangUpIsDisconnected()
{
    Exchange exchange(zarya + QStringLiteral("busy"));
    exchange.hear(QStringLiteral("@C@N112233@"));
    exchange.pass(7);
    QCOMPARE(exchange.speech(), QStringLiteral("@E\r\n&OCC\r\n"));
    exchange.pass(1);
    QCOMPARE(exchange.speech(), QStringLiteral("@H"));
    exchange.hear(QStringLiteral("@H"));
    QCOMPARE(exchange.speech(), QString());
    QCOMPARE(int(exchange.line.state()), int(SwitchedLine::Idle));
    QCOMPARE(exchange.violations(), QStringList());
}

void TestLinesimSwitch::unknownNumberIsWrong()
{
    Exchange exchange(zarya);
    exchange.hear(QStringLiteral("@C@N112234@"));
    exchange.pass(3);
    QCOMPARE(exchange.speech(), QStringLiteral("@E\r\n&NP&\r\n"));
}

void TestLinesimSwitch::partyAnswersQuestions_data()
{
    QTest::addColumn<QString>("soon"); // within 2 seconds
    QTest::addColumn<QString>("later");
    row("right", zaryaAnswers, "");
    row("wrong", "#\r\n999999 |ЧУЖОЙ    ", "");
    row("cut", "#\r\n112233", " |ЗАРЯ     ");
    row("half", "#\r\n112233", "");
    row("telegram", "\r\nЗЦЗЦ 001 СЛУЖБА\r\nВХОДЯЩАЯ ТЕЛЕГРАММА ВНУТРИ СОЕДИНЕНИЯ=\r\nНННН  ", zaryaAnswers);
    row("none", "", "");
}

void TestLinesimSwitch::partyAnswersQuestions()
{
    QFETCH(QString, soon);
    QFETCH(QString, later);
    for (const QString &moment : {QStringLiteral("first="), QStringLiteral("last=")}) {
        Exchange exchange(zarya + moment + QLatin1String(QTest::currentDataTag()));
        exchange.connectTo(QStringLiteral("112233"));
        if (moment == QStringLiteral("last="))
            exchange.hear(QStringLiteral("ТЕКСТ"));
        exchange.hear(QStringLiteral("#*"));
        QCOMPARE(exchange.speech(), QString());
        exchange.pass(2);
        QCOMPARE(exchange.speech(), soon);
        exchange.pass(10);
        QCOMPARE(exchange.speech(), later);
    }
}

void TestLinesimSwitch::telegramIsTheOneToldLast()
{
    Exchange exchange(zarya);
    exchange.line.party().setTelegram(QStringLiteral("002\r\nДРУГАЯ=\r\n"));
    exchange.connectTo(QStringLiteral("112233"));
    exchange.line.party().perform(Deed::Telegram);
    QCOMPARE(exchange.speech(), QStringLiteral("\r\nЗЦЗЦ 002\r\nДРУГАЯ=\r\nНННН  "));
}

void TestLinesimSwitch::repeatedQuestionIsAnsweredOnce()
{
    Exchange exchange(zarya);
    exchange.connectTo(QStringLiteral("112233"));
    exchange.hear(QStringLiteral("#*#*"));
    exchange.pass(5);
    QCOMPARE(exchange.speech(), zaryaAnswers);
    exchange.hear(QStringLiteral("#*"));
    exchange.pass(5);
    QCOMPARE(exchange.speech(), zaryaAnswers);
}

void TestLinesimSwitch::centreAnswersByTheMoment()
{
    Exchange exchange(QStringLiteral("700100:ЦКС"));
    exchange.connectTo(QStringLiteral("700100"));
    exchange.hear(QStringLiteral("#*"));
    exchange.pass(2);
    QCOMPARE(exchange.speech(), QStringLiteral("#\r\n#01 123 |ЦКС&    "));
    exchange.hear(QStringLiteral("ТЕКСТ#*"));
    exchange.pass(2);
    QCOMPARE(exchange.speech(),
             QStringLiteral("#\r\n#01 123 |ЦКС& 31 12.34 ПРИНЯТА") + QString(50 - 33, QLatin1Char(' ')));
}

void TestLinesimSwitch::deedsComeAtTheirMoment_data()
{
    QTest::addColumn<QString>("deed");
    QTest::addColumn<int>("step"); // after which it comes: 0 connection, 1 question, 2 answerback, ...
    row("connection", "say@connect+1", 0);
    row("question", "say@question", 1);
    row("answerback", "say@answerback", 2);
    row("text", "say@text", 3);
    row("end of the text", "say@end", 4);
    row("last question", "say@last-question", 5);
    row("last answerback", "say@last-answerback", 6);
    row("later", "say@connect+15", 3);
}

void TestLinesimSwitch::deedsComeAtTheirMoment()
{
    QFETCH(QString, deed);
    QFETCH(int, step);
    const QString steps[] = {"", "#*", own, "\r\nЗЦЗЦ ТЕКСТ", " НННН  ", "#*", own};
    Exchange exchange(zarya + deed + QStringLiteral(" first=none last=none"));
    exchange.connectTo(QStringLiteral("112233"));
    for (int i = 0; i < 7; ++i) {
        exchange.hear(steps[i]);
        exchange.pass(4);
        QCOMPARE(exchange.speech(), i == step ? QStringLiteral("\r\nЗДРАВСТВУЙТЕ\r\n") : QString());
    }
}

void TestLinesimSwitch::callerGoesThroughACall()
{
    Exchange exchange(zarya);
    exchange.pass(4);
    exchange.line.call(QStringLiteral("112233"), SwitchedLine::callersHabits());
    exchange.pass(1);
    QCOMPARE(exchange.speech(), QStringLiteral("@C"));
    exchange.hear(QStringLiteral("@E"));
    exchange.pass(2);
    QCOMPARE(exchange.speech(), QStringLiteral("#*"));
    exchange.hear(own);
    exchange.pass(7);
    QCOMPARE(exchange.speech(),
             zaryaAnswers +
                 QStringLiteral("\r\nЗЦЗЦ 001 СЛУЖБА\r\nВХОДЯЩАЯ ТЕЛЕГРАММА ВНУТРИ СОЕДИНЕНИЯ=\r\nНННН  #*"));
    exchange.hear(own);
    exchange.pass(2);
    QCOMPARE(exchange.speech(), QStringLiteral("@H"));
    exchange.hear(QStringLiteral("@H"));
    QCOMPARE(int(exchange.line.state()), int(SwitchedLine::Idle));
    QVERIFY(exchange.lines.contains(QStringLiteral("up: from 112233")));
    QVERIFY(exchange.lines.contains(QStringLiteral("down: 112233 by the network")));
    QCOMPARE(exchange.violations(), QStringList());
}

void TestLinesimSwitch::signalsGoAsText()
{
    SwitchedLine::Settings settings;
    settings.textSignals = true;
    Exchange exchange(zarya, settings);
    exchange.pass(4);
    exchange.line.call(QStringLiteral("112233"), Habits());
    exchange.pass(1);
    QCOMPARE(exchange.speech(), QStringLiteral("!>ВЫЗОВ\r\n"));
    exchange.hear(QStringLiteral("@E"));
    QCOMPARE(exchange.speech(), QStringLiteral("=>ВЫЗОВ ПРИНЯТ\r\n"));
    exchange.line.hangUp();
    QCOMPARE(exchange.speech(), QStringLiteral("\r\n!>ОТБОЙ\r\n"));
}

void TestLinesimSwitch::callerWaitsForAFreeLine()
{
    Exchange exchange(zarya);
    exchange.connectTo(QStringLiteral("112233"));
    exchange.line.call(QStringLiteral("445566"), Habits());
    exchange.pass(5);
    QCOMPARE(exchange.speech(), QString());
    exchange.hear(QStringLiteral("@H"));
    (void)exchange.speech();
    exchange.pass(3);
    QCOMPARE(exchange.speech(), QString());
    exchange.pass(1);
    QCOMPARE(exchange.speech(), QStringLiteral("@C"));
    QVERIFY(exchange.lines.contains(QStringLiteral("calls: 445566")));
}

void TestLinesimSwitch::dialledNumberIsVoidInACollision()
{
    Exchange exchange(zarya);
    exchange.pass(4);
    exchange.line.call(QStringLiteral("445566"), Habits());
    exchange.pass(1);
    exchange.hear(QStringLiteral("@C@N112233@")); // was under way
    QCOMPARE(int(exchange.line.state()), int(SwitchedLine::Ringing));
    exchange.hear(QStringLiteral("@E"));
    QVERIFY(exchange.lines.contains(QStringLiteral("up: from 445566")));
    QCOMPARE(exchange.violations(), QStringList());

    Exchange other(zarya + QStringLiteral("collide"));
    other.hear(QStringLiteral("@C@N112233@"));
    QCOMPARE(other.speech(), QStringLiteral("@C"));
    other.hear(QStringLiteral("@E"));
    QVERIFY(other.lines.contains(QStringLiteral("up: from 000000")));
    QCOMPARE(other.violations(), QStringList());
}

void TestLinesimSwitch::textIsToldWhole()
{
    Exchange exchange(zarya + QStringLiteral("first=none last=none"));
    exchange.connectTo(QStringLiteral("112233"));
    exchange.hear(own);
    exchange.hear(QStringLiteral("\r\nПЕРВЫЙ"));
    exchange.hear(QStringLiteral(" #1\r\n#*"));
    exchange.hear(QStringLiteral("ВТОРОЙ"));
    exchange.hear(QStringLiteral("@H"));
    QCOMPARE(exchange.lines.filter(QStringLiteral("got: ")),
             QStringList({"got: 112233 ПЕРВЫЙ #1", "got: 112233 ВТОРОЙ"}));
}

void TestLinesimSwitch::mutedTerminalOwesNoAnswerback()
{
    Exchange exchange(zarya + QStringLiteral("crypt@connect ask@connect+5 ask@connect+10"));
    exchange.connectTo(QStringLiteral("112233"));
    exchange.pass(1);
    exchange.hear(QStringLiteral("\r\n|АО ВЫКЛ"));
    exchange.pass(7);
    exchange.hear(QStringLiteral("\r\n|АО ВКЛ"));
    exchange.pass(3);
    exchange.hear(own);
    exchange.pass(40);
    QCOMPARE(exchange.violations(), QStringList());
}

QTEST_GUILESS_MAIN(TestLinesimSwitch)
#include "test_linesim_switch.moc"
