#pragma once

#include "tools/linesim/adapter/code_stream.h"
#include "tools/linesim/adapter/code_wire.h"
#include "tools/linesim/adapter/credit_ledger.h"
#include "tools/linesim/adapter/program_rules.h"

#include <QObject>

class EventLog;

/// A line adapter between a program and a telegraph line: it takes codes into its buffer and transmits them
/// at the speed of the line, echoes them, tells its room, passes on what the far end sends, and can fail. It
/// knows no port and no clock: bytes of the program go in by takeFromProgram(), bytes to it come out by the
/// signal toProgram; the owner tells the time in microseconds and calls advance() at nextUs().
class LineAdapter : public QObject
{
    Q_OBJECT

public:
    static constexpr int OldVersion = 20231110;
    static constexpr int NewVersion = 20231111; ///< the first that echoes

    struct Settings {
        int baud = 200;           ///< 50, 100 or 200
        int version = NewVersion; ///< 0 does not tell it
        int roomCodes = 64;       ///< codes that its buffer takes
        int statusMs = 500;       ///< between unasked statuses
        int answerMs = 1000;      ///< for the answer to one
        int wordMs = 500;         ///< of silence, behind which nothing completes a word
        int expectedMode = -1;    ///< the mode byte to expect; ProgramRules::AnyMode
        bool silent = false;      ///< from the start
    };

    LineAdapter(const Settings &settings, EventLog &log);

    void opened(qint64 nowUs); ///< a program has opened the port
    void closed(qint64 nowUs); ///< and closed it
    void unplugged();          ///< under the program: no goodbye is asked for
    void takeFromProgram(const QByteArray &bytes, qint64 nowUs);
    void advance(qint64 nowUs); ///< does all that is due; being late harms nothing but the pace
    [[nodiscard]] qint64 nextUs(qint64 nowUs) const; ///< -1 while no program is there
    void tellTotals(); ///< the last word in the log: what went over the line in all

    /// Text of the far end, with "@C", "@E", "@H", "@S" for the events of a call.
    void sendText(const QString &text, qint64 nowUs);
    void sendRaw(const QByteArray &bytes, qint64 nowUs); ///< to the program, past the line

    [[nodiscard]] bool isReady() const { return m_rules.phase() == ProgramRules::Talking; }
    [[nodiscard]] bool isLineFree() const { return m_out.isEmpty() && m_in.isEmpty(); }

    // Faults
    void setSilent(bool silent) { m_silent = silent; }      ///< tells the program nothing
    void setBreak(bool broken) { m_broken = broken; }       ///< told again and again while it lasts
    void setNoSignal(bool lost) { m_noSignal = lost; }      ///< likewise, and no status goes
    void loseEchoes(int count) { m_echoesToLose += count; } ///< of the next codes
    /// Statuses of the next \a ms milliseconds grant nothing.
    void withholdCredit(int ms, qint64 nowUs) { m_noCreditUntilUs = nowUs + ms * 1000LL; }
    ProgramRules &rules() { return m_rules; }

signals:
    void toProgram(const QByteArray &bytes); ///< the owner writes them to the port at once
    void ready();                            ///< what is sent from now on reaches the program's procedure
    /// Codes of the program have gone over the line; the text that they settle, which may be empty.
    void heard(const QString &text, const QByteArray &codes);

private:
    void restart();
    // Bytes of the program
    void takeByte(quint8 byte, qint64 nowUs);
    void takeCode(quint8 code, qint64 nowUs);
    void takeCommand(const QString &command, qint64 nowUs);
    void takeMode(quint8 mode, qint64 nowUs);
    [[nodiscard]] bool takeDialling(quint8 byte, qint64 nowUs);
    void tellVersion(qint64 nowUs);
    // The line
    void transmit(qint64 nowUs);
    void receive(qint64 nowUs);
    void hear(const QString &text, const QByteArray &codes);
    void tellHeard();
    void tellBursts(qint64 nowUs);
    // Bytes to the program
    void sendStatus(qint64 nowUs);
    void signalFaults(qint64 nowUs);
    [[nodiscard]] bool isStatusDue(qint64 nowUs) const;
    [[nodiscard]] qint64 statusUs(qint64 nowUs) const;
    [[nodiscard]] int grant(qint64 nowUs) const;
    [[nodiscard]] bool echoes() const { return m_settings.version >= NewVersion; }
    void put(const QByteArray &bytes, qint64 nowUs);

    Settings m_settings;
    EventLog &m_log;
    ProgramRules m_rules;
    CreditLedger m_credit;
    CodeWire m_out; // to the far end
    CodeWire m_in;  // to the program
    CodeReader m_reader;
    CodeWriter m_writer;
    QString m_heard;       // not yet told in the log
    QByteArray m_heardRaw; // likewise
    QString m_number;      // of a dialling under way, from its "@" on
    bool m_inNumber = false;
    bool m_switched = false;
    bool m_toldDrained = false;
    qint64 m_lastStatusUs = 0;
    int m_lastGrant = 0;
    qint64 m_lastSignalUs = 0; // of a fault that is told again and again
    qint64 m_quietUs = -1;     // since when nothing is heard; -1 all is told
    int m_overrun = 0;         // characters beyond the credit, told at the next answer
    int m_lostCodes = 0;

    bool m_silent;
    bool m_broken = false;
    bool m_noSignal = false;
    int m_echoesToLose = 0;
    qint64 m_noCreditUntilUs = -1;
};
