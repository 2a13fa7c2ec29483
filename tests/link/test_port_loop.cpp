// What the adapter says to a running link, each byte through a real serial port.

#include "app/options.h"
#include "tests/link/adapter_port.h"
#include "tests/support/patience.h"
#include "tests/support/row.h"

#include <QtTest>

class TestPortLoop : public QObject
{
    Q_OBJECT

private slots:
    void everyByteOfTheAdapter_data();
    void everyByteOfTheAdapter();
    void oneModeByteForABatchWithStatuses_data();
    void oneModeByteForABatchWithStatuses();
    void aBatchWithoutAStatusIsNotAnswered();
    void echoMovesTextToTheLog();
    void statusWithOldFirmware();
    void statusWithNewFirmware();
    void noSignalIsToldOnceAndItsEndToo();
    void lineBreakIsOneSignUntilTheNextCode();
    void textsBecomeSignals();
    void guaranteedSecondsAreCounted();
    void readingStopsWhileNobodyTakesTheText();
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}

QByteArray hexRange(int first, int last)
{
    QByteArray bytes;
    for (int byte = first; byte <= last; ++byte)
        bytes += char(byte);
    return bytes.toHex();
}

/// Counts the signals as they arrive on the main thread.
struct Signals {
    explicit Signals(CTlgThread &thread)
    {
        QObject::connect(&thread, &CTlgThread::signalOnReceived, &context, [this] { ++received; });
        QObject::connect(&thread, &CTlgThread::signalOnSended, &context, [this] { ++sent; });
    }
    QObject context;
    int received = 0;
    int sent = 0;
};

constexpr auto NewFirmware = "170b0b";
} // namespace

void TestPortLoop::everyByteOfTheAdapter_data()
{
    QTest::addColumn<int>("processMode");
    QTest::addColumn<bool>("isNew");
    for (const int mode : {0, 1, 2}) {
        QTest::addRow("procedure %d, old firmware", mode) << mode << false;
        QTest::addRow("procedure %d, new firmware", mode) << mode << true;
    }
}

void TestPortLoop::everyByteOfTheAdapter()
{
    QFETCH(int, processMode);
    QFETCH(bool, isNew);
    AdapterLink link(processMode);
    QVERIFY(link.open(isNew ? NewFirmware : nullptr));
    QVERIFY(link.thread.connected);
    const auto heard = [&](const QByteArray &hex) {
        link.adapter.send(hex + "1f03"); // the Latin sign and A end it
        (void)comesTrue([&] { return link.thread.recvBuffer.mGet().endsWith(qs("&A")); });
        return link.received().chopped(2);
    };
    QCOMPARE(heard(hexRange(0x00, 0x1E)), qs("|Е\nА СИУ\rДРЙНФЦКТЗЛВХЫПЯОБГ#./="));
    QCOMPARE(heard(hexRange(0x20, 0x3F)), QString());
    QCOMPARE(heard("4f5e"), qs("^"));
    QCOMPARE(link.thread.lineError.load(), 2);
    QCOMPARE(heard("43"), processMode == 1 ? qs("@C") : QString());
    QCOMPARE(heard("41"), processMode == 1 ? qs("@H") : QString());
    QCOMPARE(heard("44"), processMode == 1 ? qs("@E") : QString());
    QCOMPARE(heard("45"), processMode == 1 ? qs("@S") : QString());
    QCOMPARE(heard("40"
                   "42" +
                   hexRange(0x46, 0x4E) + hexRange(0x50, 0x5D) + hexRange(0x5F, 0x7F) + hexRange(0xA0, 0xFF)),
             QString());
    QVERIFY(link.thread.sentLog.mIsEmpty());
    QCOMPARE(heard("8381"), QString());
    QCOMPARE(link.thread.sentLog.mGet(), isNew ? qs("AE") : QString());
    const QByteArray mode = processMode == 1 ? "69" : "66";
    QTRY_VERIFY(!link.adapter.got().isEmpty()); // the statuses: one batch, or two if the port cut them
    QVERIFY(link.adapter.got() == mode || link.adapter.got() == mode + mode);
}

