#include "tests/e2e/far_end.h"

#include <QDir>
#include <QFile>
#include <QtTest>

namespace
{
constexpr int StartMs = 10000;

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

FarEnd::FarEnd(const QStringList &more)
{
    const QString listening = QStringLiteral("listening: ");
    start(QStringList{QStringLiteral("--listen"), QStringLiteral("0")} + more);
    if (!QTest::qWaitFor([&] { return !lines.filter(listening).isEmpty(); }, StartMs))
        qFatal("linesim does not listen: %s", qPrintable(lines.join(QLatin1Char('\n'))));
    port = lines.filter(listening).first().mid(listening.size()).toUShort();
}

FarEnd::FarEnd(quint16 stationPort, const QStringList &more)
{
    start(QStringList{QStringLiteral("--connect"), QStringLiteral("127.0.0.1:%1").arg(stationPort)} + more);
}

void FarEnd::start(const QStringList &arguments)
{
    process.start(QStringLiteral(LINESIM_PROGRAM),
                  QStringList{QStringLiteral("peer"), QStringLiteral("--store"), m_kept.path()} + arguments);
    if (!process.waitForStarted())
        qFatal("linesim does not start");
}

void FarEnd::command(const QString &line)
{
    process.write(line.toUtf8() + '\n');
}

QStringList FarEnd::violations() const
{
    return lines.filter(QStringLiteral("violation: "));
}

void FarEnd::send(const QString &telegram)
{
    const QString path = m_toSend.filePath(QString::number(++m_sent));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(telegram.toUtf8()) < 0)
        qFatal("cannot write %s", qPrintable(path));
    file.close();
    command(QStringLiteral("send ") + path);
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
    return waitForEnd(10) && endedWith(0);
}
