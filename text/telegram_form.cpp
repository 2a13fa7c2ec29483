#include "text/telegram_form.h"

#include "text/filters.h"
#include "text/utils.h"

#include <QStringList>

namespace
{
constexpr int TailMargin = 10; ///< characters at a text's end in which its tail is looked for
constexpr int WordsPerGroup = 10;

const QString CategoryEnd = QStringLiteral("\r\n|||\r\n\n\n");
const QString SignatureBegin = QStringLiteral("=\r\n");
const QString Tail = QStringLiteral("-\n\n\n\n\n\n");
const QString FirstSeries = QStringLiteral("01 "), SecondSeries = QStringLiteral("02 ");

struct Line {
    QString TelegramFields::*field;
    QString end; ///< behind the field, on the line and in a template
    QString TelegramFields::*words, TelegramFields::*time; ///< behind the field, on the line alone
    FormRow row;
    bool leftOutIfEmpty;
};

using F = TelegramFields;
/// The rows of one line, in the order in which they go. The last belongs to the body.
const Line lines[] = {
    {&F::header, QStringLiteral("=\r\n\n"), &F::headerWords, &F::headerTime, HeaderRow, true},
    {&F::kassa, QStringLiteral("\r\n"), nullptr, nullptr, KassaRow, false},
    {&F::to, QStringLiteral("\r\n"), nullptr, nullptr, ToRow, false},
    {&F::from, QStringLiteral("\r\n"), &F::fromWords, &F::fromTime, FromRow, false},
    {&F::marks, QStringLiteral("\r\n\n"), nullptr, nullptr, MarksRow, true},
    {&F::address, QStringLiteral("=\r\n"), nullptr, nullptr, AddressRow, true},
};

QString categoryLine(const TelegramFields &fields)
{
    return fields.category + (fields.secondSeries ? SecondSeries : QString()) + fields.index + CategoryEnd;
}

QString lineOf(const Line &line, const TelegramFields &fields)
{
    const QString &field = fields.*line.field;
    if (line.leftOutIfEmpty && field.isEmpty())
        return {};
    if (line.words == nullptr)
        return field + line.end;
    return field + u' ' + fields.*line.words + u' ' + fields.*line.time + line.end;
}

QChar lastVisible(const QString &text)
{
    for (int i = text.size() - 1; i >= 0; --i)
        if (!text.at(i).isSpace())
            return text.at(i);
    return {};
}

bool formHasEnd(int form)
{
    return form == ShortForm || form == FullForm || form == Rex400Form;
}

/// Signature and final dash. A text that the operator has ended with a dash himself stays as it is, unless
/// there is a signature to come behind it. One of a single character is no telegram yet.
void endBody(QString &body, const QString &signature)
{
    if (body.size() < 2)
        return;
    const QChar last = lastVisible(body);
    if (last == u'-' && signature.isEmpty())
        return;
    if (!signature.isEmpty())
        body += (last == u'=' ? QStringLiteral("\r\n") : SignatureBegin) + signature;
    body += Tail;
}

void replaceMoments(QString &text, const TelegramMoment &moment)
{
    text.replace(u'[', QString::number(moment.number));
    text.replace(u'{', moment.time.toString(QStringLiteral("MM.dd")));
    text.replace(u'}', moment.time.toString(QStringLiteral("hhmm")));
    if (!text.contains(u'$'))
        return;
    for (const char *format : {"dd", "MM", "yyyy", "yy", "hh", "mm", "ss"}) {
        const QString name = QString::fromLatin1(format);
        const QString placeholder =
            u'$' + (name.startsWith(u'd') || name.startsWith(u'y') ? name.toUpper() : name);
        text.replace(placeholder, moment.time.toString(name));
    }
}

void replacePlaceholders(QString &head, QString &body, const TelegramMoment &moment)
{
    replaceMoments(head, moment);
    replaceMoments(body, moment);
    const QString words = QString::number(CUtils::WordsCount(body, 0));
    head.replace(u'$', words);
    body.replace(u'$', words);
}

constexpr int LongestField = 32767; ///< characters that a field of the toolkit takes

bool isOneLine(const QString &text)
{
    return text.size() <= LongestField && !text.contains(u'\r') && !text.contains(u'\n');
}

/// Cuts \a rest behind \a end, and gives what stood in front of it; null, with \a rest as it was, if that is
/// no single line.
QString takeField(QString &rest, const QString &end)
{
    const int at = rest.indexOf(end);
    if (at < 0 || !isOneLine(rest.left(at)))
        return {};
    const QString field = rest.left(at);
    rest.remove(0, at + end.size());
    return field.isNull() ? QStringLiteral("") : field;
}

/// The letters, the series, then digits with one "=" among them; what else stands there is nobody's.
void readCategory(const QString &line, TelegramFields &fields)
{
    int at = 0;
    while (at < line.size() && line.at(at).isLetter())
        ++at;
    fields.category = line.left(at);
    fields.secondSeries = line.mid(at).startsWith(SecondSeries);
    if (fields.secondSeries || line.mid(at).startsWith(FirstSeries))
        at += SecondSeries.size();
    bool joined = false;
    for (; at < line.size() && (line.at(at).isDigit() || (line.at(at) == u'=' && !joined)); ++at) {
        joined = joined || line.at(at) == u'=';
        fields.index += line.at(at);
    }
}

/// False if a field is not there as one line: \a rest then begins with it.
bool takeHead(QString &rest, const FormRows &shown, TelegramFields &fields)
{
    if (shown[CategoryRow]) {
        const QString line = takeField(rest, CategoryEnd);
        if (line.isNull())
            return false;
        readCategory(line, fields);
    }
    for (const Line &line : lines) {
        if (!shown[line.row])
            continue;
        const QString field = takeField(rest, line.end);
        if (field.isNull())
            return false;
        fields.*line.field = field;
    }
    return true;
}

void takeSignature(QString &rest, TelegramFields &fields)
{
    const int tail = rest.lastIndexOf(Tail);
    const int begin =
        tail < SignatureBegin.size() ? -1 : rest.lastIndexOf(SignatureBegin, tail - SignatureBegin.size());
    if (begin < 0)
        return;
    const int at = begin + SignatureBegin.size();
    const QString signature = rest.mid(at, tail - at);
    if (!isOneLine(signature))
        return;
    fields.signature = signature;
    rest.truncate(begin);
}

void dropTail(QString &rest)
{
    const int tail = rest.lastIndexOf(Tail);
    if (tail >= 0 && tail >= rest.size() - TailMargin)
        rest.truncate(tail);
}
} // namespace

