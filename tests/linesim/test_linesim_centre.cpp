// The switching centre: its strict reading of the terminal, its bookkeeping, its scenario.

#include "tests/linesim/clerk.h"
#include "tests/support/row.h"
#include "tools/linesim/console/scenario.h"

#include <QtTest>

class TestLinesimCentre : public QObject
{
    Q_OBJECT

private slots:
    void readsEachForm_data();
    void readsEachForm();
    void waitsForTheRestOfAForm();
    void tellsWhatIsCutShort();
    void tellsWhatNeverEnds();
    void opensByTheTerminalsReceipt();
    void repeatsWhatTheTerminalDoesNotHold();
    void givesItsFiguresByEachReceipt();
    void losesAReceiptOnce();
    void distortsATelegramOnce();
    void wrongNumberGoesBeforeTheRightOne();
    void breachesAreCounted_data();
    void breachesAreCounted();
    void freeTextIsTalkOnRequest();
    void telegramsBackToBackAreABreach();
    void quietTimeIsKept();
    void renumbersAfterMidnight();
    void confirmationReopensTheChannel();
    void scenarioRunsAtItsTimes();
    void scenarioRefusesWhatItDoesNotUnderstand();
};

void TestLinesimCentre::readsEachForm_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("text");
    row("request", "|ЗЗ ", int(TerminalMessage::ReceiptRequest), -1, "");
    row("receipt", "|ЗЦЗЦ КС ВАШ 012=012 НННН  ", int(TerminalMessage::Receipt), 12, "");
    row("receipt that differs from itself", "|ЗЦЗЦ КС ВАШ 012=013 НННН  ", int(TerminalMessage::Foreign), -1,
        "КС ВАШ 012=013 ");
    row("receipt behind line ends", "\r\n|ЗЦЗЦ КС ВАШ 012=012 НННН  ", int(TerminalMessage::Receipt), 12, "");
    row("stop", "|ЗЦЗЦ КС СТОП НННН  ", int(TerminalMessage::Stop), -1, "");
    row("text", "|ЗЦЗЦ КС ТЕКСТ НННН  ", int(TerminalMessage::Text), -1, "");
    row("confirmation", "|ЗЦЗЦ КС Р007 ПРИН ИВАНОВА НННН  ", int(TerminalMessage::Confirmation), 7,
        "ИВАНОВА");
    row("confirmation in Latin on a 5-bit line", "|ЗЦЗЦ КС Р007 ПРИН &IVANOVA |НННН  ",
        int(TerminalMessage::Confirmation), 7, "IVANOVA");
    row("telegram", "|ЗЦЗЦ 007 А\r\nБ НННН  ", int(TerminalMessage::Telegram), 7, "А\r\nБ");
    row("empty telegram", "|ЗЦЗЦ 007  НННН  ", int(TerminalMessage::Telegram), 7, "");
    row("two digits", "|ЗЦЗЦ 07 А НННН  ", int(TerminalMessage::Foreign), -1, "07 А ");
    row("mark inside a form", "|ЗЦЗЦ КС |СТОП НННН  ", int(TerminalMessage::Foreign), -1, "КС |СТОП ");
    row("request without its mark", "ЗЗ ", int(TerminalMessage::Foreign), -1, "ЗЗ ");
    row("request under the figures' mark", "#ЗЗ ", int(TerminalMessage::Foreign), -1, "#ЗЗ ");
    row("form without its mark", "ЗЦЗЦ КС СТОП НННН  ", int(TerminalMessage::Foreign), -1,
        "ЗЦЗЦ КС СТОП НННН  ");
    row("Latin brackets", "&ZCZC 001 A NNNN  ", int(TerminalMessage::Foreign), -1, "&ZCZC 001 A NNNN  ");
    row("no form", "ПРИВЕТ", int(TerminalMessage::Foreign), -1, "ПРИВЕТ");
}

