// What the switching centre can say and do wrong: headers, notes, register marks, every service message,
// every fault.

#include "tests/linesim/clerk.h"
#include "tests/support/row.h"
#include "tools/linesim/centre/centre_texts.h"

#include <QtTest>

class TestLinesimClerk : public QObject
{
    Q_OBJECT

private slots:
    void headersOfThreeForms();
    void headersInTurn();
    void notes_data();
    void notes();
    void noteIsBehindTheStamp();
    void withoutStamps();
    void clockIsOff_data();
    void clockIsOff();
    void registerMarks_data();
    void registerMarks();
    void registersAreMarkedOnRequest();
    void findsWhatIsOutOfItsRegister_data();
    void findsWhatIsOutOfItsRegister();
    void saysEachMessage_data();
    void saysEachMessage();
    void unknownCommandIsNone();
    void distortionHasThreeForms_data();
    void distortionHasThreeForms();
    void refusesATelegramOnce();
    void telegramGoesTwice();
    void telegramIsInterrupted();
    void acceptanceCountsAsReceipt();
    void referringElsewhereMovesTheCount();
    void waitingOpensByTheReceipt();
    void lostLineOpensAgain();
    void restOfACutTelegramIsNoBreach();
    void confirmationIsAskedForAgainBehindALoss();
    void confirmationFromBeforeTheLossCounts();
    void repetitionIsNotBegunTwice();
    void quietTimeIsJudgedByTheBeginning();
    void quietTimeEndsWithinTenSecondsOfTheMinute();
    void quietTimeEndsWithTheRenumbering();
    void oldDaysFigureIsNoBreachTillTheRenumbering();
};

namespace
{
const QDateTime Noon(QDate(2026, 7, 31), QTime(12, 0));
}

void TestLinesimClerk::headersOfThreeForms()
{
    QCOMPARE(centreHeader(0, Noon, 7), QString());
    QCOMPARE(centreHeader(1, Noon, 7), QStringLiteral("П01 311200 07\r\n"));
    QCOMPARE(centreHeader(2, Noon, 7), QStringLiteral("П311 200 07\r\n"));
    QCOMPARE(centreHeader(3, Noon, 7), QStringLiteral("П123=123 31 311200 \r\n"));
}

void TestLinesimClerk::headersInTurn()
{
    Clerk clerk;
    QVERIFY(clerk.desk.run("header", "turn"));
    for (int i = 0; i < 3; ++i)
        clerk.desk.sendTelegram("А");
    QCOMPARE(clerk.speech(), QStringList({"\r\nЗЦЗЦ 001 П311 200 01\r\nА\r\nНННН  1200\r\n",
                                          "\r\nЗЦЗЦ 002 П123=123 31 311200 \r\nА\r\nНННН  1200\r\n",
                                          "\r\nЗЦЗЦ 003 П01 311200 03\r\nА\r\nНННН  1200\r\n"}));
}

void TestLinesimClerk::notes_data()
{
    QTest::addColumn<QString>("text");
    row("long", "....МИН....ПРИНЯТА\r\n");
    row("long-marked", "....|МИН#....12\r\n");
    row("dashed", "....МИН....ПРИНЯТА\r\n----\r\n");
    row("short", "....МИН.\r\n\n\n\n");
    row("short-marked", "....|МИН#.\r\n\n\n\n");
    row("А\\r\\n", "А\r\n");
    row("", "");
}

void TestLinesimClerk::notes()
{
    QFETCH(QString, text);
    QCOMPARE(centreNote(QString::fromUtf8(QTest::currentDataTag())), text);
}

void TestLinesimClerk::noteIsBehindTheStamp()
{
    Clerk clerk;
    QVERIFY(clerk.desk.run("note", "short"));
    clerk.desk.sendTelegram("А");
    clerk.desk.askForReceiptRequest(); // a service message bears none
    QVERIFY(clerk.desk.run("note", ""));
    clerk.desk.sendTelegram("Б");
    QCOMPARE(clerk.speech(),
             QStringList({"\r\nЗЦЗЦ 001 А\r\nНННН  1200\r\n....МИН.\r\n\n\n\n",
                          service("ЗАПРОСИТЕ КВИТАНЦИЮ"), "\r\nЗЦЗЦ 002 Б\r\nНННН  1200\r\n"}));
}

