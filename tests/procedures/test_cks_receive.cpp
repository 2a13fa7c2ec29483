// The sorting of received text into service messages and telegrams, cut anywhere.

#include "app/clock.h"
#include "app/options.h"
#include "tests/procedures/cks_desk.h"
#include "tests/support/row.h"

#include <QDir>
#include <QRandomGenerator>
#include <QtTest>

class TestCksReceive : public QObject
{
    Q_OBJECT

private slots:
    void gatheringDoesNotParse();
    void noiseIsCutAboveTwoHundredFiftySix();
    void textBeforeTheStartMarkIsDropped();
    void messageWaitsForItsEndMark();
    void twoDigitsAreAServiceMessage();
    void numberWithFigureMarkBelongsToTheHead();
    void textAfterTheLastStartMarkCounts_data();
    void textAfterTheLastStartMarkCounts();
    void latinMarksServeToo();
    void emptyMessageIsIgnored();
    void oneMessagePerCheck();
    void withoutReturnWaitsFiveSecondsOfSilence();
    void tailReachesTheReturn();
    void loneEndMarkIsATimeStamp_data();
    void loneEndMarkIsATimeStamp();
    void timeStamp_data();
    void timeStamp();
    void stampOfAMessageIsCompared_data();
    void stampOfAMessageIsCompared();
    void timeStampAtTheTurnOfTheDay_data();
    void timeStampAtTheTurnOfTheDay();
    void note_data();
    void note();
    void noteIsWaitedForUntilItsLimit();
    void telegramBehindEndsTheWaitForTheNote();
    void noteIsNoMatterForServiceMessages();
    void endMarkCutAnywhere_data();
    void endMarkCutAnywhere();
    void exchangedBufferIsReadAnew();
    void telegramAsLongAsTheMessageBeforeItIsTaken();
    void randomCutsGiveTheSameDay();
};

namespace
{
/// One stored telegram of the day with its text, "name=text", in order of names.
QStringList stored(const Desk &desk)
{
    QStringList all;
    const QStringList names = desk.names("inp/20260731");
    for (const QString &name : names)
        all << name + QLatin1Char('=') + QString::fromUtf8(desk.read("inp/20260731/" + name));
    return all;
}

const QString OffLine = QStringLiteral("312:00:00 Расхождение времени c ЦКС более 1 мин");
} // namespace

void TestCksReceive::gatheringDoesNotParse()
{
    const CksDesk desk;
    ProcessCKS.processReceive("ЗЦЗЦ СВЯЗЬ ");
    ProcessCKS.processReceive("ОТКРЫТА НННН  \r\n");
    QCOMPARE(ProcessCKS.receiveChunks, 2);
    QCOMPARE(State.tlgMode, 0);
    ProcessCKS.checkReceive();
    QCOMPARE(State.tlgMode, 3);
    QCOMPARE(ProcessCKS.receiveBuffer, QStringLiteral("\r\n"));
}

void TestCksReceive::noiseIsCutAboveTwoHundredFiftySix()
{
    const CksDesk desk;
    ProcessCKS.processReceive(QString(256, 'A'));
    ProcessCKS.checkReceive();
    QCOMPARE(ProcessCKS.receiveBuffer.size(), 256);
    ProcessCKS.processReceive("B");
    ProcessCKS.checkReceive();
    QCOMPARE(ProcessCKS.receiveBuffer, QString(199, 'A') + 'B');
}

void TestCksReceive::textBeforeTheStartMarkIsDropped()
{
    const CksDesk desk;
    ProcessCKS.processReceive("ШУМ ЗЦЗЦ СВЯЗЬ ОТКР");
    ProcessCKS.checkReceive();
    QCOMPARE(ProcessCKS.receiveBuffer, QStringLiteral("ЗЦЗЦ СВЯЗЬ ОТКР"));
}

void TestCksReceive::messageWaitsForItsEndMark()
{
    const CksDesk desk;
    const QString text = QStringLiteral("ЗЦЗЦ ") + QString(1000, QChar(0x0410)) + QStringLiteral(" НННН ");
    ProcessCKS.processReceive(text);
    State.secondsSinceRx = 1000;
    ProcessCKS.checkReceive();
    QCOMPARE(ProcessCKS.receiveBuffer, text);
}

