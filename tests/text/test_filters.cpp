#include "tests/support/row.h"
#include "tests/text/language.h"
#include "text/filters.h"

#include <QtTest>

class TestFilters : public QObject
{
    Q_OBJECT

private slots:
    void init() { Language::select(Language::None); }

    void lineTextIsRaisedAndCleared();
    void letterYoIsDroppedWithoutSpelling();
    void everyFilterTreatsTheSignsOfItsRow_data();
    void everyFilterTreatsTheSignsOfItsRow();
    void everyFilterKeepsMarksAndLineEnds_data();
    void everyFilterKeepsMarksAndLineEnds();
    void skippedCharactersAreComparedWithCase();
    void lineFeedComesBeforeTheSkippedCharacters();
    void closingBracketIsDroppedInTheEditor();
    void tatarLettersPassWithTatarOnly();
    void georgianLettersPassWithTheirTable();
    void charactersOutsideThePlaneAreDropped();

    void spellingRaisesTheText();
    void percentSignKeepsItsTrailingSpace();
    void everySignIsSpelledOut_data();
    void everySignIsSpelledOut();
    void spellingGoesOverAllOccurrences();
    void spelledNamesKeepTheirLetterChe();
    void spellingKeepsGeorgianLetters();
    void spellingLeavesTheRest();
};

namespace
{
using Filter = QString (*)(const QString &);

QString convertAndSkip(const QString &text)
{
    return QStringClearNonMTK2ConverNLSkipChars(text, QStringLiteral("<[{}$"));
}

/// All that some filter treats in its own way, and letters around it to see the order.
const QString Signs = QStringLiteral("а<b>c[d]e{f}g$h^");
} // namespace

Q_DECLARE_METATYPE(Filter)

void TestFilters::lineTextIsRaisedAndCleared()
{
    QCOMPARE(QStringClearNonMTK2(QStringLiteral("abc!")), QStringLiteral("ABC"));
    QCOMPARE(QStringClearNonMTK2(QString()), QString());
    QCOMPARE(QStringClearNonMTK2(QStringLiteral("жЩчъ 12")), QStringLiteral("ЖЩЧ 12"));
}

void TestFilters::letterYoIsDroppedWithoutSpelling()
{
    QCOMPARE(QStringClearNonMTK2(QStringLiteral("Ё")), QString());
    QCOMPARE(QStringClearNonMTK2(QStringLiteral("ё")), QString());
    QCOMPARE(QStringClearNonMTK2(nonTlgCharReplace(QStringLiteral("ё"))), QStringLiteral("Е"));
}

void TestFilters::everyFilterTreatsTheSignsOfItsRow_data()
{
    QTest::addColumn<Filter>("filter");
    QTest::addColumn<QString>("left");
    row("line", Filter(QStringClearNonMTK2), QStringLiteral("АBCDEFGH"));
    row("return kept, line feed made", Filter(QStringClearNonMTK2SkipCRConverNL),
        QStringLiteral("А<B\nCDEFGH"));
    row("line feed made, editor's signs kept", Filter(convertAndSkip), QStringLiteral("А<B\nC[DE{F}G$H"));
    row("visible line ends kept", Filter(QStringClearNonMTK2SkipCRNL), QStringLiteral("А<B>CDEFGH"));
    row("editor field", Filter(QStringClearForEditorNonMTK2), QStringLiteral("А<B>C[DE{F}G$H"));
}

void TestFilters::everyFilterTreatsTheSignsOfItsRow()
{
    QFETCH(Filter, filter);
    QFETCH(QString, left);
    QCOMPARE(filter(Signs), left);
}

void TestFilters::everyFilterKeepsMarksAndLineEnds_data()
{
    everyFilterTreatsTheSignsOfItsRow_data();
}

void TestFilters::everyFilterKeepsMarksAndLineEnds()
{
    QFETCH(Filter, filter);
    const QString kept = QStringLiteral("|А&A#-\r\n 0123456789'*Ю,Э:(+)Щ?Ш./=Ч");
    QCOMPARE(filter(kept), kept);
    QCOMPARE(filter(QStringLiteral("!\"%;@_№\\~`\tЪЁ^]") + QChar()), QString());
}

void TestFilters::skippedCharactersAreComparedWithCase()
{
    QCOMPARE(QStringClearNonMTK2ConverNLSkipChars(QStringLiteral("ъЪ"), QStringLiteral("Ъ")),
             QStringLiteral("ЪЪ"));
    QCOMPARE(QStringClearNonMTK2ConverNLSkipChars(QStringLiteral("ъЪ"), QStringLiteral("ъ")), QString());
    QCOMPARE(QStringClearNonMTK2ConverNLSkipChars(QStringLiteral("a<$"), QString()), QStringLiteral("A"));
}

void TestFilters::lineFeedComesBeforeTheSkippedCharacters()
{
    QCOMPARE(QStringClearNonMTK2ConverNLSkipChars(QStringLiteral("<>"), QStringLiteral("<>")),
             QStringLiteral("<\n"));
}

void TestFilters::closingBracketIsDroppedInTheEditor()
{
    QCOMPARE(QStringClearForEditorNonMTK2(QStringLiteral("[]")), QStringLiteral("["));
}

