// The bytes between program and line adapter, in each procedure and both firmware generations.

#include "app/options.h"
#include "link/adapter_stream.h"
#include "link/tlg_thread.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"

#include <QSignalSpy>
#include <QtTest>

namespace
{
constexpr int NewFirmware = 20231111, OldFirmware = 20231110;

/// An adapter link without its port: what it writes is gathered.
struct Adapter {
    explicit Adapter(int version = NewFirmware, int processMode = 2)
        : stream(TlgThread, QStringLiteral("Trelo (10000001)"), version)
    {
        Options.processMode = processMode;
        TlgThread.txCredit = 0;
    }
    void take(const QByteArray &hex) { stream.take(QByteArray::fromHex(hex)); }
    /// One sending step; what it wrote in hexadecimal.
    QByteArray send()
    {
        QByteArray written;
        stream.send([&](const QByteArray &bytes) {
            written += bytes;
            return true;
        });
        return written.toHex();
    }
    static QString received() { return TlgThread.recvBuffer.mTake(); }

    Desk desk;
    CAdapterStream stream;
};
} // namespace

class TestAdapterStream : public QObject
{
    Q_OBJECT

private slots:
    void modeByte_data();
    void modeByte();
    void everyCodeIsReceived();
    void eventBytes_data();
    void eventBytes();
    void bytesWithoutMeaningAreIgnored_data();
    void bytesWithoutMeaningAreIgnored();
    void echoMovesPendingTextToTheLog();
    void echoOfOldFirmwareIsIgnored();
    void echoUnderGuaranteedTransferIsNotLogged();
    void statusWithNewFirmware_data();
    void statusWithNewFirmware();
    void statusWithOldFirmware_data();
    void statusWithOldFirmware();
    void twoLineBreaksGiveOneSign();
    void codeEndsTheLineBreak();
    void noSignalIsToldOnce();
    void creditEndsTheLossOfSignal();
    void twelveCharactersAndCreditFive();
    void registerCodesAreFreeOfCredit();
    void chunkIsLoggedByOldPendedByNew();
    void commands_data();
    void commands();
    void commandsOutsideTheSwitchedChannelAreLost_data();
    void commandsOutsideTheSwitchedChannelAreLost();
    void incompleteCommandWaits();
    void unknownCommandGoesAsText();
    void textBeforeACommandGoesFirst();
    void versionReply_data();
    void versionReply();
};

void TestAdapterStream::modeByte_data()
{
    QTest::addColumn<int>("processMode");
    QTest::addColumn<int>("baud");
    QTest::addColumn<int>("byte");
    row("no speed", 2, 0, 0x64);
    row("50", 2, 50, 0x65);
    row("100", 0, 100, 0x66);
    row("200", 2, 200, 0x67);
    for (const int baud : {0, 50, 100, 200})
        QTest::addRow("switched, %d", baud) << 1 << baud << 0x69;
}

void TestAdapterStream::modeByte()
{
    QFETCH(int, processMode);
    QFETCH(int, baud);
    QFETCH(int, byte);
    const Desk desk;
    Options.processMode = processMode;
    QCOMPARE(int(CAdapterStream::modeByte(baud)), byte);
}

void TestAdapterStream::everyCodeIsReceived()
{
    Adapter adapter;
    QByteArray codes;
    for (char code = 0; code < 0x20; ++code)
        codes += code;
    adapter.stream.take(codes);
    // Latin up to the figures sign, then figures, then Latin again.
    QCOMPARE(Adapter::received(), QStringLiteral("|Е\nА СИУ\rДРЙНФЦКТЗЛВХЫПЯОБГ#./=&"));
}

void TestAdapterStream::eventBytes_data()
{
    QTest::addColumn<QByteArray>("byte");
    QTest::addColumn<QString>("command");
    row("43", QByteArray("43"), "@C");
    row("41", QByteArray("41"), "@H");
    row("44", QByteArray("44"), "@E");
    row("45", QByteArray("45"), "@S");
}

