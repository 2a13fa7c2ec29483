#pragma once

#include "tests/e2e/child.h"

#include <QTemporaryDir>

/// "linesim peer" as a process. It keeps what comes in a directory of its own.
class FarEnd : public Child
{
public:
    /// Listens on any port, which is in port; \a more are further options.
    explicit FarEnd(const QStringList &more = {});
    /// Calls the workstation that listens on \a stationPort.
    FarEnd(quint16 stationPort, const QStringList &more);

    void command(const QString &line);
    [[nodiscard]] bool has(const QString &event) const { return lines.contains(event); }
    [[nodiscard]] QStringList violations() const;
    /// A telegram to be sent from now on, as it is.
    void send(const QString &telegram);
    /// The telegrams that have come whole, from mark to mark.
    [[nodiscard]] QStringList telegrams() const;
    [[nodiscard]] QByteArray bytes() const; ///< all that has come
    [[nodiscard]] QString text() const;     ///< all text that has come
    [[nodiscard]] bool quit();              ///< in order; true if the workstation broke no rule

    quint16 port = 0;

private:
    void start(const QStringList &arguments);

    QTemporaryDir m_kept;
    QTemporaryDir m_toSend;
    int m_sent = 0;
};