void TestPortLoop::oneModeByteForABatchWithStatuses_data()
{
    QTest::addColumn<int>("processMode");
    QTest::addColumn<int>("baud");
    QTest::addColumn<QByteArray>("byte");
    row("no speed", 0, 0, QByteArray("64"));
    row("50", 0, 50, QByteArray("65"));
    row("100", 2, 100, QByteArray("66"));
    row("200", 2, 200, QByteArray("67"));
    row("switched", 1, 200, QByteArray("69"));
}

void TestPortLoop::oneModeByteForABatchWithStatuses()
{
    QFETCH(int, processMode);
    QFETCH(int, baud);
    QFETCH(QByteArray, byte);
    AdapterLink link(processMode, baud);
    QVERIFY(link.open());
    link.adapter.send("213f0320");
    QTRY_COMPARE(link.adapter.got(), byte);
    QTRY_COMPARE(link.thread.recvBuffer.mGet(), qs("A"));
    link.adapter.send("30");
    QTRY_COMPARE(link.adapter.got(), byte + byte);
    link.adapter.send("3030");
    QTRY_COMPARE(link.adapter.got(), byte + byte + byte);
}

void TestPortLoop::aBatchWithoutAStatusIsNotAnswered()
{
    AdapterLink link(1);
    QVERIFY(link.open());
    link.adapter.send("034f5e43838fff");
    QTRY_COMPARE(link.thread.recvBuffer.mGet(), qs("A^@C"));
    link.adapter.send("30");
    QTRY_COMPARE(link.adapter.got(), QByteArray("69"));
}

void TestPortLoop::echoMovesTextToTheLog()
{
    AdapterLink link;
    QVERIFY(link.open(NewFirmware));
    link.line.send(qs("АБ12"));
    link.adapter.send("2f");
    // National letters, А, Б, figures, 1 and 2, which have the codes of Q and W.
    QTRY_COMPARE(link.adapter.got(), QByteArray("660003191b1713"));
    QCOMPARE(link.thread.sentLog.mGet(), QString());
    link.adapter.send("8083");
    QTRY_COMPARE(link.thread.sentLog.mGet(), qs("|А"));
    link.adapter.send("999b9793");
    QTRY_COMPARE(link.thread.sentLog.mGet(), qs("|АБ#12"));
    QVERIFY(link.thread.pendingEcho.mIsEmpty());
}

void TestPortLoop::statusWithOldFirmware()
{
    AdapterLink link;
    QVERIFY(link.open());
    link.thread.allSent = true;
    link.adapter.send("20");
    QTRY_VERIFY(!link.thread.allSent);
    link.adapter.send("21");
    QTRY_VERIFY(link.thread.allSent);
    QCOMPARE(link.thread.shownWindow.load(), 1);
    link.adapter.send("20");
    QTRY_VERIFY(!link.thread.allSent);
    QCOMPARE(link.thread.shownWindow.load(), 1); // the last one above none stays
    link.adapter.send("30");
    QTRY_VERIFY(link.thread.allSent);
    QCOMPARE(link.thread.shownWindow.load(), 1);
}

void TestPortLoop::statusWithNewFirmware()
{
    AdapterLink link;
    QVERIFY(link.open(NewFirmware));
    link.line.send(qs("EASIU"));
    link.adapter.send("22");
    QTRY_COMPARE(link.adapter.got(), QByteArray("660103"));
    QTRY_VERIFY(!link.thread.allSent);
    QTRY_COMPARE(link.thread.pendingEcho.mGet(), qs("EA"));
    link.adapter.send("20");
    QTRY_COMPARE(link.adapter.got(), QByteArray("66010366"));
    QVERIFY(!link.thread.allSent);
    QCOMPARE(link.thread.pendingEcho.mGet(), qs("EA"));
    link.adapter.send("30");
    QTRY_VERIFY(link.thread.allSent);
    QVERIFY(link.thread.pendingEcho.mIsEmpty());
    link.adapter.send("20");
    QTRY_COMPARE(link.adapter.got(), QByteArray("6601036666"
                                                "66"));
    QVERIFY(link.thread.allSent); // and here it stays, too
    link.adapter.send("3f");
    QTRY_COMPARE(link.adapter.got(), QByteArray("660103666666"
                                                "66"
                                                "050607"));
    QCOMPARE(link.thread.shownWindow.load(), 15);
}

