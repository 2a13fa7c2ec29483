#include "tests/e2e/child.h"

#include <QFile>
#include <QtTest>

namespace
{
/// Removes the shared memory that the dead process \a process has left if it was killed under the false
/// clock: one that got the same process number would not start.
void forgetClock(qint64 process)
{
    for (const char *name : {"/dev/shm/sem.faketime_sem_%1", "/dev/shm/faketime_shm_%1"})
        QFile::remove(QString::fromLatin1(name).arg(process));
}
} // namespace

Child::Child()
{
    process.setProcessChannelMode(QProcess::MergedChannels);
    QObject::connect(&process, &QProcess::readyRead, &process, [this] { read(); });
    QObject::connect(&process, &QProcess::started, &process, [this] { m_id = process.processId(); });
    QObject::connect(&process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), &process,
                     [this] { forgetClock(m_id); });
}

/// A test that fails says what its programs have said.
Child::~Child()
{
    constexpr int Last = 60; // lines
    if (QTest::currentTestFailed())
        qWarning("%s\n---", qPrintable(lines.mid(qMax(0, lines.size() - Last)).join(QLatin1Char('\n'))));
    kill();
    process.disconnect();
}

void Child::read()
{
    m_cut += process.readAll();
    QList<QByteArray> parts = m_cut.split('\n');
    m_cut = parts.takeLast();
    for (const QByteArray &part : qAsConst(parts))
        lines << QString::fromUtf8(part);
}

bool Child::waitForEnd(int seconds)
{
    return QTest::qWaitFor([this] { return process.state() == QProcess::NotRunning; }, seconds * 1000);
}

bool Child::endedWith(int status) const
{
    return process.state() == QProcess::NotRunning && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == status;
}

void Child::kill()
{
    if (process.state() == QProcess::NotRunning)
        return;
    process.kill();
    process.waitForFinished();
}

void Child::terminate()
{
    process.terminate();
}
