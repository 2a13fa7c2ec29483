#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

/// A print scheduler of this test alone: its own configuration, spool and socket in a temporary directory,
/// which CUPS_SERVER names while it lives. Made before anything else asks for printers.
class CupsScheduler
{
public:
    CupsScheduler();
    ~CupsScheduler();
    CupsScheduler(const CupsScheduler &) = delete;
    CupsScheduler &operator=(const CupsScheduler &) = delete;

    /// False, with \a error told, if the scheduler does not run.
    [[nodiscard]] bool start();
    /// Makes the queue \a name, which hands each job as it is to \a device, an address such as
    /// "ipp://localhost:8631/ipp/print".
    [[nodiscard]] bool addQueue(const QString &name, const QString &device);
    /// Stops it; the socket stays named.
    void stop();

    QString error;

private:
    [[nodiscard]] QString path(const QString &name) const { return m_directory.filePath(name); }
    void write(const QString &name, const QString &content) const;
    [[nodiscard]] bool run(const QString &program, const QStringList &arguments);

    QTemporaryDir m_directory;
    QProcess m_scheduler;
};
