// What a running link says to the adapter, through a real serial port.

#include "app/options.h"
#include "tests/link/adapter_port.h"
#include "tests/support/row.h"

#include <QtTest>

class TestPortSending : public QObject
{
    Q_OBJECT

private slots:
    void everyCodeOfTheProgram_data();
    void everyCodeOfTheProgram();
    void twelveCharactersAndCreditFive();
    void creditIsUsedUpByOneChunk();
    void registerCodesAreFree();
    void commandsOfTheSwitchedChannel_data();
    void commandsOfTheSwitchedChannel();
    void commandsElsewhereAreConsumedWithoutAByte_data();
    void commandsElsewhereAreConsumedWithoutAByte();
    void operatorKeysGoAsLetters_data();
    void operatorKeysGoAsLetters();
    void incompleteCommandWaitsForItsEnd();
    void textBeforeACommandGoesFirst();
    void commandNeedsNoCredit();
    void flowReportVanishes();
    void clearedQueueSendsNoMore();
    void atMostEightBytesWaitUnsent();
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}
} // namespace

void TestPortSending::everyCodeOfTheProgram_data()
{
    QTest::addColumn<int>("processMode");
    QTest::addColumn<QByteArray>("version");
    QTest::addColumn<QByteArray>("mode");
    for (const int processMode : {0, 1, 2}) {
        const QByteArray mode = processMode == 1 ? "69" : "66";
        QTest::addRow("procedure %d, old firmware", processMode)
            << processMode << QByteArray("170b0a") << mode;
        QTest::addRow("procedure %d, new firmware", processMode)
            << processMode << QByteArray("170b0b") << mode;
    }
}

void TestPortSending::everyCodeOfTheProgram()
{
    QFETCH(int, processMode);
    QFETCH(QByteArray, version);
    QFETCH(QByteArray, mode);
    AdapterLink link(processMode);
    QVERIFY(link.open(version.constData()));
    const QString text = qs("|ЕАСИУДРЙНФЦКТЗ") + qs("ЛВХЫПЯОБГ \r\n#1/") + qs("&EXV");
    link.line.send(text);
    link.adapter.send("2f");
    QTRY_COMPARE(link.adapter.got(), mode + "00010305060709"
                                            "0a0b0c0d0e0f1011");
    link.adapter.send("2f");
    QTRY_COMPARE(link.adapter.got().mid(32), mode + "1213141516171819"
                                                    "1a0408021b171d");
    link.adapter.send("2f");
    QTRY_COMPARE(link.adapter.got().mid(64), mode + "1f011d1e");
    QVERIFY(link.thread.sendBuffer.mIsEmpty());
    const bool echoes = version == "170b0b";
    QCOMPARE(link.thread.sentLog.mGet(), echoes ? QString() : text);
    QCOMPARE(link.thread.pendingEcho.mGet(), echoes ? text : QString());
    link.stop();
    QVERIFY(link.ended());
    QTRY_COMPARE(link.adapter.got().mid(64), mode + "1f011d1e"
                                                    "60");
}

void TestPortSending::twelveCharactersAndCreditFive()
{
    AdapterLink link;
    QVERIFY(link.open());
    link.line.send(qs("EASIUDRJNFCK"));
    link.adapter.send("25");
    QTRY_COMPARE(link.adapter.got(), QByteArray("660103050607"));
    QCOMPARE(link.thread.sendBuffer.mGet(), qs("DRJNFCK"));
    link.adapter.send("20"); // no room: an answer, and no text
    QTRY_COMPARE(link.adapter.got(), QByteArray("66010305060766"));
    QCOMPARE(link.thread.sendBuffer.mGet(), qs("DRJNFCK"));
    link.adapter.send("27");
    QTRY_COMPARE(link.adapter.got(), QByteArray("6601030506076666090a0b0c0d0e0f"));
    QVERIFY(link.thread.sendBuffer.mIsEmpty());
}

void TestPortSending::creditIsUsedUpByOneChunk()
{
    AdapterLink link;
    QVERIFY(link.open());
    link.line.send(qs("EA"));
    link.adapter.send("2f");
    QTRY_COMPARE(link.adapter.got(), QByteArray("660103"));
    QTRY_COMPARE(link.thread.txCredit.load(), 0);
    link.line.send(qs("S")); // thirteen more were granted, but the next status decides
    QVERIFY(link.line.second() && link.line.second());
    QCOMPARE(link.adapter.got(), QByteArray("660103"));
    link.adapter.send("21");
    QTRY_COMPARE(link.adapter.got(), QByteArray("6601036605"));
}