void TestLinesimClerk::withoutStamps()
{
    Clerk clerk;
    QVERIFY(clerk.desk.run("stamps", "off"));
    clerk.desk.sendTelegram("А");
    QVERIFY(clerk.desk.run("stamps", "on"));
    clerk.desk.sendTelegram("Б");
    QCOMPARE(clerk.speech(),
             QStringList({"\r\nЗЦЗЦ 001 А\r\nНННН  \r\n", "\r\nЗЦЗЦ 002 Б\r\nНННН  1200\r\n"}));
}

void TestLinesimClerk::clockIsOff_data()
{
    QTest::addColumn<QString>("stamp");
    row("1", "1201");
    row("2", "1202");
    row("-1", "1159");
    row("-2", "1158");
    row("0", "1200");
}

void TestLinesimClerk::clockIsOff()
{
    QFETCH(QString, stamp);
    Clerk clerk;
    QVERIFY(clerk.desk.run("clock", QString::fromLatin1(QTest::currentDataTag())));
    clerk.desk.sendTelegram("А");
    QCOMPARE(clerk.speech(), QStringList("\r\nЗЦЗЦ 001 А\r\nНННН  " + stamp + "\r\n"));
}

void TestLinesimClerk::registerMarks_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("marked");
    row("letters, figures, Latin", "ДОМ 12 А B", "|ДОМ #12 |А &B");
    row("a stop is a figure", "А.Б", "|А#.|Б");
    row("line ends change nothing", "\r\nА\r\nБ", "\r\n|А\r\nБ");
    row("marks of its own stay", "....|МИН#....12", "#....|МИН#....12");
    row("a mark of its own that is needed", "|А", "|А");
    row("nothing", "", "");
}

void TestLinesimClerk::registerMarks()
{
    QFETCH(QString, text);
    QFETCH(QString, marked);
    QCOMPARE(withRegisterMarks(text), marked);
}

void TestLinesimClerk::registersAreMarkedOnRequest()
{
    Clerk clerk;
    QVERIFY(clerk.desk.run("registers", "on"));
    clerk.desk.sendTelegram("А");
    QCOMPARE(clerk.speech(), QStringList("\r\n|ЗЦЗЦ #001 |А\r\nНННН  #1200\r\n"));
}

void TestLinesimClerk::findsWhatIsOutOfItsRegister_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("position");
    row("no marks", "А1B", -1);
    row("right", "|А1 #12 &B 3", -1);
    row("letter among figures", "#12 А", 4);
    row("Latin letter among national ones", "|АB", 2);
    row("national letter among Latin ones", "&BА", 2);
}

void TestLinesimClerk::findsWhatIsOutOfItsRegister()
{
    QFETCH(QString, text);
    QFETCH(int, position);
    QCOMPARE(findOutOfRegister(text), position);
}

void TestLinesimClerk::saysEachMessage_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("said");
    QTest::addColumn<int>("channel");
    const int open = CentreDesk::Open, asked = CentreDesk::Asked, closed = CentreDesk::Closed;
    row("ask", "ask", "ЗАПРОСИТЕ КВИТАНЦИЮ", open);
    row("announce", "announce-renumber", "ЗАПРОСИТЕ КВИТАНЦИЮ СМЕНА НУМЕРАЦИИ В 0001", open);
    row("receipt", "receipt ЗАКРЫТО ПО 1800", "ВАШ 001 НАШ 002 ПОСЛЕДНИЕ ЗАКРЫТО ПО 1800", open);
    row("open", "open", "ОТКРОЙТЕ СВЯЗЬ АБВ123/4", asked);
    row("opened", "opened", "СВЯЗЬ ОТКРЫТА", open);
    row("close", "close", "СВЯЗЬ ЗАКРЫТА", closed);
    row("wait", "wait", "ЖДУ ОТКРЫТИЯ СВЯЗИ", asked);
    row("elsewhere", "elsewhere 5", "ОБРАЩАЙТЕСЬ В КСС ЗА ТЛГ 003-007", open);
    row("repeated", "repeated", "ПОВТОР ОКОНЧЕН", open);
    row("accept", "accept", "Р 1 ПРИНЯТА", open);
    row("confirm", "confirm", "ПОДТВЕРДИТЕ ПРИЕМ Р 002", int(CentreDesk::Confirming));
    row("taken", "taken", "ССС ПРИНЯТО 1", open);
    row("renumber", "renumber", "СМЕНА НУМЕРАЦИИ ПРИН 0000 ПЕР 0000 ОТКРОЙТЕ СВЯЗЬ", open);
    row("any other", "kg ТЕЛЕГРАММА НЕ ПРИНЯТА", "ТЕЛЕГРАММА НЕ ПРИНЯТА", open);
}

