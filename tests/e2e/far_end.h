#pragma once

#include "tests/e2e/child.h"

#include <QTemporaryDir>

/// "linesim peer" as a process, or another kind behind an adapter. It keeps what comes in a directory of its
/// own.
class FarEnd : public Child
{
public:
    /// A line adapter in front of it, on a pseudo-terminal, the line running at 200 baud.
    struct Adapter {
        QString firmware;                           ///< generation: "old", "new"
        QString clock;                              ///< a setting of libfaketime, that of the workstation
        QStringList options;                        ///< more of the adapter's own
        QString kind = QStringLiteral("peer");      ///< what is behind it: "centre"
        QString device = QStringLiteral("adapter"); ///< or "nerva", the Ethernet adapter
    };

    /// Listens on any port, which is in port; \a more are further options.
    explicit FarEnd(const QStringList &more = {});
    /// Of another kind, "centre", under a clock of its own, a setting of libfaketime.
    FarEnd(const QString &kind, const QString &clock, const QStringList &more);
    /// Calls the workstation that listens on \a stationPort.
    FarEnd(quint16 stationPort, const QStringList &more);
    /// Hangs on an adapter whose port is in ports, for Station::useAdapter.
    FarEnd(const QStringList &more, const Adapter &adapter);

    void command(const QString &line);
    [[nodiscard]] bool has(const QString &event) const { return lines.contains(event); }
    [[nodiscard]] QStringList violations() const;
    /// A telegram to be sent from now on, as it is. \a command is that of its kind for a file.
    void send(const QString &telegram, const QString &command = QStringLiteral("send"));
    /// The telegrams that have come whole, from mark to mark.
    [[nodiscard]] QStringList telegrams() const;
    [[nodiscard]] QByteArray bytes() const; ///< all that has come
    [[nodiscard]] QString text() const;     ///< all text that has come
    [[nodiscard]] bool quit();              ///< in order; true if the workstation broke no rule

    quint16 port = 0;
    QString ports; ///< the adapter's, as serial number and path

private:
    void start(const QStringList &kind, const QStringList &arguments);
    [[nodiscard]] QString waitFor(const QString &event);

    QTemporaryDir m_kept;
    QTemporaryDir m_toSend;
    int m_sent = 0;
};
