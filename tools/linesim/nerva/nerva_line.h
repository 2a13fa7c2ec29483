#pragma once

#include "tools/linesim/adapter/adapter_line.h"
#include "tools/linesim/nerva/nerva_mode.h"

/// A line through an Ethernet adapter: what a line adapter does, and its configuration over the same port.
/// Which of the two a program wants is told by its first byte. Commands beside those of a line adapter:
/// "fault NAME" until "fault none", "set KEY VALUE", "restart", "show", which tells the values as the events
/// "working" and "kept".
class NervaLine : public AdapterLine
{
    Q_OBJECT

public:
    NervaLine(const Settings &settings, EventLog &log);

    [[nodiscard]] bool start() override;
    [[nodiscard]] bool run(const QString &name, const QString &argument) override;

    /// The fault by its name; false if there is none of it.
    [[nodiscard]] static bool readFault(const QString &name, NervaFault &fault);

protected:
    void takeOpening() override;
    void takeClosing() override;
    void takeBytes(const QByteArray &bytes) override;
    void takeUnplugging() override;

private:
    void stopTimers();
    void takeLineByte(char byte);
    void send(const QByteArray &bytes);
    void sendMore();
    void beginStart();
    void talk();
    void set(const QString &keyAndValue);
    void setFault(const QString &name);

    NervaSettings m_nerva;
    NervaConfig m_config;
    NervaMode m_mode;
    QElapsedTimer m_started; // since the opening, or a restart
    QTimer m_talk;           // statuses while nobody answers them
    QTimer m_end;            // behind the end of configuring
    QTimer m_sending;
    QByteArray m_unsent;
    bool m_lineIsOpen = false; // the program has spoken as one that works the line
};
