#include "tools/linesim/perforator/perforator.h"

#include "tools/linesim/console/run_until_quit.h"

namespace
{
// From the workstation
constexpr char LastCode = 0x1F;
constexpr char StopReading = 0x50;
constexpr char StartReading = 0x51;
constexpr char FirstMode = 0x61;
constexpr char LastMode = 0x6F;
// To it
constexpr char Status = 0x20; // with the room in the low five bits
constexpr int MostRoom = 31;

constexpr int TickMs = 5;
constexpr int CodesAtOnce = 64; // in a tick without pacing: a port holds only so much
} // namespace

Perforator::Perforator(const PerforatorOptions &options, EventLog &log)
    : SerialDevice(options.serial, options.port, log), m_options(options), m_judge(log, options.answerMs),
      m_punch(log)
{
    connect(&m_timer, &QTimer::timeout, this, &Perforator::tick);
    m_timer.setTimerType(Qt::PreciseTimer);
    m_paced.start();
    m_timer.start(TickMs);
}

bool Perforator::start()
{
    if (m_punch.open(m_options.punchFile, m_options.punchTextFile) && mountTape())
        return SerialDevice::start();
    m_log.event(QStringLiteral("error"), QStringLiteral("a file does not open"));
    return false;
}

bool Perforator::mountTape()
{
    const bool asText = !m_options.tapeFile.isEmpty();
    QFile file(asText ? m_options.tapeFile : m_options.tapeCodesFile);
    m_tapeAt = 0;
    m_tape.clear();
    if (file.fileName().isEmpty())
        return true;
    if (!file.open(QIODevice::ReadOnly))
        return false;
    m_tape = file.readAll();
    Mtk2::Register state = Mtk2::Latin;
    if (asText)
        m_tape = Mtk2::encoded(QString::fromUtf8(m_tape), state);
    for (char &code : m_tape)
        code &= LastCode;
    return true;
}

void Perforator::takeOpening()
{
    m_judge.open();
    m_sinceStatus.invalidate();
}

void Perforator::takeBytes(const QByteArray &bytes)
{
    for (const char byte : bytes)
        takeByte(byte);
}

void Perforator::takeByte(char byte)
{
    if (byte >= 0 && byte <= LastCode) {
        m_judge.takeCode();
        m_punch.add(byte);
    } else if (byte >= FirstMode && byte <= LastMode) {
        m_judge.takeMode(byte);
    } else if (byte == StartReading) {
        m_judge.takeCommand();
        startReading();
    } else if (byte == StopReading) {
        m_judge.takeCommand();
        stopReading();
    } else {
        m_judge.takeUnknown(byte);
    }
}

void Perforator::startReading()
{
    m_reading = true;
    m_log.event(QStringLiteral("reading"));
}

void Perforator::stopReading()
{
    m_reading = false;
    m_log.event(QStringLiteral("stopped"), QString::number(m_tapeAt));
}

void Perforator::tick()
{
    const int due = codesDue();
    if (!m_jammed)
        m_punch.punch(due);
    if (!m_port.isOpen())
        return;
    if (m_reading)
        readTape(due);
    m_judge.tick();
    tellStatus();
}

/// Codes for which time has passed since the last call.
int Perforator::codesDue()
{
    if (m_options.speed == 0)
        return CodesAtOnce;
    const qint64 total = m_paced.elapsed() * m_options.speed / 1000;
    return int(qMin<qint64>(CodesAtOnce, total - std::exchange(m_pacedCodes, total)));
}

void Perforator::readTape(int count)
{
    const QByteArray codes = m_tape.mid(m_tapeAt, count);
    m_tapeAt += codes.size();
    m_port.write(codes);
    if (m_tapeAt < m_tape.size())
        return;
    m_reading = false;
    m_log.event(QStringLiteral("tape ended"));
}

void Perforator::tellStatus()
{
    if (m_options.statusMs == 0 || !m_judge.mayTell() ||
        (m_sinceStatus.isValid() && m_sinceStatus.elapsed() < m_options.statusMs))
        return;
    m_sinceStatus.start();
    const int room = m_jammed ? 0 : qBound(0, m_options.room - m_punch.waiting(), MostRoom);
    m_judge.tellRoom(room);
    m_port.write(QByteArray(1, char(Status | room)));
}

int runPerforator(const QStringList &arguments)
{
    return runEnd<Perforator>(readPerforatorOptions(arguments));
}
