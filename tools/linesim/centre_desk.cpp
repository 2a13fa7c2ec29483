#include "tools/linesim/centre_desk.h"

#include "tools/linesim/event_log.h"

namespace
{
constexpr int CrossingSeconds = 5; // what the terminal begins till then may have crossed the closing

/// The quiet time, with a minute for what was on the line when it began.
bool isQuiet(const QTime &time)
{
    return time >= QTime(23, 57) || time < QTime(0, 1);
}

QString nnn(int n)
{
    return QStringLiteral("%1").arg(n % 1000, 3, 10, QLatin1Char('0'));
}
} // namespace

CentreDesk::CentreDesk(const Settings &settings, EventLog &log) : m_settings(settings), m_log(log) {}

void CentreDesk::setTime(const QDateTime &now)
{
    if (m_now.isValid() && m_now.date() != now.date())
        turnDay();
    m_now = now;
    m_quiet = isQuiet(now.time());
    if (m_renumberDue && now.time() >= QTime(0, 2) && m_channel != Closed)
        renumber();
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

QString CentreDesk::stamp() const
{
    if (!m_settings.stamps)
        return QString();
    return m_now.addSecs(60 * m_settings.clockOffMinutes).toString(QStringLiteral("hhmm"));
}

void CentreDesk::sendService(const QString &text)
{
    m_log.event(QStringLiteral("service"), text);
    emit send(QStringLiteral("\r\nЗЦЗЦ ") + text + QStringLiteral(" НННН  ") + stamp() +
              QStringLiteral("\r\n"));
}

void CentreDesk::lineLost()
{
    if (m_channel != Closed)
        m_log.event(QStringLiteral("channel"), QStringLiteral("lost"));
    setChannel(Closed);
    m_confirmNumber = -1;
    m_awaitedFigure = -1;
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
                                 m_messageStart <= m_leftOpen.addSecs(CrossingSeconds));
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
    giveReceipt();
}

void CentreDesk::giveReceipt()
{
    QString words;
    switch (m_channel) {
    case Closed:
        if (m_settings.opensByItself)
            setChannel(Asked);
        words = m_settings.opensByItself ? QStringLiteral("ОТКРОЙТЕ СВЯЗЬ") : QStringLiteral("СВЯЗЬ ЗАКРЫТА");
        break;
    case Asked: words = QStringLiteral("ОТКРОЙТЕ СВЯЗЬ"); break;
    case Open: words = QStringLiteral("СВЯЗЬ ОТКРЫТА"); break;
    case Confirming: words = QStringLiteral("ПОДТВЕРДИТЕ ПРИЕМ Р"); break;
    }
    m_receiptOwed = false;
    QString text = QStringLiteral("ВАШ %1 НАШ %2 ПОСЛЕДНИЕ %3").arg(nnn(got), nnn(sent), words);
    if (m_channel != Confirming)
        text += QLatin1Char(' ') + m_settings.channelName;
    sendService(text);
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
    if (m_channel != Asked)
        return;
    if (figure == sent % 1000)
        return declareOpen();
    m_log.event(QStringLiteral("behind"), QStringLiteral("%1 of %2").arg(figure).arg(sent));
    if (figure < sent)
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
    if (m_toDistort > 0) {
        --m_toDistort;
        m_log.event(QStringLiteral("lost"), QStringLiteral("telegram %1").arg(message.number));
        return sendService(QStringLiteral("ИСКАЖЕНИЕ %1 ВАШ %2").arg(message.number).arg(got));
    }
    if (!mayTransmit())
        m_log.violation(QStringLiteral("telegram %1 while the channel is not open").arg(message.number));
    if (m_receiptOwed)
        m_log.violation(
            QStringLiteral("telegram %1 before the receipt of the one before").arg(message.number));
    if (message.number != (got + 1) % 1000)
        return m_log.violation(
            QStringLiteral("telegram %1 instead of %2").arg(message.number).arg((got + 1) % 1000));
    if (m_quiet)
        m_log.violation(QStringLiteral("telegram %1 in the quiet time").arg(message.number));
    ++got;
    ++gotInAll;
    m_receiptOwed = true;
    keptTelegrams << message.text;
    m_log.event(QStringLiteral("telegram"),
                QStringLiteral("%1 %2").arg(message.number).arg(escaped(message.text)));
}

void CentreDesk::takeConfirmation(const TerminalMessage &message)
{
    m_log.event(QStringLiteral("confirmation"),
                QStringLiteral("%1 %2").arg(message.number).arg(message.text));
    if (m_channel != Confirming || message.number != m_confirmNumber)
        return m_log.violation(QStringLiteral("confirmation %1 that was not asked for").arg(message.number));
    m_confirmNumber = -1;
    declareOpen();
}

void CentreDesk::askToOpen()
{
    setChannel(Asked);
    sendService(QStringLiteral("ОТКРОЙТЕ СВЯЗЬ ") + m_settings.channelName);
}

void CentreDesk::declareOpen()
{
    setChannel(Open);
    sendService(QStringLiteral("СВЯЗЬ ОТКРЫТА"));
}

void CentreDesk::closeChannel()
{
    setChannel(Closed);
    sendService(QStringLiteral("СВЯЗЬ ЗАКРЫТА"));
}

void CentreDesk::askForReceiptRequest()
{
    sendService(QStringLiteral("ЗАПРОСИТЕ КВИТАНЦИЮ"));
}

void CentreDesk::sendTelegram(const QString &text)
{
    ++sent;
    ++sentInAll;
    m_sentToday << text;
    if (m_wrongNumbers > 0) {
        --m_wrongNumbers;
        ++m_stopsExpected;
        sendNumbered(sent + 1, text);
    }
    sendNumbered(sent, text);
}

void CentreDesk::sendNumbered(int number, const QString &text)
{
    QString begin = QStringLiteral("\r\nЗЦЗЦ ") + nnn(number) + QLatin1Char(' ');
    if (m_toInterrupt > 0) {
        --m_toInterrupt;
        begin += text.leftRef(text.size() / 2) + begin;
    }
    m_log.event(QStringLiteral("sent"), QStringLiteral("%1 %2").arg(number).arg(escaped(text)));
    emit send(begin + text + QStringLiteral("\r\nНННН  ") + stamp() + QStringLiteral("\r\n") +
              m_settings.note);
}

void CentreDesk::sendCategory(const QString &text)
{
    sendService(QStringLiteral("ПЕРЕДАЕТСЯ КАТЕГОРИЙНАЯ ВНЕ ОЧЕРЕДИ"));
    sendTelegram(text);
}

void CentreDesk::sendR(const QString &text)
{
    sendTelegram(text);
    setChannel(Confirming);
    m_confirmNumber = sent % 1000;
    sendService(QStringLiteral("ПОДТВЕРДИТЕ ПРИЕМ Р ") + nnn(sent));
}

void CentreDesk::repeatFrom(int number)
{
    for (int i = qMax(number, 1); i <= m_sentToday.size(); ++i)
        sendNumbered(i, m_sentToday.at(i - 1));
    sendService(QStringLiteral("ПОВТОР ОКОНЧЕН"));
}

void CentreDesk::renumber()
{
    m_renumberDue = false;
    m_awaitedFigure = oldSent % 1000;
    sendService(QString::asprintf("СМЕНА НУМЕРАЦИИ ПРИН %04d ПЕР %04d ОТКРОЙТЕ СВЯЗЬ", oldGot, oldSent));
}
