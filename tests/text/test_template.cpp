#include "tests/support/row.h"
#include "tests/text/row_name.h"
#include "text/utils.h"

#include <QtTest>

class TestTemplate : public QObject
{
    Q_OBJECT

private slots:
    void numberTakesItsDigits();
    void exactNumberNeedsAllItsDigits();
    void limitedNumberMayBeShorter();

    void ordinaryText_data();
    void ordinaryText();
    void numbers_data();
    void numbers();
    void numberBeyondTheEndOfTheText();
    void mismatchLeavesTheNumber();
    void digits_data();
    void digits();
    void letters_data();
    void letters();
    void wordFields_data();
    void wordFields();
    void fieldsAreAppended();
    void unknownFieldsEndTheMatch_data();
    void unknownFieldsEndTheMatch();
    void nullPointerEndsTheMatch();
    void endOfFormatEndsTheMatch();
};

namespace
{
/// Result of one field as "count:value".
QString matchText(const QString &format, const QString &text)
{
    QString value;
    const int count = CUtils::testTemplate(format, text, &value);
    return QStringLiteral("%1:%2").arg(count).arg(value);
}

QString matchNumber(const QString &format, const QString &text)
{
    int value = -1;
    const int count = CUtils::testTemplate(format, text, &value);
    return QStringLiteral("%1:%2").arg(count).arg(value);
}

void columns()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("result");
}

void row(const char *format, const char *text, const char *result)
{
    QTest::addRow("%s on <%s>", rowName(format).constData(), rowName(text).constData())
        << QString::fromUtf8(format) << QString::fromUtf8(text) << QString::fromUtf8(result);
}
} // namespace

void TestTemplate::numberTakesItsDigits()
{
    QCOMPARE(matchNumber(QStringLiteral("%d"), QStringLiteral("12A")), QStringLiteral("1:12"));
}

void TestTemplate::exactNumberNeedsAllItsDigits()
{
    QCOMPARE(matchNumber(QStringLiteral("%3d"), QStringLiteral("12A")), QStringLiteral("0:-1"));
}

void TestTemplate::limitedNumberMayBeShorter()
{
    QCOMPARE(matchNumber(QStringLiteral("%.3d"), QStringLiteral("12A")), QStringLiteral("1:12"));
}

// The count tells how far the match went: a number field stands at the end of each format.
void TestTemplate::ordinaryText_data()
{
    columns();
    row("", "", "0:-1");
    row("", "А", "0:-1");
    row("%d", "", "0:-1");
    row("А%d", "А7", "1:7");
    row("А%d", "Б7", "0:-1");
    row("а%d", "А7", "0:-1");
    row("АБ%d", "А", "0:-1");
    row("%%%d", "%7", "1:7");
    row("%%%d", "7", "0:-1");
    row("%%%%%d", "%%7", "1:7");
    row("% %d", " 7", "1:7");
    row("% %d", "    7", "1:7");
    row("% %d", "7", "0:-1");
    row("% %d", "\t7", "0:-1");
    row("%  %d", " 7", "0:-1"); // a run takes all spaces, none is left for the second
    row(" %d", " 7", "1:7");
    row(" %d", "   7", "1:7");
    row("  %d", "  7", "1:7");
    row("  %d", " 7", "0:-1");
    row(" А%d", "  А7", "1:7");
    row(" %d", "\t7", "0:-1");
    row("А% -%d", "А  -7", "1:7");
}

void TestTemplate::ordinaryText()
{
    QFETCH(QString, format);
    QFETCH(QString, text);
    QTEST(matchNumber(format, text), "result");
}

