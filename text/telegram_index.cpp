#include "text/telegram_index.h"

#include <algorithm>

namespace
{
constexpr int HalfLength = 3;

/// Behind the letter of the category "Ц" marks the telegrams whose index may stand in two halves. Alone at
/// the start it is a category like the others.
bool mayHaveHalves(const QString &category)
{
    return category.indexOf(QChar(u'Ц'), 1) > 0;
}

bool allDigits(const QString &text)
{
    return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.isDigit(); });
}
} // namespace

QString telegramIndexFault(const QString &category, const QString &index)
{
    const bool halves = mayHaveHalves(category);
    if (index.size() < TelegramIndexLength)
        return halves ? QStringLiteral("Не указан индекс") : QStringLiteral("Неверно указан индекс");
    if (halves && index.size() == LongestTelegramIndexLength && index.at(HalfLength) != QLatin1Char('='))
        return QStringLiteral("Неверно указан индекс");
    return QString();
}

// A "Ц" at the start counts here, though sending lets such a category through as it does the others: meant
// so, the colour warns earlier than the refusal.
bool telegramIndexIsComplete(const QString &category, const QString &index)
{
    if (!category.contains(QChar(u'Ц')))
        return index.size() == TelegramIndexLength;
    if (index.size() == TelegramIndexLength)
        return allDigits(index);
    const QString half = index.left(HalfLength);
    return index.size() == LongestTelegramIndexLength && allDigits(half) && index == half + u'=' + half;
}