void TestAdapterStream::eventBytes()
{
    QFETCH(QByteArray, byte);
    QFETCH(QString, command);
    for (const int processMode : {0, 1, 2}) {
        Adapter adapter(NewFirmware, processMode);
        adapter.take(byte);
        QCOMPARE(Adapter::received(), processMode == 1 ? command : QString());
    }
}

void TestAdapterStream::bytesWithoutMeaningAreIgnored_data()
{
    QTest::addColumn<int>("version");
    row("old", OldFirmware);
    row("new", NewFirmware);
}

void TestAdapterStream::bytesWithoutMeaningAreIgnored()
{
    QFETCH(int, version);
    for (int byte = 0x40; byte <= 0xFF; ++byte) {
        const bool event = byte == 0x41 || byte == 0x43 || byte == 0x44 || byte == 0x45;
        const bool echo = byte >= 0x80 && byte <= 0x9F && version == NewFirmware;
        if (event || echo || byte == 0x4F || byte == 0x5E)
            continue;
        Adapter adapter(version, 1);
        adapter.stream.take(QByteArray(1, char(byte)));
        QCOMPARE(Adapter::received(), QString());
        QCOMPARE(TlgThread.lineError.load(), 0);
        QCOMPARE(TlgThread.sentEvents.load(), 0);
        QVERIFY(!TlgThread.statusPending);
    }
}

void TestAdapterStream::echoMovesPendingTextToTheLog()
{
    Adapter adapter;
    TlgThread.pendingEcho.mSet(QStringLiteral("|АБВ"));
    adapter.take("808399"); // the national mark, А, Б
    QCOMPARE(TlgThread.pendingEcho.mGet(), QStringLiteral("В"));
    QCOMPARE(TlgThread.sentLog.mGet(), QStringLiteral("|АБ"));
    QCOMPARE(TlgThread.sentEvents.load(), 3);
    QCOMPARE(Adapter::received(), QString());
}

void TestAdapterStream::echoOfOldFirmwareIsIgnored()
{
    Adapter adapter(OldFirmware);
    TlgThread.pendingEcho.mSet(QStringLiteral("АБ"));
    adapter.take("83");
    QCOMPARE(TlgThread.pendingEcho.mGet(), QStringLiteral("АБ"));
    QCOMPARE(TlgThread.sentLog.mGet(), QString());
    QCOMPARE(TlgThread.sentEvents.load(), 0);
}

void TestAdapterStream::echoUnderGuaranteedTransferIsNotLogged()
{
    Adapter adapter;
    TlgThread.startProtectedMode();
    TlgThread.pendingEcho.mSet(QStringLiteral("АБ"));
    adapter.take("83");
    QCOMPARE(TlgThread.pendingEcho.mGet(), QStringLiteral("Б"));
    QCOMPARE(TlgThread.sentLog.mGet(), QString());
    QCOMPARE(TlgThread.sentEvents.load(), 1);
}

void TestAdapterStream::statusWithNewFirmware_data()
{
    QTest::addColumn<QByteArray>("status");
    QTest::addColumn<int>("credit");
    QTest::addColumn<bool>("allSent");
    QTest::addColumn<QString>("pending");
    row("3F: drained, fifteen", QByteArray("3f"), 15, true, "");
    row("30: drained, none", QByteArray("30"), 0, true, "");
    row("2F: fifteen", QByteArray("2f"), 15, false, "АБ");
    row("20: leaves the flag", QByteArray("20"), 0, false, "АБ");
}

void TestAdapterStream::statusWithNewFirmware()
{
    QFETCH(QByteArray, status);
    QFETCH(int, credit);
    QFETCH(bool, allSent);
    QFETCH(QString, pending);
    Adapter adapter;
    TlgThread.allSent = false;
    TlgThread.shownWindow = 9;
    TlgThread.pendingEcho.mSet(QStringLiteral("АБ"));
    adapter.take(status);
    QCOMPARE(TlgThread.txCredit.load(), credit);
    QCOMPARE(TlgThread.allSent.load(), allSent);
    QCOMPARE(TlgThread.pendingEcho.mGet(), pending);
    QCOMPARE(TlgThread.shownWindow.load(), credit == 0 ? 9 : credit);
    QVERIFY(TlgThread.statusPending);
}

