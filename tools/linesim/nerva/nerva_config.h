#pragma once

#include "tools/linesim/nerva/nerva_settings.h"

#include <QByteArray>
#include <QStringList>

class EventLog;

/// What an Ethernet adapter is set to: the values that it works with, and those that outlast a restart. It
/// judges what a program writes: keys that can be written, in their order, each in its form, and none that
/// stands as it was told. The events: "written" as text, "stored" for those kept, "restarted".
class NervaConfig
{
public:
    NervaConfig(const QString &serial, int baud, EventLog &log);

    /// Sets a value in both; false without such a key.
    [[nodiscard]] bool set(const QString &key, const QString &value);
    [[nodiscard]] QString value(const QString &key) const; ///< that it works with
    [[nodiscard]] QString stored(const QString &key) const;
    /// What a program is told now; it may be told less.
    [[nodiscard]] QByteArray text(NervaFault fault);
    /// Takes a text from brace to brace; what is no configuration changes nothing.
    void write(const QByteArray &text, bool store);
    void restart();    ///< goes back to the values that outlast it
    void forgetTold(); ///< another program comes
    void show() const; ///< the events "working" and "kept", as a program would be told

private:
    using Values = QStringList; // one for each key

    void writeField(const QByteArray &field, int &former);
    [[nodiscard]] static QByteArray textOf(const Values &values, NervaFault fault);

    EventLog &m_log;
    Values m_working;
    Values m_stored;
    Values m_told; // empty: nothing yet
};
