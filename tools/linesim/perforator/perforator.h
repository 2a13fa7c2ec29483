#pragma once

#include "tools/linesim/console/event_log.h"
#include "tools/linesim/perforator/perforator_judge.h"
#include "tools/linesim/perforator/perforator_options.h"
#include "tools/linesim/perforator/tape_punch.h"
#include "tools/linesim/serial/pseudo_terminal.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

/// A paper-tape punch and reader on a serial port of its own: it punches the codes that come, tells its room,
/// and reads the tape in its reader on command. Commands turn it against the workstation.
class Perforator : public QObject
{
    Q_OBJECT

public:
    Perforator(const PerforatorOptions &options, EventLog &log);

    /// Plugs it in; false if a file does not open or the port cannot be made.
    [[nodiscard]] bool start();
    /// Runs one command; an unknown one is the event "error".
    void run(const QString &command);
    [[nodiscard]] QString portName() const { return m_terminal.portName(); }

signals:
    void quit();

private:
    using Action = void (Perforator::*)(const QString &argument);
    struct Command {
        const char *name;
        Action action;
    };
    static const Command commands[];

    [[nodiscard]] bool plug();
    [[nodiscard]] bool mountTape();
    void takeOpening();
    void takeClosing();
    void takeBytes(const QByteArray &bytes);
    void takeByte(char byte);
    void startReading();
    void stopReading();
    void tick();
    [[nodiscard]] int codesDue();
    void readTape(int count);
    void tellStatus();

    void doUnplug(const QString &);
    void doPlug(const QString &);
    void doJam(const QString &);
    void doUnjam(const QString &);
    void doGarbage(const QString &countAndSeed);
    void doTape(const QString &path);
    void doTapeCodes(const QString &path);
    void changeTape(const QString &path);
    void doRewind(const QString &);
    void doQuit(const QString &);

    PerforatorOptions m_options;
    EventLog &m_log;
    PseudoTerminal m_terminal;
    PerforatorJudge m_judge;
    TapePunch m_punch;
    QByteArray m_tape; ///< codes on the tape in the reader
    int m_tapeAt = 0;  ///< the next one to be read
    bool m_reading = false;
    bool m_jammed = false;
    QTimer m_timer;
    QElapsedTimer m_sinceStatus, m_paced;
    qint64 m_pacedCodes = 0; ///< since m_paced
};

/// The subcommand "perforator"; see runSubcommand().
[[nodiscard]] int runPerforator(const QStringList &arguments);
