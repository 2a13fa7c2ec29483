#pragma once

#include <QMessageLogContext>
#include <QString>
#include <QStringList>

class QApplication;
class QLockFile;

extern const QString lockFileName;   ///< "velda.lck", relative to the data directory
extern const QString unlockFileName; ///< "velda.unlck", a new instance's request to stop

/// Qt's messages as lines of standard error, "D: text (file:line, function)"; never aborts.
void Velda_MessageOutput(QtMsgType type, const QMessageLogContext &context, const QString &text);

/// The data directory that the arguments ask for: "-dc" the current directory, "-d=PATH" that path made
/// absolute, the last one wins; \a fallback with neither. No separator at the end is added.
[[nodiscard]] QString dataDirectory(const QStringList &arguments, const QString &fallback);

/// "ЦКС", "СКК" or "ПС" for 0, 1 and any other procedure.
[[nodiscard]] QString processModeWord(int processMode);

/// The build date as "Jul 31 2026".
[[nodiscard]] QString buildDate();

/// Takes the instance lock, or talks to the operator about the instance that holds it. False when the
/// program must end with status 1. True without the lock held after a stop dialogue that was answered.
[[nodiscard]] bool takeInstanceLock(QLockFile &lock);

/// The whole life of the program: start, event loop, orderly end. Returns the exit status.
int runVelda(int argc, char *argv[]);

/// Makes SIGTERM, SIGINT and the end of the user's session take the operator's way out, without the
/// question: stopCountdown becomes 5 in mode 3 and 2 otherwise. \a application may not be null.
void installOrderlyEnd(QApplication *application);