void TestLinesimClerk::saysEachMessage()
{
    QFETCH(QString, command);
    QFETCH(QString, said);
    QFETCH(int, channel);
    Clerk clerk;
    clerk.open();
    clerk.hear(QStringLiteral("|ЗЦЗЦ 001 Х НННН  "));
    clerk.desk.sendTelegram("А");
    clerk.desk.sendTelegram("Б");
    (void)clerk.speech();
    QVERIFY(clerk.desk.run(command.section(' ', 0, 0), command.section(' ', 1)));
    QCOMPARE(clerk.speech(), QStringList(service(said)));
    QCOMPARE(int(clerk.desk.channel()), channel);
}

void TestLinesimClerk::unknownCommandIsNone()
{
    Clerk clerk;
    QVERIFY(!clerk.desk.run("dance", ""));
    QVERIFY(!clerk.desk.run("", ""));
    QVERIFY(clerk.speech().isEmpty());
}

void TestLinesimClerk::distortionHasThreeForms_data()
{
    QTest::addColumn<QString>("said");
    row("", "ИСКАЖЕНИЕ 1 ВАШ 0");
    row("plural", "ИСКАЖЕНИЯ 1");
    row("bare", "ИСКАЖЕНИЯ");
}

void TestLinesimClerk::distortionHasThreeForms()
{
    QFETCH(QString, said);
    Clerk clerk;
    clerk.open();
    QVERIFY(clerk.desk.run("distort", QString::fromLatin1(QTest::currentDataTag())));
    clerk.hear(QStringLiteral("|ЗЦЗЦ 001 Х НННН  "));
    QCOMPARE(clerk.speech(), QStringList(service(said)));
    QCOMPARE(clerk.desk.got, 0);
}

void TestLinesimClerk::refusesATelegramOnce()
{
    Clerk clerk;
    clerk.open();
    QVERIFY(clerk.desk.run("refuse", ""));
    clerk.hear(QStringLiteral("|ЗЦЗЦ 001 Х НННН  "));
    QCOMPARE(clerk.speech(), QStringList(service("ТЕЛЕГРАММА НЕ ПРИНЯТА")));
    QCOMPARE(clerk.desk.got, 0);
    clerk.hear(QStringLiteral("|ЗЦЗЦ 001 Х НННН  "));
    QCOMPARE(clerk.desk.got, 1);
}

void TestLinesimClerk::telegramGoesTwice()
{
    Clerk clerk;
    clerk.open();
    QVERIFY(clerk.desk.run("twice", ""));
    clerk.desk.sendTelegram("А");
    const QString once = QStringLiteral("\r\nЗЦЗЦ 001 А\r\nНННН  1200\r\n");
    QCOMPARE(clerk.speech(), QStringList({once, once}));
    clerk.hear(QStringLiteral("|ЗЦЗЦ КС СТОП НННН  ")); // to the second one
    QCOMPARE(int(clerk.desk.channel()), int(CentreDesk::Open));
    clerk.desk.sendTelegram("Б");
    QCOMPARE(clerk.speech(), QStringList("\r\nЗЦЗЦ 002 Б\r\nНННН  1200\r\n"));
}

void TestLinesimClerk::telegramIsInterrupted()
{
    Clerk clerk;
    QVERIFY(clerk.desk.run("interrupt", ""));
    clerk.desk.sendTelegram("АБВГ");
    clerk.desk.sendTelegram("Д");
    QCOMPARE(clerk.speech(), QStringList({"\r\nЗЦЗЦ 001 АБ\r\nЗЦЗЦ 001 АБВГ\r\nНННН  1200\r\n",
                                          "\r\nЗЦЗЦ 002 Д\r\nНННН  1200\r\n"}));
}

void TestLinesimClerk::acceptanceCountsAsReceipt()
{
    Clerk clerk;
    clerk.open();
    clerk.hear(QStringLiteral("|ЗЦЗЦ 001 Х НННН  "));
    clerk.desk.acceptLast();
    clerk.hear(QStringLiteral("|ЗЦЗЦ 002 Х НННН  "));
    QCOMPARE(clerk.breaches(), QStringList());
}

