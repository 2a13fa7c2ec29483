#include "tools/linesim/console/commanded.h"

void Commanded::run(const QString &command)
{
    const QString name = command.section(QLatin1Char(' '), 0, 0);
    if (name.isEmpty() || runOwn(name, command.section(QLatin1Char(' '), 1)))
        return;
    if (name != QLatin1String("quit"))
        return m_log.event(QStringLiteral("error"), QStringLiteral("no command ") + command);
    finish();
    emit quit();
}
