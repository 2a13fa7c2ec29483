#include "tests/text/row_name.h"
#include "text/utils.h"

#include <QtTest>

/// Words as they are billed.
class TestWords : public QObject
{
    Q_OBJECT

private slots:
    void words_data();
    void words();
    void secondArgumentHasNoEffect();
};

void TestWords::words_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("count");
    const auto row = [](const char *text, int count, const char *why = "") {
        QTest::addRow("%s %s", rowName(text).constData(), why) << QString::fromUtf8(text) << count;
    };
    row("А - Б", 3, "(dash by itself)");
    row("А-Б", 2);
    row("", 0, "(empty)");
    row("   \r\n\t", 0, "(blanks)");
    row("А", 1);
    row("А Б", 2);
    row("  А  Б  ", 2);
    row("А\tБ\nВ\rГ", 4);
    row("А\vБ", 1, "(vertical tab is no separator)");
    row("12.5", 1);

    row("А=Б", 2);
    row("А=Б=В", 3);
    row("=", 1, "(a sign alone is a run)");
    row("=Б", 1, "(nothing on the left)");
    row("А=", 1, "(nothing on the right)");
    row("А =Б", 2, "(separator on the left)");
    row("А= Б", 2, "(separator on the right)");
    row("А-=Б", 2, "(dash on the left)");
    row("А=-Б", 2, "(dash on the right)");
    row("А==Б", 3, "(each has a neighbour on both sides)");
    row("А=|", 1, "(only a mark on the right)");
    row("|=Б", 1, "(only a mark on the left)");
    row("|А#=|Б", 2, "(marks between the neighbours)");
    row("А|#= Б", 2, "(separator behind the marks)");

    row("-", 1);
    row("---", 1, "(a run counts once)");
    row("- -", 2);
    row("- А", 2, "(at the start)");
    row("А -", 2, "(at the end)");
    row("А -\r\nБ", 3, "(up to a line end)");
    row("А\n--- Б", 3);
    row("-А", 1, "(not followed by a blank)");
    row("А-", 1, "(not behind a blank)");
    row("А --Б", 2);
    row("А-- Б", 2);
    row("А #-| Б", 3, "(marks around the dash)");
    row("А -#- Б", 3, "(mark inside the run)");
    row("А |#& Б", 2, "(marks alone are no word)");
    row("А|Б#1&C", 1, "(marks inside a word)");
    row("А-=-Б", 3, "(the sign between dashes is a run)");
    row("<А>", 1, "(visible line ends are letters here)");
    row("А - Б=В - - Г-Д", 8);
}

void TestWords::words()
{
    QFETCH(QString, text);
    QFETCH(int, count);
    QCOMPARE(CUtils::WordsCount(text, 0), count);
}

void TestWords::secondArgumentHasNoEffect()
{
    for (const int ignored : {-1, 0, 1, 100})
        QCOMPARE(CUtils::WordsCount(QStringLiteral("А - Б=В"), ignored), 4);
}

QTEST_GUILESS_MAIN(TestWords)
#include "test_words.moc"