void TestCksReceive::twoDigitsAreAServiceMessage()
{
    const CksDesk desk;
    ProcessCKS.processReceive("ЗЦЗЦ 12 ПРИВЕТ НННН  \r\n");
    ProcessCKS.checkReceive();
    QCOMPARE(ProcessCKS.receiveBuffer, QStringLiteral("\r\n"));
    QCOMPARE(desk.noted(), QStringList());
    QVERIFY(stored(desk).isEmpty());
}

void TestCksReceive::numberWithFigureMarkBelongsToTheHead()
{
    const CksDesk desk;
    State.PK_in = 11;
    ProcessCKS.processReceive("ЗЦЗЦ #012 ТЕКСТ НННН  \r\n");
    ProcessCKS.checkReceive();
    QCOMPARE(stored(desk), QStringList("20260731u000.012=ЗЦЗЦ #012 ТЕКСТ НННН  "));
    QCOMPARE(State.PK_in, 12);
}

void TestCksReceive::textAfterTheLastStartMarkCounts_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("mark");
    row("one mark", "", "ЗЦЗЦ ");
    row("Latin between", "ЗЦЗЦ 009 ПРЕРВАНО ZCZC 008 ТОЖЕ ", "ЗЦЗЦ ");
    row("Latin last", "ZCZC 009 ПРЕРВАНО ЗЦЗЦ 005 ТОЖЕ ", "ZCZC ");
    row("marks in a row", "ЗЦЗЦ ЗЦЗЦ ZCZC ZCZC ЗЦЗЦ ", "ЗЦЗЦ ");
    row("torn marks", "ЗЦЗЦ ЗЦЗЦЗЦЗЦ ЗЦ", "ЗЦЗЦ ");
}

void TestCksReceive::textAfterTheLastStartMarkCounts()
{
    QFETCH(QString, before);
    QFETCH(QString, mark);
    const CksDesk desk;
    State.PK_in = 4;
    ProcessCKS.processReceive(before + mark + "005 ТЕКСТ НННН  \r");
    ProcessCKS.checkReceive();
    QCOMPARE(stored(desk), QStringList("20260731u000.005=" + mark + "005 ТЕКСТ НННН  "));
}

void TestCksReceive::latinMarksServeToo()
{
    const CksDesk desk;
    ProcessCKS.processReceive("ZCZC 001 TEXT NNNN  1200\r\n");
    ProcessCKS.checkReceive();
    QCOMPARE(stored(desk), QStringList("20260731u000.001=ZCZC 001 TEXT NNNN  1200"));
}

void TestCksReceive::emptyMessageIsIgnored()
{
    const CksDesk desk;
    ProcessCKS.processReceive("ЗЦЗЦ НННН  \r\n");
    ProcessCKS.checkReceive();
    QCOMPARE(ProcessCKS.receiveBuffer, QStringLiteral("\r\n"));
    QCOMPARE(desk.noted(), QStringList());
}

void TestCksReceive::oneMessagePerCheck()
{
    const CksDesk desk;
    ProcessCKS.processReceive("ЗЦЗЦ 001 А НННН  \r\nЗЦЗЦ 002 Б НННН  \r\n");
    ProcessCKS.checkReceive();
    QCOMPARE(State.PK_in, 1);
    ProcessCKS.checkReceive();
    QCOMPARE(State.PK_in, 2);
}

void TestCksReceive::withoutReturnWaitsFiveSecondsOfSilence()
{
    const CksDesk desk;
    ProcessCKS.processReceive("ЗЦЗЦ 001 ТЕКСТ НННН  1200");
    State.secondsSinceRx = 4;
    ProcessCKS.checkReceive();
    QCOMPARE(State.PK_in, 0);
    State.secondsSinceRx = 5;
    ProcessCKS.checkReceive();
    QCOMPARE(stored(desk), QStringList("20260731u000.001=ЗЦЗЦ 001 ТЕКСТ НННН  "));
    QCOMPARE(ProcessCKS.receiveBuffer, QStringLiteral("1200"));
}

void TestCksReceive::tailReachesTheReturn()
{
    const CksDesk desk;
    ProcessCKS.processReceive("ЗЦЗЦ 001 ТЕКСТ НННН  #1201 ХВОСТ\r\n");
    ProcessCKS.checkReceive();
    QCOMPARE(stored(desk), QStringList("20260731u000.001=ЗЦЗЦ 001 ТЕКСТ НННН  #1201 ХВОСТ"));
}

