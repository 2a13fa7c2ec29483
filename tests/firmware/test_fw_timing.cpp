// When the loading does what, and how it sets the port up. A wait never ends early; that it does not go on
// for longer shows at the quickest of a few rounds, as a busy machine may hold up some of them.

#include "link/fw_update.h"
#include "tests/firmware/device.h"
#include "tests/firmware/dtr_watch.h"
#include "tests/firmware/progress_watch.h"
#include "tests/support/desk.h"
#include "tests/support/patience.h"
#include "tests/support/rounds.h"
#include "tools/linesim/serial/pseudo_terminal.h"

#include <QtTest>

#include <fcntl.h>
#include <memory>
#include <termios.h>
#include <unistd.h>

class TestFwTiming : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_desk = std::make_unique<Desk>(); }
    void cleanup();
    void resetIsASecondOfLowDtrBeforeTheSyncs();
    void loadedDeviceIsResetAgain();
    void blocksKeepTheirDistance();
    void loaderIsSpokenToAt115200Baud();
    void lockComesThreeSecondsAfterTheOpening();
    void adapterIsSpokenToAt9600Baud();

private:
    std::unique_ptr<Desk> m_desk;
};

namespace
{
constexpr unsigned char Data[300] = {};
constexpr FIRMWARE_DATA ThreeBlocks = {300, 0, 128, 7};

/// A port whose far end is silent. The test has it open as well, to see how the program sets it up.
struct SilentPort {
    SilentPort()
    {
        if (!terminal.plug())
            qFatal("no pseudo-terminal");
        descriptor = ::open(qPrintable(terminal.portName()), O_RDWR | O_NOCTTY | O_CLOEXEC);
        if (!comesTrue([this] { return terminal.isOpen(); }))
            qFatal("the port does not open");
    }
    ~SilentPort() { ::close(descriptor); }
    SilentPort(const SilentPort &) = delete;
    SilentPort &operator=(const SilentPort &) = delete;

    /// Whether the port has that speed, 8 data bits, one stop bit and no parity.
    [[nodiscard]] bool isSetTo(speed_t speed) const
    {
        termios settings = {};
        return ::tcgetattr(descriptor, &settings) == 0 && ::cfgetospeed(&settings) == speed &&
               ::cfgetispeed(&settings) == speed && (settings.c_cflag & (CSIZE | CSTOPB | PARENB)) == CS8;
    }

    PseudoTerminal terminal;
    int descriptor = -1;
};

/// Whether \a least <= \a times, which must hold, and \a times < \a most, which another round may bring.
bool within(const QVector<qint64> &times, const QVector<qint64> &least, const QVector<qint64> &most)
{
    bool quick = times.size() == least.size();
    for (int i = 0; i < times.size() && i < least.size(); ++i) {
        if (times.at(i) < least.at(i))
            qFatal("wait %d ended after %lld ms", i, times.at(i));
        quick = quick && times.at(i) < most.at(i);
    }
    return quick;
}

/// What a silent device sees, in ms: DTR low; then, since it is high, each sync at the end of the wait behind
/// it.
QVector<qint64> timesOfAFailingStart()
{
    SilentPort port;
    const DtrWatch dtr;
    QVector<qint64> seen;
    QObject::connect(&port.terminal, &PseudoTerminal::received, &port.terminal, [&] { seen << dtr.now(); });
    if (CFWUpdateThread::update(port.terminal.portName(), &ThreeBlocks, Data))
        qFatal("nobody has answered");
    if (!comesTrue([&] { return seen.size() == 3; }) || dtr.changes.size() != 2)
        qFatal("%d syncs, %d changes of DTR", seen.size(), dtr.changes.size());
    if (dtr.changes.at(0).high || !dtr.changes.at(1).high)
        qFatal("DTR is not moved low, then high");
    const qint64 high = dtr.changes.at(1).ms;
    return {high - dtr.changes.at(0).ms, seen.at(0) - high, seen.at(1) - high, seen.at(2) - high};
}

/// In ms: DTR low in the reset behind the loading, and from its end to that of the update.
QVector<qint64> timesOfAGoodEnd()
{
    const Device loader(LINESIM_PROGRAM, {QStringLiteral("loader")});
    const DtrWatch dtr;
    if (!CFWUpdateThread::update(loader.portName(), &ThreeBlocks, Data))
        return {}; // held up
    const qint64 end = dtr.now();
    if (dtr.changes.size() != 4 || dtr.changes.at(2).high || !dtr.changes.at(3).high)
        qFatal("the device is not reset again");
    return {dtr.changes.at(3).ms - dtr.changes.at(2).ms, end - dtr.changes.at(3).ms};
}
} // namespace

