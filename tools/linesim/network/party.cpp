#include "tools/linesim/network/party.h"

#include "tools/linesim/console/event_log.h"

namespace
{
constexpr int CutAt = 9;             ///< characters of the first piece of a cut answerback
constexpr double CutPause = 3;       ///< seconds
constexpr double BehindTelegram = 4; ///< seconds to the answerback
const QString Stranger = QStringLiteral("999999 |ЧУЖОЙ");
const QString EndMark = QStringLiteral("НННН");
} // namespace

Party::Party(const Settings &settings, EventLog &log) : m_settings(settings), m_log(log) {}

void Party::begin(const Subscriber &who, const Habits &habits)
{
    m_who = who;
    m_habits = habits;
    m_agenda.clear();
    m_reached.clear();
    m_text.clear();
    m_asked = -1;
    m_answerbacks = 0;
    m_answering = m_muted = false;
    reach(Deed::Connected);
}

void Party::end()
{
    noteText();
    m_agenda.clear();
    m_asked = -1;
}

void Party::after(double seconds, const std::function<void()> &act)
{
    m_agenda.append({m_now + qint64(seconds * 1000), act});
}

void Party::tick()
{
    for (int i = 0; i < m_agenda.size();) {
        if (m_agenda.at(i).at > m_now) {
            ++i;
            continue;
        }
        m_agenda.takeAt(i).act();
        i = 0; // the deed may have changed the agenda
    }
    if (m_asked >= 0 && m_now - m_asked > m_settings.patience * 1000LL) {
        m_asked = -1;
        m_log.violation(QStringLiteral("no answerback in %1 s").arg(m_settings.patience));
    }
}

void Party::reach(Deed::When moment)
{
    if (m_reached.contains(moment))
        return;
    m_reached.insert(moment);
    for (const Deed &deed : qAsConst(m_habits.deeds))
        if (deed.when == moment)
            after(deed.seconds, [this, what = deed.what] { perform(what); });
}

void Party::perform(Deed::What what)
{
    switch (what) {
    case Deed::Ask: return ask();
    case Deed::HangUp: emit hangUp(); return;
    case Deed::OwnAnswerback: emit say(ownAnswerback(!m_text.isEmpty())); return;
    case Deed::Telegram: return sayTelegram(QStringLiteral("\r\n"));
    case Deed::Check: emit say(QStringLiteral("\r\n|ЗЦЗЦ ПРОВЕРЬТЕ СВОЙ АВТООТВЕТ НННН  \r\n")); return;
    case Deed::Crypt:
        m_asked = -1; // a question within the text is none
        emit say(QStringLiteral("\r\n КРПТ КРПТ КРПТ ЮЮЮЮЮЮЮЮЮ ЩЪ#*ЫЬ #* ЭЮШ НННН  \r\n"));
        return;
    case Deed::Say: emit say(QStringLiteral("\r\nЗДРАВСТВУЙТЕ\r\n")); return;
    }
}

void Party::ask()
{
    m_log.event(QStringLiteral("asked"), m_who.number);
    if (m_asked < 0 && !m_muted)
        m_asked = m_now;
    emit say(QStringLiteral("#*"));
}

void Party::hear(const SwitchItem &item)
{
    switch (item.kind) {
    case SwitchItem::Question: return hearQuestion();
    case SwitchItem::Answerback:
        m_log.event(QStringLiteral("answerback"), m_who.number);
        m_asked = -1;
        return reach(++m_answerbacks == 1 ? Deed::Answerback : Deed::LastAnswerback);
    case SwitchItem::Muted:
    case SwitchItem::Unmuted:
        m_muted = item.kind == SwitchItem::Muted;
        m_asked = -1;
        return m_log.event(m_muted ? QStringLiteral("muted") : QStringLiteral("unmuted"), m_who.number);
    case SwitchItem::Text: return hearText(item.text);
    case SwitchItem::Call:
    case SwitchItem::Number:
    case SwitchItem::Seize:
    case SwitchItem::HangUp:
    case SwitchItem::Unknown: return; // the line's business
    }
}

void Party::hearQuestion()
{
    const bool last = m_reached.contains(Deed::Text);
    m_log.event(last ? QStringLiteral("last question") : QStringLiteral("question"), m_who.number);
    noteText();
    reach(last ? Deed::LastQuestion : Deed::Question);
    if (!m_answering)
        answer(last ? m_habits.last : m_habits.first, last);
}

void Party::hearText(const QString &text)
{
    m_text += text;
    if (!m_text.trimmed().isEmpty())
        reach(Deed::Text);
    if (m_text.contains(EndMark))
        reach(Deed::End);
}

void Party::answer(Habits::Answer how, bool last)
{
    const double start = m_settings.answerSeconds;
    const QString right = ownAnswerback(last);
    switch (how) {
    case Habits::Right: return answerIn(start, right);
    case Habits::Wrong: return answerIn(start, foreignAnswerback(last));
    case Habits::Half: return answerIn(start, right.left(CutAt));
    case Habits::Cut: answerIn(start, right.left(CutAt)); return answerIn(start + CutPause, right.mid(CutAt));
    case Habits::Telegram:
        // A centre shifts and feeds a line before whatever it sends.
        after(start,
              [this] { sayTelegram(m_who.isCentre() ? QStringLiteral("#\r\n|") : QStringLiteral("\r\n")); });
        return answerIn(start + BehindTelegram, right);
    case Habits::None: return;
    }
}

void Party::answerIn(double seconds, const QString &text)
{
    m_answering = true; // another question meanwhile is the same one, repeated
    after(seconds, [this, text] {
        m_answering = false;
        m_log.event(QStringLiteral("answers"), m_who.number + QLatin1Char(' ') + escaped(text));
        emit say(text);
    });
}

void Party::noteText()
{
    if (!m_text.trimmed().isEmpty())
        m_log.event(QStringLiteral("got"), m_who.number + QLatin1Char(' ') + escaped(m_text.trimmed()));
    m_text.clear();
}

QString Party::ownAnswerback(bool last) const
{
    if (!m_who.isCentre())
        return NetworkForms::answerback(m_who.answerback);
    return last ? NetworkForms::longCentre(m_settings.centre) : NetworkForms::shortCentre(m_settings.centre);
}

QString Party::foreignAnswerback(bool last) const
{
    return NetworkForms::answerback(Stranger).leftJustified(ownAnswerback(last).size(), QLatin1Char(' '));
}

void Party::sayTelegram(const QString &before)
{
    m_log.event(QStringLiteral("telegram"), m_who.number);
    emit say(before + QStringLiteral("ЗЦЗЦ ") + m_settings.telegram + QStringLiteral("НННН  "));
}