void TestLinesimClerk::referringElsewhereMovesTheCount()
{
    Clerk clerk;
    clerk.open();
    clerk.desk.referElsewhere(2);
    clerk.desk.sendTelegram("А");
    QCOMPARE(clerk.speech(),
             QStringList({service("ОБРАЩАЙТЕСЬ В КСС ЗА ТЛГ 001-002"), "\r\nЗЦЗЦ 003 А\r\nНННН  1200\r\n"}));
}

void TestLinesimClerk::waitingOpensByTheReceipt()
{
    Clerk clerk;
    clerk.open();
    clerk.desk.waitForOpening();
    clerk.hear(QStringLiteral("|ЗЦЗЦ КС ВАШ 000=000 НННН  "));
    QCOMPARE(int(clerk.desk.channel()), int(CentreDesk::Open));
}

void TestLinesimClerk::lostLineOpensAgain()
{
    Clerk clerk;
    clerk.desk.lineLost();
    clerk.desk.lineBack(); // it was closed anyway
    QVERIFY(clerk.speech().isEmpty());
    clerk.open();
    clerk.desk.lineLost();
    QCOMPARE(int(clerk.desk.channel()), int(CentreDesk::Closed));
    clerk.at(QTime(12, 30));
    clerk.desk.lineBack();
    QCOMPARE(clerk.speech().size(), 1);
    // A telegram that began as the terminal did not know yet.
    clerk.desk.setMessageStart(QDateTime(QDate(2026, 7, 31), QTime(12, 30, 20)));
    clerk.hear(QStringLiteral("|ЗЦЗЦ 001 Х НННН  "));
    QCOMPARE(clerk.breaches(), QStringList());
    clerk.desk.setMessageStart(QDateTime(QDate(2026, 7, 31), QTime(12, 30, 21)));
    clerk.hear(QStringLiteral("|ЗЦЗЦ 002 Х НННН  "));
    QVERIFY(clerk.breaches().contains("violation: telegram 2 while the channel is not open"));
}

void TestLinesimClerk::restOfACutTelegramIsNoBreach()
{
    Clerk clerk;
    clerk.open();
    clerk.hear(QStringLiteral("|ЗЦЗЦ 001 НАЧ"));
    QCOMPARE(clerk.reader.giveUp()->text, QStringLiteral("|ЗЦЗЦ 001 НАЧ"));
    clerk.reader.expectRest();
    clerk.hear(QStringLiteral("АЛО"));
    clerk.hear(QStringLiteral(" НННН  |ЗЗ "));
    QCOMPARE(clerk.breaches(), QStringList());
    QCOMPARE(clerk.lines.filter("broken: "), QStringList({"broken: АЛО", "broken:  НННН  "}));
    clerk.hear(QStringLiteral("ПРИВЕТ")); // what comes behind a whole form is judged again
    QCOMPARE(clerk.breaches(), QStringList("violation: text of no form ПРИВЕТ"));
}

void TestLinesimClerk::confirmationIsAskedForAgainBehindALoss()
{
    Clerk clerk;
    clerk.open();
    clerk.desk.sendR("А");
    clerk.desk.lineLost();
    clerk.desk.lineBack();
    (void)clerk.speech();
    clerk.hear(QStringLiteral("|ЗЦЗЦ КС ВАШ 001=001 НННН  "));
    QCOMPARE(clerk.speech(), QStringList({service("СВЯЗЬ ОТКРЫТА"), service("ПОДТВЕРДИТЕ ПРИЕМ Р 001")}));
    clerk.hear(QStringLiteral("|ЗЦЗЦ КС Р001 ПРИН ИВАНОВА НННН  "));
    QCOMPARE(clerk.speech(), QStringList(service("СВЯЗЬ ОТКРЫТА")));
    QCOMPARE(clerk.breaches(), QStringList());
}

void TestLinesimClerk::confirmationFromBeforeTheLossCounts()
{
    Clerk clerk;
    clerk.open();
    clerk.desk.sendR("А");
    clerk.desk.lineLost();
    clerk.desk.lineBack();
    clerk.hear(QStringLiteral("|ЗЦЗЦ КС Р001 ПРИН ИВАНОВА НННН  "));
    (void)clerk.speech();
    clerk.hear(QStringLiteral("|ЗЦЗЦ КС ВАШ 001=001 НННН  "));
    QCOMPARE(clerk.speech(), QStringList(service("СВЯЗЬ ОТКРЫТА")));
    QCOMPARE(clerk.breaches(), QStringList());
}

