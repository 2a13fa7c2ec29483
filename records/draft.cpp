#include "records/draft.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace
{
using F = TelegramFields;

struct Line {
    const char *key;
    QString F::*line;
};
const Line lines[] = {
    {"category", &F::category},
    {"index", &F::index},
    {"header", &F::header},
    {"headerWords", &F::headerWords},
    {"headerTime", &F::headerTime},
    {"marks", &F::marks},
    {"address", &F::address},
    {"kassa", &F::kassa},
    {"to", &F::to},
    {"from", &F::from},
    {"fromWords", &F::fromWords},
    {"fromTime", &F::fromTime},
    {"text", &F::text},
    {"signature", &F::signature},
};
const QString FormKey = QStringLiteral("form"), CryptoKey = QStringLiteral("cryptoMode"),
              SeriesKey = QStringLiteral("secondSeries");

bool isWhole(const QJsonObject &object)
{
    for (const Line &line : lines)
        if (!object.value(QLatin1String(line.key)).isString())
            return false;
    return object.value(FormKey).isDouble() && object.value(CryptoKey).isBool() &&
           object.value(SeriesKey).isBool();
}
} // namespace

bool operator==(const Draft &one, const Draft &other)
{
    for (const Line &line : lines)
        if (one.fields.*line.line != other.fields.*line.line)
            return false;
    return one.form == other.form && one.cryptoMode == other.cryptoMode &&
           one.fields.secondSeries == other.fields.secondSeries;
}

QByteArray contentOf(const Draft &draft)
{
    QJsonObject object{
        {FormKey, draft.form}, {CryptoKey, draft.cryptoMode}, {SeriesKey, draft.fields.secondSeries}};
    for (const Line &line : lines)
        object.insert(QLatin1String(line.key), draft.fields.*line.line);
    return QJsonDocument(object).toJson();
}

std::optional<Draft> draftOf(const QByteArray &content)
{
    const QJsonObject object = QJsonDocument::fromJson(content).object();
    if (!isWhole(object))
        return std::nullopt;
    Draft draft;
    draft.form = object.value(FormKey).toInt(MessageForm);
    draft.cryptoMode = object.value(CryptoKey).toBool();
    draft.fields.secondSeries = object.value(SeriesKey).toBool();
    for (const Line &line : lines)
        draft.fields.*line.line = object.value(QLatin1String(line.key)).toString();
    return draft;
}
