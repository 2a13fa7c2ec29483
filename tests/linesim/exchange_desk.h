#pragma once

#include "tools/linesim/console/event_log.h"
#include "tools/linesim/network/switched_line.h"

#include <QtTest>

/// An exchange with what it says and notes; the subscribers' lines are given.
struct Exchange {
    explicit Exchange(const QString &subscribers, SwitchedLine::Settings settings = {})
        : line(with(subscribers, settings), log)
    {
        QObject::connect(&line, &SwitchedLine::send, &line, [this](const QString &text) { said << text; });
        line.setTime(now);
    }
    static SwitchedLine::Settings with(const QString &subscribers, SwitchedLine::Settings settings)
    {
        QString wrong;
        settings.subscribers = *parseSubscribers(subscribers, wrong);
        return settings;
    }
    void hear(const QString &text)
    {
        reader.take(text);
        while (const auto item = reader.next())
            line.take(*item);
    }
    void pass(int seconds)
    {
        for (int i = 0; i < seconds * 2; ++i) {
            now = now.addMSecs(500);
            line.setTime(now);
            line.tick();
        }
    }
    /// What has been said since the last call.
    QString speech()
    {
        const QString all = said.join(QString());
        said.clear();
        return all;
    }
    void connectTo(const QString &number)
    {
        hear(QStringLiteral("@C@N") + number + QLatin1Char('@'));
        pass(3);
        QCOMPARE(int(line.state()), int(SwitchedLine::Up));
        said.clear();
    }
    QStringList violations() const { return lines.filter(QStringLiteral("violation: ")); }

    QDateTime now{QDate(2026, 7, 31), QTime(12, 34)};
    QStringList said, lines;
    EventLog log{[this](const QString &row) { lines << row; }};
    SwitchedLine line;
    SwitchReader reader{QStringLiteral("654321 ЗНАМЯ")};
};

inline const QString own = QStringLiteral("#\r\n654321 ЗНАМЯ");
inline const QString zarya = QStringLiteral("112233:112233 |ЗАРЯ:");
