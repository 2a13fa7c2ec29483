// The exchange with an Ethernet adapter, tick by tick, over a pseudo-terminal.

#include "link/nerva_exchange.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"
#include "tools/linesim/serial/pseudo_terminal.h"

#include <QtTest>

#include <memory>

class TestNervaExchange : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_desk = std::make_unique<Desk>(); }
    void cleanup();
    void withoutDeviceNothingIsAsked();
    void portThatCannotBeOpenedIsNamed();
    void questionGoesThreeSecondsBehindTheOpening();
    void openPortIsAskedAfterASecond();
    void deviceHasItsTimeToStartAfterACancelledRead();
    void whatComesBeforeTheQuestionIsDropped();
    void silentDeviceIsAskedAgainEachHalfSecond();
    void replyWithoutItsEndFailsAfterThreeTimeOuts();
    void eachByteBeginsTheHalfSecondAnew();
    void replyInPiecesIsOneReply();
    void replyBehindATimeOutCounts();
    void endlessReplyIsGivenUp();
    void progressRunsFromNoneToTenTenths();
    void textGoesTwoSecondsBehindTheOpening_data();
    void textGoesTwoSecondsBehindTheOpening();
    void textGoesAtOnceThroughAnOpenPort();
    void cancelEndsTheReadAndLeavesThePortOpen();
    void cancelledWriteWritesNothing();
    void secondOrderIsPassedOver();
    void leavingTellsTheDeviceAndTakesASecond();
    void leavingWithoutAPortIsAtOnce();
    void unpluggedWhileItIsAsked();
    void unpluggedAtRestIsALine();
    void unpluggedWhileLeavingEndsTheLeaving();
    void pluggedInAgainIsOpenedAnew();
    void endOfTheExchangeTellsTheDevice();
    void ownClockDoesTheSame();

private:
    std::unique_ptr<Desk> m_desk;
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}

/// An exchange, and the port of its device, which says what the test has it say.
struct Cable {
    explicit Cable(CNervaExchange::Clock clock = CNervaExchange::ToldClock)
        : exchange(std::make_unique<CNervaExchange>("30000001", clock))
    {
        plug();
        QObject::connect(&terminal, &PseudoTerminal::received, &terminal,
                         [this](const QByteArray &bytes) { heard += bytes; });
        QObject::connect(&terminal, &PseudoTerminal::opened, &terminal, [this] { ++openings; });
        QObject::connect(&terminal, &PseudoTerminal::closed, &terminal, [this] { ++closings; });
        watch();
    }

    void watch()
    {
        CNervaExchange *e = exchange.get();
        QObject::connect(e, &CNervaExchange::note, &terminal, [this](const QString &line) { notes << line; });
        QObject::connect(e, &CNervaExchange::progress, &terminal, [this](int t) { tenths << t; });
        QObject::connect(e, &CNervaExchange::received, &terminal,
                         [this](const QByteArray &r) { replies << r; });
        QObject::connect(e, &CNervaExchange::finished, &terminal, [this] { ++finished; });
        QObject::connect(e, &CNervaExchange::closed, &terminal, [this] { ++closed; });
    }

    void plug()
    {
        if (!terminal.plug())
            qFatal("no pseudo-terminal");
        qputenv("VELDA_PORTS", "30000001=" + terminal.portName().toLocal8Bit());
    }
    void ticks(int count) const
    {
        for (int i = 0; i < count; ++i)
            exchange->tick();
    }
    /// Begins a read and goes on to its first question.
    void ask()
    {
        exchange->read();
        ticks(30);
        (void)comesTrue([this] { return heard == "\xE0"; });
        notes.clear();
    }
    /// Has the device say so, and waits until the exchange has it; it holds no text yet.
    void say(const QByteArray &bytes) { terminal.write(bytes); }
    [[nodiscard]] QString name() const { return terminal.portName(); }

    PseudoTerminal terminal;
    std::unique_ptr<CNervaExchange> exchange;
    QByteArray heard;
    QStringList notes;
    QList<int> tenths;
    QList<QByteArray> replies;
    int finished = 0, closed = 0, openings = 0, closings = 0;
};

/// What has been written to the device is read there.
void passMoment()
{
    QTest::qWait(50);
}
} // namespace

void TestNervaExchange::cleanup()
{
    qunsetenv("VELDA_PORTS");
    m_desk.reset();
}

