#include "ui/printing/print_queue.h"

#include "records/protocol.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

namespace
{
constexpr int QuickMs = 500; // the main thread waits no longer for a printer
constexpr int EndMs = 5000;  // what open jobs get at the program's end
constexpr int StopMs = 1000; // what they get to notice that they must stop
} // namespace

CPrintQueue *CPrintQueue::queue = nullptr;

CPrintQueue &CPrintQueue::instance()
{
    if (queue == nullptr) {
        queue = new CPrintQueue;
        connect(queue, &CPrintQueue::failed, queue, &CPrintQueue::journalErrors, Qt::QueuedConnection);
        connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, queue, &CPrintQueue::endJobs);
        qAddPostRoutine(waitForLastJob);
    }
    return *queue;
}

bool CPrintQueue::hangs()
{
    return queue != nullptr && queue->isRunning();
}

// What still runs uses parts of the toolkit that go with the application. A print has had its time.
void CPrintQueue::waitForLastJob()
{
    if (!queue->m_stop)
        queue->wait(EndMs);
}

void CPrintQueue::add(const Job &job)
{
    if (begin({job, true}))
        waitForIdle(QuickMs);
}

void CPrintQueue::post(const Job &job)
{
    (void)begin({job, false});
}

bool CPrintQueue::begin(const Open &open)
{
    {
        const QMutexLocker lock(&m_mutex);
        m_jobs.enqueue(open);
        m_prints += open.prints ? 1 : 0;
        if (m_busy)
            return false;
        m_busy = true;
    }
    wait(); // the last run may be about to return
    start();
    return true;
}

bool CPrintQueue::waitForIdle(int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    bool idle = false;
    {
        const QMutexLocker lock(&m_mutex);
        while (m_busy && m_idle.wait(&m_mutex, deadline)) {
        }
        idle = !m_busy;
    }
    journalErrors();
    return idle;
}

bool CPrintQueue::waitForPrints(int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    bool done = false;
    {
        const QMutexLocker lock(&m_mutex);
        while (m_prints > 0 && m_idle.wait(&m_mutex, deadline)) {
        }
        done = m_prints == 0;
    }
    journalErrors();
    return done;
}

void CPrintQueue::endJobs()
{
    if (waitForPrints(EndMs))
        return;
    Log.addCacheServiceString(QStringLiteral("Печать прервана"), ProtocolError, true);
    m_stop = true;
    waitForPrints(StopMs);
}

void CPrintQueue::journalErrors()
{
    QStringList errors;
    {
        const QMutexLocker lock(&m_mutex);
        errors.swap(m_errors);
    }
    for (const QString &error : qAsConst(errors))
        Log.addCacheServiceString(error, ProtocolError, true);
}

CPrintQueue::Open CPrintQueue::takeJob()
{
    const QMutexLocker lock(&m_mutex);
    if (!m_jobs.isEmpty() && !m_stop)
        return m_jobs.dequeue();
    m_busy = false;
    m_idle.wakeAll();
    return {};
}

void CPrintQueue::noteDone(const Open &done, const QStringList &errors)
{
    const QMutexLocker lock(&m_mutex);
    m_errors += errors;
    m_prints -= done.prints ? 1 : 0;
    m_idle.wakeAll();
}

void CPrintQueue::run()
{
    for (Open open = takeJob(); open.job; open = takeJob()) {
        const QStringList errors = open.job(m_stop);
        noteDone(open, errors);
        if (!errors.isEmpty())
            emit failed();
    }
}
