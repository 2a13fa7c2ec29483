#pragma once

#include "tools/linesim/line/window_ledger.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>

class EventLog;
class StreamCipher;

/// The byte rules of the link as its far end sees them, for one connection after another: keep-alive,
/// windows, key agreement, flow reports, text. It knows no socket and no clock: bytes go in by take() and
/// out by the signal write, and the owner calls tick() every TickMs. Breaches go to the log.
class LinkEnd : public QObject
{
    Q_OBJECT

public:
    static constexpr int TickMs = 50;

    struct Settings {
        QByteArray key;           ///< cipher key of 2 bytes and more; shorter ones leave the link plain
        std::optional<int> seed;  ///< this end's seed; without it one is drawn
        int window = 30;          ///< characters of each window given by itself, 0..30, even
        int keepAliveMs = 5000;   ///< between this end's keep-alives; 0 sends none
        int pauseMs = 100;        ///< from text taken to the next window
        int settleMs = 500;       ///< from the connection to the first byte; the workstation pauses a second
        int seedWaitMs = 2500;    ///< for the workstation's seed
        int answerMs = 3000;      ///< for the answer to a keep-alive or a window
        bool silent = false;      ///< neither answers nor sends by itself
        bool grants = true;       ///< gives windows by itself
        bool serverPolls = false; ///< the workstation is the listening end, which polls with BF
    };

    LinkEnd(const Settings &settings, EventLog &log);
    ~LinkEnd() override;

    void open();                        ///< a connection is there
    void close();                       ///< it is gone
    void take(const QByteArray &bytes); ///< as read at once: to the cipher each call is a block
    void tick();                        ///< every TickMs

    void sendText(const QString &text);    ///< in CORVA, ciphered if agreed, as one block
    void sendRaw(const QByteArray &bytes); ///< as they are; the rules are not judged after it
    void sendKeepAlive();
    /// Gives a window of \a characters, 0..30; an odd number is rounded down. Held back while the one
    /// before is unanswered, as of two in a row the workstation sees one.
    void grant(int characters);
    void sendFlowReport(int characters); ///< "@nn*", 0..99
    void setSilent(bool silent);         ///< as Settings::silent, from now on
    void setGrants(bool on);             ///< as Settings::grants

    [[nodiscard]] bool isReady() const { return m_phase == Talking; } ///< past the key agreement

signals:
    void write(const QByteArray &bytes); ///< the owner puts them on the connection at once
    void text(const QString &text);      ///< from the line, decoded

private:
    enum Phase { Closed, Settling, WaitingSeed, Talking };

    void agreeKey();
    void startTalking();
    [[nodiscard]] bool takeSignal(quint8 byte);
    void takeKeepAlive();
    void takeWindowAnswer();
    void takeText(const QByteArray &bytes);
    void writeWindow(int characters);
    void grantAfter(int ms);
    void talkingTick();
    void checkAnswers();
    void put(const QByteArray &bytes);

    Settings m_settings;
    EventLog &m_log;
    std::unique_ptr<StreamCipher> m_cipher;
    WindowLedger m_ledger;
    Phase m_phase = Closed;
    quint8 m_ownSeed = 0;
    std::optional<quint8> m_theirSeed; // may come before this end's own has gone
    int m_phaseMs = 0;                 // since the phase began
    int m_keepAliveWaitMs = -1;        // since an unanswered keep-alive; -1 none
    int m_windowWaitMs = -1;           // since an unanswered window; -1 none
    int m_sinceKeepAliveMs = 0;
    int m_grantInMs = -1; // until the next window by itself; -1 none due
    int m_heldGrant = -1; // waits for the answer to the one before; -1 none
    bool m_rulesSuspended = false;
};