void TestPortSending::registerCodesAreFree()
{
    AdapterLink link;
    QVERIFY(link.open());
    link.line.send(qs("А1E"));
    link.adapter.send("23");
    QTRY_COMPARE(link.adapter.got(), QByteArray("66"
                                                "0003"
                                                "1b17"
                                                "1f01"));
    QTRY_COMPARE(link.thread.sentLog.mGet(), qs("А1E"));
}

void TestPortSending::commandsOfTheSwitchedChannel_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QByteArray>("bytes");
    row("call", "@C", QByteArray("43"));
    row("answer", "@E", QByteArray("44"));
    row("hang up", "@H", QByteArray("41"));
    row("pulses", "@N1234567890@", QByteArray("5d420102030405060708090040"));
    row("pulses, with plus", "@N123+@", QByteArray("5d420102030b40"));
    row("no digits", "@N@", QByteArray("5d4240"));
    row("second form", "@n90@", QByteArray("5e42090040"));
    row("as the procedure dials", "@C@n12@", QByteArray("435e42010240"));
}

void TestPortSending::commandsOfTheSwitchedChannel()
{
    QFETCH(QString, command);
    QFETCH(QByteArray, bytes);
    AdapterLink link(1);
    QVERIFY(link.open());
    link.line.send(command);
    QTRY_COMPARE(link.adapter.got(), bytes);
    QTRY_COMPARE(link.thread.sentLog.mGet(), command);
    QVERIFY(!link.thread.allSent);
    QVERIFY(link.thread.sendBuffer.mIsEmpty());
}

void TestPortSending::commandsElsewhereAreConsumedWithoutAByte_data()
{
    QTest::addColumn<int>("processMode");
    row("centre", 0);
    row("direct", 2);
}

void TestPortSending::commandsElsewhereAreConsumedWithoutAByte()
{
    QFETCH(int, processMode);
    AdapterLink link(processMode);
    QVERIFY(link.open());
    for (const char *command : {"@C", "@E", "@H", "@N12@", "@n12+@"}) {
        link.line.send(qs(command));
        QTRY_VERIFY(link.thread.sendBuffer.mIsEmpty());
    }
    QVERIFY(link.thread.allSent);
    QVERIFY(link.thread.sentLog.mIsEmpty());
    link.line.send(qs("@CE@HA"));
    link.adapter.send("2f");
    QTRY_COMPARE(link.adapter.got(), QByteArray("6601"));
    link.adapter.send("2f");
    QTRY_COMPARE(link.adapter.got(), QByteArray("66016603"));
    QTRY_COMPARE(link.thread.sentLog.mGet(), qs("EA")); // written down behind the write
}

void TestPortSending::operatorKeysGoAsLetters_data()
{
    QTest::addColumn<int>("processMode");
    for (const int mode : {0, 1, 2})
        QTest::addRow("procedure %d", mode) << mode;
}

// Meant to be so: the keys' own bytes, 5A and 5C, are never sent.
void TestPortSending::operatorKeysGoAsLetters()
{
    QFETCH(int, processMode);
    AdapterLink link(processMode);
    QVERIFY(link.open());
    const QByteArray mode = processMode == 1 ? "69" : "66";
    link.line.send(qs("@L@V"));
    QTRY_COMPARE(link.thread.sendBuffer.mGet(), qs("L@V"));
    link.adapter.send("2f");
    QTRY_COMPARE(link.adapter.got(), mode + "12");
    link.adapter.send("2f");
    QTRY_COMPARE(link.adapter.got(), mode + "12" + mode + "1e");
    QTRY_COMPARE(link.thread.sentLog.mGet(), qs("LV"));
}