void TestAdapterStream::statusWithOldFirmware_data()
{
    QTest::addColumn<QByteArray>("status");
    QTest::addColumn<bool>("before");
    QTest::addColumn<bool>("allSent");
    row("20 clears the flag", QByteArray("20"), true, false);
    row("21 sets it", QByteArray("21"), false, true);
    row("30 sets it", QByteArray("30"), false, true);
}

void TestAdapterStream::statusWithOldFirmware()
{
    QFETCH(QByteArray, status);
    QFETCH(bool, before);
    QFETCH(bool, allSent);
    Adapter adapter(OldFirmware);
    TlgThread.allSent = before;
    adapter.take(status);
    QCOMPARE(TlgThread.allSent.load(), allSent);
}

void TestAdapterStream::twoLineBreaksGiveOneSign()
{
    Adapter adapter;
    adapter.take("4f4f");
    adapter.take("4f");
    QCOMPARE(Adapter::received(), QStringLiteral("^"));
    QCOMPARE(TlgThread.lineError.load(), 1);
}

void TestAdapterStream::codeEndsTheLineBreak()
{
    Adapter adapter;
    adapter.take("4f034f");
    QCOMPARE(Adapter::received(), QStringLiteral("^A^"));
    adapter.take("03");
    QCOMPARE(TlgThread.lineError.load(), 0);
}

void TestAdapterStream::noSignalIsToldOnce()
{
    Adapter adapter;
    QSignalSpy states(&TlgThread, &CTlgThread::signalOnState);
    adapter.take("5e5e");
    adapter.take("5e");
    QCOMPARE(states.count(), 1);
    QCOMPARE(TlgThread.stateText.mGet(), QStringLiteral("Trelo (10000001): Нет входного сигнала "));
    QCOMPARE(TlgThread.lineError.load(), 2);
    adapter.take("03"); // a code does not bring the signal back
    QCOMPARE(TlgThread.lineError.load(), 2);
}

void TestAdapterStream::creditEndsTheLossOfSignal()
{
    Adapter adapter;
    adapter.take("4f5e30");
    QCOMPARE(TlgThread.lineError.load(), 3);
    adapter.take("21");
    QCOMPARE(TlgThread.lineError.load(), 0);
    QCOMPARE(TlgThread.stateText.mGet(), QStringLiteral("Trelo (10000001): Адаптер подключен"));
}

void TestAdapterStream::twelveCharactersAndCreditFive()
{
    Adapter adapter;
    TlgThread.sendBuffer.mAppend(QStringLiteral("АБВГДЕЖЗИКЛМ"));
    QCOMPARE(adapter.send(), QByteArray());
    adapter.take("25");
    QCOMPARE(adapter.send(), QByteArray("000319131a09"));
    QCOMPARE(TlgThread.sendBuffer.mGet(), QStringLiteral("ЕЖЗИКЛМ"));
    QCOMPARE(adapter.send(), QByteArray());
    adapter.take("2f");
    QCOMPARE(adapter.send(), QByteArray("011e11060f121c"));
    QCOMPARE(TlgThread.sendBuffer.mGet(), QString());
}

void TestAdapterStream::registerCodesAreFreeOfCredit()
{
    Adapter adapter;
    adapter.take("23");
    TlgThread.sendBuffer.mAppend(QStringLiteral("А1Z"));
    QCOMPARE(adapter.send(), QByteArray("00031b171f11"));
}

void TestAdapterStream::chunkIsLoggedByOldPendedByNew()
{
    for (const int version : {OldFirmware, NewFirmware}) {
        Adapter adapter(version);
        adapter.take("2f");
        TlgThread.sendBuffer.mAppend(QStringLiteral("АБ"));
        (void)adapter.send();
        QCOMPARE(TlgThread.sentLog.mGet(), version == OldFirmware ? QStringLiteral("АБ") : QString());
        QCOMPARE(TlgThread.pendingEcho.mGet(), version == NewFirmware ? QStringLiteral("АБ") : QString());
        QVERIFY(!TlgThread.allSent);
        QCOMPARE(TlgThread.sentEvents.load(), 1);
        QCOMPARE(TlgThread.txCredit.load(), 0);
    }
}

