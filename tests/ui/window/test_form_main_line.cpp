#include "app/options.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "procedures/process_direct.h"
#include "procedures/process_skk.h"
#include "records/protocol.h"
#include "tests/support/row.h"
#include "tests/ui/window/station.h"
#include "ui/form_main.h"
#include "ui/roll/protocol_widget.h"

#include <QMessageBox>
#include <QtTest>

class TestFormMainLine : public QObject
{
    Q_OBJECT

private slots:
    void receivedTextIsCutIntoCommandsAndText_data();
    void receivedTextIsCutIntoCommandsAndText();
    void commandsReachTheSwitchedProcedureInTheirPlace();
    void receivedTextMayComeCharacterByCharacter();
    void receivedTextEndsTheSilence();
    void emptyBufferOnlyEndsTheSilence();
    void receivedTextReachesTheDirectProcedure();
    void receivedTextJoinsTheConnectionOnlyInSKK();
    void floodIsTakenInBlocksAndWhole();
    void textThatComesWhileOtherTextIsTakenKeepsItsPlace();
    void nothingIsLostUnderAQuestion();
    void sentTextIsJournalled();
    void sentTextJoinsTheConnectionOnlyInSKK();
    void lastCharacterOfAFileIsActedUpon_data();
    void lastCharacterOfAFileIsActedUpon();
    void lastCharacterOfADirectFileMovesIt();
    void sentTextBeforeTheLastLeavesTheFileInProgress();
    void operatorsTextGoesInTheFormOfTheLine_data();
    void operatorsTextGoesInTheFormOfTheLine();
    void operatorsTextBringsTheJournalToItsEnd();
};

void TestFormMainLine::receivedTextIsCutIntoCommandsAndText_data()
{
    QTest::addColumn<QString>("received");
    QTest::addColumn<QStringList>("pieces"); // as they reach the journal
    QTest::addColumn<QString>("rest");       // what waits for more
    const QString none;
    row("text", "АБВ", QStringList{"АБВ"}, none);
    row("@C", "@CАБ", QStringList{"@C", "АБ"}, none);
    row("@E", "@E", QStringList{"@E"}, none);
    row("@H behind text", "АБ@H", QStringList{"АБ", "@H"}, none);
    row("lone @", "@", QStringList{}, "@");
    row("text and lone @", "АБ@", QStringList{"АБ"}, "@");
    row("@5", "@5", QStringList{}, "@5");
    row("@57", "АБ@57", QStringList{"АБ"}, "@57");
    row("@57*", "@57*А", QStringList{"@57*", "А"}, none);
    row("@57X", "@57X", QStringList{"@", "57X"}, none);
    row("@5XY", "@5XY", QStringList{"@", "5XY"}, none);
    row("@N", "@N", QStringList{}, "@N");
    row("@N123", "@N123", QStringList{}, "@N123");
    row("@N123+", "@N123+", QStringList{}, "@N123+");
    row("@N123@", "@N123@А", QStringList{"@N123@", "А"}, none);
    row("@N123+@", "@N123+@", QStringList{"@N123+@"}, none);
    row("@n12 then text", "@n12А", QStringList{"@n12", "А"}, none);
    row("@N++", "@N++", QStringList{"@N+", "+"}, none);
    row("@L is no command here", "@LА", QStringList{"@", "LА"}, none);
    row("@V is no command here", "@V", QStringList{"@", "V"}, none);
    row("@ before text", "@Ю", QStringList{"@", "Ю"}, none);
    row("@@C", "@@C", QStringList{"@", "@C"}, none);
    row("commands in a row", "@C@E@H", QStringList{"@C", "@E", "@H"}, none);
    row("all kinds", "А@CБ@12*В@", QStringList{"А", "@C", "Б", "@12*", "В"}, "@");
}

void TestFormMainLine::receivedTextIsCutIntoCommandsAndText()
{
    QFETCH(QString, received);
    for (const int mode : {CKS, Direct}) {
        Station station(mode);
        station.form->receiver.receiveMilliseconds = PatienceMs; // all in one turn, on a busy machine too
        QStringList pieces;
        // The journal tells of each piece by a change.
        QString before = Log.lines.last();
        connect(&Log, &CProtocol::Changed, station.form.get(), [&] {
            pieces << Log.lines.last().mid(before.size()).remove(QChar(ProtocolReceived));
            before = Log.lines.last();
        });
        station.receive(received);
        QTEST(pieces, "pieces");
        QTEST(TlgThread.recvBuffer.mGet(), "rest");
    }
}

