#pragma once

#include <QMutex>
#include <QQueue>
#include <QStringList>
#include <QThread>
#include <QWaitCondition>

#include <atomic>
#include <functional>

/// Runs print jobs in their order, on a thread of its own that lives while there are jobs: a printer that
/// hangs holds up neither the line nor the operator. What fails is journalled by the main thread, which
/// alone calls this class.
class CPrintQueue : public QThread
{
    Q_OBJECT

public:
    /// Prints and returns what the journal has to tell. A job that waits ends early once \a stop is true.
    using Job = std::function<QStringList(const std::atomic<bool> &stop)>;

    /// The one queue. It is never destroyed, so that a device that blocks for ever cannot hold up the
    /// program's end; at the end of the event loop the open jobs get a few seconds.
    static CPrintQueue &instance();
    /// Whether a job is still running; for the end of the process.
    [[nodiscard]] static bool hangs();

    /// Adds a job. If none is open and this one is quick, it is over on return, and its failure is in the
    /// journal then. A slow job goes on by itself, and so do those that come behind it.
    void add(const Job &job);
    /// Adds what is not a print but must not run beside one; returns at once. The program's end does not wait
    /// for it.
    void post(const Job &job);
    /// Waits until no job is open, but no longer than \a milliseconds, journals what has failed, and tells
    /// whether none is open.
    bool waitForIdle(int milliseconds);

signals:
    void failed(); ///< a job has left lines for the journal

protected:
    void run() override;

private:
    CPrintQueue() = default;
    static void waitForLastJob(); ///< before the application goes
    struct Open {
        Job job;
        bool prints;
    };

    [[nodiscard]] bool begin(const Open &open); ///< whether no other job was open
    bool waitForPrints(int milliseconds);       ///< as waitForIdle(), for the prints among the jobs
    void endJobs(); ///< the program ends: a print that does not end in time is told to stop and journalled
    void journalErrors();
    [[nodiscard]] Open takeJob(); ///< an empty one ends the thread
    void noteDone(const Open &done, const QStringList &errors);

    static CPrintQueue *queue; ///< null until the first job

    QMutex m_mutex; ///< guards all below but m_stop
    QWaitCondition m_idle;
    QQueue<Open> m_jobs;             ///< without the running one
    int m_prints = 0;                ///< jobs that print, with the running one
    QStringList m_errors;            ///< journal lines that wait for the main thread
    bool m_busy = false;             ///< a job is open; cleared by the thread as its last act
    std::atomic<bool> m_stop{false}; ///< the program ends; never cleared
};
