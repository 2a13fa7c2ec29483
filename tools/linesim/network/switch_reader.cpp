#include "tools/linesim/network/switch_reader.h"

namespace
{
/// Where text ends because a form may begin there.
int nextMark(const QString &text, int from)
{
    for (int i = from; i < text.size(); ++i)
        if (text[i] == QLatin1Char('@') || text[i] == QLatin1Char('#') || text[i] == QLatin1Char('\r'))
            return i;
    return text.size();
}
} // namespace

SwitchReader::SwitchReader(const QString &answerback) : m_answerback(QStringLiteral("#\r\n") + answerback) {}

std::optional<SwitchItem> SwitchReader::next()
{
    if (m_pending.isEmpty())
        return std::nullopt;
    if (m_pending.startsWith(QLatin1Char('@')))
        return takeCommand();
    const struct {
        SwitchItem::Kind kind;
        QString text;
    } forms[] = {{SwitchItem::Question, QStringLiteral("#*")},
                 {SwitchItem::Answerback, m_answerback},
                 {SwitchItem::Muted, QStringLiteral("\r\n|АО ВЫКЛ")},
                 {SwitchItem::Unmuted, QStringLiteral("\r\n|АО ВКЛ")}};
    for (const auto &form : forms) {
        if (m_pending.startsWith(form.text))
            return cut(form.kind, form.text.size());
        if (form.text.startsWith(m_pending))
            return std::nullopt;
    }
    return cut(SwitchItem::Text, nextMark(m_pending, 1));
}

std::optional<SwitchItem> SwitchReader::takeCommand()
{
    static const struct {
        char letter;
        SwitchItem::Kind kind;
    } commands[] = {{'C', SwitchItem::Call}, {'E', SwitchItem::Seize}, {'H', SwitchItem::HangUp}};
    if (m_pending.size() < 2)
        return std::nullopt;
    const char letter = m_pending[1].toLatin1();
    for (const auto &command : commands)
        if (letter == command.letter)
            return cut(command.kind, 2);
    if (letter != 'N' && letter != 'n')
        return cut(SwitchItem::Unknown, 2);
    const int end = m_pending.indexOf(QLatin1Char('@'), 2);
    if (end < 0)
        return std::nullopt;
    SwitchItem number = cut(SwitchItem::Number, end + 1);
    number.text = number.text.mid(2).chopped(1);
    return number;
}

std::optional<SwitchItem> SwitchReader::giveUp()
{
    if (m_pending.isEmpty())
        return std::nullopt;
    const SwitchItem::Kind kind =
        m_pending.startsWith(QLatin1Char('@')) ? SwitchItem::Unknown : SwitchItem::Text;
    return cut(kind, m_pending.size());
}

SwitchItem SwitchReader::cut(SwitchItem::Kind kind, int size)
{
    const SwitchItem item{kind, m_pending.left(size)};
    m_pending.remove(0, size);
    return item;
}