void TestFormMainLine::commandsReachTheSwitchedProcedureInTheirPlace()
{
    Station station(SKK);
    (void)station.news();
    station.receive(QStringLiteral("АБ@EВГ@5"));
    QCOMPARE(station.news().first(), QStringLiteral("1АБ@EВГ"));
    QCOMPARE(int(ProcessSKK.lastCmdIn), int('E'));
    QCOMPARE(State.connectionText, QStringLiteral("АБВГ")); // without the command
    QCOMPARE(TlgThread.recvBuffer.mGet(), QStringLiteral("@5"));
}

void TestFormMainLine::receivedTextMayComeCharacterByCharacter()
{
    Station station(Direct);
    (void)station.news();
    for (const QChar c : QStringLiteral("А@12*Б@N7@В@C"))
        station.receive(c);
    QCOMPARE(station.news(), QStringList{QStringLiteral("1А@12*Б@N7@В@C")});
    QCOMPARE(ProcessDirect.receiveBuffer, QStringLiteral("АБВ"));
    QVERIFY(TlgThread.recvBuffer.mIsEmpty());
}

void TestFormMainLine::receivedTextEndsTheSilence()
{
    Station station(Direct);
    State.secondsSinceRx = State.secondsSinceTx = State.idleSeconds = 9;
    station.receive(QStringLiteral("А"));
    QCOMPARE(State.secondsSinceRx, 0);
    QCOMPARE(State.idleSeconds, 0);
    QCOMPARE(State.secondsSinceTx, 9);
}

void TestFormMainLine::emptyBufferOnlyEndsTheSilence()
{
    Station station(Direct);
    State.secondsSinceRx = 9;
    (void)station.news();
    station.form->slotOnTlgReceived();
    QCOMPARE(State.secondsSinceRx, 0);
    QCOMPARE(station.colour("lampReceived"), QColor(Qt::white));
    QVERIFY(station.news().isEmpty());
}

void TestFormMainLine::receivedTextReachesTheDirectProcedure()
{
    Station station(Direct);
    station.receive(QStringLiteral("ЗЦЗЦ 1\r\nПРИВЕТ\r\nНННН  "));
    QCOMPARE(State.PK_in, 1);
    QCOMPARE(station.desk.names(QStringLiteral("inp/20260731")).size(), 1);
}

void TestFormMainLine::receivedTextJoinsTheConnectionOnlyInSKK()
{
    for (const int mode : {CKS, SKK, Direct}) {
        Station station(mode);
        station.receive(QStringLiteral("АБ@5"));
        QCOMPARE(State.connectionText, mode == SKK ? QStringLiteral("АБ") : QString());
    }
}

void TestFormMainLine::floodIsTakenInBlocksAndWhole()
{
    Station station(Direct, [] { Options.protocolFileNoClose = true; }); // as many openings take long
    (void)station.news();
    QString flood;
    for (int i = 0; i < 12000; ++i) // more characters than one block holds
        flood += QStringLiteral("А@C>Б\n");
    const int usual =
        std::exchange(station.form->receiver.receiveMilliseconds, 1); // no machine takes all in that
    station.receive(flood);
    QVERIFY(!TlgThread.recvBuffer.mIsEmpty());          // the event loop gets its turn
    station.form->receiver.receiveMilliseconds = usual; // else a busy machine takes a minute for the rest
    QTRY_VERIFY(TlgThread.recvBuffer.mIsEmpty());
    const QStringList lines = station.news();
    QCOMPARE(lines.size(), 24000);
    QCOMPARE(lines.first(), QStringLiteral("1А@C>"));
    QCOMPARE(lines.last(), QStringLiteral("1Б>"));
}

void TestFormMainLine::textThatComesWhileOtherTextIsTakenKeepsItsPlace()
{
    Station station(Direct);
    (void)station.news();
    bool once = true;
    // As a question box under the first piece would let the next signal of the link thread in.
    connect(&Log, &CProtocol::Changed, station.form.get(), [&] {
        if (std::exchange(once, false))
            station.receive(QStringLiteral("В@H"));
    });
    station.receive(QStringLiteral("А@CБ@5"));
    QCOMPARE(station.news(), QStringList{QStringLiteral("1А@CБ@5В@H")});
}

void TestFormMainLine::nothingIsLostUnderAQuestion()
{
    Station station(Direct);
    station.setLinkUp(true);
    station.queueDirect(QStringLiteral("260731_110000"), "ПРИВЕТ");
    State.scanCountdown = 0;
    const Answer answer(QMessageBox::No, [&station] {
        station.receive(QStringLiteral("ЗЦЗЦ 1\r\nПРИВЕТ\r\nНННН  "));
        station.tick();
        QCOMPARE(station.desk.sent(), QStringLiteral("ПРИВЕТ"));
        station.reportSent(QStringLiteral("ПРИВЕТ"));
        station.tick();
    });
    station.form->closeApplication();
    QCOMPARE(State.PK_in, 1);
    QCOMPARE(State.PK_out, 1);
    QCOMPARE(station.desk.names(QStringLiteral("inp/20260731")).size(), 1);
    QCOMPARE(station.desk.names(QStringLiteral("out/20260731")).size(), 1);
    QCOMPARE(State.stopCountdown, 0);
}