void TestNervaExchange::withoutDeviceNothingIsAsked()
{
    Cable cable;
    qputenv("VELDA_PORTS", "30000002=" + cable.name().toLocal8Bit());
    cable.exchange->read();
    QCOMPARE(cable.notes, (QStringList{"*** Read", "-- Error no device"}));
    QCOMPARE(cable.finished, 1);
    QVERIFY(!cable.exchange->isOpen() && !cable.exchange->isBusy());
    cable.exchange->write("{}", false);
    QCOMPARE(cable.notes.last(), qs("-- Error no device"));
    QCOMPARE(cable.notes.size(), 3);
    QCOMPARE(cable.finished, 2);
}

void TestNervaExchange::portThatCannotBeOpenedIsNamed()
{
    Cable cable;
    const QString none = m_desk->path("none");
    qputenv("VELDA_PORTS", ("30000001=" + none).toLocal8Bit());
    cable.exchange->read();
    QCOMPARE(cable.notes, (QStringList{"*** Read", "Error open " + none}));
    QCOMPARE(cable.finished, 1);
    passMoment();
    QCOMPARE(cable.notes.size(), 2);
}

void TestNervaExchange::questionGoesThreeSecondsBehindTheOpening()
{
    Cable cable;
    cable.exchange->read();
    QCOMPARE(cable.notes, (QStringList{"*** Read", " Open " + cable.name()}));
    QTRY_COMPARE(cable.openings, 1);
    cable.ticks(29);
    passMoment();
    QCOMPARE(cable.heard, QByteArray());
    QCOMPARE(cable.notes.size(), 2);
    cable.ticks(1);
    QCOMPARE(cable.notes.mid(2), QStringList("."));
    QTRY_COMPARE(cable.heard, QByteArray("\xE0"));
}

void TestNervaExchange::openPortIsAskedAfterASecond()
{
    Cable cable;
    cable.ask();
    cable.say("{v:1}");
    QTRY_COMPARE(cable.finished, 1);
    cable.exchange->read();
    QCOMPARE(cable.notes, (QStringList{"*** Read", " Use " + cable.name()}));
    cable.ticks(9);
    QCOMPARE(cable.notes.size(), 2);
    cable.ticks(1);
    QCOMPARE(cable.notes.mid(2), QStringList("."));
    QTRY_COMPARE(cable.heard, QByteArray("\xE0\xE0"));
    QCOMPARE(cable.openings, 1);
}

void TestNervaExchange::deviceHasItsTimeToStartAfterACancelledRead()
{
    Cable cable;
    cable.exchange->read();
    cable.ticks(5);
    cable.exchange->cancel();
    cable.ticks(3);
    cable.exchange->read();
    cable.notes.clear();
    cable.ticks(12 + 10 - 1);
    QCOMPARE(cable.notes, QStringList());
    cable.ticks(1);
    QCOMPARE(cable.notes, QStringList("."));
}

void TestNervaExchange::whatComesBeforeTheQuestionIsDropped()
{
    Cable cable;
    cable.exchange->read();
    QTRY_COMPARE(cable.openings, 1);
    cable.say("{v:1,sn:\"39999999\"}");
    passMoment();
    cable.ticks(30);
    cable.say("{v:2}");
    QTRY_COMPARE(cable.replies, QList<QByteArray>{"{v:2}"});
}

void TestNervaExchange::silentDeviceIsAskedAgainEachHalfSecond()
{
    Cable cable;
    cable.ask();
    const QStringList asked[] = {{"."}, {".", "."}, {".", ".", ".", "read failed"}};
    for (int timeOut = 0; timeOut < 3; ++timeOut) {
        const QStringList before = cable.notes;
        cable.ticks(4);
        QCOMPARE(cable.notes, before);
        QCOMPARE(cable.finished, 0);
        cable.ticks(1);
        QCOMPARE(cable.notes, asked[timeOut]);
    }
    QCOMPARE(cable.finished, 1);
    QVERIFY(cable.exchange->isOpen());
    QTRY_COMPARE(cable.heard, QByteArray("\xE0\xE0\xE0\xE0"));
    cable.ticks(20);
    QCOMPARE(cable.notes.size(), 4);
}

void TestNervaExchange::replyWithoutItsEndFailsAfterThreeTimeOuts()
{
    Cable cable;
    cable.ask();
    cable.say("{v:1,ver:260601");
    passMoment();
    cable.ticks(14);
    QCOMPARE(cable.finished, 0);
    cable.ticks(1);
    QCOMPARE(cable.notes, (QStringList{".", ".", ".", "read failed"}));
    QCOMPARE(cable.finished, 1);
    QVERIFY(cable.replies.isEmpty());
}

