#pragma once

#include <QLockFile>
#include <QMessageLogContext>
#include <QString>
#include <QStringList>

#include <functional>

class QThread;

extern const QString lockFileName;   ///< "velda.lck", relative to the data directory
extern const QString unlockFileName; ///< "velda.unlck", a new instance's request to stop

/// Blocks the main thread for whole seconds. A test may count them instead.
extern std::function<void(unsigned long seconds)> sleepSeconds;

/// Qt's messages as lines of standard error, "D: text (file:line, function)"; never aborts.
void Velda_MessageOutput(QtMsgType type, const QMessageLogContext &context, const QString &text);

/// The data directory that the arguments ask for: "-dc" the current directory, "-d=PATH" that path made
/// absolute, the last one wins; \a fallback with neither. No separator at the end is added.
[[nodiscard]] QString dataDirectory(const QStringList &arguments, const QString &fallback);

/// Makes \a directory the data directory: appPath, with a separator at its end, and the current directory.
/// False if it cannot be entered.
[[nodiscard]] bool enterDataDirectory(const QString &directory);

/// "ЦКС", "СКК" or "ПС" for 0, 1 and any other procedure.
[[nodiscard]] QString processModeWord(int processMode);

/// The build date as "Jul 31 2026".
[[nodiscard]] QString buildDate();

/// What the journal says when the program starts.
[[nodiscard]] QString startLine();

/// What the operator is told about a lock that was refused; \a error is not LockFailedError with
/// checkStopFile on, which has its dialogue.
[[nodiscard]] QString lockRefusal(QLockFile::LockError error);

/// Takes the instance lock within a second, or talks to the operator about the instance that holds it.
/// False when the program must end with status 1. True without the lock held after a stop dialogue that
/// ended with the other instance gone.
[[nodiscard]] bool takeInstanceLock(QLockFile &lock);

/// Adds fontSizeCorrect to the application font and remembers the size before in State.basePointSize.
void correctFontSize();

/// One more second for a thread that has not seen its stop flag. One that hangs even then goes on, and ends
/// with the process: see endProcess().
void waitIfRunning(const QThread &thread);

/// Everything after the event loop: threads, counters, options, journal, sound, the answer to a waiting
/// instance, and with State.restartAfterExit a new process of \a program without arguments.
void shutDown(const QString &program);

/// The last step, when everything is saved and the application object is gone: returns \a status. With a
/// thread that hangs it ends the process then and there, by that status and without the destructors of the
/// global objects, which would wait for the thread.
[[nodiscard]] int endProcess(int status);

/// The whole life of the program: start, event loop, orderly end. Returns the exit status.
int runVelda(int argc, char *argv[]);
