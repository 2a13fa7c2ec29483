// Lists of numbers from the subscriber dialogs, time stamps by a form of any content.

#include "procedures/utils_skk.h"
#include "tests/fuzz/fuzz.h"

namespace
{
bool isKept(QChar c)
{
    return (c >= u'0' && c <= u'9') || c == u'+' || c == u',';
}

/// The rule told in another way: the input falls into items at each comma behind more than 5 characters.
int countItems(const QString &input)
{
    int count = 0;
    int begin = 0;
    for (int i = 0; i < input.size(); ++i)
        if (input.at(i) == u',' && i - begin > 5) {
            ++count;
            begin = i + 1;
        }
    return input.size() - begin > 5 ? count + 1 : count;
}

void checkNumbers(const QString &input)
{
    QString result = QStringLiteral("old");
    const int count = CUtilsSKK::checkCallNumber(input, result);
    Fuzz::check(count == countItems(input), "count of numbers");
    for (const QChar c : qAsConst(result))
        Fuzz::check(isKept(c), "only figures, plus and comma are kept");
    const int commas = result.count(u',');
    Fuzz::check(count == commas || count == commas + 1, "a comma parts two numbers");
    Fuzz::check(result.size() <= input.size(), "nothing is added");
}

void checkStamp(const QString &text, int from, const QString &format)
{
    const int behind = CUtilsSKK::behindTimeStamp(text, from, format);
    Fuzz::check(behind == -1 || (behind >= format.size() && behind <= text.size()),
                "a stamp lies in the text");
    Fuzz::check(behind == -1 || !format.isEmpty(), "no form, no stamp");
    for (int i = 0; behind >= 0 && i < format.size(); ++i) {
        const QChar c = text.at(behind - format.size() + i);
        const QChar form = format.at(i);
        const bool isFigure = c >= u'0' && c <= u'9';
        const bool isOpen = form == u'd' || form == u'h' || form == u'm' || form == u'<' || form == u'>';
        Fuzz::check(isOpen ? isFigure || c == u'\r' || c == u'\n' || c == u'<' || c == u'>' : c == form,
                    "a stamp has its form");
    }
}
} // namespace

/// The first piece of the input is the form of the time stamp too.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QVector<Fuzz::Step> steps = Fuzz::session(data, size);
    const QString format = steps.first().text;
    for (const Fuzz::Step &step : steps) {
        checkNumbers(step.text);
        for (const int from : {0, 1, step.text.size() / 2, step.text.size()})
            checkStamp(step.text, from, format);
    }
    return 0;
}
