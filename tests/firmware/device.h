#pragma once

#include "tests/e2e/child.h"

#include <QtTest>

/// A simulated device with a serial port: a program that prints "port: NAME" or "port: SERIAL=NAME" and what
/// happens to it.
class Device : public Child
{
public:
    static constexpr int PatienceMs = 30000; // a machine under load

    Device(const char *program, const QStringList &arguments)
    {
        process.start(QString::fromLocal8Bit(program), arguments);
        if (!QTest::qWaitFor([this] { return !portName().isEmpty(); }, PatienceMs))
            qFatal("%s has no port: %s", program, qPrintable(lines.join(QLatin1Char('\n'))));
    }

    [[nodiscard]] QString portName() const { return details("port").value(0).section(QLatin1Char('='), -1); }
    /// What was told of each event \a name.
    [[nodiscard]] QStringList details(const char *name) const
    {
        const QString head = QLatin1String(name) + QStringLiteral(": ");
        QStringList found;
        for (const QString &line : lines)
            if (line.startsWith(head))
                found << line.mid(head.size());
        return found;
    }
    /// Waits for a line; false if it does not come.
    [[nodiscard]] bool waitForLine(const char *line) const
    {
        return QTest::qWaitFor([=] { return lines.contains(QLatin1String(line)); }, PatienceMs);
    }
    [[nodiscard]] int count(const char *name) const { return details(name).size(); }
    void tell(const QString &command) { process.write(command.toUtf8() + '\n'); }
    /// Does so once the line has come.
    void tellAfter(const char *line, const QString &command)
    {
        auto *timer = new QTimer(&process);
        QObject::connect(timer, &QTimer::timeout, &process, [=] {
            if (!lines.contains(QLatin1String(line)))
                return;
            timer->stop();
            tell(command);
        });
        timer->start(10);
    }
};
