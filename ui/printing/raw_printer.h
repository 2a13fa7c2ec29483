#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <atomic>

/// Where raw printing goes.
struct RawPrinterTarget {
    static constexpr quint16 DefaultPort = 9100;

    bool network = false; ///< a host instead of a file or device
    QString name;         ///< host, or the name of a file or device
    quint16 port = 0;     ///< of the host

    /// Reads the option PrinterRaw: "IP:host" or "IP:host:port" in either case is a network printer, all
    /// else a file or device. A port that is missing, 0 or no port number is DefaultPort.
    [[nodiscard]] static RawPrinterTarget read(const QString &printerRaw);
};

/// Writes \a bytes to the printer and waits until it has them: up to 3 s for a network printer's answer and
/// 30 s for the bytes to go, without end for a device that blocks. A host's wait for the bytes ends early
/// once \a stop is true. A file is written anew. Returns the journal lines of a failure, none if all is well.
/// On any thread.
[[nodiscard]] QStringList printRaw(const RawPrinterTarget &target, const QByteArray &bytes,
                                   const std::atomic<bool> &stop);