void TestCksReceive::loneEndMarkIsATimeStamp_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("taken");
    QTest::addColumn<bool>("noted");
    row("twelve characters, far off", "НННН  1035\r\n", true, true);
    row("twelve characters, right", "ШУМ НННН  1200\r\n", true, false);
    row("eleven characters", "НННН  1035\r", false, false);
}

void TestCksReceive::loneEndMarkIsATimeStamp()
{
    QFETCH(QString, text);
    QFETCH(bool, taken);
    QFETCH(bool, noted);
    const CksDesk desk;
    ProcessCKS.processReceive(text);
    ProcessCKS.checkReceive();
    QCOMPARE(ProcessCKS.receiveBuffer, taken ? text.mid(text.indexOf("НННН  ") + 6) : text);
    QCOMPARE(desk.noted(), noted ? QStringList(OffLine) : QStringList());
}

void TestCksReceive::timeStamp_data()
{
    QTest::addColumn<QString>("stamp");
    QTest::addColumn<bool>("noted");
    row("right", "1200", false);
    row("one minute slow", "1159", false);
    row("one minute fast", "1201", false);
    row("two minutes slow", "1158", true);
    row("two minutes fast", "1202", true);
    row("with figure mark", "#1202", true);
    row("two figure marks", "##1202", false);
    row("followed by a blank", "1202 ", true);
    row("followed by a letter", "1202А", false);
    row("followed by a digit", "12021", false);
    row("followed by the last that is no sign", "1202 А", true);
    for (char c = 33; c <= 48; ++c)
        QTest::addRow("followed by code %d", c) << QString("1202") + QLatin1Char(c) << false;
    for (const char c : {'\1', '\t', '\n', '\r', '\x1F'})
        QTest::addRow("followed by code %d", c) << QString("1202") + QLatin1Char(c) << true;
    row("three digits", "120", false);
    row("a letter among them", "12О2", false);
    row("none", "", false);
}

void TestCksReceive::timeStamp()
{
    QFETCH(QString, stamp);
    QFETCH(bool, noted);
    const CksDesk desk;
    ProcessCKS.receiveBuffer = QStringLiteral("НННН  ") + stamp;
    ProcessCKS.checkTimeAfterNNNN(6);
    QCOMPARE(desk.noted(), noted ? QStringList(OffLine) : QStringList());
}

void TestCksReceive::stampOfAMessageIsCompared_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("noted");
    row("service message, far off", "ЗЦЗЦ КС НННН  1035\r\n", true);
    row("service message, right", "ЗЦЗЦ КС НННН  1200\r\n", false);
    row("service message without a stamp", "ЗЦЗЦ КС НННН  \r\n", false);
    row("telegram, far off", "ЗЦЗЦ 001 ТЕКСТ НННН  #1202\r\n", true);
    row("telegram, right", "ЗЦЗЦ 001 ТЕКСТ НННН  #1201\r\n", false);
    row("telegram without a return", "ЗЦЗЦ 001 ТЕКСТ НННН  1035", false);
}

/// In front of what the message itself brings to the journal; of one that ends in silence no stamp is read.
void TestCksReceive::stampOfAMessageIsCompared()
{
    QFETCH(QString, text);
    QFETCH(bool, noted);
    const CksDesk desk;
    ProcessCKS.processReceive(text);
    State.secondsSinceRx = 5;
    ProcessCKS.checkReceive();
    QStringList expected;
    if (noted)
        expected << OffLine;
    if (text.contains("001"))
        expected << "312:00:00 Файл сохранен:inp/20260731/20260731u000.001";
    QCOMPARE(desk.noted(), expected);
}

void TestCksReceive::timeStampAtTheTurnOfTheDay_data()
{
    QTest::addColumn<QTime>("time");
    QTest::addColumn<bool>("compared");
    row("00:05", QTime(0, 5, 59), false);
    row("00:06", QTime(0, 6), true);
    row("23:54", QTime(23, 54, 59), true);
    row("23:55", QTime(23, 55), false);
}

void TestCksReceive::timeStampAtTheTurnOfTheDay()
{
    QFETCH(QTime, time);
    QFETCH(bool, compared);
    const CksDesk desk(time);
    ProcessCKS.receiveBuffer = QStringLiteral("1200");
    ProcessCKS.checkTimeAfterNNNN(0);
    QCOMPARE(desk.noted().size(), compared ? 1 : 0);
}

