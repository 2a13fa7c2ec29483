// What the clerk says.

#include "tools/linesim/centre/centre_desk.h"
#include "tools/linesim/centre/centre_texts.h"
#include "tools/linesim/console/event_log.h"

namespace
{
QString nnn(int n)
{
    return QStringLiteral("%1").arg(n % 1000, 3, 10, QLatin1Char('0'));
}
} // namespace

/// All that goes to the line.
void CentreDesk::say(const QString &text)
{
    emit send(settings.registers ? withRegisterMarks(text) : text);
}

QString CentreDesk::stamp() const
{
    if (!settings.stamps)
        return QString();
    return m_now.addSecs(60LL * settings.clockOffMinutes).toString(QStringLiteral("hhmm"));
}

void CentreDesk::sendService(const QString &text)
{
    m_log.event(QStringLiteral("service"), text);
    say(QStringLiteral("\r\nЗЦЗЦ ") + text + QStringLiteral(" НННН  ") + stamp() + QStringLiteral("\r\n"));
}

void CentreDesk::giveReceipt(const QString &words)
{
    m_receiptOwed = false;
    sendService(QStringLiteral("ВАШ %1 НАШ %2 ПОСЛЕДНИЕ %3").arg(nnn(got), nnn(sent), words));
}

void CentreDesk::askToOpen()
{
    setChannel(Asked);
    sendService(QStringLiteral("ОТКРОЙТЕ СВЯЗЬ ") + settings.channelName);
}

void CentreDesk::declareOpen()
{
    setChannel(Open);
    sendService(QStringLiteral("СВЯЗЬ ОТКРЫТА"));
    if (m_confirmNumber >= 0) // the line was lost in between: the confirmation is still due
        askToConfirm();
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
    const int form = settings.header == 4 ? sent % 3 + 1 : settings.header;
    const QString whole = centreHeader(form, m_now, sent) + text;
    m_sentToday << whole;
    if (m_wrongNumbers > 0) {
        --m_wrongNumbers;
        ++m_stopsExpected;
        sendNumbered(sent + 1, whole);
    }
    sendNumbered(sent, whole);
    if (m_toRepeat > 0) {
        --m_toRepeat;
        ++m_stopsExpected;
        sendNumbered(sent, whole);
    }
}

void CentreDesk::sendNumbered(int number, const QString &text)
{
    QString begin = QStringLiteral("\r\nЗЦЗЦ ") + nnn(number) + QLatin1Char(' ');
    if (m_toInterrupt > 0) {
        --m_toInterrupt;
        begin += text.leftRef(text.size() / 2) + begin;
    }
    m_log.event(QStringLiteral("sent"), QStringLiteral("%1 %2").arg(number).arg(escaped(text)));
    say(begin + text + QStringLiteral("\r\nНННН  ") + stamp() + QStringLiteral("\r\n") + settings.note);
}

void CentreDesk::sendCategory(const QString &text)
{
    sendService(QStringLiteral("ПЕРЕДАЕТСЯ КАТЕГОРИЙНАЯ ВНЕ ОЧЕРЕДИ"));
    sendTelegram(text);
}

void CentreDesk::sendR(const QString &text)
{
    sendTelegram(text);
    m_confirmNumber = sent % 1000;
    askToConfirm();
}

void CentreDesk::askToConfirm()
{
    if (m_confirmNumber < 0)
        m_confirmNumber = sent % 1000;
    setChannel(Confirming);
    ++m_askedFor[m_confirmNumber];
    sendService(QStringLiteral("ПОДТВЕРДИТЕ ПРИЕМ Р ") + nnn(m_confirmNumber));
}

void CentreDesk::acceptLast()
{
    m_receiptOwed = false;
    sendService(QStringLiteral("Р %1 ПРИНЯТА").arg(got));
}

void CentreDesk::waitForOpening()
{
    setChannel(Asked);
    sendService(QStringLiteral("ЖДУ ОТКРЫТИЯ СВЯЗИ"));
}

void CentreDesk::referElsewhere(int count)
{
    const int first = sent + 1;
    for (int i = 0; i < count; ++i)
        m_sentToday << QString(); // never asked for again
    sent += count;
    sendService(QStringLiteral("ОБРАЩАЙТЕСЬ В КСС ЗА ТЛГ %1-%2").arg(nnn(first), nnn(sent)));
}

void CentreDesk::distort(const QString &form)
{
    m_toDistort << form;
}

void CentreDesk::repeatFrom(int number)
{
    m_repeated = m_now;
    for (int i = qMax(number, 1); i <= m_sentToday.size(); ++i)
        sendNumbered(i, m_sentToday.at(i - 1));
    sendService(QStringLiteral("ПОВТОР ОКОНЧЕН"));
}

void CentreDesk::renumber()
{
    m_renumberDue = m_quiet = false;
    m_renumbered = m_now;
    m_awaitedFigure = oldSent % 1000;
    sendService(QString::asprintf("СМЕНА НУМЕРАЦИИ ПРИН %04d ПЕР %04d ОТКРОЙТЕ СВЯЗЬ", oldGot, oldSent));
}
