#pragma once

#include "tests/e2e/child.h"

/// "linesim switch" as a process, under a clock of its own at a workstation's speed.
class SwitchEnd : public Child
{
public:
    /// Listens on any port, which is in port; \a clock is a setting of libfaketime, \a more are further
    /// options.
    SwitchEnd(const QString &clock, const QStringList &more);

    void command(const QString &line);
    [[nodiscard]] int count(const QString &part) const { return lines.filter(part).size(); }
    [[nodiscard]] QStringList violations() const;
    [[nodiscard]] bool quit(); ///< in order; true if the workstation broke no rule

    quint16 port = 0;
};
