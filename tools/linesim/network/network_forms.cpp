#include "tools/linesim/network/network_forms.h"

namespace
{
constexpr int ShortLength = 20;
const QString Opening = QStringLiteral("#\r\n");
const QString LineFirstOpening = QStringLiteral("\r\n#");

struct Word {
    const char *word, *text;
};

const Word results[] = {
    {"busy", "\r\n&OCC"},   {"fault", "\r\n&DER"},         {"no-circuit", "\r\n&NC&"}, {"wrong", "\r\n&NP&"},
    {"absent", "\r\n&ABS"}, {"network-fault", "\r\n&CI&"}, {"barred", "\r\n&NA&"},     {"inf", "\r\n&INF"},
    {"nch", "\r\n&NCH"},    {"broken", "\r\n&BK\r\n"},
};

const Word refusals[] = {
    {"signal-occ", "OCC"}, {"signal-der", "DER"},   {"signal-nc", "NC"},
    {"signal-np", "NP"},   {"signal-other", "INF"},
};

template <class Table> QString lookedUp(const Table &table, const QString &word)
{
    for (const Word &row : table)
        if (word == QLatin1String(row.word))
            return QString::fromUtf8(row.text);
    return QString();
}

QString opening(const NetworkForms::CentreForm &form)
{
    return form.lineFirst ? LineFirstOpening : Opening;
}

/// The centre's name in its answerbacks, short and long.
QString centreName(int type)
{
    switch (type) {
    case 2: return QStringLiteral("911 #01|ЦКС&");
    case 3: return QStringLiteral("ТТ 7001 ТРАНЗИТ");
    case 4: return QStringLiteral("5150 УЗЕЛ СВЯЗИ");
    default: return QStringLiteral("#01 123 |ЦКС&");
    }
}
} // namespace

QString NetworkForms::result(const QString &word)
{
    return lookedUp(results, word);
}

QString NetworkForms::refusalSignal(const QString &word)
{
    const QString said = lookedUp(refusals, word);
    return said.isEmpty() ? said : QStringLiteral("!>СИГНАЛ ") + said + QStringLiteral("\r\n");
}

QString NetworkForms::timeStamp(const QString &format, const QDateTime &now)
{
    const QString digits[] = {now.toString(QStringLiteral("dd")), now.toString(QStringLiteral("hh")),
                              now.toString(QStringLiteral("mm"))};
    const QString letters = QStringLiteral("dhm");
    int given[] = {0, 0, 0};
    QString text;
    for (const QChar c : format) {
        const int which = letters.indexOf(c);
        if (which >= 0)
            text += digits[which].at(given[which]++ % 2);
        else
            text += c == QLatin1Char('<') ? QChar('\r') : c == QLatin1Char('>') ? QChar('\n') : c;
    }
    return text;
}

QString NetworkForms::answerback(const QString &text)
{
    return (Opening + text).leftJustified(ShortLength, QLatin1Char(' '));
}

QString NetworkForms::shortCentre(const CentreForm &form)
{
    return (opening(form) + centreName(form.type)).leftJustified(ShortLength, QLatin1Char(' '));
}

QString NetworkForms::longCentre(const CentreForm &form)
{
    const QString text = opening(form) + centreName(form.type) + QStringLiteral(" 31 12.34 ПРИНЯТА");
    return text.leftJustified(longCentreLength(form.type), QLatin1Char(' '));
}

int NetworkForms::longCentreLength(int type)
{
    static constexpr int lengths[] = {50, 48, 48, 58, 60};
    return type >= 0 && type < int(sizeof lengths / sizeof *lengths) ? lengths[type] : 0;
}
