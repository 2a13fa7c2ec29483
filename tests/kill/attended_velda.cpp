// The workstation with an operator inside who leaves it alone while it runs by itself, and brings it back
// where the procedure gave up, or where the journal says that a telegram of the centre's was not stored: he
// settles with the centre what each side holds, gives files that were set aside their places, and sets
// automatic mode again. A start that is refused he takes note of. With the environment's ATTENDED_BAD, the
// path of a file, he waits while that file is there: the disk is bad.

#include "app/clock.h"
#include "app/journal_words.h"
#include "app/options.h"
#include "app/startup.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "procedures/process_cks.h"
#include "procedures/queue_file.h"
#include "procedures/telegram_files.h"
#include "text/utils.h"
#include "ui/form_main.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QTimer>

namespace
{
constexpr int LookMs = 1000;
constexpr int QuietSeconds = 8;   ///< in which what the line has brought is read, a message a second
constexpr int PatienceLooks = 20; ///< for an answer of the centre

/// An operator at the centre's channel, who acts at most once a look.
class CentreOperator
{
public:
    void look()
    {
        takeNoticeOfUnstored();
        if (!State.manualMode)
            return void(m_step = Idle);
        if (!TlgThread.linkUp() || State.secondsSinceRx < QuietSeconds || !isAllRead())
            return;
        switch (m_step) {
        case Idle: return ask();
        case Asked: return State.askSent ? wait() : settle();
        case Owing: return State.PK_in == State.CKS_out ? goOn() : wait();
        }
    }

private:
    enum Step { Idle, Asked, Owing };

    /// The centre takes such a telegram for delivered.
    void takeNoticeOfUnstored()
    {
        const int told = Log.lines.filter(JournalWords::NotSaved).size();
        if (told > m_unstored && State.tlgMode == ModeOpen)
            State.setAutomatic(false);
        m_unstored = told;
    }

    /// A message that still waits would be taken for the answer.
    static bool isAllRead() { return ProcessCKS.receiveBuffer.indexOf(QStringLiteral("НННН")) < 0; }

    void ask()
    {
        ProcessCKS.clearOut();
        ProcessCKS.SendKG(CProcessCKS::ReceiptRequest);
        go(Asked);
    }
    void go(Step step)
    {
        m_step = step;
        m_looks = 0;
    }
    void wait()
    {
        if (++m_looks > PatienceLooks)
            go(Idle);
    }
    /// The centre has said what it holds.
    void settle()
    {
        settleFiles();
        correctSent(State.CKS_in);
        if (State.PK_in == State.CKS_out)
            return goOn();
        ProcessCKS.SendKG(CProcessCKS::Receipt); // it sends again what is missing
        go(Owing);
    }
    /// As the counter's dialog does.
    static void correctSent(int figure)
    {
        if (State.PK_out == figure)
            return;
        Log.addCacheServiceString(JournalWords::OperatorSetSent + QString::number(State.PK_out) +
                                      JournalWords::OperatorSetTo + QString::number(figure),
                                  ProtocolInfo, false);
        State.PK_out = figure;
        State.Save();
    }
    static void settleFiles()
    {
        const bool arrived = State.PK_out == State.CKS_in;
        for (const QString &name : QDir(State.pathOut()).entryList({QStringLiteral("*.b*")}, QDir::Files)) {
            const QString path = queuePath(name);
            const QString plain = name.left(name.indexOf(QStringLiteral(".b")));
            if (arrived)
                (void)CUtils::renameFile(path, State.pathOut_currentDate(),
                                         plain + QLatin1Char('.') + CUtils::StringNNN(State.PK_out), false);
            else
                (void)restoreFailedFile(path);
        }
    }
    void goOn()
    {
        State.setAutomatic(true);
        go(Idle);
    }

    Step m_step = Idle;
    int m_looks = 0;
    int m_unstored = 0; // lines of the journal that tell of one
};

bool isDiskBad()
{
    const QString sign = qEnvironmentVariable("ATTENDED_BAD");
    return !sign.isEmpty() && QFile::exists(sign);
}

/// The words of a refused start are read.
void closeBox()
{
    if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget()))
        box->accept();
}

/// What the journal tells as delivered and the queue still has would be called for again.
void removeDelivered()
{
    for (const QString &name : QDir(State.pathOut()).entryList(QDir::Files)) {
        const QString delivered = JournalWords::Delivered + name + JournalWords::DeliveredRest;
        if (!Log.lines.filter(delivered).isEmpty())
            (void)removeQueueFile(queuePath(name));
    }
}

void look()
{
    static CentreOperator centre;
    if (mainWindow == nullptr)
        return closeBox();
    if (State.stopCountdown > 0 || isDiskBad())
        return;
    if (Options.processMode == CKS)
        return centre.look();
    if (!State.manualMode)
        return;
    removeDelivered();
    State.setAutomatic(true);
}

void engageOperator()
{
    auto *timer = new QTimer(QCoreApplication::instance());
    QObject::connect(timer, &QTimer::timeout, look);
    timer->start(LookMs);
}
Q_COREAPP_STARTUP_FUNCTION(engageOperator)
} // namespace

int main(int argc, char *argv[])
{
    return endProcess(runVelda(argc, argv));
}
