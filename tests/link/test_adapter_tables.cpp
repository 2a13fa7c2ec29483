// Both tables of bytes between program and line adapter, row by row, in each procedure and with each
// firmware; and what a sending step does when a byte is refused or guaranteed transfer is on.

#include "app/options.h"
#include "link/adapter_stream.h"
#include "link/tlg_thread.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"

#include <QtTest>

#include <initializer_list>

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}

/// An adapter link without its port, which can refuse what is written.
struct Adapter {
    Adapter(int processMode, int version) : stream(TlgThread, qs("Trelo (10000001)"), version)
    {
        Options.processMode = processMode;
        TlgThread.txCredit = 0;
    }
    void take(int byte) { stream.take(QByteArray(1, char(byte))); }
    /// One sending step; what it wrote in hexadecimal.
    QByteArray send(const char *text)
    {
        TlgThread.sendBuffer.mAppend(qs(text));
        QByteArray written;
        stream.send([&](const QByteArray &bytes) {
            lockedAtEachWrite = lockedAtEachWrite && !TlgThread.sendBuffer.mutex.tryLock();
            written += bytes;
            return !refuses;
        });
        return written.toHex();
    }

    Desk desk;
    CAdapterStream stream;
    bool refuses = false;
    bool lockedAtEachWrite = true;
};

constexpr int Unknown = 0, LastOld = 20231110, FirstNew = 20231111;
} // namespace

class TestAdapterTables : public QObject
{
    Q_OBJECT

private slots:
    void everyStatus_data() { everyAdapter(); }
    void everyStatus();
    void everyEcho_data() { everyAdapter(); }
    void everyEcho();
    void everyCommand_data();
    void everyCommand();
    void oneReadIsHandedOnInOnePiece();
    void registersBeginInLatinAndAreKeptApart();
    void commandBehindVanishedTextGoesInTheSameStep();
    void sendBufferStaysLockedWhileBytesAreWritten();
    void refusedTextIsTakenForSent_data() { everyAdapter(); }
    void refusedTextIsTakenForSent();
    void refusedCommandIsNotLogged();
    void guaranteedTransferKeepsTextOutOfTheLog_data() { everyAdapter(); }
    void guaranteedTransferKeepsTextOutOfTheLog();
    void guaranteedTransferLogsCommands();

private:
    static void everyAdapter();
};

void TestAdapterTables::everyAdapter()
{
    QTest::addColumn<int>("processMode");
    QTest::addColumn<int>("version");
    QTest::addColumn<bool>("echoes");
    for (const int mode : {0, 1, 2}) {
        QTest::addRow("procedure %d, unknown firmware", mode) << mode << Unknown << false;
        QTest::addRow("procedure %d, last without echo", mode) << mode << LastOld << false;
        QTest::addRow("procedure %d, first with echo", mode) << mode << FirstNew << true;
    }
}

void TestAdapterTables::everyStatus()
{
    QFETCH(int, processMode);
    QFETCH(int, version);
    QFETCH(bool, echoes);
    for (int status = 0x20; status <= 0x3F; ++status)
        for (const bool before : {false, true}) {
            Adapter adapter(processMode, version);
            TlgThread.allSent = before;
            TlgThread.shownWindow = 77;
            TlgThread.pendingEcho.mSet(qs("АБ"));
            adapter.take(status);
            const int credit = status - (status < 0x30 ? 0x20 : 0x30);
            const bool drained = status >= 0x30;
            QCOMPARE(TlgThread.txCredit.load(), credit);
            QCOMPARE(TlgThread.allSent.load(), drained || (echoes ? before : credit > 0));
            QCOMPARE(TlgThread.pendingEcho.mGet(), drained ? QString() : qs("АБ"));
            QCOMPARE(TlgThread.shownWindow.load(), credit > 0 ? credit : 77);
            QVERIFY(TlgThread.statusPending);
            QVERIFY(TlgThread.recvBuffer.mIsEmpty() && TlgThread.sentLog.mIsEmpty());
            QCOMPARE(TlgThread.lineError.load(), 0);
        }
}