void TestFwTiming::cleanup()
{
    qunsetenv("VELDA_PORTS");
    m_desk.reset();
}

/// The device starts for 200 ms; each sync in advance is waited for 100 ms, with 100 ms of rest behind it;
/// the last one is waited for 100 ms.
void TestFwTiming::resetIsASecondOfLowDtrBeforeTheSyncs()
{
    QVERIFY(onceInAFew([] {
        return within(timesOfAFailingStart(), {1000, 300, 500, 700}, {1500, 600, 1000, 1400});
    }));
}

/// 200 ms for its start, and a second with the port closed.
void TestFwTiming::loadedDeviceIsResetAgain()
{
    QVERIFY(onceInAFew([] { return within(timesOfAGoodEnd(), {1000, 1200}, {1500, 1700}); }));
}

void TestFwTiming::blocksKeepTheirDistance()
{
    const Device loader(LINESIM_PROGRAM, {QStringLiteral("loader")});
    const ProgressWatch progress;
    QVERIFY(onceInAFew([&] { return CFWUpdateThread::update(loader.portName(), &ThreeBlocks, Data); }));
    QCOMPARE(progress.values, (QList<int>{1, 0, 128, 256, 300}));
    for (int i = 2; i < 5; ++i)
        QVERIFY(progress.times.at(i) - progress.times.at(i - 1) >= 10);
}

void TestFwTiming::loaderIsSpokenToAt115200Baud()
{
    SilentPort port;
    QVERIFY(!port.isSetTo(B115200));
    QVector<bool> right; // the last sync shows when the port has been closed
    connect(&port.terminal, &PseudoTerminal::received, &port.terminal,
            [&] { right << port.isSetTo(B115200); });
    QVERIFY(!CFWUpdateThread::update(port.terminal.portName(), &ThreeBlocks, Data));
    QVERIFY(right.size() >= 2 && right.at(0) && right.at(1));
}

void TestFwTiming::lockComesThreeSecondsAfterTheOpening()
{
    SilentPort port;
    qputenv("VELDA_PORTS", "10000001=" + port.terminal.portName().toLocal8Bit());
    QByteArray received;
    connect(&port.terminal, &PseudoTerminal::received, &port.terminal,
            [&](const QByteArray &bytes) { received += bytes; });
    QVERIFY(onceInAFew([&] {
        received.clear();
        QByteArray early("not seen");
        QTimer::singleShot(2500, &port.terminal, [&] { early = received; });
        QElapsedTimer clock;
        clock.start();
        if (!CFWUpdateThread::lock(QStringLiteral("10000001")))
            qFatal("the adapter is not locked");
        const qint64 took = clock.elapsed();
        if (!early.isEmpty() || !comesTrue([&] { return received == QByteArray("\x5A\x5A"); }))
            qFatal("early %s, then %s", early.toHex().constData(), received.toHex().constData());
        return within({took}, {3000}, {3500});
    }));
}

void TestFwTiming::adapterIsSpokenToAt9600Baud()
{
    SilentPort port;
    qputenv("VELDA_PORTS", "10000001=" + port.terminal.portName().toLocal8Bit());
    QVERIFY(!port.isSetTo(B9600));
    bool right = false;
    QTimer::singleShot(1000, &port.terminal, [&] { right = port.isSetTo(B9600); });
    QVERIFY(CFWUpdateThread::lock(QStringLiteral("10000001")));
    QVERIFY(right);
}

QTEST_MAIN(TestFwTiming)
#include "test_fw_timing.moc"
