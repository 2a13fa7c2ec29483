#include "tools/linesim/centre/centre_desk.h"

#include "tools/linesim/centre/centre_texts.h"
#include "tools/linesim/console/event_log.h"

namespace
{
constexpr int RepeatSeconds = 20; // what a repetition may take until the terminal counts it

/// The quiet time, with a minute for what was on the line when it began, and some seconds at its end by which
/// the terminal's clock may be ahead.
bool isQuiet(const QTime &time)
{
    return time >= QTime(23, 57) || time < QTime(0, 0, 50);
}
} // namespace

CentreDesk::CentreDesk(const Settings &chosen, EventLog &log) : settings(chosen), m_log(log) {}

void CentreDesk::setTime(const QDateTime &now)
{
    if (m_now.isValid() && m_now.date() != now.date())
        turnDay();
    m_now = now;
    m_quiet = isQuietAt(now);
    if (m_renumberDue && now.time() >= QTime(0, 2) && m_channel != Closed)
        renumber();
}

/// The renumbering ends the quiet time, for the terminal too.
bool CentreDesk::isQuietAt(const QDateTime &moment) const
{
    constexpr int Hour = 3600;
    const bool isOver =
        m_renumbered.isValid() && moment >= m_renumbered && moment < m_renumbered.addSecs(Hour);
    return isQuiet(moment.time()) && !isOver;
}

void CentreDesk::turnDay()
{
    oldGot = got;
    oldSent = sent;
    got = sent = 0;
    m_sentToday.clear();
    m_renumberDue = true;
    m_log.event(QStringLiteral("day"), figures());
}

QString CentreDesk::figures() const
{
    return QStringLiteral("got %1 sent %2 old %3/%4").arg(got).arg(sent).arg(oldGot).arg(oldSent);
}

void CentreDesk::lineLost()
{
    if (m_channel != Closed) {
        m_log.event(QStringLiteral("channel"), QStringLiteral("lost"));
        m_lost = true;
    }
    setChannel(Closed);
    m_awaitedFigure = -1;
    m_stopsExpected = 0;
}

void CentreDesk::lineBack()
{
    if (!m_lost)
        return;
    m_lost = false;
    m_leftOpen = m_now; // the terminal learns of the closing only now
    askToOpen();
}

void CentreDesk::setChannel(Channel channel)
{
    if (m_channel == Open && channel != Open)
        m_leftOpen = m_now;
    m_channel = channel;
}

bool CentreDesk::mayTransmit() const
{
    return m_channel == Open || (m_leftOpen.isValid() && m_messageStart.isValid() &&
                                 m_messageStart <= m_leftOpen.addSecs(settings.crossingSeconds));
}

void CentreDesk::take(const TerminalMessage &message)
{
    switch (message.kind) {
    case TerminalMessage::ReceiptRequest: return takeRequest();
    case TerminalMessage::Receipt: return takeReceipt(message.number);
    case TerminalMessage::Stop: return takeStop();
    case TerminalMessage::Text: return m_log.event(QStringLiteral("text form"));
    case TerminalMessage::Confirmation: return takeConfirmation(message);
    case TerminalMessage::Telegram: return takeTelegram(message);
    case TerminalMessage::Broken: return m_log.event(QStringLiteral("broken"), escaped(message.text));
    case TerminalMessage::Foreign:
        if (m_talks)
            return m_log.event(QStringLiteral("talk"), escaped(message.text));
        return m_log.violation(QStringLiteral("text of no form ") + escaped(message.text));
    }
}

void CentreDesk::takeRequest()
{
    m_log.event(QStringLiteral("request"));
    if (m_renumberDue && m_channel != Closed)
        return renumber();
    if (m_receiptsToLose > 0) {
        --m_receiptsToLose;
        return m_log.event(QStringLiteral("lost"), QStringLiteral("receipt"));
    }
    answerRequest();
}

void CentreDesk::answerRequest()
{
    const QString name = QLatin1Char(' ') + settings.channelName;
    switch (m_channel) {
    case Closed: setChannel(Asked); return giveReceipt(QStringLiteral("ОТКРОЙТЕ СВЯЗЬ") + name);
    case Asked: return giveReceipt(QStringLiteral("ОТКРОЙТЕ СВЯЗЬ") + name);
    case Open: return giveReceipt(QStringLiteral("СВЯЗЬ ОТКРЫТА") + name);
    case Confirming: ++m_askedFor[m_confirmNumber]; return giveReceipt(QStringLiteral("ПОДТВЕРДИТЕ ПРИЕМ Р"));
    }
}