void TestAdapterStream::commands_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QByteArray>("bytes");
    row("@C", "@C", QByteArray("43"));
    row("@E", "@E", QByteArray("44"));
    row("@H", "@H", QByteArray("41"));
    row("@N", "@N120@", QByteArray("5d4201020040"));
    row("@N with plus", "@N123+@", QByteArray("5d420102030b40"));
    row("@n", "@n9@", QByteArray("5e420940"));
    row("flow report", "@07*", QByteArray());
}

void TestAdapterStream::commands()
{
    QFETCH(QString, command);
    QFETCH(QByteArray, bytes);
    Adapter adapter(NewFirmware, 1);
    TlgThread.sendBuffer.mAppend(command);
    QCOMPARE(adapter.send(), bytes);
    QCOMPARE(TlgThread.sendBuffer.mGet(), QString());
    QCOMPARE(TlgThread.sentLog.mGet(), bytes.isEmpty() ? QString() : command);
    QCOMPARE(TlgThread.allSent.load(), bytes.isEmpty());
}

void TestAdapterStream::commandsOutsideTheSwitchedChannelAreLost_data()
{
    QTest::addColumn<QString>("command");
    for (const char *command : {"@C", "@E", "@H", "@N12@", "@n12@"})
        row(command, command);
}

void TestAdapterStream::commandsOutsideTheSwitchedChannelAreLost()
{
    QFETCH(QString, command);
    for (const int processMode : {0, 2}) {
        Adapter adapter(NewFirmware, processMode);
        TlgThread.sendBuffer.mAppend(command);
        QCOMPARE(adapter.send(), QByteArray());
        QCOMPARE(TlgThread.sendBuffer.mGet(), QString());
        QCOMPARE(TlgThread.sentLog.mGet(), QString());
    }
}

void TestAdapterStream::incompleteCommandWaits()
{
    Adapter adapter(NewFirmware, 1);
    for (const char *incomplete : {"@", "@N12", "@0"}) {
        TlgThread.sendBuffer.mAppend(QString::fromLatin1(incomplete));
        QCOMPARE(adapter.send(), QByteArray());
        QCOMPARE(TlgThread.sendBuffer.mTake(), QString::fromLatin1(incomplete));
    }
}

void TestAdapterStream::unknownCommandGoesAsText()
{
    for (const int processMode : {0, 1, 2}) {
        Adapter adapter(NewFirmware, processMode);
        TlgThread.sendBuffer.mAppend(QStringLiteral("@L@V"));
        QCOMPARE(adapter.send(), QByteArray()); // its "@" is gone
        adapter.take("2f");
        QCOMPARE(adapter.send(), QByteArray("12")); // L in the Latin register, not 5A
        QCOMPARE(adapter.send(), QByteArray());
        adapter.take("2f");
        QCOMPARE(adapter.send(), QByteArray("1e"));
    }
}

void TestAdapterStream::textBeforeACommandGoesFirst()
{
    Adapter adapter(NewFirmware, 1);
    adapter.take("2f");
    TlgThread.sendBuffer.mAppend(QStringLiteral("EA@HS"));
    QCOMPARE(adapter.send(), QByteArray("0103"));
    QCOMPARE(adapter.send(), QByteArray("41"));
    QCOMPARE(adapter.send(), QByteArray());
    QCOMPARE(TlgThread.sendBuffer.mGet(), QStringLiteral("S"));
}

void TestAdapterStream::versionReply_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("version");
    row("new", QByteArray("170b0b"), 20231111);
    row("old", QByteArray("170b0a"), 20231110);
    row("mixed with status bytes", QByteArray("3f17210b303f0b20"), 20231111);
    row("two codes", QByteArray("170b"), -1);
    row("four codes", QByteArray("170b0b0b"), -1);
    row("nothing", QByteArray(), -1);
}

void TestAdapterStream::versionReply()
{
    QFETCH(QByteArray, reply);
    QFETCH(int, version);
    QCOMPARE(CAdapterStream::versionFrom(QByteArray::fromHex(reply)), version);
}

QTEST_GUILESS_MAIN(TestAdapterStream)
#include "test_adapter_stream.moc"
