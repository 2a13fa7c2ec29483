#include "tools/linesim/far_end/far_end.h"

#include <QCoreApplication>

FarEnd::FarEnd(const FarEndOptions &options, EventLog &log)
    : Commanded(log), m_line(makeLine(options, log)), m_store(options.storeDirectory, log),
      m_timed(options.timed), m_scenarioFile(options.scenario)
{
    connect(m_line.get(), &FarLine::connected, this, &FarEnd::onConnected);
    connect(m_line.get(), &FarLine::disconnected, this, &FarEnd::takeLoss);
    connect(m_line.get(), &FarLine::bytes, this,
            [this](const QByteArray &bytes) { m_store.takeBytes(bytes); });
    connect(m_line.get(), &FarLine::text, this, &FarEnd::takeText);
    connect(&m_timer, &QTimer::timeout, this, &FarEnd::onTick);
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.start(FarLine::TickMs);
}

bool FarEnd::start()
{
    if (!m_scenarioFile.isEmpty() && !m_scenario.load(m_scenarioFile)) {
        m_log.event(QStringLiteral("error"), QStringLiteral("scenario ") + m_scenarioFile);
        return false;
    }
    return m_line->start();
}

bool FarEnd::runOwn(const QString &name, const QString &argument)
{
    return runHere(name, argument) || m_line->run(name, argument);
}

void FarEnd::finish()
{
    sayFigures();
    m_line->finish();
}

void FarEnd::onConnected()
{
    takeConnection();
    for (const QPair<int, QString> &timed : qAsConst(m_timed))
        QTimer::singleShot(timed.first, this, [this, command = timed.second] { run(command); });
}

void FarEnd::onTick()
{
    m_line->tick();
    const QDateTime now = QDateTime::currentDateTime();
    tick(now);
    for (const QString &command : m_scenario.due(now))
        run(command);
}
