#include "tools/linesim/line/link_end.h"

#include "tools/linesim/console/event_log.h"
#include "tools/linesim/console/noise.h"
#include "tools/linesim/line/corva.h"
#include "tools/linesim/line/stream_cipher.h"

#include <QRegularExpression>

namespace
{
constexpr quint8 KeepAlive = 0x16;    // answered with itself
constexpr quint8 WindowFirst = 0xB0;  // B0..BF: low 4 bits, doubled
constexpr quint8 WindowAnswer = 0xBF; // also a listening workstation's poll
constexpr int LongestWindow = 30;
constexpr int ShortestKey = 2;

bool isControlCommand(const QString &text)
{
    static const QRegularExpression command(QStringLiteral("^@([CEH]|[Nn][0-9]*\\+?@?)$"));
    return command.match(text).hasMatch();
}
} // namespace

LinkEnd::LinkEnd(const Settings &settings, EventLog &log) : m_settings(settings), m_log(log) {}

LinkEnd::~LinkEnd() = default;

void LinkEnd::open()
{
    close();
    m_ledger = WindowLedger();
    m_phase = Settling;
    m_phaseMs = 0;
    m_keepAliveWaitMs = m_windowWaitMs = m_grantInMs = m_heldGrant = -1;
    m_sinceKeepAliveMs = 0;
    m_rulesSuspended = false;
}

void LinkEnd::close()
{
    m_phase = Closed;
    m_cipher.reset();
    m_theirSeed.reset();
}

void LinkEnd::tick()
{
    m_phaseMs += TickMs;
    switch (m_phase) {
    case Closed: return;
    case Settling:
        if (m_phaseMs < m_settings.settleMs)
            return;
        if (m_settings.key.size() < ShortestKey)
            return startTalking();
        m_ownSeed = m_settings.seed ? quint8(*m_settings.seed) : Noise::drawn().byte();
        m_phase = WaitingSeed;
        m_phaseMs = 0;
        put(QByteArray(1, char(m_ownSeed)));
        return m_theirSeed ? agreeKey() : void();
    case WaitingSeed:
        if (m_phaseMs < m_settings.seedWaitMs)
            return;
        m_log.event(QStringLiteral("cipher"), QStringLiteral("off, no seed came"));
        return startTalking();
    case Talking: return talkingTick();
    }
}

void LinkEnd::agreeKey()
{
    m_cipher = std::make_unique<StreamCipher>(m_settings.key, *m_theirSeed, m_ownSeed);
    m_log.event(QStringLiteral("cipher"), QStringLiteral("on, seeds sent %1 received %2")
                                              .arg(m_ownSeed, 2, 16, QLatin1Char('0'))
                                              .arg(*m_theirSeed, 2, 16, QLatin1Char('0')));
    startTalking();
}

void LinkEnd::startTalking()
{
    m_phase = Talking;
    m_phaseMs = 0;
    m_log.event(QStringLiteral("ready"));
    if (m_settings.silent)
        return;
    sendKeepAlive();
    if (m_settings.grants)
        grant(m_settings.window);
}

void LinkEnd::take(const QByteArray &bytes)
{
    QByteArray rest = bytes;
    const bool seedIsDue = m_settings.key.size() >= ShortestKey && m_phase != Talking && !m_theirSeed;
    if (seedIsDue && !rest.isEmpty()) {
        m_theirSeed = quint8(rest[0]);
        rest.remove(0, 1);
        if (m_phase == WaitingSeed)
            agreeKey();
    }
    QByteArray text;
    for (const char c : rest) {
        if (!takeSignal(quint8(c)))
            text += c;
    }
    if (!text.isEmpty())
        takeText(text);
}

// Under the cipher a text byte may look like a signal: only an answer that is awaited counts as one.
bool LinkEnd::takeSignal(quint8 byte)
{
    if (byte == KeepAlive && (!m_cipher || m_keepAliveWaitMs >= 0)) {
        takeKeepAlive();
        return true;
    }
    if (byte == WindowAnswer && (!m_cipher || m_windowWaitMs >= 0 || m_settings.serverPolls)) {
        takeWindowAnswer();
        return true;
    }
    return false;
}

void LinkEnd::takeKeepAlive()
{
    if (m_keepAliveWaitMs >= 0) {
        m_keepAliveWaitMs = -1;
        m_ledger.fenceAnswered();
        m_log.event(QStringLiteral("keep-alive"), QStringLiteral("answered"));
    } else if (!m_settings.silent && !m_rulesSuspended) {
        // After raw bytes this may be the answer to one among them: two ends would answer each other for
        // ever.
        m_log.event(QStringLiteral("keep-alive"), QStringLiteral("came"));
        put(QByteArray(1, char(KeepAlive)));
    }
}