void TestLinesimCentre::readsEachForm()
{
    QFETCH(QString, line);
    QFETCH(int, kind);
    QFETCH(int, number);
    QFETCH(QString, text);
    TerminalReader reader;
    reader.take(line);
    const auto message = reader.next();
    QVERIFY(message);
    QCOMPARE(int(message->kind), kind);
    QCOMPARE(message->number, number);
    QCOMPARE(message->text, text);
    QVERIFY(!reader.next());
    QVERIFY(!reader.isInside());
}

void TestLinesimCentre::waitsForTheRestOfAForm()
{
    const QString line = QStringLiteral("|ЗЦЗЦ 007 ТЕКСТ НННН  ");
    for (int cut = 1; cut < line.size(); ++cut) {
        TerminalReader reader;
        reader.take(line.left(cut));
        QVERIFY(!reader.next());
        reader.take(line.mid(cut));
        QCOMPARE(reader.next()->number, 7);
    }
}

void TestLinesimCentre::tellsWhatIsCutShort()
{
    TerminalReader reader;
    reader.take(QStringLiteral("|ЗЦЗЦ 007 ТЕ|ЗЦЗЦ КС СТОП НННН  "));
    const auto broken = reader.next();
    QCOMPARE(int(broken->kind), int(TerminalMessage::Broken));
    QCOMPARE(broken->text, QStringLiteral("|ЗЦЗЦ 007 ТЕ"));
    QCOMPARE(int(reader.next()->kind), int(TerminalMessage::Stop));
}

void TestLinesimCentre::tellsWhatNeverEnds()
{
    TerminalReader reader;
    QVERIFY(!reader.giveUp());
    reader.take(QStringLiteral("|ЗЦЗЦ 007 ТЕ"));
    QVERIFY(reader.isInsideTelegram());
    QCOMPARE(reader.giveUp()->text, QStringLiteral("|ЗЦЗЦ 007 ТЕ"));
    QVERIFY(!reader.isInside());
}

void TestLinesimCentre::opensByTheTerminalsReceipt()
{
    Clerk clerk;
    clerk.hear(QStringLiteral("|ЗЗ "));
    QCOMPARE(clerk.speech(), QStringList(service("ВАШ 000 НАШ 000 ПОСЛЕДНИЕ ОТКРОЙТЕ СВЯЗЬ АБВ123/4")));
    clerk.hear(QStringLiteral("|ЗЦЗЦ КС ВАШ 000=000 НННН  "));
    QCOMPARE(clerk.speech(), QStringList(service("СВЯЗЬ ОТКРЫТА")));
    QCOMPARE(int(clerk.desk.channel()), int(CentreDesk::Open));
}

void TestLinesimCentre::repeatsWhatTheTerminalDoesNotHold()
{
    Clerk clerk;
    clerk.open();
    clerk.desk.sendTelegram("А");
    clerk.desk.sendTelegram("Б");
    clerk.desk.askToOpen();
    (void)clerk.speech();
    clerk.hear(QStringLiteral("|ЗЦЗЦ КС ВАШ 001=001 НННН  "));
    QCOMPARE(clerk.speech(), QStringList({"\r\nЗЦЗЦ 002 Б\r\nНННН  1200\r\n", service("ПОВТОР ОКОНЧЕН")}));
}

void TestLinesimCentre::givesItsFiguresByEachReceipt()
{
    Clerk clerk;
    clerk.open();
    clerk.desk.sendTelegram("А");
    clerk.hear(QStringLiteral("|ЗЦЗЦ 001 Х НННН  "));
    (void)clerk.speech();
    clerk.hear(QStringLiteral("|ЗЗ "));
    QCOMPARE(clerk.speech(), QStringList(service("ВАШ 001 НАШ 001 ПОСЛЕДНИЕ СВЯЗЬ ОТКРЫТА АБВ123/4")));
    QCOMPARE(clerk.log.violations, 0);
}

void TestLinesimCentre::losesAReceiptOnce()
{
    Clerk clerk;
    clerk.desk.loseReceipt();
    clerk.hear(QStringLiteral("|ЗЗ "));
    QVERIFY(clerk.speech().isEmpty());
    clerk.hear(QStringLiteral("|ЗЗ "));
    QCOMPARE(clerk.speech().size(), 1);
}

