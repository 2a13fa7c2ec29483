#pragma once

#include "tools/linesim/perforator/perforator_judge.h"
#include "tools/linesim/perforator/perforator_options.h"
#include "tools/linesim/perforator/tape_punch.h"
#include "tools/linesim/serial/serial_device.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

/// A paper-tape punch and reader on a serial port of its own: it punches the codes that come, tells its room,
/// and reads the tape in its reader on command. Commands turn it against the workstation.
class Perforator : public SerialDevice
{
    Q_OBJECT

public:
    Perforator(const PerforatorOptions &options, EventLog &log);

    /// False, with an event, if a file does not open or the port cannot be made.
    [[nodiscard]] bool start() override;

private:
    [[nodiscard]] bool runOwn(const QString &name, const QString &argument) override;
    void takeOpening() override;
    void takeClosing() override { m_reading = false; }
    void takeBytes(const QByteArray &bytes) override;

    [[nodiscard]] bool mountTape();
    void takeByte(char byte);
    void startReading();
    void stopReading();
    void tick();
    [[nodiscard]] int codesDue();
    void readTape(int count);
    void tellStatus();

    void setJammed(bool jammed);
    void sendGarbage(const QString &countAndSeed);
    void changeTape(const QString &textFile, const QString &codesFile);

    PerforatorOptions m_options;
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
