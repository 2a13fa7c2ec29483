#include "tests/e2e/switch_end.h"

#include "tests/e2e/false_clock.h"
#include "tests/support/patience.h"

#include <QtTest>

SwitchEnd::SwitchEnd(const QString &clock, const QStringList &more)
{
    const QString listening = QStringLiteral("listening: ");
    process.setProcessEnvironment(underClock(clock));
    process.start(QStringLiteral(LINESIM_PROGRAM),
                  QStringList{QStringLiteral("switch"), QStringLiteral("--listen"), QStringLiteral("0"),
                              QStringLiteral("--terminal-ao"), QStringLiteral("654321 ЗНАМЯ"),
                              QStringLiteral("--answer"), QStringLiteral("60000"),
                              QStringLiteral("--patience"), QStringLiteral("90")} +
                      more);
    if (!comesTrue([&] { return count(listening) > 0; }))
        qFatal("linesim does not listen: %s", qPrintable(lines.join(QLatin1Char('\n'))));
    port = lines.filter(listening).first().mid(listening.size()).toUShort();
}

void SwitchEnd::command(const QString &line)
{
    process.write(line.toUtf8() + '\n');
}

QStringList SwitchEnd::violations() const
{
    return lines.filter(QStringLiteral("violation: "));
}

bool SwitchEnd::quit()
{
    command(QStringLiteral("quit"));
    return waitForEnd(30) && endedWith(0);
}