void TestTemplate::numbers_data()
{
    columns();
    row("%d", "0", "1:0");
    row("%d", "007", "1:7");
    row("%d", "12", "1:12");
    row("%d", "А", "0:-1");
    row("%d", " 1", "0:-1");
    row("%d", "-1", "0:-1");
    row("%0d", "1234А", "1:1234");
    row("%00d", "1234А", "1:1234");
    row("%.d", "1234А", "1:1234");
    row("%.0d", "1234А", "1:1234");
    row("%3d", "123", "1:123");
    row("%3d", "1234", "1:123");
    row("%3d", "12", "0:-1");
    row("%3d", "А", "0:-1");
    row("%3d", "12 ", "0:-1");
    row("%03d", "045", "1:45");
    row("%10d", "0000000019", "1:19");
    row("%10d", "000000019", "0:-1");
    row("%.3d", "1", "1:1");
    row("%.3d", "1234", "1:123");
    row("%.3d", "А", "0:-1");
    row("%.3d", " ", "0:-1");
    row("%.12d", "0000000000012", "1:1");
    row("%d", "2147483647", "1:2147483647");
    row("%d", "4294967297", "1:1"); // a longer run of digits wraps and does no harm
}

void TestTemplate::numbers()
{
    QFETCH(QString, format);
    QFETCH(QString, text);
    QTEST(matchNumber(format, text), "result");
}

void TestTemplate::numberBeyondTheEndOfTheText()
{
    int first = -1, second = -1;
    QCOMPARE(CUtils::testTemplate("%d%3d", "12", &first, &second), 2);
    QCOMPARE(first, 12);
    QCOMPARE(second, 0);
    first = second = -1;
    QCOMPARE(CUtils::testTemplate("%d%.3d", "12", &first, &second), 2);
    QCOMPARE(second, 0);
    first = second = -1;
    QCOMPARE(CUtils::testTemplate("%2d%d", "12", &first, &second), 1); // without a width a digit is needed
    QCOMPARE(second, -1);
}

void TestTemplate::mismatchLeavesTheNumber()
{
    int first = -1, second = -1;
    QCOMPARE(CUtils::testTemplate("%3d=%3d", "001=02", &first, &second), 1);
    QCOMPARE(first, 1);
    QCOMPARE(second, -1);
}

void TestTemplate::digits_data()
{
    columns();
    row("%D", "0012А", "1:0012");
    row("%D", "А", "0:");
    row("%D", " 1", "0:");
    row("%3D", "0123", "1:012");
    row("%3D", "01А", "0:01");
    row("%3D", "01", "0:01");
    row("%3D", "01 ", "1:01"); // a white space ends it well, even without "."
    row("%3D", "01\t", "1:01");
    row("%3D", "01\xC2\xA0", "1:01");
    row("%3D", " ", "1:");
    row("%3D", "А", "0:");
    row("%.3D", "01А", "1:01");
    row("%.3D", "01", "1:01");
    row("%.3D", "01 ", "1:01");
    row("%.3D", " ", "1:");
    row("%.3D", "А", "0:");
    row("А%D", "А", "0:");
    row("А%3D", "А", "0:");
    row("А%.3D", "А", "0:");
}

void TestTemplate::digits()
{
    QFETCH(QString, format);
    QFETCH(QString, text);
    QTEST(matchText(format, text), "result");
}

void TestTemplate::letters_data()
{
    columns();
    row("%A", "АbЯz1", "1:АbЯz");
    row("%A", "1", "0:");
    row("%A", " А", "0:");
    row("%A", "[", "0:");
    row("%A", "@", "0:");
    row("%A", "\xD7\x91", "1:\xD7\x91"); // a letter of another script
    row("%A", "\xC2\xB2", "0:");         // a raised two
    row("%2A", "АБВ", "1:АБ");
    row("%2A", "А1", "0:А");
    row("%2A", "А ", "0:А");
    row("%2A", "А", "0:А");
    row("%.2A", "А1", "1:А");
    row("%.2A", "А ", "1:А");
    row("%.2A", "А", "1:А");
    row("%.2A", "АБВ", "1:АБ");
    row("%.2A", "1", "0:");
    row("%.2A", " ", "0:");
    row("-%2A", "-", "1:"); // nothing is stored, but it counts
    row("-%.2A", "-", "1:");
    row("-%A", "-", "0:"); // without a width a letter is needed
}

