#pragma once

#include "tools/linesim/centre/centre_desk.h"
#include "tools/linesim/centre/terminal_reader.h"
#include "tools/linesim/console/event_log.h"

#include <QStringList>

/// A clerk of a switching centre with what he says and notes, on 31 July 2026.
struct Clerk {
    explicit Clerk(const QTime &time = QTime(12, 0))
    {
        QObject::connect(&desk, &CentreDesk::send, &desk, [this](const QString &text) { said << text; });
        at(time);
    }
    void at(const QTime &time, int day = 31) { desk.setTime(QDateTime(QDate(2026, 7, day), time)); }
    void hear(const QString &text)
    {
        reader.take(text);
        while (const auto message = reader.next())
            desk.take(*message);
    }
    /// What he has said since the last call.
    QStringList speech()
    {
        const QStringList all = said;
        said.clear();
        return all;
    }
    void open()
    {
        hear(QStringLiteral("|ЗЗ |ЗЦЗЦ КС ВАШ 000=000 НННН  "));
        said.clear();
    }
    [[nodiscard]] QStringList breaches() const { return lines.filter(QStringLiteral("violation: ")); }

    QStringList said, lines;
    EventLog log{[this](const QString &line) { lines << line; }};
    CentreDesk desk{CentreDesk::Settings(), log};
    TerminalReader reader;
};

/// A service message as the clerk says it at noon.
inline QString service(const QString &text)
{
    return QStringLiteral("\r\nЗЦЗЦ ") + text + QStringLiteral(" НННН  1200\r\n");
}
