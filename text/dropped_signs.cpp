#include "text/dropped_signs.h"

#include "text/filters.h"

#include <QStringList>

#include <algorithm>
#include <vector>

namespace
{
constexpr int MostSignsTold = 8;
constexpr uint SignCount = 0x110000;

/// Gives each sign of \a text once, in the order of their first appearance. Texts may be long: nothing here
/// takes longer than to walk through.
std::vector<uint> differentSigns(const QString &text)
{
    std::vector<uint> different;
    std::vector<bool> seen(SignCount);
    for (int i = 0; i < text.size(); ++i) {
        uint sign = text.at(i).unicode();
        if (text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate()) {
            sign = QChar::surrogateToUcs4(text.at(i), text.at(i + 1));
            ++i;
        }
        if (!seen[sign])
            different.push_back(sign);
        seen[sign] = true;
    }
    return different;
}

QString shownSign(uint sign)
{
    if (QChar::isPrint(sign) && !QChar::isSpace(sign) && !QChar::isMark(sign))
        return QString::fromUcs4(&sign, 1);
    return QStringLiteral("U+") + QStringLiteral("%1").arg(sign, 4, 16, QLatin1Char('0')).toUpper();
}

/// The fields of the rows on show that are spelled out before they go, and those that are not.
struct Written {
    QString spelled, asItIs;
};

Written writtenIn(const TelegramFields &fields, const FormRows &shown)
{
    using F = TelegramFields;
    static const struct {
        QString F::*field;
        FormRow row;
        bool spelled;
    } rows[] = {
        {&F::index, CategoryRow, false}, {&F::header, HeaderRow, true},        {&F::marks, MarksRow, true},
        {&F::address, AddressRow, true}, {&F::kassa, KassaRow, false},         {&F::to, ToRow, false},
        {&F::from, FromRow, false},      {&F::signature, SignatureRow, false},
    };
    Written written;
    for (const auto &row : rows)
        if (shown[row.row])
            (row.spelled ? written.spelled : written.asItIs) += fields.*row.field;
    return written;
}

using Clear = std::function<QString(const QString &)>;

/// Adds to \a dropped the signs of \a text of which \a clear leaves nothing.
void addDropped(std::vector<uint> &dropped, const QString &text, const Clear &clear)
{
    for (const uint sign : differentSigns(text))
        if (clear(QString::fromUcs4(&sign, 1)).isEmpty() &&
            std::find(dropped.begin(), dropped.end(), sign) == dropped.end())
            dropped.push_back(sign);
}

QString told(const std::vector<uint> &signs)
{
    QStringList shown;
    for (const uint sign : signs) {
        if (shown.size() == MostSignsTold)
            return shown.join(u' ') + QStringLiteral(" ...");
        shown << shownSign(sign);
    }
    return shown.join(u' ');
}

/// What the line carries of \a sign; a mark of a template gives way to something that it does.
QString carried(const QString &sign)
{
    return QStringLiteral("[{}$").contains(sign) ? sign : QStringClearNonMTK2(sign);
}

QString carriedSpelled(const QString &sign)
{
    return carried(nonTlgCharReplace(sign));
}
} // namespace

QString droppedSigns(const QString &text, const Clear &clear)
{
    std::vector<uint> dropped;
    addDropped(dropped, text, clear);
    return told(dropped);
}

QString signsNotCarried(const TelegramFields &fields, const FormRows &shown, bool crypto)
{
    const Written written = writtenIn(fields, shown);
    std::vector<uint> dropped;
    addDropped(dropped, written.spelled, carriedSpelled);
    addDropped(dropped, written.asItIs, carried);
    addDropped(dropped, fields.text, [crypto](const QString &sign) {
        return crypto && sign == QLatin1String("<") ? sign : carriedSpelled(sign);
    });
    return told(dropped);
}
