#pragma once

#include "tools/linesim/adapter/line_adapter.h"
#include "tools/linesim/far_end/far_line.h"
#include "tools/linesim/nerva/nerva_settings.h"
#include "tools/linesim/serial/device_port.h"

#include <QElapsedTimer>
#include <QTimer>

#include <optional>

/// A line through an adapter, which is a serial port here. It is connected as soon as the program takes what
/// comes.
class AdapterLine : public FarLine
{
    Q_OBJECT

public:
    struct Settings {
        QString serial = QStringLiteral("10000001"); ///< of the adapter
        QString port;                                ///< its path at all times; empty takes what there is
        LineAdapter::Settings adapter;
        std::optional<NervaSettings> nerva; ///< it is an Ethernet adapter, which can be configured
    };

    AdapterLine(const Settings &settings, EventLog &log);

    [[nodiscard]] bool start() override;
    void tick() override;
    void finish() override;
    [[nodiscard]] QString place() const override { return m_port.portName(); }
    [[nodiscard]] bool isReady() const override { return m_adapter.isReady(); }
    [[nodiscard]] bool comesInPieces() const override { return true; }
    [[nodiscard]] QString asHeard(const QString &text) const override;
    void sendText(const QString &text) override;
    void sendRaw(const QByteArray &bytes) override;
    void close() override;
    void drop() override;
    [[nodiscard]] int longestPauseMs() const override { return m_longestPauseMs; }
    [[nodiscard]] bool run(const QString &name, const QString &argument) override;

protected:
    virtual void takeOpening();      ///< by the program
    virtual void takeClosing();      ///< likewise
    virtual void takeUnplugging() {} ///< under the program
    virtual void takeBytes(const QByteArray &bytes);
    void schedule();
    void unplug();

    EventLog &m_log;
    LineAdapter m_adapter;
    DevicePort m_port;

private:
    void work();
    [[nodiscard]] qint64 nowUs() const { return m_clock.nsecsElapsed() / 1000; }

    [[nodiscard]] LineAdapter &note(const QString &event);
    void sendGarbage(const QString &countAndSeed);
    void loseEchoes(const QString &count);
    void withholdCredit(const QString &ms);

    Settings m_settings;
    QElapsedTimer m_clock;
    QTimer m_timer;
    int m_longestPauseMs = 0;
    bool m_closing = false; // unplugs once all has gone
    bool m_connected = false;
};
