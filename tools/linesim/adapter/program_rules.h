#pragma once

#include <QtGlobal>

class EventLog;

/// What an adapter may expect of the program at its port beyond its credit: signs of life, the right line
/// mode, the version asked only when it is due, a goodbye. It knows no port: the owner tells what happens.
class ProgramRules
{
public:
    enum Phase {
        Closed,
        Opened,   ///< nothing said yet
        Settling, ///< has chosen the mode; reads nothing that follows, but for the version
        Talking   ///< answers statuses
    };

    ProgramRules(int expectedMode, int answerMs, EventLog &log);

    void opened(qint64 nowUs);
    void closed(qint64 nowUs); ///< by the program
    void lost();               ///< the adapter was taken away
    void spoke(qint64 nowUs);  ///< the adapter has sent something
    void tookMode(quint8 mode);
    void tookVersionRequest();
    /// A byte that is no goodbye; there is none behind one, as the port is to be closed then.
    void tookByte();
    void tookGoodbye() { m_goodbye = true; }
    /// Judges a status that has waited so long for its answer.
    void checkAnswer(qint64 waitedUs, qint64 nowUs);

    void allowVersion() { m_versionDue = true; }
    void allowKill() { m_killAllowed = true; } ///< from now on a close needs no goodbye
    [[nodiscard]] bool mayBeKilled() const { return m_killAllowed; }

    [[nodiscard]] Phase phase() const { return m_phase; }
    /// The mode that belongs to a speed; 0 for any other than 50, 100, 200.
    [[nodiscard]] static quint8 modeOf(int baud);
    [[nodiscard]] static bool isMode(quint8 byte);

    static constexpr int AnyMode = -1;

private:
    [[nodiscard]] bool wasSilent(qint64 nowUs) const;

    EventLog &m_log;
    int m_expectedMode;
    qint64 m_answerUs;
    Phase m_phase = Closed;
    quint8 m_mode = 0;
    bool m_versionDue = true;
    bool m_goodbye = false;
    bool m_talkedOn = false; // behind the goodbye
    bool m_killAllowed = false;
    bool m_blamed = false; // for the answer that is missing now
    qint64 m_openedUs = 0;
    qint64 m_spokeUs = -1; // -1 not yet
    qint64 m_longestSilenceUs = 0;
};