void TestLinesimCentre::distortsATelegramOnce()
{
    Clerk clerk;
    clerk.open();
    clerk.desk.distort();
    clerk.hear(QStringLiteral("|ЗЦЗЦ 001 Х НННН  "));
    QCOMPARE(clerk.speech(), QStringList(service("ИСКАЖЕНИЕ 1 ВАШ 0")));
    QCOMPARE(clerk.desk.got, 0);
    clerk.hear(QStringLiteral("|ЗЦЗЦ 001 Х НННН  "));
    QCOMPARE(clerk.desk.got, 1);
}

void TestLinesimCentre::wrongNumberGoesBeforeTheRightOne()
{
    Clerk clerk;
    clerk.open();
    clerk.desk.wrongNumber();
    clerk.desk.sendTelegram("А");
    QCOMPARE(clerk.speech(),
             QStringList({"\r\nЗЦЗЦ 002 А\r\nНННН  1200\r\n", "\r\nЗЦЗЦ 001 А\r\nНННН  1200\r\n"}));
    clerk.hear(QStringLiteral("|ЗЦЗЦ КС СТОП НННН  "));
    QCOMPARE(int(clerk.desk.channel()), int(CentreDesk::Open));
    clerk.hear(QStringLiteral("|ЗЦЗЦ КС СТОП НННН  "));
    QCOMPARE(int(clerk.desk.channel()), int(CentreDesk::Closed));
}

void TestLinesimCentre::breachesAreCounted_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("breach");
    row("number out of order", "|ЗЦЗЦ 002 Х НННН  ", "violation: telegram 2 instead of 1");
    row("receipt ahead of what was sent", "|ЗЦЗЦ КС ВАШ 003=003 НННН  ", "violation: receipt 3 of 0 sent");
    row("letter among the figures", "|ЗЦЗЦ 001 #12А НННН  ", "violation: telegram 1 out of its register");
    row("number that repeats", "|ЗЦЗЦ 000 Х НННН  ", "violation: telegram 0 instead of 1");
    row("text of no form", "ПРИВЕТ", "violation: text of no form ПРИВЕТ");
    row("unknown form", "|ЗЦЗЦ КС ПРИВЕТ НННН  ", "violation: text of no form КС ПРИВЕТ ");
    row("confirmation unasked", "|ЗЦЗЦ КС Р001 ПРИН ОНА НННН  ",
        "violation: confirmation 1 that was not asked for");
}

void TestLinesimCentre::breachesAreCounted()
{
    QFETCH(QString, line);
    QFETCH(QString, breach);
    Clerk clerk;
    clerk.open();
    clerk.hear(line);
    QCOMPARE(clerk.log.violations, 1);
    QCOMPARE(clerk.lines.filter("violation: "), QStringList(breach));
}

void TestLinesimCentre::freeTextIsTalkOnRequest()
{
    Clerk clerk;
    clerk.open();
    clerk.desk.talk();
    clerk.hear(QStringLiteral("ПРИВЕТ"));
    QCOMPARE(clerk.log.violations, 0);
    QVERIFY(clerk.lines.contains(QStringLiteral("talk: ПРИВЕТ")));
}

void TestLinesimCentre::telegramsBackToBackAreABreach()
{
    Clerk clerk;
    clerk.hear(QStringLiteral("|ЗЦЗЦ 001 Х НННН  "));
    QCOMPARE(clerk.lines.filter("violation: "),
             QStringList("violation: telegram 1 while the channel is not open"));
    clerk.open();
    clerk.desk.declareOpen();
    clerk.hear(QStringLiteral("|ЗЦЗЦ 002 Х НННН  |ЗЦЗЦ 003 Х НННН  "));
    QCOMPARE(clerk.lines.filter("violation: ").last(),
             QStringLiteral("violation: telegram 3 before the receipt of the one before"));
}

