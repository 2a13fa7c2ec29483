#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

/// A fault of the simulated boot loader: what it does instead of the good answer to a command.
struct LoaderFault {
    enum Kind { Wrong, Silent, Unplug, Late };
    enum Step { Sync, Enter, Address, Page, Leave };

    Kind kind = Silent;
    Step step = Sync;
    int nth = -1; ///< which command of the step since the port was opened, from 0; -1 is each
};

/// Reads "KIND:STEP" or "KIND:STEP:N", as in "wrong:page:3"; empty if it is none.
[[nodiscard]] std::optional<LoaderFault> readLoaderFault(const QString &text);

/// How "linesim loader" is to behave.
struct LoaderOptions {
    QString serial = QStringLiteral("10000001");
    QString port; ///< its path; empty: what the system gives
    QVector<LoaderFault> faults;
    int rubbish = 0; ///< bytes before each answer
    int noise = -1;  ///< seed; answers are then any bytes. -1: none
};

/// Reads \a arguments, the first being the subcommand's name. Empty, with the reason on standard error, if
/// they are not understood; "--help" prints the options and ends the process.
[[nodiscard]] std::optional<LoaderOptions> readLoaderOptions(const QStringList &arguments);
