#include "tests/month/stepped_time.h"

namespace
{
void put(QFile &file, qint64 ms)
{
    if (!file.isOpen() && !file.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        qFatal("cannot write %s", qPrintable(file.fileName()));
    file.seek(0);
    file.write(reinterpret_cast<const char *>(&ms), sizeof ms);
}
} // namespace

SteppedTime::SteppedTime(const QDateTime &begin, int speed)
    : m_begin(begin), m_speed(speed), m_all(m_directory.filePath(QStringLiteral("all"))),
      m_workstation(m_directory.filePath(QStringLiteral("workstation")))
{
    m_since.start();
    write();
    qputenv("CLOCK_FRONT", STEPPED_CLOCK_LIBRARY);
    qputenv("STEPPED_CLOCK", m_all.fileName().toUtf8());
}

void SteppedTime::write()
{
    put(m_all, m_stepMs);
    put(m_workstation, m_stepMs + m_ownMs);
}

QDateTime SteppedTime::now() const
{
    return m_begin.addMSecs(m_since.elapsed() * m_speed + m_stepMs);
}

/// The steps so far come on top of it.
QString SteppedTime::clock() const
{
    return QStringLiteral("@%1 x%2")
        .arg(now().addMSecs(-m_stepMs).toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")))
        .arg(m_speed);
}

void SteppedTime::stepTo(const QDateTime &moment)
{
    m_stepMs += now().msecsTo(moment);
    write();
}

void SteppedTime::stepWorkstation(qint64 ms)
{
    m_ownMs += ms;
    write();
}