void LinkEnd::takeWindowAnswer()
{
    if (m_windowWaitMs >= 0) {
        m_windowWaitMs = -1;
        m_log.event(QStringLiteral("window"), QStringLiteral("answered"));
        const int held = m_heldGrant;
        m_heldGrant = -1;
        if (held >= 0)
            grant(held);
        return;
    }
    if (!m_settings.serverPolls) {
        if (!m_rulesSuspended)
            m_log.violation(QStringLiteral("window answered that was not given"));
        return;
    }
    m_log.event(QStringLiteral("poll"));
    if (m_settings.silent)
        return;
    if (m_settings.grants && m_ledger.budget == 0)
        grant(m_settings.window);
    else if (m_keepAliveWaitMs < 0)
        sendKeepAlive();
}

void LinkEnd::takeText(const QByteArray &bytes)
{
    m_log.event(QStringLiteral("raw"), QString::fromLatin1(bytes.toHex()));
    const QString decoded = fromCorva(m_cipher ? m_cipher->fromWorkstation(bytes) : bytes);
    const QString breach = m_ledger.take(bytes.size(), isControlCommand(decoded));
    if (!breach.isEmpty())
        m_log.violation(breach);
    if (m_phase == Talking && m_settings.grants && !m_settings.silent && m_grantInMs < 0)
        grantAfter(m_settings.pauseMs);
    m_log.event(QStringLiteral("text"), QString::number(bytes.size()) + QLatin1Char(' ') + escaped(decoded));
    emit text(decoded);
}

void LinkEnd::grantAfter(int ms)
{
    if (ms > 0)
        m_grantInMs = ms;
    else
        grant(m_settings.window);
}

void LinkEnd::talkingTick()
{
    if (m_grantInMs >= 0) {
        m_grantInMs -= TickMs;
        if (m_grantInMs < 0 && m_settings.grants && !m_settings.silent)
            grant(m_settings.window);
    }
    m_sinceKeepAliveMs += TickMs;
    const bool due = m_settings.keepAliveMs > 0 && m_sinceKeepAliveMs >= m_settings.keepAliveMs;
    if (due && m_keepAliveWaitMs < 0 && !m_settings.silent)
        sendKeepAlive();
    checkAnswers();
}

void LinkEnd::checkAnswers()
{
    if (m_keepAliveWaitMs >= 0)
        m_keepAliveWaitMs += TickMs;
    if (m_windowWaitMs >= 0)
        m_windowWaitMs += TickMs;
    if (m_keepAliveWaitMs > m_settings.answerMs) {
        m_keepAliveWaitMs = -1;
        m_log.violation(QStringLiteral("keep-alive not answered in %1 ms").arg(m_settings.answerMs));
    }
    if (m_windowWaitMs > m_settings.answerMs) {
        m_windowWaitMs = -1;
        m_log.violation(QStringLiteral("window not answered in %1 ms").arg(m_settings.answerMs));
        if (m_settings.grants && !m_settings.silent)
            m_grantInMs = 0; // it may have been lost behind another one
    }
}

void LinkEnd::sendText(const QString &text)
{
    const QByteArray bytes = toCorva(text);
    put(m_cipher ? m_cipher->toWorkstation(bytes) : bytes);
}

void LinkEnd::sendRaw(const QByteArray &bytes)
{
    m_rulesSuspended = true;
    m_ledger.suspend();
    put(bytes);
}

void LinkEnd::sendKeepAlive()
{
    m_sinceKeepAliveMs = 0;
    if (m_keepAliveWaitMs < 0) { // of several in one read the workstation answers one
        m_keepAliveWaitMs = 0;
        m_ledger.fenceSent();
    }
    put(QByteArray(1, char(KeepAlive)));
}

void LinkEnd::grant(int characters)
{
    if (m_phase == Closed)
        return;
    if (m_windowWaitMs >= 0) {
        m_heldGrant = characters;
        return;
    }
    writeWindow(qBound(0, characters, LongestWindow) & ~1);
}

void LinkEnd::writeWindow(int characters)
{
    m_grantInMs = -1;
    m_windowWaitMs = 0;
    m_ledger.granted(characters);
    m_log.event(QStringLiteral("granted"), QString::number(characters));
    put(QByteArray(1, char(WindowFirst + characters / 2)));
}

void LinkEnd::sendFlowReport(int characters)
{
    const int shown = qBound(0, characters, 99);
    m_ledger.limited(shown / 2);
    m_log.event(QStringLiteral("flow"), QString::number(shown));
    // The workstation reads a flow report before it converts the bytes: the star is 2A here, not 05.
    put(QStringLiteral("@%1*").arg(shown, 2, 10, QLatin1Char('0')).toLatin1());
    if (m_keepAliveWaitMs < 0)
        sendKeepAlive();
}

void LinkEnd::setSilent(bool silent)
{
    m_settings.silent = silent;
    if (!silent && m_phase == Talking && m_keepAliveWaitMs < 0)
        sendKeepAlive();
}

void LinkEnd::setGrants(bool on)
{
    m_settings.grants = on;
    if (on && m_phase == Talking && m_ledger.budget == 0)
        grant(m_settings.window);
}

void LinkEnd::put(const QByteArray &bytes)
{
    if (m_phase != Closed)
        emit write(bytes);
}