void TestPortLoop::noSignalIsToldOnceAndItsEndToo()
{
    AdapterLink link;
    QVERIFY(link.open());
    const QStringList before = link.states();
    link.adapter.send("5e5e");
    QVERIFY(link.shows(4));
    QCOMPARE(link.states().mid(3), QStringList(qs(": Нет входного сигнала ")));
    QVERIFY(link.thread.connected && !link.thread.linkUp());
    link.adapter.send("5e200304");
    QTRY_COMPARE(link.thread.recvBuffer.mGet(), qs("A "));
    QVERIFY(!link.thread.linkUp()); // neither no credit nor a code brings it back
    link.adapter.send("3f3f");
    QVERIFY(link.shows(5));
    QCOMPARE(link.states().mid(3), QStringList({qs(": Нет входного сигнала "), qs(": Адаптер подключен")}));
    QVERIFY(link.thread.linkUp());
    link.adapter.send("5e");
    QVERIFY(link.shows(6));
    QCOMPARE(link.states().last(), qs(": Нет входного сигнала "));
}

void TestPortLoop::lineBreakIsOneSignUntilTheNextCode()
{
    AdapterLink link;
    QVERIFY(link.open());
    link.adapter.send("4f4f");
    QTRY_COMPARE(link.thread.recvBuffer.mGet(), qs("^"));
    QVERIFY(link.thread.connected && !link.thread.linkUp());
    link.adapter.send("4f3f");
    QTRY_COMPARE(link.adapter.got(), QByteArray("66"));
    QVERIFY(!link.thread.linkUp()); // credit ends the loss of the signal, not the break
    link.adapter.send("03");
    QTRY_COMPARE(link.thread.recvBuffer.mGet(), qs("^A"));
    QVERIFY(link.thread.linkUp());
    link.adapter.send("4f");
    QTRY_COMPARE(link.thread.recvBuffer.mGet(), qs("^A^"));
    QCOMPARE(link.states().size(), 3); // a break has no state text
}

void TestPortLoop::textsBecomeSignals()
{
    AdapterLink link;
    QVERIFY(link.open());
    const Signals heard(link.thread);
    link.adapter.send("3f");
    QTRY_COMPARE(link.adapter.got(), QByteArray("66"));
    QCOMPARE(heard.received + heard.sent, 0);
    link.adapter.send("03");
    QTRY_COMPARE(heard.received, 1);
    QCOMPARE(heard.sent, 0);
    link.line.send(qs("E"));
    QTRY_COMPARE(heard.sent, 1);
    QCOMPARE(heard.received, 1);
    QCOMPARE(link.thread.sentEvents.load(), 0);
    QCOMPARE(link.thread.receivedEvents.load(), 0);
}

void TestPortLoop::guaranteedSecondsAreCounted()
{
    AdapterLink link;
    QVERIFY(link.open());
    QVERIFY(link.line.second());
    QCOMPARE(link.thread.protectedSeconds.load(), 0);
    QVERIFY(link.thread.startProtectedMode());
    const int before = link.thread.protectedSeconds;
    for (int second = 0; second < 3; ++second)
        QVERIFY(link.line.second());
    QTRY_COMPARE(link.thread.protectedSeconds.load(), before + 3);
    link.thread.stopProtectedMode();
    QVERIFY(link.line.second());
    QVERIFY(link.line.second());
    QCOMPARE(link.thread.protectedSeconds.load(), before + 3);
}

// A workstation that hangs must not fill the memory: the adapter's text waits in the port.
void TestPortLoop::readingStopsWhileNobodyTakesTheText()
{
    AdapterLink link;
    QVERIFY(link.open());
    {
        const QMutexLocker lock(&link.thread.recvBuffer.mutex);
        link.thread.recvBuffer.text = QString(1024 * 1024 + 1, QLatin1Char('X'));
    }
    QVERIFY(link.line.second() && link.line.second()); // the pass under way may still read
    link.adapter.send("033f");
    for (int second = 0; second < 3; ++second)
        QVERIFY(link.line.second());
    QCOMPARE(link.thread.recvBuffer.mTake().size(), 1024 * 1024 + 1);
    QTRY_COMPARE(link.thread.recvBuffer.mGet(), qs("A"));
    QTRY_COMPARE(link.adapter.got(), QByteArray("66"));
}

QTEST_GUILESS_MAIN(TestPortLoop)
#include "test_port_loop.moc"
