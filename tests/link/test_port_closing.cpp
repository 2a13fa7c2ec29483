// The ends of an adapter link by request, and the states that a link goes through.

#include "app/options.h"
#include "tests/link/adapter_port.h"
#include "tests/support/patience.h"

#include <QElapsedTimer>
#include <QtTest>

class TestPortClosing : public QObject
{
    Q_OBJECT

private slots:
    void restartClosesTheRunningLink();
    void stopClosesWithoutAState();
    void farewellHasATenthOfASecondBeforeTheClose();
    void closingInTheFirstTwoSeconds();
    void whatWaitedAtTheCloseIsStillReported();
    void registersBeginAnewWithEachConnection();
    void restartedThreadComesUpAgain();
    void pausedThreadStaysDown();
    void settingsAppliedAnewAskForTheVersionAgain();
    void statesOfTheLineWalked();
    void statesOfAnOutageWalked();
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}

/// Whether the link thread comes to a pause of \a seconds, and its seconds pass. A busy machine may let one
/// or two pass unseen.
bool waits(const AdapterLink &link, int seconds)
{
    int seen = 0;
    const auto begun = [&] { return (seen = link.thread.reconnectDelay) > 0; };
    return comesTrue(begun) && seen <= seconds && seen > seconds - 5 &&
           comesTrue([&] { return link.thread.reconnectDelay < seen; });
}
} // namespace

void TestPortClosing::restartClosesTheRunningLink()
{
    AdapterLink link;
    QVERIFY(link.open());
    link.line.send(qs("EA"));
    link.thread.restartThread();
    QVERIFY(link.ended());
    QTRY_COMPARE(link.adapter.got(), QByteArray("60"));
    QTRY_VERIFY(!link.adapter.isOpen());
    QCOMPARE(link.states().mid(3), QStringList(qs(": Порт закрыт")));
    QVERIFY(!link.thread.connected);
    QVERIFY(link.thread.reportFailure);
    QCOMPARE(link.thread.reconnectDelay.load(), 0);
    QCOMPARE(link.thread.sendBuffer.mGet(), qs("EA"));
}

void TestPortClosing::stopClosesWithoutAState()
{
    AdapterLink link(1);
    QVERIFY(link.open("170b0b"));
    link.stop();
    QVERIFY(link.ended());
    QTRY_COMPARE(link.adapter.got(), QByteArray("60"));
    QTRY_VERIFY(!link.adapter.isOpen());
    QCOMPARE(link.states().size(), 4);
    QVERIFY(!link.thread.connected);
}

// The adapter has the byte before the port is gone.
void TestPortClosing::farewellHasATenthOfASecondBeforeTheClose()
{
    AdapterLink link;
    QVERIFY(link.open());
    QElapsedTimer timer;
    timer.start();
    link.stop();
    QVERIFY(link.ended());
    QVERIFY2(timer.elapsed() >= 100, qPrintable(QString::number(timer.elapsed())));
    QTRY_COMPARE(link.adapter.got(), QByteArray("60"));
}

void TestPortClosing::closingInTheFirstTwoSeconds()
{
    AdapterLink link;
    CPortLoop::waits.settleMs = PatienceMs; // cut by the restart
    link.begin();
    link.adapter.send("30");
    QTRY_COMPARE(link.adapter.got(), QByteArray("66"));
    QTRY_VERIFY(link.thread.connected);
    link.thread.restartThread();
    QVERIFY(link.ended());
    QTRY_COMPARE(link.adapter.got(), QByteArray("6660"));
    QCOMPARE(link.states().last(), qs(": Порт закрыт"));
    QVERIFY(!link.thread.connected);
}

void TestPortClosing::whatWaitedAtTheCloseIsStillReported()
{
    AdapterLink link;
    QVERIFY(link.open());
    int received = 0;
    const QObject context;
    connect(&link.thread, &CTlgThread::signalOnReceived, &context, [&] { ++received; });
    link.adapter.send("03");
    QTRY_VERIFY(!link.thread.recvBuffer.mIsEmpty());
    link.stop();
    QVERIFY(link.ended());
    QTRY_COMPARE(received, 1);
}

void TestPortClosing::registersBeginAnewWithEachConnection()
{
    AdapterLink link;
    for (int connection = 0; connection < 2; ++connection) {
        QVERIFY(link.open("170b0b"));
        link.adapter.send("838003"); // an echo and a code: each in Latin, then in national letters
        QTRY_COMPARE(link.thread.sentLog.mGet(), qs("A|"));
        link.adapter.send("0003");
        QTRY_COMPARE(link.thread.recvBuffer.mGet(), qs("A|А"));
        (void)link.received();
        (void)link.thread.sentLog.mTake();
        link.line.send(qs("AБ"));
        link.adapter.send("22");
        QTRY_COMPARE(link.adapter.got(), QByteArray("66030019"));
        link.stop();
        QVERIFY(link.ended());
    }
}

void TestPortClosing::restartedThreadComesUpAgain()
{
    AdapterLink link;
    link.thread.needVersion = false;
    link.thread.start(QThread::InheritPriority);
    link.adapter.send("30");
    QVERIFY(link.shows(3));
    link.thread.restartThread();
    QTRY_COMPARE(link.adapter.got(), QByteArray("6660"));
    QTRY_VERIFY(!link.adapter.isOpen());
    link.adapter.take();
    link.adapter.send("30");
    QTRY_COMPARE(link.adapter.got(), QByteArray("66"));
    QVERIFY(link.shows(6));
    const QString connected = qs(": Соединено ") + link.adapter.name();
    QCOMPARE(link.states().mid(0, 6), QStringList({qs(": Подключение"), connected, connected,
                                                   qs(": Порт закрыт"), qs(": Подключение"), connected}));
    link.stop();
    QVERIFY(comesTrue([&] { return link.thread.isFinished(); }));
    QTRY_COMPARE(link.adapter.got(), QByteArray("6660"));
}

