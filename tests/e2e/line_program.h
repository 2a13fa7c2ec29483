#pragma once

#include "tests/e2e/child.h"

/// A part of "linesim" as a process.
class LineProgram : public Child
{
public:
    /// Starts it with \a arguments, under \a clock, a setting of libfaketime, unless that is empty.
    explicit LineProgram(const QStringList &arguments, const QString &clock = QString());

    /// What stands behind \a event in its first line; waits for it.
    [[nodiscard]] QString waitFor(const QString &event);
    void command(const QString &line);
    [[nodiscard]] bool quit(); ///< in order; true if it has nothing to blame
};
