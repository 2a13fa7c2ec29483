#include "link/nerva_exchange.h"

#include "link/nerva_protocol.h"
#include "text/utils.h"

#include <utility>

using namespace NervaProtocol;

namespace
{
constexpr int StartTicks = 20;  // behind the opening, which resets the device
constexpr int ListenTicks = 10; // before it is asked
constexpr int ReplyTicks = 5;   // without a byte
constexpr int TimeOuts = 3;
constexpr int WriteTicks = 50; // for bytes that the port does not take
constexpr int LeaveTicks = 10;
constexpr int ReadTicks = StartTicks + ListenTicks + TimeOuts * ReplyTicks; // the longest without a byte
constexpr int Tenths = 10;
} // namespace

CNervaExchange::CNervaExchange(const QString &serial, Clock clock, QObject *parent)
    : QObject(parent), m_serial(serial), m_clock(clock)
{
    m_timer.setInterval(TickMs);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &CNervaExchange::tick);
    connect(&m_port, &QSerialPort::readyRead, this, &CNervaExchange::takeInput);
    connect(&m_port, &QSerialPort::bytesWritten, this, &CNervaExchange::noteWritten);
    // Not under the port's own feet
    connect(&m_port, &QSerialPort::errorOccurred, this, &CNervaExchange::portFailed, Qt::QueuedConnection);
}

CNervaExchange::~CNervaExchange()
{
    disconnect(&m_port, nullptr, this, nullptr);
    if (!m_port.isOpen())
        return;
    m_port.write(&EndConfig, 1);
    m_port.flush();
    m_port.close();
}

void CNervaExchange::read()
{
    if (isBusy())
        return;
    emit note(QStringLiteral("*** Read"));
    const bool wasOpen = m_port.isOpen();
    m_reading = true;
    m_passed = wasOpen ? StartTicks - m_startTicks : 0;
    m_timeOuts = 0;
    emit progress(0);
    if (!openPort())
        return finish();
    emit note((wasOpen ? QStringLiteral(" Use ") : QStringLiteral(" Open ")) + m_name);
    begin();
}

void CNervaExchange::write(const QByteArray &text, bool store)
{
    if (isBusy())
        return;
    m_reading = false;
    m_text = text;
    m_store = store;
    if (openPort())
        begin();
    else
        finish();
}

bool CNervaExchange::openPort()
{
    if (m_port.isOpen())
        return true;
    m_name = CUtils::getPortNameBySN(m_serial);
    if (m_name.isEmpty()) {
        emit note(QStringLiteral("-- Error no device"));
        return false;
    }
    m_port.setPortName(m_name);
    m_port.setBaudRate(QSerialPort::Baud9600);
    if (!m_port.open(QIODevice::ReadWrite)) {
        emit note(QStringLiteral("Error open ") + m_name);
        return false;
    }
    m_port.clearError();
    m_startTicks = StartTicks;
    return true;
}

void CNervaExchange::begin()
{
    wait(Starting, m_startTicks);
}

void CNervaExchange::wait(Step step, int ticks)
{
    m_step = step;
    m_ticks = ticks;
    if (m_clock == OwnClock && !m_timer.isActive())
        m_timer.start();
    if (ticks == 0)
        waitIsOver();
}

void CNervaExchange::tick()
{
    if (m_startTicks > 0)
        --m_startTicks;
    if (m_step == Idle) {
        if (m_startTicks == 0)
            m_timer.stop();
        return;
    }
    ++m_passed;
    tellProgress();
    if (m_ticks > 0 && --m_ticks == 0)
        waitIsOver();
}

/// The end is told by finish() alone.
void CNervaExchange::tellProgress()
{
    if (m_reading)
        emit progress(qMin(m_passed * Tenths / ReadTicks, Tenths - 1));
}

void CNervaExchange::waitIsOver()
{
    switch (m_step) {
    case Idle: return;
    case Starting:
        if (!m_reading)
            return put();
        (void)m_port.readAll();
        return wait(Listening, ListenTicks);
    case Listening: m_reply.clear(); return ask();
    case Asked: return replyIsLate();
    case Writing: return fail(QStringLiteral("write failed"));
    case Leaving:
        closePort();
        emit closed();
        return;
    }
}

void CNervaExchange::ask()
{
    m_port.write(&SendConfig, 1);
    emit note(QStringLiteral("."));
    wait(Asked, ReplyTicks);
}

void CNervaExchange::replyIsLate()
{
    ask();
    if (++m_timeOuts == TimeOuts)
        fail(QStringLiteral("read failed"));
}

void CNervaExchange::takeInput()
{
    const QByteArray bytes = m_port.readAll();
    if (m_step != Asked)
        return;
    m_ticks = ReplyTicks;
    m_reply += bytes;
    if (m_reply.contains(TextEnd)) {
        emit received(m_reply);
        return finish();
    }
    if (m_reply.size() > LongestReply)
        fail(QStringLiteral("read failed"));
}

/// All in one go. The first byte ends what the device may still have in hand.
void CNervaExchange::put()
{
    emit note(QStringLiteral(" *** Write. Use ") + m_name);
    (void)m_port.readAll();
    wait(Writing, WriteTicks);
    m_port.write(EndConfig + m_text + (m_store ? StoreConfig : EndConfig));
}

void CNervaExchange::noteWritten()
{
    if (m_step != Writing || m_port.bytesToWrite() > 0)
        return;
    emit note(QString::fromLatin1(m_text));
    emit note(QStringLiteral("--- End write cfg"));
    emit written();
    finish();
}

void CNervaExchange::cancel()
{
    if (m_step == Starting || m_step == Listening || m_step == Asked)
        fail(m_reading ? QStringLiteral("read canceled") : QStringLiteral("write canceled"));
}

void CNervaExchange::leave()
{
    if (!m_port.isOpen()) {
        emit closed();
        return;
    }
    if (m_step == Leaving)
        return;
    m_reading = false;
    m_port.write(&EndConfig, 1);
    wait(Leaving, LeaveTicks);
}

void CNervaExchange::closePort()
{
    if (m_port.isOpen())
        m_port.close();
    m_startTicks = 0;
    m_step = Idle;
    m_timer.stop();
}

/// The adapter is gone, or its port is: what has been opened anew is another one.
void CNervaExchange::portFailed()
{
    const QSerialPort::SerialPortError error = m_port.error();
    if (!m_port.isOpen() || error == QSerialPort::NoError || error == QSerialPort::TimeoutError)
        return;
    emit note(QStringLiteral("Error port ") + m_name + QStringLiteral(": ") + m_port.errorString());
    const Step step = m_step;
    closePort();
    if (step == Leaving)
        emit closed();
    else if (step != Idle)
        fail(m_reading ? QStringLiteral("read failed") : QStringLiteral("write failed"));
}

void CNervaExchange::fail(const QString &line)
{
    emit note(line);
    if (m_port.isOpen())
        (void)m_port.readAll();
    finish();
}

void CNervaExchange::finish()
{
    m_step = Idle;
    m_reply.clear();
    m_text.clear();
    if (std::exchange(m_reading, false))
        emit progress(Tenths);
    emit finished();
}