void TestPortClosing::pausedThreadStaysDown()
{
    AdapterLink link;
    link.thread.start(QThread::InheritPriority);
    link.adapter.send("30");
    QTRY_COMPARE(link.adapter.got().left(2), QByteArray("66"));
    link.thread.pauseThread();
    QTRY_VERIFY(!link.thread.connected);
    QTRY_VERIFY(!link.thread.restartRequested); // idle
    QTRY_COMPARE(link.adapter.got(), QByteArray("6660"));
    QVERIFY(link.thread.paused);
    QCOMPARE(link.thread.shownWindow.load(), -1);
    QCOMPARE(link.states().last(), qs(": Порт закрыт"));
    QTRY_VERIFY(!link.adapter.isOpen());
    link.thread.restartThread();
    QTRY_VERIFY(link.adapter.isOpen());
}

void TestPortClosing::settingsAppliedAnewAskForTheVersionAgain()
{
    AdapterLink link;
    QVERIFY(link.open());
    QVERIFY(link.thread.setTrelo(qs("10000001"), 200, true));
    QVERIFY(link.ended());
    QTRY_COMPARE(link.adapter.got(), QByteArray("60"));
    QTRY_VERIFY(!link.adapter.isOpen());
    link.line.once(&CTlgThread::PortThread);
    link.adapter.send("30");
    QTRY_COMPARE(link.adapter.got(), QByteArray("60"
                                                "67"
                                                "5b"));
}

void TestPortClosing::statesOfTheLineWalked()
{
    AdapterLink link;
    QVERIFY(link.open());
    QVERIFY(link.thread.linkUp()); // connected, line good
    link.adapter.send("5e");
    QTRY_COMPARE(link.thread.lineError.load(), 2); // no input signal
    link.adapter.send("20");
    QTRY_COMPARE(link.adapter.got(), QByteArray("66"));
    QCOMPARE(link.thread.lineError.load(), 2);
    link.adapter.send("21");
    QTRY_VERIFY(link.thread.linkUp()); // line good
    link.adapter.send("4f");
    QTRY_COMPARE(link.thread.lineError.load(), 1); // line break
    link.adapter.send("04");
    QTRY_VERIFY(link.thread.linkUp()); // line good
    link.adapter.send("4f5e");
    QTRY_COMPARE(link.thread.lineError.load(), 3); // both
    link.adapter.send("04");
    QTRY_COMPARE(link.thread.lineError.load(), 2);
    link.adapter.send("4f3f");
    QTRY_VERIFY(link.thread.linkUp()); // a credit ends both
    link.adapter.send("4f5e");
    QTRY_COMPARE(link.thread.lineError.load(), 3);
    link.thread.restartThread(); // and a bad line closes as a good one does
    QVERIFY(link.ended());
    QTRY_VERIFY(link.adapter.got().endsWith("60"));
    const QString connected = qs(": Соединено ") + link.adapter.name();
    QCOMPARE(link.states(),
             QStringList({qs(": Подключение"), connected, connected, qs(": Нет входного сигнала "),
                          qs(": Адаптер подключен"), qs(": Нет входного сигнала "), qs(": Адаптер подключен"),
                          qs(": Нет входного сигнала "), qs(": Порт закрыт")}));
}

// The thread as it runs: no device, a silent one, a lost one, a silent running one. Its pauses are cut short
// as by the operator's click.
void TestPortClosing::statesOfAnOutageWalked()
{
    AdapterLink link;
    link.thread.needVersion = false;
    link.adapter.unplug();
    CPortLoop::waits.firstByteMs = PortWaits().firstByteMs;
    link.thread.start(QThread::InheritPriority);
    QVERIFY(waits(link, 60)); // no device
    link.adapter.plug();
    link.thread.restartThread();
    QTRY_VERIFY(link.adapter.isOpen()); // connecting
    QVERIFY(waits(link, 30));           // silent at start
    link.thread.restartThread();
    QTRY_VERIFY(link.adapter.isOpen());
    link.adapter.send("30");
    const QString connected = qs(": Соединено ") + link.adapter.name();
    QVERIFY(link.shows(7)); // connected
    link.adapter.unplug();
    QVERIFY(link.shows(8)); // port error
    link.adapter.plug();
    link.adapter.send("30"); // the next try needs nobody
    QVERIFY(link.shows(11));
    for (int second = 0; second < 31; ++second)
        QVERIFY(link.line.second());
    QVERIFY(waits(link, 5)); // silent while running
    QVERIFY(!link.adapter.isOpen());
    QCOMPARE(link.states(), QStringList({qs(": Подключение"), qs(":  Нет устройства"), qs(": Подключение"),
                                         qs(": Адаптер не отвечает"), qs(": Подключение"), connected,
                                         connected, qs(":Input/output error"), qs(": Подключение"), connected,
                                         connected, qs(": Адаптер не отвечает")}));
    QTRY_VERIFY(link.adapter.isOpen()); // the pause is over
}

QTEST_GUILESS_MAIN(TestPortClosing)
#include "test_port_closing.moc"
