// What the program says.

#include "tools/linesim/adapter/adapter_bytes.h"
#include "tools/linesim/adapter/line_adapter.h"
#include "tools/linesim/console/event_log.h"

using namespace AdapterBytes;

void LineAdapter::takeFromProgram(const QByteArray &bytes, qint64 nowUs)
{
    for (const char byte : bytes)
        takeByte(quint8(byte), nowUs);
    if (m_overrun > 0)
        m_log.violation(QStringLiteral("%1 characters more than granted").arg(m_overrun));
    if (m_lostCodes > 0)
        m_log.event(QStringLiteral("overrun"), QStringLiteral("%1 codes lost").arg(m_lostCodes));
    m_overrun = m_lostCodes = 0;
    advance(nowUs);
}

void LineAdapter::takeByte(quint8 byte, qint64 nowUs)
{
    if (byte != Goodbye)
        m_rules.tookByte();
    if (takeDialling(byte, nowUs))
        return;
    if (byte <= LastCode)
        return takeCode(byte, nowUs);
    if (ProgramRules::isMode(byte))
        return takeMode(byte, nowUs);
    switch (byte) {
    case AskVersion: m_rules.tookVersionRequest(); return tellVersion(nowUs);
    case Goodbye: m_rules.tookGoodbye(); return m_log.event(QStringLiteral("goodbye"));
    case Seize: return takeCommand(QStringLiteral("@C"), nowUs);
    case Answer: return takeCommand(QStringLiteral("@E"), nowUs);
    case HangUp: return takeCommand(QStringLiteral("@H"), nowUs);
    default: m_log.violation(QStringLiteral("byte %1 means nothing").arg(byte, 2, 16, QLatin1Char('0')));
    }
}

void LineAdapter::takeCode(quint8 code, qint64 nowUs)
{
    const char c = char(code);
    const bool isFree = c == Mtk2::LatinCode || c == Mtk2::LettersCode || c == Mtk2::FiguresCode;
    if (!isFree && !m_credit.take())
        ++m_overrun;
    if (m_out.codesWaiting() < m_settings.roomCodes)
        m_out.put({code, QString()}, nowUs);
    else
        ++m_lostCodes;
}

/// Commands keep their place among the codes.
void LineAdapter::takeCommand(const QString &command, qint64 nowUs)
{
    if (!m_switched)
        m_log.violation(QStringLiteral("call without a switched channel: ") + command);
    m_out.put({-1, command}, nowUs);
}

void LineAdapter::takeMode(quint8 mode, qint64 nowUs)
{
    m_switched = mode == Switched;
    const bool wasReady = isReady();
    m_rules.tookMode(mode);
    m_credit.answered(nowUs);
    if (isReady() && !wasReady) {
        m_log.event(QStringLiteral("ready"));
        emit ready();
    }
}

/// True for the bytes of a dialling: the way, the begin, digits, the end.
bool LineAdapter::takeDialling(quint8 byte, qint64 nowUs)
{
    if (m_number.isEmpty()) {
        if (byte == DialPulse || byte == DialCode)
            m_number = byte == DialPulse ? QStringLiteral("@N") : QStringLiteral("@n");
        return !m_number.isEmpty();
    }
    if (!m_inNumber && byte == NumberBegin)
        return m_inNumber = true;
    if (m_inNumber && byte <= LastDigit)
        m_number += QChar('0' + byte);
    else if (m_inNumber && byte == PlusDigit)
        m_number += QLatin1Char('+');
    else {
        if (m_inNumber && byte == NumberEnd)
            takeCommand(m_number + QLatin1Char('@'), nowUs);
        else
            m_log.violation(QStringLiteral("dialling broken off: ") + m_number);
        m_number.clear();
        const bool ended = m_inNumber && byte == NumberEnd;
        m_inNumber = false;
        return ended;
    }
    return true;
}

void LineAdapter::tellVersion(qint64 nowUs)
{
    const int date = m_settings.version % 1'000'000;
    if (m_settings.version > 0)
        put(QByteArray(1, char(date / 10000)) + char(date / 100 % 100) + char(date % 100), nowUs);
}
