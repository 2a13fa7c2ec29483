// The 5-bit code as it comes over a line, and as it goes.

#include "tests/support/row.h"
#include "tools/linesim/adapter/code_stream.h"

#include <QtTest>

using namespace Mtk2;

class TestLinesimCodeStream : public QObject
{
    Q_OBJECT

private slots:
    void everyCodeHasItsSigns_data();
    void everyCodeHasItsSigns();
    void textBecomesCodes_data();
    void textBecomesCodes();
    void whatHasNoCodeIsTold();
    void registerOutlastsTheText();
    void codesBecomeText_data();
    void codesBecomeText();
    void heldSignsAreGivenUpByAPause();
    void openingSplitByAPauseLosesItsMark();
    void writtenAndReadAgainTextIsTheSame_data();
    void writtenAndReadAgainTextIsTheSame();
};

namespace
{
QString read(const QByteArray &hex)
{
    CodeReader reader;
    QString text;
    for (const char code : QByteArray::fromHex(hex))
        text += reader.take(quint8(code));
    return text + reader.flush();
}
} // namespace

void TestLinesimCodeStream::everyCodeHasItsSigns_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("signsOfIt"); // Latin, national, figures
    const struct {
        int code;
        const char *signsOfIt;
    } rows[] = {
        {0, "|||"},  {1, "EЕ3"},    {2, "\n\n\n"}, {3, "AА-"},  {4, "   "},  {5, "SС'"},  {6, "IИ8"},
        {7, "UУ7"},  {8, "\r\r\r"}, {9, "DД*"},    {10, "RР4"}, {11, "JЙЮ"}, {12, "NН,"}, {13, "FФЭ"},
        {14, "CЦ:"}, {15, "KК("},   {16, "TТ5"},   {17, "ZЗ+"}, {18, "LЛ)"}, {19, "WВ2"}, {20, "HХЩ"},
        {21, "YЫ6"}, {22, "PП0"},   {23, "QЯ1"},   {24, "OО9"}, {25, "BБ?"}, {26, "GГШ"}, {27, "###"},
        {28, "MМ."}, {29, "XЬ/"},   {30, "VЖ="},   {31, "&&&"},
    };
    for (const auto &row : rows)
        QTest::addRow("code %d", row.code) << row.code << QString::fromUtf8(row.signsOfIt);
}

void TestLinesimCodeStream::everyCodeHasItsSigns()
{
    QFETCH(int, code);
    QFETCH(QString, signsOfIt);
    for (const Register in : {Latin, Letters, Figures}) {
        Register state = in;
        QCOMPARE(decoded(QByteArray(1, char(code)), state), signsOfIt.mid(in, 1));
        const bool changes = code == 0x00 || code == 0x1B || code == 0x1F;
        QCOMPARE(state == in, !changes || signsOfIt.at(0) == "&|#"[in]);
        state = in;
        QCOMPARE(encoded(signsOfIt.mid(in, 1), state), QByteArray(1, char(code)));
    }
}

void TestLinesimCodeStream::textBecomesCodes_data()
{
    QTest::addColumn<QByteArray>("codes");
    row("", QByteArray());
    row("АБ", QByteArray("000319"));
    row("аб", QByteArray("000319"));
    row("AB", QByteArray("0319"));
    row("#3&E", QByteArray("1b011f01"));
    row("А1Б", QByteArray("00031b170019"));
    row("А Б", QByteArray("00030419"));
    row("1 2", QByteArray("1b170413"));
    row("АЧ", QByteArray("00031b0a"));
    row("|||", QByteArray("000000"));
    row("|ЗЗ ", QByteArray("00111104"));
    row("#<>1", QByteArray("1b080217"));
    row("А!^Б", QByteArray("000319"));
    row("1А&A", QByteArray("1b1700031f03"));
    row("ЖЮ", QByteArray("001e1b0b"));
}

void TestLinesimCodeStream::textBecomesCodes()
{
    QFETCH(QByteArray, codes);
    CodeWriter writer;
    QCOMPARE(writer.write(QString::fromUtf8(QTest::currentDataTag())).toHex(), codes);
}

void TestLinesimCodeStream::whatHasNoCodeIsTold()
{
    CodeWriter writer;
    QString left;
    QCOMPARE(writer.write(QStringLiteral("!А^\x04"), &left).toHex(), QByteArray("0003"));
    QCOMPARE(left, QStringLiteral("!^\x04"));
}

