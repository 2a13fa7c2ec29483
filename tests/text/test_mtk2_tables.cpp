#include "tests/support/row.h"
#include "tests/text/code_points.h"
#include "tests/text/language.h"

#include <QtTest>

/// Each cell of each table, by every way of reading it.
class TestMTK2Tables : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsNeededBeforeTheFirstSelection();
    void everyCellHoldsItsCodePoint_data();
    void everyCellHoldsItsCodePoint();
    void everyCodeDecodesInEveryRegister_data() { everyCellHoldsItsCodePoint_data(); }
    void everyCodeDecodesInEveryRegister();
    void longStreamDecodesByTheTable_data() { everyCellHoldsItsCodePoint_data(); }
    void longStreamDecodesByTheTable();
    void everyCellIsFoundAtItsFirstPlace_data() { everyCellHoldsItsCodePoint_data(); }
    void everyCellIsFoundAtItsFirstPlace();
    void fillerIsNeverFound_data() { everyCellHoldsItsCodePoint_data(); }
    void fillerIsNeverFound();
    void foreignCharacterIsNotFoundInTheRow();
    void registerNumbersHaveTheirCodes();
    void maskTableHoldsSixLettersBeforeItsEnd();
};

// Runs first, before any table was selected.
void TestMTK2Tables::nothingIsNeededBeforeTheFirstSelection()
{
    int reg = 0;
    QByteArray codes;
    MTK2FromQString(QStringLiteral("А"), codes, reg);
    QCOMPARE(codes, QByteArray("\x00\x03", 2));
    QString text;
    QStringFromMTK2(codes, text, reg);
    QCOMPARE(text, QStringLiteral("|А"));
    QCOMPARE(findMTK(u'А', 1), 3);
    QCOMPARE(findQChar(3, 1), QChar(0x0410));
    QVERIFY(QCharIsValidForMTK2(u'А'));
}

void TestMTK2Tables::everyCellHoldsItsCodePoint_data()
{
    QTest::addColumn<int>("table");
    for (int i = 0; i < int(std::size(CodePoints::Tables)); ++i)
        row(CodePoints::Tables[i].name, i);
}

void TestMTK2Tables::everyCellHoldsItsCodePoint()
{
    QFETCH(int, table);
    const CodePoints::Table &expected = CodePoints::Tables[table];
    const Language language(expected.language);
    for (int reg = 0; reg < 3; ++reg) {
        for (int code = 0; code <= 32; ++code) {
            QCOMPARE(fromMTKcode[reg][code], expected.rows[reg][code]);
            QCOMPARE(findQChar(uchar(code), reg), QChar(expected.rows[reg][code]));
        }
    }
}

void TestMTK2Tables::everyCodeDecodesInEveryRegister()
{
    QFETCH(int, table);
    const CodePoints::Table &expected = CodePoints::Tables[table];
    const Language language(expected.language);
    for (int before = 0; before < 3; ++before) {
        for (int code = 0; code <= 32; ++code) {
            const int after = code == 0 ? 1 : code == 27 ? 2 : code == 31 ? 0 : before;
            const QChar character(expected.rows[after][code]);

            int reg = before;
            QCOMPARE(QCharFromMTK2(uchar(code), reg), character);
            QCOMPARE(reg, after);

            reg = before;
            QCOMPARE(QStringFromMTK2(uchar(code), reg), QString(character));
            QCOMPARE(reg, after);

            reg = before;
            QString text = QStringLiteral("former");
            QStringFromMTK2(QByteArray(1, char(code)), text, reg);
            QCOMPARE(text, QString(character));
            QCOMPARE(reg, after);
        }
    }
}

void TestMTK2Tables::longStreamDecodesByTheTable()
{
    QFETCH(int, table);
    const CodePoints::Table &expected = CodePoints::Tables[table];
    const Language language(expected.language);
    QByteArray stream; // each code in front of each other, and now and then the filler
    for (int i = 0; i < 33 * 33; ++i)
        stream.append(char(i % 33)).append(char(i < 512 ? i / 33 % 32 : i / 33));
    for (int begin = 0; begin < 3; ++begin) {
        int row = begin;
        QString plain;
        for (const char code : qAsConst(stream)) {
            row = code == 0 ? 1 : code == 27 ? 2 : code == 31 ? 0 : row;
            plain += QChar(expected.rows[row][int(code)]);
        }
        for (int skipped = 0; skipped < 9; ++skipped) { // wherever in the stream a chunk ends
            int reg = begin;
            QString head, tail;
            QStringFromMTK2(stream.left(skipped), head, reg);
            QStringFromMTK2(stream.mid(skipped), tail, reg);
            QCOMPARE(head + tail, plain);
            QCOMPARE(reg, row);
        }
    }
}

void TestMTK2Tables::everyCellIsFoundAtItsFirstPlace()
{
    QFETCH(int, table);
    const CodePoints::Table &expected = CodePoints::Tables[table];
    const Language language(expected.language);
    for (int reg = 0; reg < 3; ++reg) {
        for (int code = 0; code < 32; ++code) {
            QCOMPARE(findMTK(QChar(expected.rows[reg][code]), reg), code);
            QVERIFY(QCharIsValidForMTK2(QChar(expected.rows[reg][code])));
        }
    }
}

void TestMTK2Tables::fillerIsNeverFound()
{
    QFETCH(int, table);
    const Language language(CodePoints::Tables[table].language);
    for (int reg = 0; reg < 3; ++reg)
        QCOMPARE(findMTK(u'^', reg), 33);
    QVERIFY(!QCharIsValidForMTK2(u'^'));
}

void TestMTK2Tables::foreignCharacterIsNotFoundInTheRow()
{
    const Language language(Language::None);
    QCOMPARE(findMTK(u'A', 1), 33); // Latin, in the national row
    QCOMPARE(findMTK(u'А', 0), 33);
    QCOMPARE(findMTK(u'1', 0), 33);
    QCOMPARE(findMTK(u'Ч', 1), 33);
    QCOMPARE(findMTK(u'!', 2), 33);
    QCOMPARE(findMTK(QChar(), 0), 33);
}

void TestMTK2Tables::registerNumbersHaveTheirCodes()
{
    QCOMPARE(MTK2Registr(0), uchar(0x1F));
    QCOMPARE(MTK2Registr(1), uchar(0x00));
    QCOMPARE(MTK2Registr(2), uchar(0x1B));
}

void TestMTK2Tables::maskTableHoldsSixLettersBeforeItsEnd()
{
    const ushort letters[] = {0x04D8, 0x04E8, 0x04AE, 0x0496, 0x04A2, 0x04BA, 0};
    const char *masks[] = {
        "\x3F\x3F\x3F", "\x28\x28\x28", "\x29\x29\x29", "\x2F\x2F\x2F", "\x3A\x3A\x3A", "\x27\x27\x27", ""};
    for (int i = 0; i < 7; ++i) {
        QCOMPARE(tatar[i].letter.unicode(), letters[i]);
        QCOMPARE(tatar[i].mask, QString::fromLatin1(masks[i]));
    }
}

QTEST_GUILESS_MAIN(TestMTK2Tables)
#include "test_mtk2_tables.moc"