void TestLinesimClerk::repetitionIsNotBegunTwice()
{
    Clerk clerk;
    clerk.open();
    clerk.desk.sendTelegram("А");
    clerk.desk.askToOpen();
    (void)clerk.speech();
    clerk.hear(QStringLiteral("|ЗЦЗЦ КС ВАШ 000=000 НННН  "));
    QCOMPARE(clerk.speech().size(), 2);
    clerk.at(QTime(12, 0, 19));
    clerk.hear(QStringLiteral("|ЗЦЗЦ КС ВАШ 000=000 НННН  "));
    QVERIFY(clerk.speech().isEmpty());
    clerk.at(QTime(12, 0, 20));
    clerk.hear(QStringLiteral("|ЗЦЗЦ КС ВАШ 000=000 НННН  "));
    QCOMPARE(clerk.speech().size(), 2);
}

void TestLinesimClerk::quietTimeIsJudgedByTheBeginning()
{
    Clerk clerk(QTime(23, 50));
    clerk.open();
    clerk.at(QTime(23, 58));
    clerk.desk.setMessageStart(QDateTime(QDate(2026, 7, 31), QTime(23, 55, 58)));
    clerk.hear(QStringLiteral("|ЗЦЗЦ 001 ДЛИННАЯ НННН  |ЗЗ "));
    QCOMPARE(clerk.breaches(), QStringList());
    clerk.desk.setMessageStart(QDateTime(QDate(2026, 7, 31), QTime(23, 57)));
    clerk.hear(QStringLiteral("|ЗЦЗЦ 002 Х НННН  "));
    QCOMPARE(clerk.breaches(), QStringList("violation: telegram 2 in the quiet time"));
}

void TestLinesimClerk::quietTimeEndsWithinTenSecondsOfTheMinute()
{
    for (const int second : {49, 50}) {
        Clerk clerk(QTime(0, 0, second));
        clerk.open();
        clerk.hear(QStringLiteral("|ЗЦЗЦ 001 Х НННН  "));
        QCOMPARE(clerk.breaches().size(), second < 50 ? 1 : 0);
    }
}

void TestLinesimClerk::quietTimeEndsWithTheRenumbering()
{
    Clerk clerk(QTime(23, 50));
    clerk.open();
    clerk.desk.setTime(QDateTime(QDate(2026, 8, 1), QTime(0, 0, 30)));
    QVERIFY(clerk.desk.run(QStringLiteral("renumber"), QString()));
    clerk.hear(QStringLiteral("\r\n|ЗЦЗЦ КС ВАШ 000=000 НННН  |ЗЦЗЦ 001 Х НННН  "));
    QCOMPARE(clerk.breaches(), QStringList());
    clerk.desk.setMessageStart(QDateTime(QDate(2026, 8, 1), QTime(0, 0, 29)));
    clerk.hear(QStringLiteral("|ЗЗ |ЗЦЗЦ 002 Х НННН  "));
    QCOMPARE(clerk.breaches(), QStringList("violation: telegram 2 in the quiet time"));
    clerk.desk.setMessageStart(QDateTime(QDate(2026, 8, 1), QTime(23, 57)));
    clerk.hear(QStringLiteral("|ЗЗ |ЗЦЗЦ 003 Х НННН  "));
    QCOMPARE(clerk.breaches().last(), QString("violation: telegram 3 in the quiet time"));
}

void TestLinesimClerk::oldDaysFigureIsNoBreachTillTheRenumbering()
{
    Clerk clerk(QTime(23, 50));
    clerk.open();
    clerk.desk.sendTelegram("А");
    clerk.desk.setTime(QDateTime(QDate(2026, 8, 1), QTime(0, 0, 1)));
    clerk.hear(QStringLiteral("|ЗЦЗЦ КС ВАШ 001=001 НННН  "));
    QCOMPARE(clerk.breaches(), QStringList());
    clerk.hear(QStringLiteral("|ЗЗ |ЗЦЗЦ КС ВАШ 001=001 НННН  ")); // the answer to the renumbering
    QCOMPARE(clerk.breaches(), QStringList());
    clerk.hear(QStringLiteral("|ЗЦЗЦ КС ВАШ 001=001 НННН  "));
    QCOMPARE(clerk.breaches(), QStringList("violation: receipt 1 of 0 sent"));
}

QTEST_GUILESS_MAIN(TestLinesimClerk)
#include "test_linesim_clerk.moc"
