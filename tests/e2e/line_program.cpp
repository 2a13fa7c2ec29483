#include "tests/e2e/line_program.h"

#include "tests/e2e/false_clock.h"

LineProgram::LineProgram(const QStringList &arguments, const QString &clock)
{
    if (!clock.isEmpty())
        process.setProcessEnvironment(underClock(clock));
    process.start(QStringLiteral(LINESIM_PROGRAM), arguments);
    if (!process.waitForStarted())
        qFatal("linesim does not start");
}

QString LineProgram::waitFor(const QString &event)
{
    if (!comesTrue([&] { return !lines.filter(event).isEmpty(); }))
        qFatal("linesim says nothing of %s: %s", qPrintable(event),
               qPrintable(lines.join(QLatin1Char('\n'))));
    return lines.filter(event).first().mid(event.size());
}

void LineProgram::command(const QString &line)
{
    process.write(line.toUtf8() + '\n');
}

bool LineProgram::quit()
{
    command(QStringLiteral("quit"));
    return waitForEnd(30) && endedWith(0);
}