void TestNervaExchange::eachByteBeginsTheHalfSecondAnew()
{
    Cable cable;
    cable.ask();
    for (int i = 0; i < 4; ++i) {
        cable.ticks(4);
        cable.say("{");
        passMoment();
    }
    QCOMPARE(cable.notes, QStringList());
    cable.ticks(5);
    QCOMPARE(cable.notes, QStringList("."));
}

void TestNervaExchange::replyInPiecesIsOneReply()
{
    Cable cable;
    cable.ask();
    for (const char byte : QByteArray("{v:2,ver:260601}")) {
        cable.say(QByteArray(1, byte));
        QTest::qWait(5);
    }
    QTRY_COMPARE(cable.replies, QList<QByteArray>{"{v:2,ver:260601}"});
    QCOMPARE(cable.finished, 1);
    QVERIFY(cable.exchange->isOpen());
}

void TestNervaExchange::replyBehindATimeOutCounts()
{
    Cable cable;
    cable.ask();
    cable.say("{v:2,v");
    passMoment();
    cable.ticks(10);
    cable.say("{v:2}");
    QTRY_COMPARE(cable.replies, QList<QByteArray>{"{v:2,v{v:2}"});
}

void TestNervaExchange::endlessReplyIsGivenUp()
{
    Cable cable;
    cable.ask();
    int sent = 0;
    for (; sent < 200000 && cable.finished == 0; sent += 1000) {
        cable.say(QByteArray(1000, 'x'));
        QTest::qWait(2);
    }
    QCOMPARE(cable.notes, QStringList("read failed"));
    QVERIFY(sent > 65536);
    QVERIFY(cable.replies.isEmpty());
}

void TestNervaExchange::progressRunsFromNoneToTenTenths()
{
    Cable cable;
    cable.exchange->read();
    cable.ticks(45);
    QCOMPARE(cable.finished, 1);
    QCOMPARE(cable.tenths.first(), 0);
    QCOMPARE(cable.tenths.last(), 10);
    QVERIFY(std::is_sorted(cable.tenths.begin(), cable.tenths.end()));
    for (int tenth = 0; tenth <= 10; ++tenth)
        QVERIFY(cable.tenths.contains(tenth));
}

void TestNervaExchange::textGoesTwoSecondsBehindTheOpening_data()
{
    QTest::addColumn<bool>("store");
    QTest::addColumn<QByteArray>("bytes");
    row("kept", true, QByteArray("\xE1{gw:\"10.0.0.1\"}\xE3"));
    row("not kept", false, QByteArray("\xE1{gw:\"10.0.0.1\"}\xE1"));
}

void TestNervaExchange::textGoesTwoSecondsBehindTheOpening()
{
    QFETCH(bool, store);
    QFETCH(QByteArray, bytes);
    Cable cable;
    cable.exchange->write("{gw:\"10.0.0.1\"}", store);
    cable.ticks(19);
    passMoment();
    QCOMPARE(cable.notes, QStringList());
    QCOMPARE(cable.heard, QByteArray());
    cable.ticks(1);
    QTRY_COMPARE(cable.finished, 1);
    QCOMPARE(cable.notes,
             (QStringList{" *** Write. Use " + cable.name(), "{gw:\"10.0.0.1\"}", "--- End write cfg"}));
    QTRY_COMPARE(cable.heard, bytes);
    QVERIFY(cable.exchange->isOpen());
    QVERIFY(cable.tenths.isEmpty());
}

void TestNervaExchange::textGoesAtOnceThroughAnOpenPort()
{
    Cable cable;
    cable.ask();
    cable.say("{}");
    QTRY_COMPARE(cable.finished, 1);
    cable.exchange->write("{}", false);
    QTRY_COMPARE(cable.heard, QByteArray("\xE0\xE1{}\xE1"));
    QTRY_COMPARE(cable.finished, 2);
}

void TestNervaExchange::cancelEndsTheReadAndLeavesThePortOpen()
{
    for (const int ticks : {0, 19, 20, 29, 30, 44}) {
        Cable cable;
        cable.exchange->read();
        cable.ticks(ticks);
        cable.exchange->cancel();
        QCOMPARE(cable.notes.last(), qs("read canceled"));
        QCOMPARE(cable.finished, 1);
        QVERIFY(cable.exchange->isOpen() && !cable.exchange->isBusy());
        cable.exchange->cancel();
        cable.ticks(50);
        QCOMPARE(cable.notes.last(), qs("read canceled"));
        QCOMPARE(cable.finished, 1);
    }
}

