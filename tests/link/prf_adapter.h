#pragma once

#include "link/prf_thread.h"
#include "tests/support/patience.h"
#include "tests/support/thread_end.h"
#include "tools/linesim/serial/pseudo_terminal.h"

#include <QMutex>
#include <QMutexLocker>
#include <QTest>
#include <QVector>

/// The other end of the perforator's cable: a port that is announced with the serial number 20000001, says
/// only what the test says, and keeps what comes.
class PrfAdapter
{
public:
    PrfAdapter()
    {
        QObject::connect(&terminal, &PseudoTerminal::received, &terminal,
                         [this](const QByteArray &bytes) { got += bytes; });
        QObject::connect(&terminal, &PseudoTerminal::opened, &terminal, [this] { ++openings; });
        QObject::connect(&terminal, &PseudoTerminal::closed, &terminal, [this] { ++closings; });
        plug();
    }
    ~PrfAdapter() { qunsetenv("VELDA_PORTS"); }

    void plug()
    {
        if (!terminal.plug())
            qFatal("no pseudo-terminal");
        qputenv("VELDA_PORTS", "20000001=" + terminal.portName().toLocal8Bit());
    }
    void unplug()
    {
        terminal.unplug();
        qunsetenv("VELDA_PORTS");
    }
    void send(const QByteArray &hex) { terminal.write(QByteArray::fromHex(hex)); }
    /// What came since the last call, in hexadecimal.
    [[nodiscard]] QByteArray news()
    {
        const QByteArray bytes = got.toHex();
        got.clear();
        return bytes;
    }
    /// Waits for \a count bytes, then gives news().
    [[nodiscard]] QByteArray take(int count)
    {
        (void)comesTrue([this, count] { return got.size() >= count; });
        return news();
    }
    /// Two bytes that mean nothing, each answered, so that the thread has done all that it had to: what it
    /// did is returned without the two answers, \a mode each.
    [[nodiscard]] QByteArray settled(char mode = 0x61)
    {
        for (int i = 0; i < 2; ++i) {
            const int before = got.count(mode);
            send("40");
            if (!comesTrue([&] { return got.count(mode) > before; }))
                return "no answer";
            got.remove(got.lastIndexOf(mode), 1);
        }
        return news();
    }

    PseudoTerminal terminal;
    QByteArray got;
    int openings = 0, closings = 0;
};

/// A perforator thread with the state texts that it showed and the progress that it told.
class PrfRun
{
public:
    /// Connected, with the mode byte of the connection taken.
    explicit PrfRun(PrfAdapter &adapter) : PrfRun()
    {
        start();
        QVERIFY(comesTrue([&] { return adapter.terminal.isOpen(); }));
        QCOMPARE(adapter.take(1), QByteArray("61"));
    }
    PrfRun()
    {
        const auto keep = [this](auto take) {
            return [this, take] {
                const QMutexLocker lock(&m_mutex);
                take();
            };
        };
        const auto direct = Qt::DirectConnection;
        QObject::connect(&thread, &CPrfThread::signalOnState, &thread,
                         keep([this] { m_states << thread.state(); }), direct);
        QObject::connect(&thread, &CPrfThread::signalOnSended, &thread,
                         keep([this] { m_sent << thread.sentLength(); }), direct);
        QObject::connect(&thread, &CPrfThread::signalOnReceived, &thread,
                         keep([this] { m_read << thread.getAndClearReceive(); }), direct);
    }
    ~PrfRun()
    {
        thread.stopThread();
        m_end.join();
    }
    PrfRun(const PrfRun &) = delete;
    PrfRun &operator=(const PrfRun &) = delete;

    void start()
    {
        (void)thread.setSorel(QStringLiteral("20000001"), 0, false);
        thread.start(QThread::InheritPriority);
    }
    /// False if the thread has not ended in the given time.
    [[nodiscard]] bool join(unsigned long ms = 5000) { return m_end.join(ms); }
    [[nodiscard]] QStringList states() const { return copy(m_states); }
    [[nodiscard]] QVector<int> sent() const { return copy(m_sent); } ///< length of the log, each time
    [[nodiscard]] QStringList read() const { return copy(m_read); }  ///< what was new, each time

    CPrfThread thread;

private:
    // A deep one: what two lists share, Qt parts in a way that ThreadSanitizer does not see.
    template <class T> T copy(const T &list) const
    {
        const QMutexLocker lock(&m_mutex);
        return T(list.begin(), list.end());
    }

    ThreadEnd m_end{thread};
    mutable QMutex m_mutex;
    QStringList m_states, m_read;
    QVector<int> m_sent;
};

namespace PrfState
{
const QString NoDevice = QStringLiteral("Sorel (20000001):  Нет устройства");
const QString Connected = QStringLiteral("Sorel (20000001): Соединено ");
const QString Waiting = QStringLiteral("Sorel (20000001): Ожидание");
} // namespace PrfState