void TestFormMainLine::sentTextIsJournalled()
{
    Station station(Direct);
    State.secondsSinceTx = State.secondsSinceRx = State.idleSeconds = 9;
    (void)station.news();
    station.reportSent(QStringLiteral("АБ\r\n"));
    QCOMPARE(station.news(), QStringList{QStringLiteral("2АБ<>")});
    QVERIFY(TlgThread.sentLog.mIsEmpty());
    QCOMPARE(State.secondsSinceTx, 0);
    QCOMPARE(State.idleSeconds, 0);
    QCOMPARE(State.secondsSinceRx, 9);
    QCOMPARE(station.colour("lampSent"), QColor(Qt::white));
}

void TestFormMainLine::sentTextJoinsTheConnectionOnlyInSKK()
{
    for (const int mode : {CKS, SKK, Direct}) {
        Station station(mode);
        station.reportSent(QStringLiteral("АБ"));
        QCOMPARE(State.connectionText, mode == SKK ? QStringLiteral("АБ") : QString());
    }
}

void TestFormMainLine::lastCharacterOfAFileIsActedUpon_data()
{
    QTest::addColumn<int>("processMode");
    QTest::addColumn<bool>("inProgress");
    QTest::addColumn<int>("askReceiptCountdown");
    row("CKS", int(CKS), true, 2);
    row("CKS without a file", int(CKS), false, 0);
    row("SKK", int(SKK), true, 0);
    row("direct without a file", int(Direct), false, 0);
}

void TestFormMainLine::lastCharacterOfAFileIsActedUpon()
{
    QFETCH(int, processMode);
    QFETCH(bool, inProgress);
    Station station(processMode);
    State.scanCountdown = 9;
    State.fileInProgress = inProgress;
    station.reportSent(QStringLiteral("Я"));
    QTEST(State.askReceiptCountdown, "askReceiptCountdown");
    QCOMPARE(State.fileInProgress, inProgress);
    QCOMPARE(State.scanCountdown, 9);
}

void TestFormMainLine::lastCharacterOfADirectFileMovesIt()
{
    Station station(Direct);
    station.queueDirect(QStringLiteral("260731_110000"), "ПРИВЕТ");
    State.scanCountdown = 0;
    station.setLinkUp(true);
    station.tick();
    QCOMPARE(station.desk.sent(), QStringLiteral("ПРИВЕТ"));
    State.scanCountdown = 9;
    station.reportSent(QStringLiteral("ПРИВЕТ"));
    QVERIFY(!State.fileInProgress);
    QCOMPARE(State.scanCountdown, 0);
    QCOMPARE(station.desk.names(QStringLiteral("out/20260731")).size(), 1);
    QVERIFY(station.desk.names(QStringLiteral("out"), QStringLiteral("*u001*")).isEmpty());
}

void TestFormMainLine::sentTextBeforeTheLastLeavesTheFileInProgress()
{
    for (const int mode : {CKS, Direct}) {
        Station station(mode);
        State.fileInProgress = true;
        TlgThread.sendBuffer.mAppend(QStringLiteral("ЕТ"));
        station.reportSent(QStringLiteral("ПРИВ"));
        QVERIFY(State.fileInProgress);
        QCOMPARE(State.askReceiptCountdown, 0);
    }
}

void TestFormMainLine::operatorsTextGoesInTheFormOfTheLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("sent");
    row("nothing", "", "");
    row("upper case", "Привет abc", "ПРИВЕТ ABC");
    row("CR LF", "а\r\nб", "А<>Б");
    row("marks stay", "|<>#", "|<>#");
    row("command", "@C@n", "@C@N");
    row("Georgian stays", QString(QChar(0x10D0)), QString(QChar(0x10D0)));
}

void TestFormMainLine::operatorsTextGoesInTheFormOfTheLine()
{
    QFETCH(QString, text);
    Station station(Direct);
    TlgThread.sendBuffer.mAppend(QStringLiteral("Ы"));
    station.form->TlgSend(text);
    QFETCH(QString, sent);
    QCOMPARE(station.desk.sent(), QStringLiteral("Ы") + sent);
}

void TestFormMainLine::operatorsTextBringsTheJournalToItsEnd()
{
    for (const char *text : {"", "А"}) {
        Station station(Direct);
        station.form->protocolWidget->setDate(QDate(2026, 7, 30));
        QVERIFY(!station.form->protocolWidget->isLastString());
        station.form->TlgSend(QString::fromUtf8(text));
        QVERIFY(station.form->protocolWidget->isLastString());
    }
}

QTEST_MAIN(TestFormMainLine)
#include "test_form_main_line.moc"
