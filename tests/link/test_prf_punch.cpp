// Text on its way to the tape.

#include "tests/link/prf_adapter.h"
#include "tests/support/row.h"

class TestPrfPunch : public QObject
{
    Q_OBJECT

private slots:
    void modeByteNamesTheSpeed_data();
    void modeByteNamesTheSpeed();
    void nothingGoesBeforeTheFirstStatus();
    void roomOfFourLetsNothingGo();
    void roomOfFiveLetsFourCharactersGo();
    void sixCharactersGoAsFourThenTwo();
    void changesOfRegisterCountAgainstTheRoom();
    void roomThatIsOverdrawnIsNone();
    void lastStatusOfABatchIsTheRoom();
    void status3FGivesRoomOf31();
    void charactersWithoutACodeCountAsPunched();
    void lineEndsAndCheGoAsTheCodeHasThem();
    void registerStaysFromPieceToPiece();
    void clearSendStopsAtTheNextPiece();
    void textIsPunchedInTheOrderOfItsSending();
    void logOfSentTextIsKeptUntilCleared();
    void eachBatchWithAStatusIsAnsweredOnce_data();
    void eachBatchWithAStatusIsAnsweredOnce();
    void answerRepeatsTheModeByte();
    void commandsGoAheadOfText();
    void commandGoesAheadOfTextThatMayGo();
    void bytesLeftInThePortHoldTheTextBack();
    void stoppedReadingReachesTheAdapterBeforeTheClose();
};

void TestPrfPunch::modeByteNamesTheSpeed_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QByteArray>("byte");
    row("first", 0, QByteArray("61"));
    row("second", 1, QByteArray("62"));
    row("third", 2, QByteArray("63"));
    row("eighth", 7, QByteArray("68"));
}

void TestPrfPunch::modeByteNamesTheSpeed()
{
    QFETCH(const int, index);
    QFETCH(const QByteArray, byte);
    PrfAdapter adapter;
    PrfRun run;
    QVERIFY(run.thread.setSorel(QStringLiteral("20000001"), index, false));
    run.thread.start();
    QCOMPARE(adapter.take(1), byte);
    adapter.send("30");
    QCOMPARE(adapter.take(1), byte);
}

void TestPrfPunch::nothingGoesBeforeTheFirstStatus()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    run.thread.Send(QStringLiteral("ABCD"));
    QCOMPARE(adapter.settled(), QByteArray());
    QCOMPARE(run.thread.waitingLength(), 4);
    adapter.send("30");
    QCOMPARE(adapter.take(5), QByteArray("61"
                                         "03190e09"));
}

void TestPrfPunch::roomOfFourLetsNothingGo()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    run.thread.Send(QStringLiteral("ABCD"));
    adapter.send("24");
    QCOMPARE(adapter.take(1), QByteArray("61"));
    QCOMPARE(adapter.settled(), QByteArray());
    QCOMPARE(run.thread.waitingLength(), 4);
    QCOMPARE(run.sent(), QVector<int>());
}

void TestPrfPunch::roomOfFiveLetsFourCharactersGo()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    run.thread.Send(QStringLiteral("ABCDE"));
    adapter.send("25");
    QCOMPARE(adapter.take(5), QByteArray("6103190e09"));
    QCOMPARE(adapter.settled(), QByteArray()); // one place is left
    QCOMPARE(run.thread.waitingLength(), 1);
    QCOMPARE(run.sent(), QVector<int>({4}));
}

void TestPrfPunch::sixCharactersGoAsFourThenTwo()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    run.thread.Send(QStringLiteral("ABCDEF"));
    adapter.send("34");
    QCOMPARE(adapter.take(7), QByteArray("61"
                                         "03190e09"
                                         "010d"));
    QTRY_COMPARE(run.sent(), QVector<int>({4, 6}));
    QCOMPARE(run.thread.waitingLength(), 0);
}

void TestPrfPunch::changesOfRegisterCountAgainstTheRoom()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    run.thread.Send(QStringLiteral("А1А1А1А1"));
    adapter.send("2c"); // 12, of which the first piece takes eight
    QCOMPARE(adapter.take(9), QByteArray("61"
                                         "00031b1700031b17"));
    QCOMPARE(adapter.settled(), QByteArray());
    QCOMPARE(run.sent(), QVector<int>({4}));
}