void TestLinesimCodeStream::registerOutlastsTheText()
{
    CodeWriter writer;
    QCOMPARE(writer.write(QStringLiteral("А")).toHex(), QByteArray("0003"));
    QCOMPARE(writer.write(QStringLiteral("Б")).toHex(), QByteArray("19"));
    writer.restart(); // Latin
    QCOMPARE(writer.write(QStringLiteral("A")).toHex(), QByteArray("03"));
}

void TestLinesimCodeStream::codesBecomeText_data()
{
    QTest::addColumn<QByteArray>("codes");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const char *codes, const char *text) {
        ::row(name, QByteArray(codes), QString::fromUtf8(text));
    };
    row("Latin from the start", "0319", "AB");
    row("change that the letter needs", "000319", "АБ");
    row("changes within words", "00031b170019", "А1Б");
    row("change to figures behind a space", "0003041b17040019", "А 1 Б");
    row("change that was not needed", "0000030019", "||А|Б");
    row("change in front of a line end", "1b080217", "#\r\n1");
    row("change in front of a space", "00030019040019", "А|Б |Б");
    row("change in front of another, which leads back", "1b0003", "#|А");
    row("change at the end", "00031b", "А#");
    row("change back from one that stayed", "1b08170003", "#\r1|А");
    row("figures behind letters that stayed", "00001b170003", "||1А");
    row("question", "00031b09", "А#*");
    row("question in figures", "1b171b09", "1#*");
    row("star behind a figure", "1b1709", "1*");
    row("request from the start", "00111104", "|ЗЗ ");
    row("request behind figures", "1b1700111104", "1|ЗЗ ");
    row("request behind letters", "000300111104", "А|ЗЗ ");
    row("telegram", "00110e110e041b16161700041e", "|ЗЦЗЦ 001| Ж");
    row("what only begins like a request", "1b1700111103", "1ЗЗА");
    row("what only begins like a telegram", "1b1700110e11111103", "1ЗЦЗЗЗА");
    row("change within the beginning of an opening", "1b1700111b17", "1З1");
    row("answers off", "1b08020003180413150f12", "#\r\n|АО ВЫКЛ");
    row("Latin word within", "00031f030019", "АAБ");
}

void TestLinesimCodeStream::codesBecomeText()
{
    QFETCH(QByteArray, codes);
    QFETCH(QString, text);
    QCOMPARE(read(codes), text);
}

void TestLinesimCodeStream::heldSignsAreGivenUpByAPause()
{
    CodeReader reader;
    QCOMPARE(reader.take(0x1B), QString());
    QCOMPARE(reader.take(0x17), QStringLiteral("1"));
    QCOMPARE(reader.take(0x00), QString());
    QCOMPARE(reader.take(0x11), QString());
    QCOMPARE(reader.flush(), QStringLiteral("З"));
    QCOMPARE(reader.flush(), QString());
    QCOMPARE(reader.take(0x03), QStringLiteral("А"));
}

void TestLinesimCodeStream::openingSplitByAPauseLosesItsMark()
{
    CodeReader reader;
    QString text;
    for (const char code : QByteArray::fromHex("1b170011"))
        text += reader.take(quint8(code));
    text += reader.flush();
    text += reader.take(0x11);
    text += reader.take(0x04);
    QCOMPARE(text, QStringLiteral("1ЗЗ "));
}

void TestLinesimCodeStream::writtenAndReadAgainTextIsTheSame_data()
{
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const char *text) { ::row(name, QString::fromUtf8(text)); };
    row("request", "|ЗЗ ");
    row("telegram", "|ЗЦЗЦ 001 МОСКВА 12/34 (ПРОВЕРКА)=\r\nНННН  ");
    row("receipt", "|ЗЦЗЦ КС ВАШ 001=001 НННН  ");
    row("confirmation", "|ЗЦЗЦ КС Р012 ПРИН ИВАНОВА НННН  ");
    row("answerback", "#\r\n654321 |ЗНАМЯ");
    row("question", "#*");
    row("all registers", "ABC 12 АБВ");
}

void TestLinesimCodeStream::writtenAndReadAgainTextIsTheSame()
{
    QFETCH(QString, text);
    CodeWriter writer;
    QCOMPARE(read(writer.write(text).toHex()), text);
}

QTEST_GUILESS_MAIN(TestLinesimCodeStream)
#include "test_linesim_code_stream.moc"