FormRows rowsOfForm(int form)
{
    // clang-format off
    static const FormRows table[TelegramFormCount] = {
        // category  header  marks  address  till   to     from   signature
        {false,      false,  false, false,   false, false, false, false},
        {true,       false,  false, false,   false, false, false, false},
        {true,       true,   true,  true,    false, false, false, true},
        {true,       false,  false, false,   true,  true,  true,  true},
        {false,      true,   false, false,   false, false, false, true},
    };
    // clang-format on
    return form >= 0 && form < TelegramFormCount ? table[form] : FormRows{};
}

QString composeTelegram(const TelegramFields &fields, int form, const FormRows &shown,
                        const TelegramMoment &moment)
{
    QString head = shown[CategoryRow] ? categoryLine(fields) : QString();
    QString body;
    for (const Line &line : lines)
        if (shown[line.row])
            (line.row == AddressRow ? body : head) += lineOf(line, fields);
    body += fields.text;
    if (formHasEnd(form))
        endBody(body, shown[SignatureRow] ? fields.signature : QString());
    replacePlaceholders(head, body, moment);
    return QStringClearNonMTK2(head) + QStringClearNonMTK2(body);
}

QString composeTemplate(const TelegramFields &fields, const FormRows &shown)
{
    QString text = shown[CategoryRow] ? categoryLine(fields) : QString();
    for (const Line &line : lines)
        if (shown[line.row])
            text += fields.*line.field + line.end;
    text += fields.text;
    if (shown[SignatureRow])
        text += SignatureBegin + fields.signature;
    return text + Tail;
}

TelegramFields parseTemplate(const QString &text, const FormRows &shown)
{
    TelegramFields fields;
    QString rest = text;
    if (takeHead(rest, shown, fields)) {
        if (shown[SignatureRow])
            takeSignature(rest, fields);
        else
            dropTail(rest);
    }
    fields.text = rest;
    return fields;
}

int billedWords(const TelegramFields &fields, const FormRows &shown)
{
    QStringList parts;
    if (shown[MarksRow])
        parts << fields.marks;
    if (shown[AddressRow])
        parts << fields.address;
    parts << fields.text;
    if (shown[SignatureRow])
        parts << fields.signature;
    return CUtils::WordsCount(parts.join(u' '), 0);
}

QString internationalWords(const TelegramFields &fields, const FormRows &shown)
{
    QStringList parts;
    if (shown[ToRow])
        parts << fields.to;
    if (shown[SignatureRow])
        parts << fields.signature;
    parts << fields.text;
    const QString joined = parts.join(u' ');
    const int groups = (joined.size() + WordsPerGroup - 1) / WordsPerGroup;
    return QString::number(groups) + u'/' + QString::number(CUtils::WordsCount(joined, 0));
}
