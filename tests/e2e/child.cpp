#include "tests/e2e/child.h"

#include <QtTest>

Child::Child()
{
    process.setProcessChannelMode(QProcess::MergedChannels);
    QObject::connect(&process, &QProcess::readyRead, &process, [this] { read(); });
}

Child::~Child()
{
    process.disconnect();
    kill();
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
