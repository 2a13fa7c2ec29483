#pragma once

#include <QThread>

#include <atomic>
#include <climits>

/// Knows that a thread has ended, and orders what the thread did before what follows ended() or join().
/// QThread does so too, but by means that ThreadSanitizer does not see.
class ThreadEnd
{
public:
    explicit ThreadEnd(QThread &thread) : m_thread(thread)
    {
        QObject::connect(
            &thread, &QThread::finished, &thread, [this] { m_ended.store(true, std::memory_order_release); },
            Qt::DirectConnection);
    }
    [[nodiscard]] bool ended() const { return m_ended.load(std::memory_order_acquire); }
    void join() { (void)join(ULONG_MAX); }
    /// False if it has not ended in the given time.
    [[nodiscard]] bool join(unsigned long ms) { return m_thread.wait(ms) && ended(); }

private:
    QThread &m_thread;
    std::atomic<bool> m_ended = false;
};
