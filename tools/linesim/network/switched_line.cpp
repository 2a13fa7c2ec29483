#include "tools/linesim/network/switched_line.h"

#include "tools/linesim/console/event_log.h"

namespace
{
constexpr double Acceptance = 1;        ///< seconds from a number or a seizure to the exchange's word
constexpr qint64 IdleBeforeCall = 3000; ///< ms; the terminal may say its hang-up more than once
constexpr int RefusalSeconds = 5;       ///< a terminal that does not hang up behind a refusal is disconnected

Subscriber stranger()
{
    return {QStringLiteral("000000"), QStringLiteral("000000 |ПОСТОРОННИЙ"), {}, 0};
}
} // namespace

SwitchedLine::SwitchedLine(const Settings &settings, EventLog &log)
    : m_settings(settings), m_log(log), m_party(settings.party, log)
{
    connect(&m_party, &Party::say, this, [this](const QString &text) {
        m_lastSound = m_now.toMSecsSinceEpoch();
        emit send(text);
    });
    connect(&m_party, &Party::hangUp, this, &SwitchedLine::hangUp);
}

Habits SwitchedLine::callersHabits()
{
    QString wrong;
    return *parseHabits(QStringLiteral("ask@connect+2 ao@answerback+1 telegram@answerback+3 "
                                       "ask@answerback+6 hang@last-answerback+2"),
                        wrong);
}

void SwitchedLine::setTime(const QDateTime &now)
{
    m_now = now;
    m_party.setTime(now.toMSecsSinceEpoch());
}

void SwitchedLine::enter(State state)
{
    m_state = state;
    m_since = m_lastSound = m_now.toMSecsSinceEpoch();
    m_dueAt = -1;
    m_digits.clear();
}

void SwitchedLine::after(double seconds, void (SwitchedLine::*act)())
{
    m_dueAt = m_now.toMSecsSinceEpoch() + qint64(seconds * 1000);
    m_due = act;
}

void SwitchedLine::lineLost()
{
    m_remains = m_remains || m_state == Up;
    m_lastSound = m_now.toMSecsSinceEpoch();
    if (m_state == Up)
        disconnectParty(QStringLiteral("loss of the link"));
    enter(Idle);
}

void SwitchedLine::take(const SwitchItem &item)
{
    switch (item.kind) {
    case SwitchItem::Call: return takeCall();
    case SwitchItem::Number: return takeNumber(item.text);
    case SwitchItem::Seize: return takeSeizure();
    case SwitchItem::HangUp: return takeHangUp();
    case SwitchItem::Unknown: return m_log.violation(QStringLiteral("no command ") + escaped(item.text));
    case SwitchItem::Question:
    case SwitchItem::Answerback:
    case SwitchItem::Muted:
    case SwitchItem::Unmuted:
    case SwitchItem::Text: return takeSpeech(item);
    }
}

void SwitchedLine::takeCall()
{
    m_byProgram = false;
    switch (m_state) {
    case Idle: return enter(Seized);
    case Ringing: m_glare = true; return m_log.event(QStringLiteral("glare"));
    case Up: return m_log.violation(QStringLiteral("dialling while connected"));
    case Seized:
    case Dialled:
    case Refused:
    case Releasing: return m_log.violation(QStringLiteral("dialling without a hang-up"));
    }
}

void SwitchedLine::takeNumber(const QString &number)
{
    if (m_state != Seized) {
        if (!m_glare) // its call has been judged already
            m_log.event(QStringLiteral("number ignored"), number);
        m_glare = false;
        return;
    }
    m_log.event(QStringLiteral("dialled"), number);
    enter(Dialled);
    if (number.isEmpty())
        m_log.violation(QStringLiteral("no number"));
    Subscriber *called = find(number);
    m_called = called ? *called : Subscriber();
    m_habits = called ? called->nextHabits() : Habits();
    if (!called)
        m_habits.result = QStringLiteral("wrong");
    if (m_habits.result == QStringLiteral("collide")) {
        m_log.event(QStringLiteral("collision"), number);
        return ring({stranger(), callersHabits()});
    }
    if (m_byProgram)
        return after(m_habits.seconds, &SwitchedLine::giveResult);
    after(Acceptance, &SwitchedLine::sayAccepted);
}