void TestFilters::tatarLettersPassWithTatarOnly()
{
    const QString small = QStringLiteral("әөүҗңһ"), capital = QStringLiteral("ӘӨҮҖҢҺ");
    for (const Filter filter : {Filter(QStringClearNonMTK2), Filter(convertAndSkip)}) {
        QCOMPARE(filter(small), QString());
        const Language language(Language::Tatar);
        QCOMPARE(filter(small), capital);
    }
    const Language language(Language::Georgian);
    QCOMPARE(QStringClearNonMTK2(small), QString());
}

void TestFilters::georgianLettersPassWithTheirTable()
{
    QString letters;
    for (ushort c = 0x10D0; c <= 0x10F0; ++c)
        letters += QChar(c);
    QCOMPARE(QStringClearNonMTK2(letters), QString());
    const Language language(Language::Georgian);
    QCOMPARE(QStringClearNonMTK2(letters), letters); // all 33 have a cell
    QCOMPARE(QStringClearNonMTK2(QStringLiteral("ЯЮ(")), QString());
}

void TestFilters::charactersOutsideThePlaneAreDropped()
{
    QCOMPARE(QStringClearNonMTK2(QString::fromUtf8("А\xF0\x9F\x98\x80Б")), QStringLiteral("АБ"));
}

void TestFilters::spellingRaisesTheText()
{
    QCOMPARE(nonTlgCharReplace(QStringLiteral("что?")), QStringLiteral("4ТО?"));
}

void TestFilters::percentSignKeepsItsTrailingSpace()
{
    QCOMPARE(nonTlgCharReplace(QStringLiteral("50%")), QStringLiteral("50 ПРОЦЕНТЫ "));
}

void TestFilters::everySignIsSpelledOut_data()
{
    QTest::addColumn<QString>("sign");
    QTest::addColumn<QString>("spelling");
    row("hard sign", QStringLiteral("Ъ"), QStringLiteral("Ь"));
    row("small hard sign", QStringLiteral("ъ"), QStringLiteral("Ь"));
    row("yo", QStringLiteral("Ё"), QStringLiteral("Е"));
    row("small yo", QStringLiteral("ё"), QStringLiteral("Е"));
    row("che", QStringLiteral("Ч"), QStringLiteral("4"));
    row("small che", QStringLiteral("ч"), QStringLiteral("4"));
    row("backslash", QStringLiteral("\\"), QStringLiteral("/"));
    row("exclamation", QStringLiteral("!"), QStringLiteral(" ВОСКЛИЦАТЕЛЬНЫЙ ЗНАК "));
    row("euro", QStringLiteral("€"), QStringLiteral(" ЕВРО "));
    row("percent", QStringLiteral("%"), QStringLiteral(" ПРОЦЕНТЫ "));
    row("star", QStringLiteral("*"), QStringLiteral(" ЗВЕЗДО4КА "));
    row("semicolon", QStringLiteral(";"), QStringLiteral(" ТОЧКА С ЗАПЯТОЙ "));
    row("at, with a Latin A", QStringLiteral("@"), QStringLiteral("(\x41)"));
    row("underscore", QStringLiteral("_"), QStringLiteral(" НИЖНЕЕ ПОДЧЕРКИВАНИЕ "));
    row("numero", QStringLiteral("№"), QStringLiteral(" НОМЕР "));
}

void TestFilters::everySignIsSpelledOut()
{
    QFETCH(QString, sign);
    QFETCH(QString, spelling);
    QCOMPARE(nonTlgCharReplace(sign), spelling);
    QCOMPARE(nonTlgCharReplace(QStringLiteral("а") + sign + QStringLiteral("б")),
             QStringLiteral("А") + spelling + QStringLiteral("Б"));
}

void TestFilters::spellingGoesOverAllOccurrences()
{
    QCOMPARE(nonTlgCharReplace(QStringLiteral("ё!ё!")),
             QStringLiteral("Е ВОСКЛИЦАТЕЛЬНЫЙ ЗНАК Е ВОСКЛИЦАТЕЛЬНЫЙ ЗНАК "));
    QCOMPARE(nonTlgCharReplace(QStringLiteral("@@")), QStringLiteral("(A)(A)"));
}

void TestFilters::spelledNamesKeepTheirLetterChe()
{
    QCOMPARE(nonTlgCharReplace(QStringLiteral("ч;")), QStringLiteral("4 ТОЧКА С ЗАПЯТОЙ "));
}

void TestFilters::spellingKeepsGeorgianLetters()
{
    QCOMPARE(nonTlgCharReplace(QString(QChar(0x10D0)) + u'!'),
             QString(QChar(0x10D0)) + QStringLiteral(" ВОСКЛИЦАТЕЛЬНЫЙ ЗНАК "));
}

void TestFilters::spellingLeavesTheRest()
{
    const QString rest = QStringLiteral("|АБ&A#-\r\n 019'Ю,:(+)?./=<>[]{}$^\"");
    QCOMPARE(nonTlgCharReplace(rest), rest);
    QCOMPARE(nonTlgCharReplace(QString()), QString());
}

QTEST_GUILESS_MAIN(TestFilters)
#include "test_filters.moc"