void TestAdapterTables::everyEcho()
{
    QFETCH(int, processMode);
    QFETCH(int, version);
    QFETCH(bool, echoes);
    // From the Latin register on, with the marks at 80, 9B and 9F.
    const QString said = qs("|Е\nА СИУ\rДРЙНФЦКТЗЛВХЫПЯОБГ#./=&");
    Adapter adapter(processMode, version);
    TlgThread.pendingEcho.mSet(said + qs("X"));
    for (int byte = 0x80; byte <= 0x9F; ++byte)
        adapter.take(byte);
    QCOMPARE(TlgThread.pendingEcho.mGet(), echoes ? qs("X") : said + qs("X"));
    QCOMPARE(TlgThread.sentLog.mGet(), echoes ? said : QString());
    QCOMPARE(TlgThread.sentEvents.load(), echoes ? 32 : 0);
    QVERIFY(TlgThread.recvBuffer.mIsEmpty());
    QVERIFY(!TlgThread.statusPending);
}

void TestAdapterTables::everyCommand_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("left");
    const auto row = [](const char *name, const char *text, const char *bytes, const char *left = "") {
        ::row(name, QByteArray(text), QByteArray(bytes), qs(left));
    };
    row("@C", "@C", "43");
    row("@E", "@E", "44");
    row("@H", "@H", "41");
    row("@N, every digit", "@N1234567890@", "5d420102030405060708090040");
    row("@N with plus", "@N123+@", "5d420102030b40");
    row("@N without digits", "@N@", "5d4240");
    row("@N with plus alone", "@N+@", "5d420b40");
    row("@N, ended by a letter", "@N12X", "5d42010240", "X");
    row("@N, digits of another script", "@N1٣@", "5d42010340");
    row("@n, every digit", "@n1234567890@", "5e420102030405060708090040");
    row("@n with plus", "@n9+@", "5e42090b40");
    row("@n, ended by the next command", "@n9@C", "5e420940", "C");
}

// Outside of the switched channel none has a byte, and all are taken off the buffer.
void TestAdapterTables::everyCommand()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, left);
    for (const int processMode : {0, 1, 2})
        for (const int version : {Unknown, LastOld, FirstNew}) {
            const bool switched = processMode == 1;
            Adapter adapter(processMode, version);
            QCOMPARE(adapter.send(text.constData()), switched ? bytes : QByteArray());
            QCOMPARE(TlgThread.sendBuffer.mGet(), left);
            const QString command = QString::fromUtf8(text);
            QCOMPARE(TlgThread.sentLog.mGet(), switched ? command.chopped(left.size()) : QString());
            QCOMPARE(TlgThread.allSent.load(), !switched);
            QVERIFY(TlgThread.pendingEcho.mIsEmpty());
        }
}

void TestAdapterTables::oneReadIsHandedOnInOnePiece()
{
    Adapter adapter(1, FirstNew);
    adapter.stream.take(QByteArray::fromHex("034f4305")); // a code, a break, a call, a code
    QCOMPARE(TlgThread.recvBuffer.mGet(), qs("A^@CS"));
    QCOMPARE(TlgThread.receivedEvents.load(), 1);
    adapter.stream.take(QByteArray::fromHex("3f83")); // no text in it
    QCOMPARE(TlgThread.receivedEvents.load(), 1);
}

void TestAdapterTables::registersBeginInLatinAndAreKeptApart()
{
    Adapter adapter(2, FirstNew);
    adapter.stream.take(QByteArray::fromHex("0003")); // received: the national letters
    QCOMPARE(TlgThread.recvBuffer.mTake(), qs("|А"));
    TlgThread.txCredit = 15;
    QCOMPARE(adapter.send("A1"), QByteArray("031b17")); // sent: Latin without a sign, then figures
    adapter.take(0x83);                                 // echoed: Latin still
    QCOMPARE(TlgThread.sentLog.mTake(), qs("A"));
    adapter.take(0x03);
    QCOMPARE(TlgThread.recvBuffer.mTake(), qs("А")); // national still
    TlgThread.txCredit = 15;
    QCOMPARE(adapter.send("2"), QByteArray("13")); // figures still
}