void TestPrfPunch::roomThatIsOverdrawnIsNone()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    run.thread.Send(QStringLiteral("А1А1АБВГ"));
    adapter.send("25");
    QCOMPARE(adapter.take(9), QByteArray("6100031b1700031b17"));
    QCOMPARE(adapter.settled(), QByteArray());
    adapter.send("25"); // counts anew, without the three that were too many
    QCOMPARE(adapter.take(6), QByteArray("61"
                                         "000319131a"));
}

void TestPrfPunch::lastStatusOfABatchIsTheRoom()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    run.thread.Send(QStringLiteral("ABCD"));
    adapter.send("3f24");
    QCOMPARE(adapter.take(1), QByteArray("61"));
    QCOMPARE(adapter.settled(), QByteArray());
    adapter.send("2425");
    QCOMPARE(adapter.take(5), QByteArray("6103190e09"));
}

void TestPrfPunch::status3FGivesRoomOf31()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    run.thread.Send(QString(40, QLatin1Char('A')));
    adapter.send("3f");
    // 31, 27, ... 7: seven pieces, and a room of 3 is left
    QCOMPARE(adapter.take(29), QByteArray("61") + QByteArray(28, 3).toHex());
    QCOMPARE(adapter.settled(), QByteArray());
    QCOMPARE(run.thread.waitingLength(), 12);
}

void TestPrfPunch::charactersWithoutACodeCountAsPunched()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    run.thread.Send(QStringLiteral("^№^№A"));
    adapter.send("25");
    QCOMPARE(adapter.take(2), QByteArray("6103"));
    QTRY_COMPARE(run.sent(), QVector<int>({4, 5}));
}

void TestPrfPunch::lineEndsAndCheGoAsTheCodeHasThem()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    run.thread.Send(QStringLiteral("ч<>\r\nА"));
    adapter.send("3f");
    QCOMPARE(adapter.take(9), QByteArray("61"
                                         "1b0a08020802"
                                         "0003"));
}

void TestPrfPunch::registerStaysFromPieceToPiece()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    run.thread.Send(QStringLiteral("АБВГА"));
    adapter.send("34");
    QCOMPARE(adapter.take(7), QByteArray("61"
                                         "000319131a"
                                         "03"));
}

void TestPrfPunch::clearSendStopsAtTheNextPiece()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    run.thread.Send(QStringLiteral("ABCDEFGH"));
    adapter.send("25");
    QCOMPARE(adapter.take(5), QByteArray("6103190e09"));
    run.thread.clearSend();
    adapter.send("3f");
    QCOMPARE(adapter.take(1), QByteArray("61"));
    QCOMPARE(adapter.settled(), QByteArray());
    QCOMPARE(run.sent(), QVector<int>({4}));
    QVERIFY(run.thread.connected);
    QCOMPARE(run.states(), QStringList(PrfState::Connected));
}

void TestPrfPunch::textIsPunchedInTheOrderOfItsSending()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    run.thread.Send(QStringLiteral("A"));
    run.thread.Send(QStringLiteral("B"));
    run.thread.Send(QStringLiteral("||||||||||"));
    adapter.send("3f");
    QCOMPARE(adapter.take(13), QByteArray("61"
                                          "0319"
                                          "00000000000000000000"));
}

void TestPrfPunch::logOfSentTextIsKeptUntilCleared()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    adapter.send("3f");
    run.thread.Send(QStringLiteral("ABCD"));
    QTRY_COMPARE(run.sent(), QVector<int>({4})); // told, not only logged: the length is looked at then
    run.thread.clearSent();
    QCOMPARE(run.thread.sentLength(), 0);
    run.thread.Send(QStringLiteral("EF"));
    QTRY_COMPARE(run.sent(), QVector<int>({4, 2}));
}

void TestPrfPunch::eachBatchWithAStatusIsAnsweredOnce_data()
{
    QTest::addColumn<QByteArray>("batch");
    QTest::addColumn<int>("answers");
    row("a status", QByteArray("20"), 1);
    row("three", QByteArray("20213f"), 1);
    row("among codes", QByteArray("0301200301"), 1);
    row("codes alone", QByteArray("00011f1b"), 0);
    row("other byte", QByteArray("40"), 1);
    row("highest byte", QByteArray("ff"), 1);
    row("lowest byte of the upper half", QByteArray("80"), 1);
}

