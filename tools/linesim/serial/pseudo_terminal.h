#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>

class QSocketNotifier;

/// A device at the end of a serial cable: a pseudo-terminal whose other end a program opens as its serial
/// port. The terminal is raw, has no speed of its own, and tells when a program opens and closes it.
class PseudoTerminal : public QObject
{
    Q_OBJECT

public:
    /// With a \a link the port has that path, a symbolic link that comes with plug(), goes with unplug(), and
    /// is the same each time; without one its name is what the system gives.
    explicit PseudoTerminal(const QString &link = QString());
    ~PseudoTerminal() override;

    /// Makes the port; false if the system has none to give, or the link's path is taken by another file.
    [[nodiscard]] bool plug();
    /// Takes the port away, under a program that has it open too.
    void unplug();

    [[nodiscard]] bool isPlugged() const { return m_master >= 0; }
    [[nodiscard]] bool isOpen() const { return m_open; } ///< by a program
    /// What a program opens; empty while unplugged.
    [[nodiscard]] QString portName() const;
    /// The speed that the program has set the port to, in baud; 0 if it is none of the usual ones.
    [[nodiscard]] int speed() const;
    /// Sends to the program. What is written while no program has the port open, or more than it reads in
    /// time, is lost, as on a wire.
    void write(const QByteArray &bytes);

signals:
    void opened();
    void closed(); ///< by the program, after the last received(); not for unplug()
    void received(const QByteArray &bytes);

private:
    void watchForOpening();
    void readMaster();
    void close();

    QString m_link;
    QString m_device;
    int m_master = -1;
    bool m_open = false;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QTimer m_watch;
};
