// The question for the adapter's firmware, and the two generations that it tells apart.

#include "tests/link/adapter_port.h"
#include "tests/support/patience.h"
#include "tests/support/row.h"

#include <QElapsedTimer>
#include <QtTest>

class TestPortVersion : public QObject
{
    Q_OBJECT

private slots:
    void notAskedWhenNotDue();
    void reply_data();
    void reply();
    void withoutAnUsableReplyTheOldRulesHold_data();
    void withoutAnUsableReplyTheOldRulesHold();
    void replyIsAwaitedForFourSeconds();
    void passesWithDataDoNotCount();
    void busyAdapterIsNotAwaitedForEver();
    void questionEndsOnceNoReplyCanCome_data();
    void questionEndsOnceNoReplyCanCome();
    void bytesAmongTheReplyAreThrownAway();
    void askedOnceAndNotAfterALoss();
    void restartBeforeTheQuestionLeavesItDue();
    void restartDuringTheQuestionCloses();
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}

/// Lets two characters go, and has them echoed by the next two letters: their echo is used, or else not.
bool echoIsUsed(AdapterLink &link)
{
    link.adapter.take();
    link.line.send(qs("EA"));
    link.adapter.send("22");
    if (!comesTrue([&] { return link.adapter.got() == "660103"; }))
        return false;
    const bool held = comesTrue([&] { return link.thread.pendingEcho.mGet() == qs("EA"); }) &&
                      link.thread.sentLog.mIsEmpty();
    link.adapter.send("818305"); // the code at the end shows that the echo has been taken
    return comesTrue([&] { return link.thread.recvBuffer.mGet() == qs("S"); }) && held &&
           link.thread.sentLog.mGet() == qs("EA") && link.thread.pendingEcho.mIsEmpty();
}

/// The same for an adapter whose echo is none: what has gone is logged at once.
bool echoIsIgnored(AdapterLink &link)
{
    link.adapter.take();
    link.line.send(qs("EA"));
    link.adapter.send("22");
    if (!comesTrue([&] { return link.adapter.got() == "660103"; }))
        return false;
    if (!comesTrue([&] { return link.thread.sentLog.mGet() == qs("EA"); }))
        return false;
    link.adapter.send("818305");
    return comesTrue([&] { return link.thread.recvBuffer.mGet() == qs("S"); }) &&
           link.thread.sentLog.mGet() == qs("EA") && link.thread.pendingEcho.mIsEmpty();
}

/// Brings a new connection to its question.
bool askedFor(AdapterLink &link)
{
    link.begin(true);
    link.adapter.send("30");
    return comesTrue([&] { return link.adapter.got() == "665b"; });
}

/// Whether the link gets to where it answers statuses, of which there is always a next one.
bool comesToItsLoop(AdapterLink &link)
{
    link.adapter.take();
    return comesTrue([&] {
        link.adapter.send("3f");
        return link.adapter.got().startsWith("66");
    });
}
} // namespace

void TestPortVersion::notAskedWhenNotDue()
{
    AdapterLink link;
    link.begin();
    link.adapter.send("30");
    QVERIFY(link.shows(3));
    const QString connected = qs(": Соединено ") + link.adapter.name();
    QCOMPARE(link.states(), QStringList({qs(": Подключение"), connected, connected}));
    QCOMPARE(link.adapter.got(), QByteArray("66"));
    QVERIFY(echoIsIgnored(link));
}

void TestPortVersion::reply_data()
{
    QTest::addColumn<QList<QByteArray>>("pieces");
    QTest::addColumn<QString>("version");
    QTest::addColumn<bool>("echoes");
    const auto pieces = [](std::initializer_list<QByteArray> list) { return QList<QByteArray>(list); };
    row("first that echoes", pieces({"170b0b"}), "20231111", true);
    row("last that does not", pieces({"170b0a"}), "20231110", false);
    row("code by code", pieces({"17", "0b", "0b"}), "20231111", true);
    row("mixed with statuses", pieces({"3f17303f0b20", "30", "210b2f"}), "20231111", true);
    row("mixed with any byte above the codes", pieces({"4f175e0b", "839f45ff", "0b"}), "20231111", true);
    row("greatest", pieces({"1f1f1f"}), "20313131", true);
    row("least", pieces({"000000"}), "20000000", false);
}

