#pragma once

#include <QByteArray>
#include <QList>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <memory>

class SilentAnnouncer;

/// A network printer (ippeveprinter) on loopback that keeps each job as a file. It insists on announcing
/// itself in the network, so it gets a message bus of its own with an announcer that tells nobody.
class IppPrinter
{
public:
    IppPrinter();
    ~IppPrinter();
    IppPrinter(const IppPrinter &) = delete;
    IppPrinter &operator=(const IppPrinter &) = delete;

    /// False, with \a error told, if the printer does not run.
    [[nodiscard]] bool start();
    /// Its address for a queue.
    [[nodiscard]] QString device() const;
    /// The jobs that are complete, in their order; each is told once.
    [[nodiscard]] QList<QByteArray> takeJobs() const;

    QString error;

private:
    [[nodiscard]] QString path(const QString &name) const { return m_directory.filePath(name); }
    [[nodiscard]] bool startBus();

    QTemporaryDir m_directory;
    QProcess m_bus;
    QProcess m_printer;
    std::unique_ptr<SilentAnnouncer> m_announcer;
    quint16 m_port = 0;
};