void TestLinesimCentre::quietTimeIsKept()
{
    Clerk clerk(QTime(23, 56, 59));
    clerk.open();
    clerk.hear(QStringLiteral("|ЗЦЗЦ 001 Х НННН  |ЗЗ "));
    QCOMPARE(clerk.log.violations, 0);
    clerk.at(QTime(23, 57));
    clerk.hear(QStringLiteral("|ЗЦЗЦ 002 Х НННН  "));
    QCOMPARE(clerk.lines.filter("violation: "), QStringList("violation: telegram 2 in the quiet time"));
}

void TestLinesimCentre::renumbersAfterMidnight()
{
    Clerk clerk(QTime(23, 50));
    clerk.open();
    clerk.desk.sendTelegram("А");
    clerk.hear(QStringLiteral("|ЗЦЗЦ 001 Х НННН  |ЗЗ "));
    (void)clerk.speech();
    clerk.desk.setTime(QDateTime(QDate(2026, 8, 1), QTime(0, 1)));
    QVERIFY(!clerk.desk.mayFeed());
    clerk.hear(QStringLiteral("|ЗЗ "));
    QCOMPARE(clerk.speech(),
             QStringList("\r\nЗЦЗЦ СМЕНА НУМЕРАЦИИ ПРИН 0001 ПЕР 0001 ОТКРОЙТЕ СВЯЗЬ НННН  0001\r\n"));
    clerk.hear(QStringLiteral("\r\n|ЗЦЗЦ КС ВАШ 001=001 НННН  "));
    QCOMPARE(clerk.speech(), QStringList("\r\nЗЦЗЦ СВЯЗЬ ОТКРЫТА НННН  0001\r\n"));
    QCOMPARE(clerk.desk.figures(), QStringLiteral("got 0 sent 0 old 1/1"));
    QCOMPARE(clerk.log.violations, 0);
    QVERIFY(clerk.desk.mayFeed());
}

void TestLinesimCentre::confirmationReopensTheChannel()
{
    Clerk clerk;
    clerk.open();
    clerk.desk.sendR("А");
    QCOMPARE(clerk.speech(),
             QStringList({"\r\nЗЦЗЦ 001 А\r\nНННН  1200\r\n", service("ПОДТВЕРДИТЕ ПРИЕМ Р 001")}));
    QCOMPARE(int(clerk.desk.channel()), int(CentreDesk::Confirming));
    clerk.hear(QStringLiteral("|ЗЦЗЦ КС Р001 ПРИН ИВАНОВА НННН  "));
    QCOMPARE(clerk.speech(), QStringList(service("СВЯЗЬ ОТКРЫТА")));
    QCOMPARE(clerk.log.violations, 0);
}

void TestLinesimCentre::scenarioRunsAtItsTimes()
{
    Scenario scenario;
    QVERIFY(scenario.parse("; a day\n12:30 open\n\n+10 send А Б\n12:30:15 ask\n"));
    const auto at = [&scenario](int h, int m, int s, int day = 31) {
        return scenario.due(QDateTime(QDate(2026, 7, day), QTime(h, m, s)));
    };
    QCOMPARE(at(12, 29, 0), QStringList());
    QCOMPARE(at(12, 29, 9), QStringList());
    QCOMPARE(at(12, 29, 10), QStringList("send А Б"));
    QCOMPARE(at(12, 29, 59), QStringList());
    QCOMPARE(at(12, 30, 0), QStringList("open"));
    QCOMPARE(at(12, 30, 20), QStringList("ask"));
    QCOMPARE(at(23, 59, 59), QStringList());
}

void TestLinesimCentre::scenarioRefusesWhatItDoesNotUnderstand()
{
    Scenario scenario;
    QVERIFY(!scenario.parse("25:00 open"));
    QVERIFY(!scenario.parse("+x open"));
    QVERIFY(!scenario.parse("12:30"));
    QVERIFY(!scenario.load("no such file"));
}

QTEST_GUILESS_MAIN(TestLinesimCentre)
#include "test_linesim_centre.moc"
