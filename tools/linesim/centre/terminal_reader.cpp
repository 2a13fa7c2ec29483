#include "tools/linesim/centre/terminal_reader.h"

#include <QRegularExpression>

namespace
{
const QString Request = QStringLiteral("|ЗЗ ");
const QString Start = QStringLiteral("|ЗЦЗЦ ");
const QString End = QStringLiteral("НННН  ");

TerminalMessage foreign(const QString &text)
{
    return {TerminalMessage::Foreign, -1, text};
}

/// The message between its brackets.
TerminalMessage understood(const QString &body)
{
    struct Form {
        const char *pattern;
        TerminalMessage::Kind kind;
    };
    static const Form forms[] = {
        {"^КС ВАШ ([0-9]{3})=\\1 $", TerminalMessage::Receipt},
        {"^КС СТОП $", TerminalMessage::Stop},
        {"^КС ТЕКСТ $", TerminalMessage::Text},
        {"^КС Р([0-9]{3}) ПРИН &?(.+) [|]?$", TerminalMessage::Confirmation}, // a name in either register
        {"^([0-9]{3}) (.*) $", TerminalMessage::Telegram},
    };
    for (const Form &form : forms) {
        const QRegularExpression expression(QString::fromUtf8(form.pattern),
                                            QRegularExpression::DotMatchesEverythingOption);
        const QRegularExpressionMatch match = expression.match(body);
        if (match.hasMatch())
            return {form.kind, match.lastCapturedIndex() > 0 ? match.captured(1).toInt() : -1,
                    match.captured(2)};
    }
    return foreign(body);
}
} // namespace

void TerminalReader::take(const QString &text)
{
    m_pending += text;
}

bool TerminalReader::isInsideTelegram() const
{
    return m_pending.startsWith(Start) && m_pending.size() > Start.size() &&
           m_pending.at(Start.size()).isDigit();
}

std::optional<TerminalMessage> TerminalReader::next()
{
    int ends = 0;
    while (ends < m_pending.size() &&
           (m_pending.at(ends) == QLatin1Char('\r') || m_pending.at(ends) == QLatin1Char('\n')))
        ++ends;
    m_pending.remove(0, ends);
    if (m_pending.startsWith(Request))
        return takeRequest();
    if (m_pending.startsWith(Start))
        return takeBracketed();
    if (Request.startsWith(m_pending) || Start.startsWith(m_pending))
        return std::nullopt; // not enough yet
    return takeForeign();
}

TerminalMessage TerminalReader::takeRequest()
{
    m_restExpected = false;
    m_pending.remove(0, Request.size());
    return {TerminalMessage::ReceiptRequest, -1, QString()};
}

std::optional<TerminalMessage> TerminalReader::takeBracketed()
{
    m_restExpected = false;
    const int end = m_pending.indexOf(End);
    const int again = m_pending.indexOf(Start, 1);
    if (again > 0 && (end < 0 || again < end)) {
        const QString cut = m_pending.left(again);
        m_pending.remove(0, again);
        return TerminalMessage{TerminalMessage::Broken, -1, cut};
    }
    if (end < 0)
        return std::nullopt;
    const QString body = m_pending.mid(Start.size(), end - Start.size());
    m_pending.remove(0, end + End.size());
    return understood(body);
}

TerminalMessage TerminalReader::takeForeign()
{
    const int mark = m_pending.indexOf(QLatin1Char('|'), 1);
    const QString text = mark < 0 ? m_pending : m_pending.left(mark);
    m_pending.remove(0, text.size());
    return m_restExpected ? TerminalMessage{TerminalMessage::Broken, -1, text} : foreign(text);
}

std::optional<TerminalMessage> TerminalReader::giveUp()
{
    if (m_pending.isEmpty())
        return std::nullopt;
    const TerminalMessage broken{TerminalMessage::Broken, -1, m_pending};
    m_pending.clear();
    return broken;
}
