#pragma once

#include "tools/linesim/nerva/nerva_config.h"

#include <QObject>

class EventLog;

/// The bytes of an Ethernet adapter's configuration among those of the line. It knows no port and no clock:
/// bytes of the program go in one by one, what the program is told comes by a signal. It judges when the
/// program speaks: nothing of it is text unless it has been announced, and a program that has been told the
/// configuration ends with E1. The events: "asked", "left".
class NervaMode : public QObject
{
    Q_OBJECT

public:
    enum Phase {
        OnLine, ///< the port is the line's
        Told,   ///< the program has the configuration, the line says nothing
        Ended,  ///< by E1: a text follows, or the line has the port again
        Text,   ///< on its way
        Whole   ///< its last brace has come
    };

    NervaMode(NervaConfig &config, EventLog &log) : m_config(config), m_log(log) {}

    void opened();
    void closed(bool judged); ///< by the program
    /// True if the byte is the configuration's; \a started tells whether the adapter has.
    [[nodiscard]] bool take(quint8 byte, bool started);
    void endIsOver(); ///< a moment after E1 without a text
    [[nodiscard]] Phase phase() const { return m_phase; }
    [[nodiscard]] bool isUsed() const { return m_used; } ///< since the opening

    NervaFault fault = NervaFault::None;

signals:
    void toProgram(const QByteArray &bytes);
    void halfToProgram(const QByteArray &bytes); ///< and then the adapter is to go
    void restarting();

private:
    [[nodiscard]] bool takeCommand(quint8 byte, bool started);
    void takeText(quint8 byte);
    void tell();
    void finish(bool store);

    NervaConfig &m_config;
    EventLog &m_log;
    Phase m_phase = OnLine;
    QByteArray m_text;
    bool m_used = false;
    bool m_saidEnd = false; // the last of the configuration's bytes
};