void TestPrfPunch::eachBatchWithAStatusIsAnsweredOnce()
{
    QFETCH(const QByteArray, batch);
    QFETCH(const int, answers);
    PrfAdapter adapter;
    PrfRun run(adapter);
    adapter.send(batch);
    QCOMPARE(adapter.take(answers), QByteArray("61").repeated(answers));
    QCOMPARE(adapter.settled(), QByteArray());
}

void TestPrfPunch::answerRepeatsTheModeByte()
{
    PrfAdapter adapter;
    PrfRun run;
    QVERIFY(run.thread.setSorel(QStringLiteral("20000001"), 2, false));
    run.thread.start();
    QCOMPARE(adapter.take(1), QByteArray("63"));
    for (const char *status : {"20", "3f", "2a"}) {
        adapter.send(status);
        QCOMPARE(adapter.take(1), QByteArray("63"));
    }
}

void TestPrfPunch::commandsGoAheadOfText()
{
    PrfAdapter adapter;
    PrfRun run;
    run.thread.Send(QStringLiteral("AB"));
    run.thread.startRead();
    run.thread.stopRead();
    run.start();
    QCOMPARE(adapter.take(3), QByteArray("615150")); // for them no room is needed
    adapter.send("25");
    QCOMPARE(adapter.take(3), QByteArray("610319"));
    run.thread.startRead();
    QCOMPARE(adapter.take(1), QByteArray("51"));
    QCOMPARE(adapter.settled(), QByteArray());
}

// The command comes while the thread has a status in hand and is about to punch.
void TestPrfPunch::commandGoesAheadOfTextThatMayGo()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    for (int i = 0; i < 10; ++i) {
        {
            const QMutexLocker lock(&run.thread.commandMutex);
            run.thread.Send(QStringLiteral("ABCD"));
            adapter.send("25");
            (void)QTest::qWaitFor([&] { return adapter.got.contains(0x61); }, 20);
            run.thread.commandBytes += 0x51;
        }
        const QByteArray got = adapter.take(6);
        QVERIFY2(got == "615103190e09" || got == "516103190e09", got.constData());
        adapter.send("20");
        QCOMPARE(adapter.take(1), QByteArray("61"));
    }
}

// Nothing is read at the other end until the events are processed again.
void TestPrfPunch::bytesLeftInThePortHoldTheTextBack()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    const auto codeIsRead = [&](const char *hex) {
        const int before = run.read().size();
        adapter.send(hex);
        for (int ms = 0; run.read().size() == before && ms < 5000; ++ms)
            QThread::msleep(1);
        return run.read().size() > before;
    };
    const QByteArray commands(200000, 0x51); // far more than the system takes in
    {
        const QMutexLocker lock(&run.thread.commandMutex);
        run.thread.commandBytes = commands;
    }
    QVERIFY(codeIsRead("03")); // the commands are written, or are in this pass
    QVERIFY(codeIsRead("03"));
    run.thread.Send(QStringLiteral("ABCD"));
    QVERIFY(codeIsRead("3f03"));
    QVERIFY(codeIsRead("03")); // the pass with the room is over
    QCOMPARE(run.thread.waitingLength(), 4);
    QCOMPARE(adapter.take(commands.size() + 5).right(10), QByteArray("6103190e09"));
    QCOMPARE(run.thread.waitingLength(), 0);
}

// The dialog stops the tape and closes while the thread is on its way round.
void TestPrfPunch::stoppedReadingReachesTheAdapterBeforeTheClose()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    connect(
        &run.thread, &CPrfThread::signalOnSended, &run.thread,
        [&run] {
            run.thread.stopRead();
            run.thread.Deactivate();
        },
        Qt::DirectConnection);
    run.thread.Send(QStringLiteral("A"));
    adapter.send("25");
    QTRY_COMPARE(adapter.closings, 1);
    QCOMPARE(adapter.news(), QByteArray("610350"));
}

QTEST_GUILESS_MAIN(TestPrfPunch)
#include "test_prf_punch.moc"
