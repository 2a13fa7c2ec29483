#pragma once

#include "tools/linesim/record/line_record.h"

#include <QObject>
#include <QSet>

/// Plays the far end's side of a record, and holds what the workstation does against the record. It knows no
/// socket and no clock: the owner tells by opened(), closed() and take() what happens on its line, and by
/// tick() what time it is. What the far end said goes out when the workstation has said all that it had said
/// before that, and not sooner after it than in the record. At the first difference it ends: what comes
/// behind it would be its consequence.
class RecordPlayer : public QObject
{
    Q_OBJECT

public:
    struct Settings {
        double speed = 1;          ///< times the pace of the record; 0 waits for the workstation alone
        qint64 patienceMs = 60000; ///< for the workstation, beyond the time that it took in the record
        /// Bytes of the workstation that are left out on both sides. Those of the far end it need not hear:
        /// it may hang up before them.
        QSet<char> ignored;
    };

    RecordPlayer(const LineRecord &record, const Settings &settings);

    void opened();                      ///< a connection is there
    void closed();                      ///< it is gone, other than by close()
    void take(const QByteArray &bytes); ///< from the workstation, cut anywhere
    void tick(qint64 us);               ///< the time since the beginning; never falls

signals:
    void open();                           ///< the far end calls
    void close();                          ///< it hangs up
    void write(const QByteArray &bytes);   ///< it speaks, all at once
    void ended(const QString &difference); ///< of the record, once; empty if all was as recorded

private:
    /// An event of the record, and what the workstation has said in the same connection up to it.
    struct Step {
        LineRecord::Event event;
        int said = 0;
    };

    void go();
    [[nodiscard]] bool isDone(const Step &step) const;
    [[nodiscard]] qint64 dueUs() const;
    void play(const Step &step);
    void speak(const LineRecord::Event &event);
    void finish(const QString &difference);
    [[nodiscard]] QByteArray compared(const QByteArray &bytes) const;
    [[nodiscard]] QString place() const;

    Settings m_settings;
    QVector<Step> m_steps;
    QVector<QByteArray> m_speech; // the workstation's of each connection
    int m_at = 0;                 // the step to be done next
    qint64 m_nowUs = 0;
    qint64 m_doneUs = 0;  // when the step before it was
    int m_connection = 0; // connections so far
    int m_said = 0;       // bytes of the workstation in this one
    bool m_isOpen = false;
    bool m_called = false; // the step to be done is the far end's call, which waits for the answer
    bool m_ended = false;
};
