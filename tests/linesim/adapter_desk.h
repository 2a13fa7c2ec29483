#pragma once

#include "tools/linesim/adapter/line_adapter.h"
#include "tools/linesim/console/event_log.h"

#include <QStringList>

#include <functional>

constexpr qint64 Ms = 1000;
constexpr qint64 CharacterUs = 37'500;

inline LineAdapter::Settings with(const std::function<void(LineAdapter::Settings &)> &change)
{
    LineAdapter::Settings settings;
    change(settings);
    return settings;
}

/// An adapter whose bytes to the program are kept, and a clock that stands until it is moved.
struct AdapterDesk {
    explicit AdapterDesk(const LineAdapter::Settings &settings = {}) : adapter(settings, log)
    {
        QObject::connect(&adapter, &LineAdapter::toProgram, &adapter,
                         [this](const QByteArray &bytes) { sent += bytes; });
        QObject::connect(&adapter, &LineAdapter::heard, &adapter,
                         [this](const QString &text) { heard += text; });
    }

    void program(const char *hex) { adapter.takeFromProgram(QByteArray::fromHex(hex), now); }
    /// Lets time pass in steps of a millisecond.
    void pass(qint64 ms)
    {
        for (qint64 end = now + ms * Ms; now < end; now += Ms)
            adapter.advance(now);
        adapter.advance(now);
    }
    /// A program that has come to answer statuses; by \a mode.
    void connect(const char *mode = "67")
    {
        adapter.opened(now);
        adapter.advance(now);
        program(mode);
        pass(600);
        program(mode);
        sent.clear();
    }
    /// What went to the program since the last call, in hexadecimal.
    QByteArray bytes()
    {
        const QByteArray hex = sent.toHex();
        sent.clear();
        return hex;
    }
    [[nodiscard]] QStringList breaches() const { return lines.filter(QStringLiteral("violation: ")); }

    qint64 now = 0;
    QByteArray sent;
    QString heard;
    QStringList lines;
    EventLog log{[this](const QString &line) { lines << line; }};
    LineAdapter adapter;
};
