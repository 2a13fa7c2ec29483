#include "app/journal_words.h"
#include "app/options.h"
#include "app/startup.h"
#include "app/state.h"
#include "link/prf_thread.h"
#include "link/tlg_thread.h"
#include "records/protocol.h"
#include "ui/form_main.h"
#include "ui/printing/print_queue.h"
#include "ui/sound.h"

#include <QFile>
#include <QProcess>

#include <cstdlib>

namespace
{
void stopThreads()
{
    TlgThread.stopThread();
    PrfThread.stopThread();
    sleepSeconds(1);
    waitIfRunning(TlgThread);
    waitIfRunning(PrfThread);
}

void closeJournal()
{
    Log.addCacheServiceString(JournalWords::Ended, ProtocolInfo, false);
    Log.addCacheServiceString(QString(), ProtocolInfo, false); // parts this run from the next one
    Log.rewriteAll = true;
    Log.Save();
}

/// Without arguments: a data directory on the command line holds for the run that it was given to. The new
/// process takes the directory of the executable.
void startAnew(const QString &program)
{
    QProcess process;
    process.setProgram(program);
    process.startDetached();
}
} // namespace

void waitIfRunning(const QThread &thread)
{
    if (thread.isRunning())
        sleepSeconds(1);
}

void shutDown(const QString &program)
{
    stopThreads();
    State.Save();
    Options.Save();
    closeJournal();
    sound.stop();
    if (Options.checkStopFile)
        QFile::remove(unlockFileName); // tells a waiting instance that this one is gone
    if (State.restartAfterExit)
        startAnew(program);
    delete mainWindow;
    mainWindow = nullptr;
}

// A thread that hangs is not terminated by itself: where that unwinds it, the first function on its way that
// lets no exception out ends the whole program with an error.
int endProcess(int status)
{
    if (TlgThread.isRunning() || PrfThread.isRunning() || CPrintQueue::hangs())
        std::_Exit(status);
    return status;
}
