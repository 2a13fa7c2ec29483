#include "text/telegram_index.h"

namespace
{
constexpr int HalfLength = 3;

/// Behind the letter of the category "Ц" marks the telegrams whose index may stand in two halves. Alone at
/// the start it is a category like the others.
bool mayHaveHalves(const QString &category)
{
    return category.indexOf(QChar(u'Ц'), 1) > 0;
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