void TestCksReceive::note_data()
{
    QTest::addColumn<QString>("behind");
    QTest::addColumn<QString>("tail");
    const QString mark = QStringLiteral("НННН  1200");
    row("long form through the dashes", "\r\n....МИН....ТОЧКИ\r\n----\r\nЕЩЕ",
        mark + "\r\n....МИН....ТОЧКИ\r\n----\r\n");
    row("long form without dashes through its line", "\r\n....МИН....ТОЧКИ\r\nЕЩЕ\r\n",
        mark + "\r\n....МИН....ТОЧКИ\r\n");
    row("long form with marks", "\r\n....|МИН#....5\r\nЕЩЕ", mark + "\r\n....|МИН#....5\r\n");
    row("long form unended", "\r\n....МИН....ТОЧКИ", "");
    row("short form, thirteen characters", "\r\n....МИН.\r\n\n\n\nЕЩЕ", mark + "\r\n....МИН.\r\n\n\n\n");
    row("short form with marks, also thirteen", "\r\n....|МИН#.\r\n\n\n\nЕЩЕ", mark + "\r\n....|МИН#.\r\n\n");
    row("short form incomplete", "\r\n....МИН.\r\n\n\n", "");
    row("no note", "\r\nТЕКСТ\r\n", "");
}

void TestCksReceive::note()
{
    QFETCH(QString, behind);
    QFETCH(QString, tail);
    const CksDesk desk;
    Options.waitNote = 1;
    ProcessCKS.processReceive(QStringLiteral("ЗЦЗЦ 001 ТЕКСТ НННН  1200") + behind);
    State.secondsSinceRx = 9;
    ProcessCKS.checkReceive();
    if (tail.isEmpty()) {
        QCOMPARE(State.PK_in, 0);
        QCOMPARE(ProcessCKS.receiveBuffer, QStringLiteral("ЗЦЗЦ 001 ТЕКСТ НННН  1200") + behind);
    } else {
        QCOMPARE(stored(desk), QStringList(QStringLiteral("20260731u000.001=ЗЦЗЦ 001 ТЕКСТ ") + tail));
        QCOMPARE(ProcessCKS.receiveBuffer, QStringLiteral("1200") + behind);
    }
}

void TestCksReceive::noteIsWaitedForUntilItsLimit()
{
    const CksDesk desk;
    Options.waitNote = 2;
    Options.waitNoteTimeOut = 12;
    ProcessCKS.processReceive("ЗЦЗЦ 001 ТЕКСТ НННН  1200\r\n");
    State.secondsSinceRx = 11;
    ProcessCKS.checkReceive();
    QCOMPARE(State.PK_in, 0);
    State.secondsSinceRx = 12;
    ProcessCKS.checkReceive();
    QCOMPARE(stored(desk), QStringList("20260731u000.001=ЗЦЗЦ 001 ТЕКСТ НННН  1200"));
}

void TestCksReceive::telegramBehindEndsTheWaitForTheNote()
{
    const CksDesk desk;
    Options.waitNote = 1;
    ProcessCKS.processReceive("ЗЦЗЦ 001 ТЕКСТ НННН  1200\r\nЗЦЗЦ 002");
    ProcessCKS.checkReceive();
    QCOMPARE(stored(desk), QStringList("20260731u000.001=ЗЦЗЦ 001 ТЕКСТ НННН  1200"));
}

void TestCksReceive::noteIsNoMatterForServiceMessages()
{
    const CksDesk desk;
    Options.waitNote = 1;
    ProcessCKS.processReceive("ЗЦЗЦ СВЯЗЬ ОТКРЫТА НННН  \r\n");
    ProcessCKS.checkReceive();
    QCOMPARE(State.tlgMode, 3);
}

void TestCksReceive::endMarkCutAnywhere_data()
{
    QTest::addColumn<QString>("mark");
    row("Cyrillic", "НННН  ");
    row("Latin", "NNNN  ");
    row("behind half a mark", "ННННН  ");
}

/// A waiting message is looked at again only where it is new: a mark that comes in two is still found.
void TestCksReceive::endMarkCutAnywhere()
{
    QFETCH(QString, mark);
    for (int cut = 0; cut <= mark.size(); ++cut) {
        const CksDesk desk;
        ProcessCKS.processReceive("ЗЦЗЦ 001 ТЕКСТ " + mark.left(cut));
        ProcessCKS.checkReceive();
        ProcessCKS.checkReceive();
        QCOMPARE(State.PK_in, 0);
        ProcessCKS.processReceive(mark.mid(cut) + "\rЗЦЗЦ 002 ТЕКСТ " + mark + "\r");
        ProcessCKS.checkReceive();
        QCOMPARE(State.PK_in, 1);
        ProcessCKS.checkReceive();
        QCOMPARE(State.PK_in, 2);
        QCOMPARE(ProcessCKS.receiveBuffer, QStringLiteral("\r"));
    }
}

