// Templates of fixed-form lines against any text, and the same bytes as the draft of the editor.

#include "records/draft.h"
#include "tests/fuzz/fuzz.h"
#include "text/utils.h"

#include <array>

namespace
{
constexpr int MostFields = 6;

/// The letters of the fields of a template, told in another way.
QString lettersOf(const QString &format)
{
    QString letters;
    for (int i = 0; i < format.size(); ++i) {
        if (format.at(i) != u'%')
            continue;
        ++i;
        if (i < format.size() && (format.at(i) == u'%' || format.at(i) == u' '))
            continue;
        if (i < format.size() && format.at(i) == u'.')
            ++i;
        for (int digits = 0; digits < 2 && i < format.size() && format.at(i) >= u'0' && format.at(i) <= u'9';
             ++i)
            ++digits;
        letters += i < format.size() ? format.at(i) : QChar(u'\0');
    }
    return letters;
}

/// Room for what a field gives, of either kind.
struct Place {
    int number = -1;
    QString text;

    void *of(QChar letter) { return letter == u'd' ? static_cast<void *>(&number) : &text; }
};

void checkField(const Place &place, QChar letter, const QString &text)
{
    Fuzz::check(letter == u'd' || text.contains(place.text), "what a field took stands in the text");
    for (const QChar c : place.text) {
        Fuzz::check(letter != u'D' || c.isDigit(), "figures");
        Fuzz::check(letter != u'A' || c.isLetter(), "letters");
        Fuzz::check(letter != u's' || !c.isSpace(), "a word");
    }
}

void checkTemplate(const QString &format, const QString &text)
{
    const QString letters = lettersOf(format).leftJustified(MostFields, u'?', true);
    std::array<Place, MostFields> places;
    std::array<void *, MostFields> to{};
    for (int i = 0; i < MostFields; ++i)
        to[size_t(i)] = places[size_t(i)].of(letters.at(i));
    const int count = CUtils::testTemplate(format, text, to[0], to[1], to[2], to[3], to[4], to[5],
                                           static_cast<void *>(nullptr));
    Fuzz::check(count >= 0 && count <= format.count(u'%') && count <= MostFields, "count of fields");
    for (int i = 0; i < count; ++i)
        checkField(places[size_t(i)], letters.at(i), text);
    for (int i = count + 1; i < MostFields; ++i)
        Fuzz::check(places[size_t(i)].number == -1 && places[size_t(i)].text.isEmpty(),
                    "nothing is taken behind the field that did not match");
}

void checkDraft(const QByteArray &content)
{
    const std::optional<Draft> draft = draftOf(content);
    if (!draft)
        return;
    const QByteArray written = contentOf(*draft);
    const std::optional<Draft> again = draftOf(written);
    Fuzz::check(again && *again == *draft && contentOf(*again) == written, "a draft reads as it was written");
}
} // namespace

/// The pieces are a template and a text in turn.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QVector<Fuzz::Step> steps = Fuzz::session(data, size);
    for (int i = 0; i + 1 < steps.size(); i += 2)
        checkTemplate(steps.at(i).text, steps.at(i + 1).text);
    checkDraft(QByteArray(reinterpret_cast<const char *>(data), int(size)));
    return 0;
}