void TestPortSending::incompleteCommandWaitsForItsEnd()
{
    AdapterLink link(1);
    QVERIFY(link.open());
    link.adapter.send("2f");
    link.line.send(qs("@"));
    QVERIFY(link.line.second() && link.line.second());
    link.line.send(qs("N12"));
    QVERIFY(link.line.second() && link.line.second());
    QCOMPARE(link.thread.sendBuffer.mGet(), qs("@N12"));
    QCOMPARE(link.adapter.got(), QByteArray("69"));
    link.line.send(qs("3@"));
    QTRY_COMPARE(link.adapter.got(), QByteArray("695d4201020340"));
}

void TestPortSending::textBeforeACommandGoesFirst()
{
    AdapterLink link(1);
    QVERIFY(link.open());
    link.line.send(qs("EAS@HU"));
    QVERIFY(link.line.second() && link.line.second());
    QCOMPARE(link.adapter.got(), QByteArray()); // it waits behind the text
    link.adapter.send("22");
    QTRY_COMPARE(link.adapter.got(), QByteArray("690103"));
    link.adapter.send("2f");
    QTRY_COMPARE(link.adapter.got(), QByteArray("690103"
                                                "6905"
                                                "41"));
    QCOMPARE(link.thread.sendBuffer.mGet(), qs("U"));
}

void TestPortSending::commandNeedsNoCredit()
{
    AdapterLink link(1);
    QVERIFY(link.open());
    link.adapter.send("20");
    QTRY_COMPARE(link.adapter.got(), QByteArray("69"));
    link.line.send(qs("@HE"));
    QTRY_COMPARE(link.adapter.got(), QByteArray("6941"));
    QCOMPARE(link.thread.sendBuffer.mGet(), qs("E"));
}

void TestPortSending::flowReportVanishes()
{
    AdapterLink link(1);
    QVERIFY(link.open());
    link.line.send(qs("@12*"));
    QTRY_VERIFY(link.thread.sendBuffer.mIsEmpty());
    QVERIFY(link.thread.sentLog.mIsEmpty());
    QVERIFY(link.thread.allSent);
    link.line.send(qs("@H"));
    QTRY_COMPARE(link.adapter.got(), QByteArray("41"));
}

void TestPortSending::clearedQueueSendsNoMore()
{
    AdapterLink link;
    QVERIFY(link.open());
    link.line.send(qs("EASIU"));
    link.adapter.send("22");
    QTRY_COMPARE(link.adapter.got(), QByteArray("660103"));
    QCOMPARE(link.thread.sendBuffer.mTake(), qs("SIU"));
    link.adapter.send("2f");
    QTRY_COMPARE(link.adapter.got(), QByteArray("66010366"));
}

// An adapter that grants room but does not take bytes off the cable: text stays where it can be withdrawn.
void TestPortSending::atMostEightBytesWaitUnsent()
{
    constexpr int Length = 40000;
    AdapterLink link;
    QVERIFY(link.open());
    link.line.send(QString(Length, QLatin1Char('E')));
    const auto waiting = [&] {
        const QMutexLocker lock(&link.thread.sendBuffer.mutex);
        return link.thread.sendBuffer.text.size();
    };
    // Without the event loop nothing reads the cable. Each grant is awaited in the buffer it empties, for
    // some passes of the link, however long a busy machine takes for them.
    const auto pass = [&] {
        link.thread.slotOnSec();
        while (link.thread.secondTick && !link.line.ended())
            QThread::msleep(1);
        QThread::msleep(10);
    };
    const auto granted = [&] {
        const int before = waiting();
        link.adapter.terminal.write("\x2f");
        for (int passes = 0; passes < 12 && waiting() == before; ++passes) // silence would end it at 31
            pass();
        return waiting() < before;
    };
    int grants = 0;
    while (grants < Length / 15 && granted())
        ++grants;
    QVERIFY(grants > 0 && grants < Length / 15);
    const int held = waiting();
    QVERIFY(!granted() && !granted()); // still taking statuses, still holding the text
    QCOMPARE(waiting(), held);
    QCOMPARE(link.thread.txCredit.load(), 15);
    QVERIFY(link.thread.connected);

    while (waiting() > 0) { // the adapter takes them again
        link.adapter.send("2f");
        QTest::qWait(1);
    }
    QTRY_COMPARE(link.adapter.got().replace("66", "").size(), 2 * Length);
    QCOMPARE(link.states().size(), 3);
}

QTEST_GUILESS_MAIN(TestPortSending)
#include "test_port_sending.moc"
