#pragma once

#include "tests/e2e/line_program.h"
#include "tests/e2e/station.h"

#include <QTemporaryDir>

#include <memory>

/// The line of a workstation that breaks at a byte: a far end with a tap in front of it.
class CutLine
{
public:
    /// What the workstation is on it: "client" and "server" of a TCP connection, or on an "adapter".
    [[nodiscard]] static QStringList roles();

    /// Puts \a station on the line in \a role, in front of \a farEnd, a kind of linesim's with its options;
    /// all under \a clock, a setting of libfaketime.
    CutLine(Station &station, const QString &role, const QStringList &farEnd, const QString &clock);

    void command(const QString &line) { m_farEnd->command(line); } ///< to the far end
    [[nodiscard]] QStringList noted(const QString &part) const { return m_farEnd->lines.filter(part); }
    [[nodiscard]] const QStringList &log() const { return m_farEnd->lines; } ///< of the far end

    void cutAfter(int bytes); ///< of both sides together
    [[nodiscard]] int cuts() const { return m_tap->lines.filter(QStringLiteral("cut:")).size(); }
    [[nodiscard]] bool quit(); ///< in order; true if the workstation broke no rule

private:
    void beClient(Station &station, const QStringList &farEnd, const QString &clock);
    void beServer(Station &station, const QStringList &farEnd, const QString &clock);
    void beOnAdapter(Station &station, const QStringList &farEnd, const QString &clock);
    void tap(const QStringList &arguments, const QString &clock);

    QTemporaryDir m_directory;
    std::unique_ptr<LineProgram> m_farEnd, m_tap;
};