void TestAdapterTables::commandBehindVanishedTextGoesInTheSameStep()
{
    Adapter adapter(1, FirstNew);
    TlgThread.txCredit = 5;
    QCOMPARE(adapter.send("日本@HE"), QByteArray("41"));
    QCOMPARE(TlgThread.txCredit.load(), 5); // no code has used it
    QCOMPARE(TlgThread.sendBuffer.mGet(), qs("E"));
    QCOMPARE(TlgThread.sentLog.mGet(), qs("@H"));
}

void TestAdapterTables::sendBufferStaysLockedWhileBytesAreWritten()
{
    Adapter adapter(1, FirstNew);
    TlgThread.txCredit = 5;
    QCOMPARE(adapter.send("E"), QByteArray("01"));
    QCOMPARE(adapter.send("@H"), QByteArray("41"));
    QVERIFY(adapter.lockedAtEachWrite);
    QVERIFY(TlgThread.sendBuffer.mutex.tryLock()); // and free behind the step
    TlgThread.sendBuffer.mutex.unlock();
}

// Not noticed here: the echo or the status shows it.
void TestAdapterTables::refusedTextIsTakenForSent()
{
    QFETCH(int, processMode);
    QFETCH(int, version);
    QFETCH(bool, echoes);
    Adapter adapter(processMode, version);
    adapter.refuses = true;
    TlgThread.txCredit = 5;
    QCOMPARE(adapter.send("EA"), QByteArray("0103"));
    QVERIFY(TlgThread.sendBuffer.mIsEmpty());
    QVERIFY(!TlgThread.allSent);
    QCOMPARE(TlgThread.txCredit.load(), 0);
    QCOMPARE(TlgThread.sentLog.mGet(), echoes ? QString() : qs("EA"));
    QCOMPARE(TlgThread.pendingEcho.mGet(), echoes ? qs("EA") : QString());
}

void TestAdapterTables::refusedCommandIsNotLogged()
{
    Adapter adapter(1, FirstNew);
    adapter.refuses = true;
    QCOMPARE(adapter.send("@HE"), QByteArray("41"));
    QCOMPARE(TlgThread.sendBuffer.mGet(), qs("E"));
    QVERIFY(TlgThread.sentLog.mIsEmpty());
    QVERIFY(TlgThread.allSent);
    QCOMPARE(TlgThread.sentEvents.load(), 0);
}

void TestAdapterTables::guaranteedTransferKeepsTextOutOfTheLog()
{
    QFETCH(int, processMode);
    QFETCH(int, version);
    QFETCH(bool, echoes);
    Adapter adapter(processMode, version);
    QVERIFY(TlgThread.startProtectedMode());
    TlgThread.txCredit = 5;
    QCOMPARE(adapter.send("EA"), QByteArray("0103"));
    QVERIFY(TlgThread.sentLog.mIsEmpty());
    QCOMPARE(TlgThread.pendingEcho.mGet(), echoes ? qs("EA") : QString());
    QCOMPARE(TlgThread.sentEvents.load(), 1);
    QVERIFY(!TlgThread.allSent);
}

void TestAdapterTables::guaranteedTransferLogsCommands()
{
    Adapter adapter(1, LastOld);
    QVERIFY(TlgThread.startProtectedMode());
    QCOMPARE(adapter.send("@C"), QByteArray("43"));
    QCOMPARE(TlgThread.sentLog.mGet(), qs("@C"));
    QCOMPARE(TlgThread.sentEvents.load(), 1);
}

QTEST_GUILESS_MAIN(TestAdapterTables)
#include "test_adapter_tables.moc"
