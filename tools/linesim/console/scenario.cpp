#include "tools/linesim/console/scenario.h"

#include <QFile>

bool Scenario::load(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && parse(QString::fromUtf8(file.readAll()));
}

bool Scenario::parse(const QString &text)
{
    m_lines.clear();
    for (const QString &row : text.split(QLatin1Char('\n'))) {
        const QString trimmed = row.trimmed();
        if (trimmed.isEmpty() || trimmed.startsWith(QLatin1Char(';')))
            continue;
        Line line;
        if (!read(trimmed, line)) {
            m_lines.clear();
            return false;
        }
        m_lines.append(line);
    }
    return true;
}

bool Scenario::read(const QString &text, Line &line)
{
    const QString time = text.section(QLatin1Char(' '), 0, 0);
    line.command = text.section(QLatin1Char(' '), 1).trimmed();
    if (line.command.isEmpty())
        return false;
    if (time.startsWith(QLatin1Char('+'))) {
        bool ok = false;
        line.afterSeconds = time.midRef(1).toInt(&ok);
        return ok && line.afterSeconds >= 0;
    }
    line.at = QTime::fromString(time, time.size() > 5 ? QStringLiteral("hh:mm:ss") : QStringLiteral("hh:mm"));
    return line.at.isValid();
}

QStringList Scenario::due(const QDateTime &now)
{
    if (!m_start.isValid())
        m_start = m_last = now;
    QStringList commands;
    for (const Line &line : qAsConst(m_lines)) {
        QDateTime moment =
            line.afterSeconds >= 0 ? m_start.addSecs(line.afterSeconds) : QDateTime(now.date(), line.at);
        if (line.afterSeconds < 0 && moment > now)
            moment = moment.addDays(-1); // the last turn of this time of day
        if (moment > m_last && moment <= now)
            commands << line.command;
    }
    m_last = now;
    return commands;
}