void CentreDesk::takeReceipt(int figure)
{
    m_log.event(QStringLiteral("receipt"), QString::number(figure));
    if (m_awaitedFigure >= 0) {
        if (figure != m_awaitedFigure)
            m_log.violation(
                QStringLiteral("receipt %1 for the old day of %2").arg(figure).arg(m_awaitedFigure));
        m_awaitedFigure = -1;
        return declareOpen();
    }
    // Till the renumbering the terminal may still count the old day.
    if (figure > sent && !m_renumberDue)
        m_log.violation(QStringLiteral("receipt %1 of %2 sent").arg(figure).arg(sent));
    if (m_channel != Asked)
        return;
    if (figure == sent % 1000)
        return declareOpen();
    m_log.event(QStringLiteral("behind"), QStringLiteral("%1 of %2").arg(figure).arg(sent));
    const bool underWay = m_repeated.isValid() && m_now < m_repeated.addSecs(RepeatSeconds);
    if (figure < sent && !underWay)
        repeatFrom(figure + 1);
}

void CentreDesk::takeStop()
{
    m_log.event(QStringLiteral("stop"));
    if (m_stopsExpected > 0) {
        --m_stopsExpected;
        return;
    }
    setChannel(Closed);
}

void CentreDesk::takeTelegram(const TerminalMessage &message)
{
    if (!m_toDistort.isEmpty() || m_toRefuse > 0)
        return takeRefused(message);
    judgeTelegram(message);
    if (message.number != (got + 1) % 1000)
        return;
    ++got;
    ++gotInAll;
    m_receiptOwed = true;
    keptTelegrams << message.text;
    m_log.event(QStringLiteral("telegram"),
                QStringLiteral("%1 %2").arg(message.number).arg(escaped(message.text)));
}

void CentreDesk::takeRefused(const TerminalMessage &message)
{
    m_log.event(QStringLiteral("lost"), QStringLiteral("telegram %1").arg(message.number));
    if (m_toRefuse > 0) {
        --m_toRefuse;
        return sendService(QStringLiteral("ТЕЛЕГРАММА НЕ ПРИНЯТА"));
    }
    const QString form = m_toDistort.takeFirst();
    if (form == QLatin1String("bare"))
        sendService(QStringLiteral("ИСКАЖЕНИЯ"));
    else if (form == QLatin1String("plural"))
        sendService(QStringLiteral("ИСКАЖЕНИЯ %1").arg(message.number));
    else
        sendService(QStringLiteral("ИСКАЖЕНИЕ %1 ВАШ %2").arg(message.number).arg(got));
}

void CentreDesk::judgeTelegram(const TerminalMessage &message)
{
    const QString name = QStringLiteral("telegram %1 ").arg(message.number);
    if (!mayTransmit())
        m_log.violation(name + QStringLiteral("while the channel is not open"));
    if (m_receiptOwed)
        m_log.violation(name + QStringLiteral("before the receipt of the one before"));
    if (message.number != (got + 1) % 1000)
        m_log.violation(name + QStringLiteral("instead of %1").arg((got + 1) % 1000));
    if (m_messageStart.isValid() ? isQuietAt(m_messageStart) : m_quiet)
        m_log.violation(name + QStringLiteral("in the quiet time"));
    if (findOutOfRegister(message.text) >= 0)
        m_log.violation(name + QStringLiteral("out of its register"));
}

void CentreDesk::takeConfirmation(const TerminalMessage &message)
{
    m_log.event(QStringLiteral("confirmation"),
                QStringLiteral("%1 %2").arg(message.number).arg(message.text));
    // It may answer an earlier asking, from in front of a loss of the line.
    if (m_askedFor.value(message.number) <= 0)
        return m_log.violation(QStringLiteral("confirmation %1 that was not asked for").arg(message.number));
    --m_askedFor[message.number];
    if (message.number != m_confirmNumber)
        return;
    m_confirmNumber = -1;
    if (m_channel == Confirming)
        declareOpen();
}