Subscriber *SwitchedLine::find(const QString &number)
{
    for (Subscriber &party : m_settings.subscribers)
        if (party.number == number)
            return &party;
    return nullptr;
}

void SwitchedLine::takeSeizure()
{
    if (m_state == Ringing) {
        if (m_settings.textSignals)
            emit send(QStringLiteral("=>ВЫЗОВ ПРИНЯТ\r\n"));
        return connectParty(false);
    }
    if (m_state != Idle)
        return m_log.violation(QStringLiteral("seizure of a busy line"));
    m_byProgram = true;
    enter(Seized);
    after(Acceptance, &SwitchedLine::sayGoAhead);
}

void SwitchedLine::sayGoAhead()
{
    emit send(QStringLiteral("\r\n&GA #"));
}

void SwitchedLine::sayAccepted()
{
    emit send(QStringLiteral("@E"));
    after(m_habits.seconds, &SwitchedLine::giveResult);
}

void SwitchedLine::giveResult()
{
    const QString &word = m_habits.result;
    if (word.isEmpty())
        return giveSuccess();
    m_log.event(QStringLiteral("result"), m_called.number + QLatin1Char(' ') + word);
    if (word == QStringLiteral("nothing"))
        return;
    if (word == QStringLiteral("drop"))
        return hangUp();
    const QString signal = NetworkForms::refusalSignal(word);
    enter(Refused);
    emit send(signal.isEmpty() ? NetworkForms::result(word) + QStringLiteral("\r\n") : signal);
    after(RefusalSeconds, &SwitchedLine::hangUp);
}

void SwitchedLine::giveSuccess()
{
    const QString sign = m_habits.sign.isEmpty() ? m_settings.sign : m_habits.sign;
    if (sign == QStringLiteral("stamp"))
        emit send(NetworkForms::timeStamp(m_settings.stampFormat, m_now));
    else if (sign == QStringLiteral("df"))
        emit send(QStringLiteral("\r\n&DF#"));
    else if (sign == QStringLiteral("ask"))
        emit send(QStringLiteral("\r\n"));
    connectParty(true);
    if (sign == QStringLiteral("ask"))
        m_party.perform(Deed::Ask);
}

void SwitchedLine::connectParty(bool terminalCalls)
{
    enter(Up);
    ++connections;
    m_log.event(QStringLiteral("up"),
                (terminalCalls ? QStringLiteral("to ") : QStringLiteral("from ")) + m_called.number);
    m_party.begin(m_called, m_habits);
}

void SwitchedLine::call(const QString &number, const Habits &habits)
{
    const Subscriber *known = find(number);
    m_callers.append({known ? *known : Subscriber{number, number, {}, 0}, habits});
}

void SwitchedLine::ring(const Caller &caller)
{
    m_called = caller.who;
    m_habits = caller.habits;
    enter(Ringing);
    m_glare = false;
    m_log.event(QStringLiteral("calls"), m_called.number);
    emit send(m_settings.textSignals ? QStringLiteral("!>ВЫЗОВ\r\n") : QStringLiteral("@C"));
}

/// A number that comes digit by digit is complete after a pause.
void SwitchedLine::takeDigits()
{
    if (m_digits.isEmpty() || m_now.toMSecsSinceEpoch() - m_lastSound <= m_settings.digitPauseMs)
        return;
    const QString number = m_digits.remove(QLatin1Char('#'));
    takeNumber(number);
}

