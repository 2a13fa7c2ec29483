#include "tests/e2e/far_end.h"

#include "tests/e2e/false_clock.h"

#include <QDir>
#include <QFile>
#include <QtTest>

namespace
{
constexpr int StartMs = 30000;

/// A workstation that has no processor for a while breaks no rule.
const QStringList patient = {QStringLiteral("--answer"), QStringLiteral("60000")};

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

FarEnd::FarEnd(const QStringList &more)
{
    start({QStringLiteral("peer")},
          patient + QStringList{QStringLiteral("--listen"), QStringLiteral("0")} + more);
    port = waitFor(QStringLiteral("listening: ")).toUShort();
}

FarEnd::FarEnd(const QString &kind, const QString &clock, const QStringList &more)
{
    process.setProcessEnvironment(underClock(clock));
    start({kind}, patient + QStringList{QStringLiteral("--listen"), QStringLiteral("0")} + more);
    port = waitFor(QStringLiteral("listening: ")).toUShort();
}

FarEnd::FarEnd(quint16 stationPort, const QStringList &more)
{
    start({QStringLiteral("peer")},
          patient +
              QStringList{QStringLiteral("--connect"), QStringLiteral("127.0.0.1:%1").arg(stationPort)} +
              more);
}

FarEnd::FarEnd(const QStringList &more, const Adapter &adapter)
{
    if (!adapter.clock.isEmpty())
        process.setProcessEnvironment(underClock(adapter.clock));
    start(QStringList{adapter.device, QStringLiteral("--port"), m_kept.filePath(QStringLiteral("adapter")),
                      QStringLiteral("--firmware"), adapter.firmware, QStringLiteral("--baud"),
                      QStringLiteral("200")} +
              adapter.options + QStringList{adapter.kind},
          more);
    ports = waitFor(QStringLiteral("port: "));
}

void FarEnd::start(const QStringList &kind, const QStringList &arguments)
{
    process.start(QStringLiteral(LINESIM_PROGRAM),
                  kind + QStringList{QStringLiteral("--store"), m_kept.path()} + arguments);
    if (!process.waitForStarted())
        qFatal("linesim does not start");
}

/// The rest of the first line that begins with \a event.
QString FarEnd::waitFor(const QString &event)
{
    if (!QTest::qWaitFor([&] { return !lines.filter(event).isEmpty(); }, StartMs))
        qFatal("linesim does not start: %s", qPrintable(lines.join(QLatin1Char('\n'))));
    return lines.filter(event).first().mid(event.size());
}

void FarEnd::command(const QString &line)
{
    process.write(line.toUtf8() + '\n');
}

QStringList FarEnd::violations() const
{
    return lines.filter(QStringLiteral("violation: "));
}

void FarEnd::send(const QString &telegram, const QString &name)
{
    const QString path = m_toSend.filePath(QString::number(++m_sent));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(telegram.toUtf8()) < 0)
        qFatal("cannot write %s", qPrintable(path));
    file.close();
    command(name + QLatin1Char(' ') + path);
}

QStringList FarEnd::telegrams() const
{
    QStringList result;
    const QDir directory(m_kept.path());
    for (const QString &name : directory.entryList({QStringLiteral("???.txt")}, QDir::Files, QDir::Name))
        result << QString::fromUtf8(contentOf(directory.filePath(name)));
    return result;
}

QByteArray FarEnd::bytes() const
{
    return contentOf(m_kept.filePath(QStringLiteral("stream.bin")));
}

QString FarEnd::text() const
{
    return QString::fromUtf8(contentOf(m_kept.filePath(QStringLiteral("stream.txt"))));
}

bool FarEnd::quit()
{
    command(QStringLiteral("quit"));
    return waitForEnd(30) && endedWith(0);
}
