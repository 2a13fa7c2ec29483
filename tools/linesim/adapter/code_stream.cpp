#include "tools/linesim/adapter/code_stream.h"

using namespace Mtk2;

namespace
{
const QChar MarkOf[] = {QLatin1Char('&'), QLatin1Char('|'), QLatin1Char('#')};

/// What messages open with behind a mark, whatever the register was.
const QString Opens[][4] = {
    {},
    {QStringLiteral("ЗЗ "), QStringLiteral("ЗЦЗЦ "), QStringLiteral("АО ВЫКЛ"), QStringLiteral("АО ВКЛ")},
    {QStringLiteral("*")},
};

bool isInAll(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\r') || c == QLatin1Char('\n');
}
} // namespace

QByteArray CodeWriter::write(const QString &text, QString *left)
{
    QByteArray codes;
    for (const QChar c : text) {
        const QChar sign = c == QLatin1Char('<') ? QChar('\r') : c == QLatin1Char('>') ? QChar('\n') : c;
        const QByteArray added = encoded(sign, m_register);
        if (added.isEmpty() && left)
            *left += c;
        codes += added;
    }
    return codes;
}

QString CodeReader::take(quint8 code)
{
    Register next = m_register;
    const QString c = decoded(QByteArray(1, char(code)), next);
    if (c == MarkOf[next])
        return takeMark(next);
    return m_mark ? settle(c.at(0)) : c;
}

QString CodeReader::takeMark(Register next)
{
    const QString before = m_held.isEmpty() ? keepMark() : release(false);
    m_mark = true;
    m_before = m_register;
    m_register = next;
    return before;
}

/// A sign behind an open mark: the mark stays, goes, or waits for more signs.
QString CodeReader::settle(QChar c)
{
    const bool needed = m_before != m_register && !isInAll(c);
    const bool told = m_register == Figures || m_shown < 0 || m_shown == m_register;
    if (m_held.isEmpty() && !(needed && told))
        return keepMark() + c;
    m_held += c;
    for (const QString &word : Opens[m_register])
        if (!word.isEmpty() && m_held == word)
            return release(true);
    return mayStay() ? QString() : release(false);
}

bool CodeReader::mayStay() const
{
    for (const QString &word : Opens[m_register])
        if (!word.isEmpty() && word.startsWith(m_held))
            return true;
    return false;
}

QString CodeReader::keepMark()
{
    if (!m_mark)
        return QString();
    m_mark = false;
    m_shown = m_register;
    return MarkOf[m_register];
}

QString CodeReader::release(bool withMark)
{
    const QString text = withMark ? keepMark() + m_held : m_held;
    m_mark = false;
    m_held.clear();
    return text;
}

QString CodeReader::flush()
{
    return m_held.isEmpty() ? keepMark() : release(false);
}