void SwitchedLine::takeSpeech(const SwitchItem &item)
{
    if (m_state == Seized && m_byProgram && m_settings.digitPauseMs > 0) {
        m_digits += item.text;
        m_lastSound = m_now.toMSecsSinceEpoch();
        return;
    }
    if (m_state == Seized && m_byProgram && item.text.startsWith(QLatin1Char('#')))
        return takeNumber(item.text.mid(1));
    if (m_state == Up) {
        m_lastSound = m_now.toMSecsSinceEpoch();
        return m_party.hear(item);
    }
    if (m_state == Idle && m_remains) {
        m_lastSound = m_now.toMSecsSinceEpoch();
        return m_log.event(QStringLiteral("remains"), escaped(item.text));
    }
    if (m_state != Releasing) // what was under way as this end hung up is no breach
        m_log.violation(QStringLiteral("text without a connection: ") + escaped(item.text));
}

void SwitchedLine::takeHangUp()
{
    const State was = m_state;
    m_remains = false;
    if (was == Idle)
        return m_log.event(QStringLiteral("hang-up"), QStringLiteral("again"));
    if (was == Up)
        disconnectParty(QStringLiteral("the terminal"));
    else
        m_log.event(QStringLiteral("hang-up"));
    if (was != Releasing)
        sayHangUp();
    enter(Idle);
}

void SwitchedLine::hangUp()
{
    if (m_state == Idle || m_state == Releasing)
        return m_log.event(QStringLiteral("hang-up"), QStringLiteral("nothing to end"));
    if (m_state == Up)
        disconnectParty(QStringLiteral("the network"));
    else
        m_log.event(QStringLiteral("disconnects"), m_called.number);
    sayHangUp();
    enter(Releasing);
}

void SwitchedLine::sayHangUp()
{
    emit send(m_settings.textSignals ? QStringLiteral("\r\n!>ОТБОЙ\r\n") : QStringLiteral("@H"));
}

void SwitchedLine::disconnectParty(const QString &by)
{
    m_party.end();
    m_log.event(QStringLiteral("down"), m_called.number + QStringLiteral(" by ") + by);
}

void SwitchedLine::tick()
{
    if (m_dueAt >= 0 && m_now.toMSecsSinceEpoch() >= m_dueAt) {
        m_dueAt = -1;
        (this->*m_due)();
    }
    takeDigits();
    if (m_state == Up)
        m_party.tick();
    if (m_state == Idle && !isOccupied() && !m_callers.isEmpty() &&
        m_now.toMSecsSinceEpoch() - m_since > IdleBeforeCall)
        ring(m_callers.takeFirst());
    checkPatience();
}

/// What remains of a connection that the loss of the link has ended still occupies the line, up to its
/// hang-up; a terminal that has forgotten all is silent.
bool SwitchedLine::isOccupied() const
{
    return m_remains && m_now.toMSecsSinceEpoch() - m_lastSound <= m_settings.idleSeconds * 1000LL;
}

void SwitchedLine::checkPatience()
{
    const qint64 now = m_now.toMSecsSinceEpoch();
    const auto over = [now](qint64 since, int seconds) { return now - since > seconds * 1000LL; };
    switch (m_state) {
    case Idle:
    case Refused: return;
    case Seized:
        if (over(m_since, m_settings.patience))
            break;
        return;
    case Dialled:
        if (over(m_since, m_settings.noResultSeconds))
            break;
        return;
    case Ringing:
        if (!over(m_since, m_settings.patience))
            return;
        m_log.violation(QStringLiteral("call not accepted"));
        return hangUp();
    case Up:
        if (over(m_lastSound, m_settings.idleSeconds))
            break;
        return;
    case Releasing:
        if (!over(m_since, m_settings.patience))
            return;
        m_log.violation(QStringLiteral("no hang-up"));
        return enter(Idle);
    }
    m_log.violation(
        QStringLiteral("no hang-up in %1")
            .arg(m_state == Up ? QStringLiteral("a silent connection") : QStringLiteral("a call")));
    hangUp();
}