void TestCksReceive::exchangedBufferIsReadAnew()
{
    const CksDesk desk;
    const QString waiting = QStringLiteral("ЗЦЗЦ 001 ТЕКСТ ТЕКСТ ТЕКСТ");
    ProcessCKS.processReceive(waiting);
    ProcessCKS.checkReceive();
    ProcessCKS.receiveBuffer = QStringLiteral("ЗЦЗЦ 001 А НННН  \r").leftJustified(waiting.size());
    ProcessCKS.checkReceive();
    QCOMPARE(State.PK_in, 1);
}

/// What is left of the message, and the room it had in memory, lets the telegram take the same place in the
/// same length, with its end mark in front of where the message had its own.
void TestCksReceive::telegramAsLongAsTheMessageBeforeItIsTaken()
{
    const QString message = QStringLiteral("ЗЦЗЦ СВЯЗЬ ОТКРЫТА НННН  \r\n");
    const QString telegram = QStringLiteral("ЗЦЗЦ 001 ТЕКСТ НННН  1200\r\n");
    QCOMPARE(telegram.size(), message.size());
    const CksDesk desk;
    for (const QString &text : {message, telegram}) {
        ProcessCKS.processReceive(text.left(8));
        ProcessCKS.processReceive(text.mid(8));
        ProcessCKS.checkReceive();
    }
    QCOMPARE(State.tlgMode, 3);
    QCOMPARE(stored(desk), QStringList("20260731u000.001=ЗЦЗЦ 001 ТЕКСТ НННН  1200"));
    QCOMPARE(State.PK_in, 1);
    QCOMPARE(ProcessCKS.receiveBuffer, QStringLiteral("1200\r\n"));
}

void TestCksReceive::randomCutsGiveTheSameDay()
{
    const QString line =
        QStringLiteral("\r\nЗЦЗЦ ВАШ 000 НАШ 000 ПОСЛЕДНИЕ СВЯЗЬ ОТКРЫТА АБВ123/4 НННН  1200\r\n\n"
                       "ЗЦЗЦ 001 П01 123456 12\r\nТЕКСТ ПЕРВЫЙ\r\nНННН  1200\r\n\n\n"
                       "ШУМ ЗЦЗЦ 002 ПРЕРВАНО ЗЦЗЦ #002 #01 654321 7\r\n|ВТОРОЙ\r\nНННН  #1200\r\n"
                       "ZCZC 003 THIRD\r\nNNNN  1200\r\n|ЗЦЗЦ |ЗАПРОСИТЕ КВИТАНЦИЮ НННН  \r\n");
    QRandomGenerator random(20260731);
    for (int run = 0; run < 60; ++run) {
        const CksDesk desk;
        for (int at = 0; at < line.size();) {
            const int length = run == 0 ? 1 : 1 + int(random.bounded(quint32(5 * run)));
            ProcessCKS.processReceive(line.mid(at, length));
            at += length;
            State.secondsSinceRx = 1;
            ProcessCKS.timeCheck1sec();
        }
        for (State.secondsSinceRx = 1; State.secondsSinceRx <= 60; ++State.secondsSinceRx)
            ProcessCKS.timeCheck1sec();
        QCOMPARE(stored(desk),
                 QStringList({"20260731u000.002=ЗЦЗЦ #002 #01 654321 7\r\n|ВТОРОЙ\r\nНННН  #1200",
                              "20260731u000.003=ZCZC 003 THIRD\r\nNNNN  1200",
                              "20260731u456.001=ЗЦЗЦ 001 П01 123456 12\r\nТЕКСТ ПЕРВЫЙ\r\nНННН  1200"}));
        QCOMPARE(State.channelName, QStringLiteral("АБВ123/4"));
        QCOMPARE(State.tlgMode, 3);
        QVERIFY(!State.manualMode);
        QVERIFY(ProcessCKS.receiveBuffer.size() <= 256);
    }
}

QTEST_GUILESS_MAIN(TestCksReceive)
#include "test_cks_receive.moc"