void TestNervaExchange::cancelledWriteWritesNothing()
{
    Cable cable;
    cable.exchange->write("{}", false);
    cable.ticks(19);
    cable.exchange->cancel();
    cable.ticks(20);
    passMoment();
    QCOMPARE(cable.notes, QStringList("write canceled"));
    QCOMPARE(cable.heard, QByteArray());
}

void TestNervaExchange::secondOrderIsPassedOver()
{
    Cable cable;
    cable.exchange->read();
    cable.exchange->read();
    cable.exchange->write("{}", true);
    cable.ticks(30);
    QCOMPARE(cable.notes, (QStringList{"*** Read", " Open " + cable.name(), "."}));
    QTRY_COMPARE(cable.heard, QByteArray("\xE0"));
}

void TestNervaExchange::leavingTellsTheDeviceAndTakesASecond()
{
    Cable cable;
    cable.ask();
    cable.exchange->leave();
    cable.exchange->leave();
    QTRY_COMPARE(cable.heard, QByteArray("\xE0\xE1"));
    cable.ticks(9);
    QVERIFY(cable.exchange->isOpen());
    QCOMPARE(cable.closed, 0);
    cable.ticks(1);
    QVERIFY(!cable.exchange->isOpen());
    QCOMPARE(cable.closed, 1);
    QTRY_COMPARE(cable.closings, 1);
    QCOMPARE(cable.heard, QByteArray("\xE0\xE1"));
}

void TestNervaExchange::leavingWithoutAPortIsAtOnce()
{
    Cable cable;
    cable.exchange->leave();
    QCOMPARE(cable.closed, 1);
    passMoment();
    QCOMPARE(cable.openings, 0);
}

void TestNervaExchange::unpluggedWhileItIsAsked()
{
    Cable cable;
    cable.ask();
    const QString name = cable.name();
    cable.say("{v:1");
    cable.terminal.unplug();
    QTRY_COMPARE(cable.finished, 1);
    QCOMPARE(cable.notes.size(), 2);
    QVERIFY(cable.notes.first().startsWith("Error port " + name + ": "));
    QCOMPARE(cable.notes.last(), qs("read failed"));
    QVERIFY(!cable.exchange->isOpen() && !cable.exchange->isBusy());
    cable.exchange->leave();
    QCOMPARE(cable.closed, 1);
}

void TestNervaExchange::unpluggedAtRestIsALine()
{
    Cable cable;
    cable.ask();
    cable.exchange->cancel();
    cable.notes.clear();
    cable.terminal.unplug();
    QTRY_VERIFY(!cable.exchange->isOpen());
    QCOMPARE(cable.notes.size(), 1);
    QCOMPARE(cable.finished, 1);
}

void TestNervaExchange::unpluggedWhileLeavingEndsTheLeaving()
{
    Cable cable;
    cable.ask();
    cable.exchange->leave();
    cable.terminal.unplug();
    QTRY_COMPARE(cable.closed, 1);
    QVERIFY(!cable.exchange->isOpen());
}

void TestNervaExchange::pluggedInAgainIsOpenedAnew()
{
    Cable cable;
    cable.ask();
    cable.terminal.unplug();
    QTRY_COMPARE(cable.finished, 1);
    cable.plug();
    cable.heard.clear();
    cable.notes.clear();
    cable.exchange->read();
    QCOMPARE(cable.notes, (QStringList{"*** Read", " Open " + cable.name()}));
    cable.ticks(30);
    QTRY_COMPARE(cable.heard, QByteArray("\xE0"));
    cable.say("{v:2}");
    QTRY_COMPARE(cable.replies, QList<QByteArray>{"{v:2}"});
}

void TestNervaExchange::endOfTheExchangeTellsTheDevice()
{
    Cable cable;
    cable.ask();
    cable.exchange.reset();
    QTRY_COMPARE(cable.closings, 1);
    QCOMPARE(cable.heard, QByteArray("\xE0\xE1"));
}

void TestNervaExchange::ownClockDoesTheSame()
{
    Cable cable(CNervaExchange::OwnClock);
    QElapsedTimer timer;
    timer.start();
    cable.exchange->read();
    QTRY_COMPARE(cable.heard, QByteArray("\xE0"));
    QVERIFY(timer.elapsed() >= 2900);
    cable.say("{v:2}");
    QTRY_COMPARE(cable.replies, QList<QByteArray>{"{v:2}"});
    cable.exchange->leave();
    QTRY_COMPARE(cable.closed, 1);
    QTRY_COMPARE(cable.closings, 1);
    QCOMPARE(cable.heard, QByteArray("\xE0\xE1"));
}

QTEST_GUILESS_MAIN(TestNervaExchange)
#include "test_nerva_exchange.moc"
