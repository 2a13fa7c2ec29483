#pragma once

#include "tools/linesim/console/event_log.h"

#include <QElapsedTimer>

/// Watches what the workstation sends to a perforator: the mode byte first, and again after each status; no
/// more codes than the room last told; no byte without a meaning. A status is to be told only once the one
/// before is answered, so that each answer says which room is in force.
class PerforatorJudge
{
public:
    /// Codes beyond the room told that are no breach. The workstation counts its piece in characters, and
    /// leaves five places for up to eight codes.
    static constexpr int Reserve = 3;

    PerforatorJudge(EventLog &log, int answerMs);

    void open(); ///< the workstation has opened the port
    void takeMode(char byte);
    void takeCode();
    void takeCommand();
    void takeUnknown(char byte);
    void tellRoom(int room);
    /// Bytes that make no sense went to the workstation: what it makes of them is not known, so until the
    /// next opening only the missing answer and the byte without a meaning are breaches.
    void tellGarbage();
    [[nodiscard]] bool mayTell() const; ///< the last status is answered
    void tick();                        ///< looks for an answer that is overdue

private:
    void expectMode(const char *instead);

    EventLog &m_log;
    int m_answerMs;
    int m_mode = -1;        ///< none before the first
    int m_room = 0;         ///< codes that may come
    int m_told = 0;         ///< room of the last status
    bool m_waiting = false; ///< for an answer
    bool m_overrun = false; ///< told once for each status
    bool m_garbled = false;
    QElapsedTimer m_since; ///< the unanswered status
};