void TestPortVersion::reply()
{
    QFETCH(QList<QByteArray>, pieces);
    QFETCH(QString, version);
    QFETCH(bool, echoes);
    AdapterLink link;
    QVERIFY(askedFor(link));
    QVERIFY(!link.thread.needVersion);
    for (const QByteArray &piece : pieces) {
        link.adapter.send(piece);
        QTest::qWait(30);
    }
    QVERIFY(link.shows(4));
    const QString told = qs(": %1 (V %2)").arg(link.adapter.name(), version);
    QCOMPARE(link.states(),
             QStringList({qs(": Подключение"), qs(": Соединено ") + link.adapter.name(), told, told}));
    QCOMPARE(link.adapter.got(), QByteArray("665b"));
    QVERIFY(echoes ? echoIsUsed(link) : echoIsIgnored(link));
}

void TestPortVersion::withoutAnUsableReplyTheOldRulesHold_data()
{
    QTest::addColumn<QByteArray>("reply");
    row("none", QByteArray());
    row("statuses alone", QByteArray("3f3f3f"));
    row("two codes", QByteArray("170b"));
    row("four codes at once", QByteArray("170b0b0b"));
}

void TestPortVersion::withoutAnUsableReplyTheOldRulesHold()
{
    QFETCH(QByteArray, reply);
    AdapterLink link;
    CPortLoop::waits.versionStepMs = 40; // the question is open for 1.6 s
    QVERIFY(askedFor(link));
    link.adapter.send(reply);
    QVERIFY(link.shows(3));
    const QString connected = qs(": Соединено ") + link.adapter.name();
    QCOMPARE(link.states(), QStringList({qs(": Подключение"), connected, connected}));
    QVERIFY(link.received().isEmpty());
    QVERIFY(echoIsIgnored(link));
}

// Twenty passes without data, each of 100 ms of waiting and as much of sleep.
void TestPortVersion::replyIsAwaitedForFourSeconds()
{
    AdapterLink late, silent(2, 100, "10000002");
    silent.realWaits();
    late.begin(true);
    silent.begin(true);
    QElapsedTimer timer;
    timer.start();
    late.adapter.send("30");
    silent.adapter.send("30");
    QTRY_COMPARE(late.adapter.got(), QByteArray("665b")); // two seconds later
    QTRY_COMPARE(silent.adapter.got(), QByteArray("665b"));
    QTest::qWait(2000);
    QCOMPARE(silent.states().size(), 2);
    late.adapter.send("170b0b");
    QVERIFY(late.shows(3));
    QCOMPARE(late.states().value(2), qs(": %1 (V 20231111)").arg(late.adapter.name()));
    QVERIFY(silent.shows(3));
    QVERIFY2(timer.elapsed() >= 6000, qPrintable(QString::number(timer.elapsed())));
}

void TestPortVersion::passesWithDataDoNotCount()
{
    AdapterLink link;
    QVERIFY(askedFor(link));
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 5000) { // longer than twenty passes take
        link.adapter.send("3f");
        QTest::qWait(20);
    }
    QCOMPARE(link.states().size(), 2);
    link.adapter.send("170b0b");
    QVERIFY(link.shows(4));
    QCOMPARE(link.states().last(), qs(": %1 (V 20231111)").arg(link.adapter.name()));
    QCOMPARE(link.adapter.got(), QByteArray("665b"));
}

