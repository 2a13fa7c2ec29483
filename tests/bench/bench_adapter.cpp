// The adapter link over a pseudo-terminal: from a status that grants room to the codes on the port, as the
// line starves in between, and what the link costs while nothing happens.

#include "tests/link/adapter_port.h"
#include "tests/support/row.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QSerialPort>
#include <QtTest>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <ctime>
#include <memory>
#include <vector>

class BenchAdapter : public QObject
{
    Q_OBJECT

private slots:
    void codesFollowTheGrant_data();
    void codesFollowTheGrant();
    void anIdleMinuteCostsLittle();
};

namespace
{
constexpr int Grants = 500;
constexpr double PassMs = 10;       // a pass of the link may be waiting for the operator's text
constexpr double MostOfBare = 1.5;  // of a bare port's round trip and one pass: on a quiet machine 16 ms,
                                    // less than half a character at 200 baud
constexpr double MostOfACore = 1.0; // per cent
constexpr int IdleSeconds = 60;

/// Milliseconds that 99 of a hundred stay below.
double percentile99(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times[times.size() * 99 / 100];
}

/// A port that answers each byte with two and does nothing else.
class BarePort
{
public:
    explicit BarePort(const QString &name) : m_thread(QThread::create([this, name] { run(name); }))
    {
        m_thread->start();
    }
    ~BarePort()
    {
        m_stop = true;
        m_thread->wait();
    }

private:
    void run(const QString &name)
    {
        QSerialPort port(name);
        port.setBaudRate(QSerialPort::Baud9600);
        if (!port.open(QIODevice::ReadWrite))
            return;
        while (!m_stop)
            if (port.waitForReadyRead(10)) {
                (void)port.readAll();
                port.write("\x66\x01", 2);
                port.flush();
            }
    }

    std::atomic<bool> m_stop = false;
    std::unique_ptr<QThread> m_thread;
};

/// How long two bytes in answer to a status take, over and over.
std::vector<double> answers(AdapterPort &adapter)
{
    std::vector<double> times;
    for (int grant = 0; grant < Grants; ++grant) {
        QThread::msleep(static_cast<unsigned long>(grant % 10)); // in any phase of a pass
        QEventLoop loop;
        QByteArray got;
        QObject::connect(&adapter.terminal, &PseudoTerminal::received, &loop, [&](const QByteArray &bytes) {
            got += bytes;
            if (got.size() >= 2)
                loop.quit();
        });
        QTimer::singleShot(5000, &loop, [&loop] { loop.exit(1); });
        QElapsedTimer timer;
        timer.start();
        adapter.terminal.write("\x21"); // one character
        if (loop.exec() != 0)
            return {};
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    return times;
}

void row(const char *what, double measured, const char *unit, double bar)
{
    std::printf("bench: %s | %.3f%s | bar <= %.2f | %s\n", what, measured, unit, bar,
                measured <= bar ? "ok" : "MISSED");
    std::fflush(stdout);
}

double processorSeconds()
{
    return double(std::clock()) / CLOCKS_PER_SEC;
}
} // namespace

void BenchAdapter::codesFollowTheGrant_data()
{
    QTest::addColumn<QByteArray>("version");
    ::row("old firmware", QByteArray("170b0a"));
    ::row("new firmware", QByteArray("170b0b"));
}

void BenchAdapter::codesFollowTheGrant()
{
    QFETCH(QByteArray, version);
    std::vector<double> bare;
    {
        AdapterPort adapter;
        const BarePort port(adapter.name());
        QTRY_VERIFY(adapter.isOpen());
        bare = answers(adapter);
        QCOMPARE(int(bare.size()), Grants);
    }
    AdapterLink link;
    QVERIFY(link.open(version.constData()));
    link.line.send(QString(2 * Grants, QLatin1Char('E')));
    const std::vector<double> times = answers(link.adapter);
    QCOMPARE(int(times.size()), Grants);
    QCOMPARE(link.adapter.got(), QByteArray("6601").repeated(Grants));
    const double late = percentile99(times);
    const double ratio = late / (percentile99(bare) + PassMs);
    const QByteArray what = QByteArray(QTest::currentDataTag()) + ": codes behind their grant, " +
                            QByteArray::number(late, 'f', 1) +
                            " ms at the 99th percentile, of a bare port's and one pass";
    row(what.constData(), ratio, "", MostOfBare);
    QVERIFY(ratio <= MostOfBare);
}

// A second's tick and a second's status; the adapter's own end counts too.
void BenchAdapter::anIdleMinuteCostsLittle()
{
    AdapterLink link;
    QVERIFY(link.open());
    QTimer second;
    connect(&second, &QTimer::timeout, &link.adapter.terminal, [&link] {
        link.thread.slotOnSec();
        link.adapter.terminal.write("\x3F");
    });
    second.start(1000);
    const double before = processorSeconds();
    QEventLoop minute;
    QTimer::singleShot(IdleSeconds * 1000, &minute, &QEventLoop::quit);
    minute.exec();
    const double ofACore = 100.0 * (processorSeconds() - before) / IdleSeconds;
    row("idle minute of the link over an adapter, of one core", ofACore, " %", MostOfACore);
    QVERIFY(ofACore > 0 && ofACore <= MostOfACore);
    QVERIFY(link.thread.connected);
    QVERIFY(link.adapter.got().size() >= 2 * (IdleSeconds - 5)); // all statuses are answered
}

QTEST_GUILESS_MAIN(BenchAdapter)
#include "bench_adapter.moc"
