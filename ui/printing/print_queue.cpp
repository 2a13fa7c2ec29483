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

CPrintQueue &CPrintQueue::instance()
{
    static CPrintQueue *const queue = [] {
        auto *made = new CPrintQueue;
        connect(made, &CPrintQueue::failed, made, &CPrintQueue::journalErrors, Qt::QueuedConnection);
        connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, made, &CPrintQueue::endJobs);
        return made;
    }();
    return *queue;
}

void CPrintQueue::add(const Job &job)
{
    if (begin(job))
        waitForIdle(QuickMs);
}

void CPrintQueue::post(const Job &job)
{
    (void)begin(job);
}

bool CPrintQueue::begin(const Job &job)
{
    {
        const QMutexLocker lock(&m_mutex);
        m_jobs.enqueue(job);
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

void CPrintQueue::endJobs()
{
    if (waitForIdle(EndMs))
        return;
    Log.addCacheServiceString(QStringLiteral("Печать прервана"), ProtocolError, true);
    m_stop = true;
    waitForIdle(StopMs);
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

CPrintQueue::Job CPrintQueue::takeJob()
{
    const QMutexLocker lock(&m_mutex);
    if (!m_jobs.isEmpty() && !m_stop)
        return m_jobs.dequeue();
    m_busy = false;
    m_idle.wakeAll();
    return {};
}

void CPrintQueue::run()
{
    while (const Job job = takeJob()) {
        const QStringList errors = job(m_stop);
        if (errors.isEmpty())
            continue;
        {
            const QMutexLocker lock(&m_mutex);
            m_errors += errors;
        }
        emit failed();
    }
}
