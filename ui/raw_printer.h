#pragma once

#include <QByteArray>
#include <QMutex>
#include <QQueue>
#include <QString>
#include <QStringList>
#include <QThread>
#include <QWaitCondition>

#include <atomic>

/// Where raw printing goes.
struct RawPrinterTarget {
    static constexpr quint16 DefaultPort = 9100;

    bool network = false;
    QString name;     ///< host, or the name of a file or device
    quint16 port = 0; ///< of the host

    /// Reads the option PrinterRaw: "IP:host" or "IP:host:port" in either case is a network printer, all
    /// else a file or device. A port that is missing, 0 or no port number is DefaultPort.
    [[nodiscard]] static RawPrinterTarget read(const QString &printerRaw);
};

/// Writes print jobs to a raw printer in their order, on a thread of its own that lives while there are
/// jobs: a printer that hangs holds up neither the line nor the operator. What fails is journalled by the
/// main thread, which alone calls this class.
class CRawPrinter : public QThread
{
    Q_OBJECT

public:
    /// The one printer queue. It is never destroyed, so that a device that blocks for ever cannot hold up
    /// the program's end; at the end of the event loop the open jobs get a few seconds.
    static CRawPrinter &instance();

    /// Prints \a bytes. A printer that takes them at once has them on return, and a failure that shows at
    /// once is in the journal then; a slow job goes on by itself, and so do those that come behind it.
    void print(const RawPrinterTarget &target, const QByteArray &bytes);
    /// Waits until no job is open, journals what has failed, and tells whether none is open.
    bool waitForIdle(int milliseconds);

protected:
    void run() override;

private:
    struct Job {
        RawPrinterTarget target;
        QByteArray bytes;
    };

    CRawPrinter() = default;
    void endJobs();
    void journalErrors();
    [[nodiscard]] bool takeJob(Job &job);
    [[nodiscard]] QStringList printJob(const Job &job) const;
    [[nodiscard]] QStringList printToHost(const Job &job) const;

    QMutex m_mutex; ///< guards all below but m_stop
    QWaitCondition m_idle;
    QQueue<Job> m_jobs;
    QStringList m_errors; ///< journal lines that wait for the main thread
    bool m_busy = false;  ///< a job is open; cleared by the thread as its last act
    std::atomic<bool> m_stop{false};
};