void TestTemplate::letters()
{
    QFETCH(QString, format);
    QFETCH(QString, text);
    QTEST(matchText(format, text), "result");
}

void TestTemplate::wordFields_data()
{
    columns();
    row("%s", "А1-=,| Б", "1:А1-=,|");
    row("%s", "АБВ", "1:АБВ");
    row("%s", " А", "1:");
    row("%s", "\t", "1:");
    row("%s", "А\nБ", "1:А");
    row("%s", "А\rБ", "1:А");
    row("%s", "А\vБ", "1:А");
    row("%s", "А\fБ", "1:А");
    row("%s",
        "А\x1F"
        "Б",
        "1:А\x1F"
        "Б");
    row("%s",
        "А\xC2\xA0"
        "Б",
        "1:А");
    row("%s",
        "А\xC2\x85"
        "Б",
        "1:А");
    row("%s",
        "А\xE2\x80\x83"
        "Б",
        "1:А");
    row("%3s", "АБВГ", "1:АБВ");
    row("%3s", " АБ", "0:");
    row("%3s", "АБ В", "0:АБ");
    row("%3s", "АБ", "0:АБ");
    row("%.3s", "АБ В", "1:АБ");
    row("%.3s", "АБ", "1:АБ");
    row("%.3s", "АБВГ", "1:АБВ");
    row("%.3s", " АБ", "0:");
    row("-%s", "-", "0:");
    row("-%3s", "-", "0:");
    row("-%.3s", "-", "0:");
}

void TestTemplate::wordFields()
{
    QFETCH(QString, format);
    QFETCH(QString, text);
    QTEST(matchText(format, text), "result");
}

void TestTemplate::fieldsAreAppended()
{
    QString text = QStringLiteral("former ");
    QCOMPARE(CUtils::testTemplate("%D%A %s", "12АБ В", &text, &text, &text), 3);
    QCOMPARE(text, QStringLiteral("former 12АБВ"));
}

void TestTemplate::unknownFieldsEndTheMatch_data()
{
    QTest::addColumn<QString>("format");
    for (const char *format :
         {"%", "%.", "%3", "%.3", "%x", "%a", "%S", "%123d", "%-3d", "%.%", "%3 ", "% ", "%\n"})
        ::row(rowName(format).constData(), QString::fromUtf8(format));
    ::row("letter above U+00FF whose low byte is d", QStringLiteral("%") + QChar(0x0164));
    ::row("zero", QStringLiteral("%") + QChar());
}

void TestTemplate::unknownFieldsEndTheMatch()
{
    QFETCH(QString, format);
    int before = -1, behind = -1;
    QCOMPARE(CUtils::testTemplate(QStringLiteral("%1d") + format + QStringLiteral("%d"), "1%23 4", &before,
                                  &behind),
             1);
    QCOMPARE(before, 1);
    QCOMPARE(behind, -1);
    QCOMPARE(CUtils::testTemplate(format, "1", &before), 0);
}

void TestTemplate::nullPointerEndsTheMatch()
{
    int first = -1, third = -1;
    QCOMPARE(CUtils::testTemplate("%d %d %d", "1 2 3", &first, nullptr, &third), 1);
    QCOMPARE(first, 1);
    QCOMPARE(third, -1);
    QCOMPARE(CUtils::testTemplate("%s", "А", nullptr), 0);
}

void TestTemplate::endOfFormatEndsTheMatch()
{
    int number = -1;
    QCOMPARE(CUtils::testTemplate("А%dБ", "А5БВГ", &number), 1);
    QCOMPARE(number, 5);
}

QTEST_GUILESS_MAIN(TestTemplate)
#include "test_template.moc"
