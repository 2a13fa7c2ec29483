#pragma once

#include "tools/linesim/network/party.h"

/// The exchange's end of one line of a switched-channel network: it takes calls of the terminal, puts them
/// through or refuses them, lets others call it, and judges the terminal by the rules of the line. It knows
/// no socket and no clock: items go in by take(), text comes out by the signal send, the owner tells the
/// time.
class SwitchedLine : public QObject
{
    Q_OBJECT

public:
    enum State {
        Idle,
        Seized,   ///< the terminal has taken the line; its number is due
        Dialled,  ///< its number has come; the result is due
        Refused,  ///< the result was a refusal; its hang-up is due
        Ringing,  ///< somebody calls it; its acceptance is due
        Up,       ///< a connection
        Releasing ///< this end has hung up; its hang-up is due
    };

    struct Settings {
        QVector<Subscriber> subscribers;
        Party::Settings party;
        QString stampFormat = QStringLiteral("<> #hh.mm");
        QString sign = QStringLiteral("stamp"); ///< how success shows, if a party's habits do not tell
        bool textSignals = false;  ///< "!>ВЫЗОВ" in place of "@C", "!>ОТБОЙ" in place of "@H"
        int patience = 30;         ///< seconds for what the terminal owes
        int idleSeconds = 120;     ///< the longest silence in a connection
        int noResultSeconds = 100; ///< the longest wait for a result
        int digitPauseMs = 0;      ///< ends a number that comes digit by digit; 0 takes it as it comes
    };

    SwitchedLine(const Settings &settings, EventLog &log);

    void setTime(const QDateTime &now);
    void take(const SwitchItem &item);
    void tick();     ///< does what is due
    void lineLost(); ///< the terminal is gone

    /// Somebody calls the terminal as soon as the line is free; \a habits tell how that goes.
    void call(const QString &number, const Habits &habits);
    void hangUp(); ///< as the party or the network
    [[nodiscard]] Party &party() { return m_party; }
    [[nodiscard]] State state() const { return m_state; }

    /// The way a call to the terminal goes if nothing else is told.
    [[nodiscard]] static Habits callersHabits();

    int connections = 0; ///< so far, either way

signals:
    void send(const QString &text);

private:
    struct Caller {
        Subscriber who;
        Habits habits;
    };

    void enter(State state);
    void after(double seconds, void (SwitchedLine::*act)());
    void takeCall();
    void takeNumber(const QString &number);
    void takeSeizure();
    void takeHangUp();
    void takeSpeech(const SwitchItem &item);
    void takeDigits();
    void sayGoAhead();
    void sayAccepted();
    void giveResult();
    void giveSuccess();
    void ring(const Caller &caller);
    void connectParty(bool terminalCalls);
    void sayHangUp();
    void disconnectParty(const QString &by);
    [[nodiscard]] bool isOccupied() const;
    void checkPatience();
    [[nodiscard]] Subscriber *find(const QString &number);

    Settings m_settings;
    EventLog &m_log;
    Party m_party;
    QDateTime m_now;
    State m_state = Idle;
    qint64 m_since = 0;     // ms, of the state
    qint64 m_lastSound = 0; // ms, of the connection or of its remains
    qint64 m_dueAt = -1;    // ms, of m_due; -1 never
    void (SwitchedLine::*m_due)() = nullptr;
    bool m_byProgram = false;  // the number comes as text behind the go-ahead
    QString m_digits;          // of it, so far
    bool m_remains = false;    // text of the connection that was lost with the link may still come
    bool m_glare = false;      // the terminal dialled while it was called: its dialling is void
    QVector<Caller> m_callers; // who wait for a free line
    Subscriber m_called;
    Habits m_habits;
};