// A status every few milliseconds, and never a reply.
void TestPortVersion::busyAdapterIsNotAwaitedForEver()
{
    QCOMPARE(PortWaits().versionMs, 30000);
    AdapterLink link;
    CPortLoop::waits.versionMs = 1000;
    QVERIFY(askedFor(link));
    QVERIFY(comesToItsLoop(link));
    QVERIFY(link.states().filter("(V ").isEmpty());
}

void TestPortVersion::questionEndsOnceNoReplyCanCome_data()
{
    QTest::addColumn<QByteArray>("bytes");
    row("a code from the line in front", QByteArray("05170b0b"));
    row("statuses among them", QByteArray("053f173f0b300b"));
    row("a telegram", QByteArray("001b1f1b1f03"));
}

void TestPortVersion::questionEndsOnceNoReplyCanCome()
{
    QFETCH(QByteArray, bytes);
    AdapterLink link;
    CPortLoop::waits.versionMs = 10 * PatienceMs;
    QVERIFY(askedFor(link));
    link.adapter.send(bytes);
    QVERIFY(comesToItsLoop(link));
    QVERIFY(link.received().isEmpty());
    QVERIFY(link.states().filter("(V ").isEmpty());
}

void TestPortVersion::bytesAmongTheReplyAreThrownAway()
{
    AdapterLink link;
    link.thread.shownWindow = -1;
    QVERIFY(askedFor(link));
    link.adapter.send("3f4f170b5e0b");
    QVERIFY(link.shows(4));
    QVERIFY(link.received().isEmpty());
    QCOMPARE(link.thread.lineError.load(), 0);
    QCOMPARE(link.thread.txCredit.load(), 0);
    QCOMPARE(link.thread.shownWindow.load(), -1);
    link.adapter.send("05");
    QTRY_COMPARE(link.thread.recvBuffer.mGet(), qs("S"));
    QCOMPARE(link.adapter.got(), QByteArray("665b")); // no answer to that status
}

// Meant to be so: only the settings ask for the version, so a connection after a loss works by the rules of
// the older firmware.
void TestPortVersion::askedOnceAndNotAfterALoss()
{
    AdapterLink link;
    QVERIFY(link.open("170b0b"));
    QVERIFY(echoIsUsed(link));
    QVERIFY(!link.thread.needVersion);
    link.adapter.unplug();
    QVERIFY(link.ended());
    QCOMPARE(link.received(), qs("S"));
    QCOMPARE(link.thread.sentLog.mTake(), qs("EA"));
    link.adapter.plug();
    const int before = link.states().size();
    link.adapter.take();
    link.line.once(&CTlgThread::PortThread);
    link.adapter.send("30");
    QVERIFY(link.shows(before + 3));
    QCOMPARE(link.adapter.got(), QByteArray("66"));
    QVERIFY(echoIsIgnored(link));
}

void TestPortVersion::restartBeforeTheQuestionLeavesItDue()
{
    AdapterLink link;
    CPortLoop::waits.settleMs = PatienceMs; // cut by the restart
    link.begin(true);
    link.adapter.send("30");
    QTRY_COMPARE(link.adapter.got(), QByteArray("66"));
    QVERIFY(link.thread.setTrelo(qs("10000001"), 100, false)); // the settings are applied again
    QVERIFY(link.ended());
    QTRY_COMPARE(link.adapter.got(), QByteArray("6660"));
    QVERIFY(link.thread.needVersion);
    QCOMPARE(link.states().last(), qs(": Порт закрыт"));
}

void TestPortVersion::restartDuringTheQuestionCloses()
{
    AdapterLink link;
    QVERIFY(askedFor(link));
    link.thread.restartThread();
    QVERIFY(link.ended());
    QTRY_COMPARE(link.adapter.got(), QByteArray("665b60"));
    QCOMPARE(link.states().last(), qs(": Порт закрыт"));
}

QTEST_GUILESS_MAIN(TestPortVersion)
#include "test_port_version.moc"
