#include "tests/support/row.h"
#include "text/telegram_form.h"

#include <QRandomGenerator>
#include <QtTest>

namespace
{
using F = TelegramFields;

const QString End = QStringLiteral("-\n\n\n\n\n\n");

TelegramMoment moment()
{
    return {42, QDateTime(QDate(2026, 7, 3), QTime(14, 5, 9))};
}

TelegramFields withText(const QString &text)
{
    TelegramFields fields;
    fields.text = text;
    return fields;
}

QString composed(const TelegramFields &fields, int form)
{
    return composeTelegram(fields, form, rowsOfForm(form), moment());
}

/// Every field filled.
TelegramFields full()
{
    TelegramFields fields;
    fields.category = QStringLiteral("П");
    fields.index = QStringLiteral("123456");
    fields.header = QStringLiteral("МОСКВА 1/2");
    fields.headerWords = QStringLiteral("7");
    fields.headerTime = QStringLiteral("03/07 1405");
    fields.marks = QStringLiteral("ЛЮКС");
    fields.address = QStringLiteral("КАЗАНЬ ПЕТРОВУ");
    fields.kassa = QStringLiteral("КАССА 5");
    fields.to = QStringLiteral("PARIS");
    fields.from = QStringLiteral("MOSCOW");
    fields.fromWords = QStringLiteral("4/6");
    fields.fromTime = QStringLiteral("03 1405");
    fields.text = QStringLiteral("ПРИВЕТ\r\nМИР");
    fields.signature = QStringLiteral("ИВАНОВ");
    return fields;
}
} // namespace

/// The forms of a telegram: their composition, templates and checks.
class TestTelegramForm : public QObject
{
    Q_OBJECT

private slots:
    void formsShowTheirRows_data();
    void formsShowTheirRows();
    void unknownFormShowsNoRow();
    void eachFormIsComposedInItsOrder_data();
    void eachFormIsComposedInItsOrder();
    void secondSeriesStandsInFrontOfTheIndex();
    void emptyLinesAreLeftOutAsEachAllows_data();
    void emptyLinesAreLeftOutAsEachAllows();
    void hiddenRowTakesNoPart_data();
    void hiddenRowTakesNoPart();
    void textEndsAsItsFormSays_data();
    void textEndsAsItsFormSays();
    void placeholdersAreReplaced_data();
    void placeholdersAreReplaced();
    void wordCountIsOfTheBodyInTheHeadToo();
    void whatTheCodeCannotCarryIsDropped();
    void templateKeepsPlaceholdersAndEmptyLines();
    void templateIsTakenApart_data();
    void templateIsTakenApart();
    void fieldOverLinesEndsTheTakingApart_data();
    void fieldOverLinesEndsTheTakingApart();
    void tailIsCutOnlyNearTheEndWithoutASignature_data();
    void tailIsCutOnlyNearTheEndWithoutASignature();
    void categoryIsReadFromItsLine_data();
    void categoryIsReadFromItsLine();
    void takingApartUndoesTheTemplate();
    void damagedTemplateLosesNoText();
    void wordsAreCountedOfTheShownRows();
    void internationalWordsAreTensAndWords_data();
    void internationalWordsAreTensAndWords();
};

void TestTelegramForm::formsShowTheirRows_data()
{
    QTest::addColumn<int>("form");
    QTest::addColumn<QList<int>>("rows");
    row("message", int(MessageForm), QList<int>());
    row("telegram", int(ShortForm), QList<int>{CategoryRow});
    row("full telegram", int(FullForm),
        QList<int>{CategoryRow, HeaderRow, MarksRow, AddressRow, SignatureRow});
    row("international", int(InternationalForm),
        QList<int>{CategoryRow, KassaRow, ToRow, FromRow, SignatureRow});
    row("REX400", int(Rex400Form), QList<int>{HeaderRow, SignatureRow});
}

void TestTelegramForm::formsShowTheirRows()
{
    QFETCH(int, form);
    QFETCH(QList<int>, rows);
    const FormRows shown = rowsOfForm(form);
    for (int i = 0; i < FormRowCount; ++i)
        QCOMPARE(shown[size_t(i)], rows.contains(i));
}

void TestTelegramForm::unknownFormShowsNoRow()
{
    for (const int form : {-1, 5, 1000})
        QCOMPARE(rowsOfForm(form), FormRows{});
}

void TestTelegramForm::eachFormIsComposedInItsOrder_data()
{
    QTest::addColumn<int>("form");
    QTest::addColumn<QString>("text");
    row("message", int(MessageForm), QStringLiteral("ПРИВЕТ\r\nМИР"));
    row("telegram", int(ShortForm), QStringLiteral("П123456\r\n|||\r\n\n\nПРИВЕТ\r\nМИР") + End);
    row("full telegram", int(FullForm),
        QStringLiteral("П123456\r\n|||\r\n\n\nМОСКВА 1/2 7 03/07 1405=\r\n\nЛЮКС\r\n\nКАЗАНЬ ПЕТРОВУ=\r\n"
                       "ПРИВЕТ\r\nМИР=\r\nИВАНОВ") +
            End);
    row("international", int(InternationalForm),
        QStringLiteral("П123456\r\n|||\r\n\n\nКАССА 5\r\nPARIS\r\nMOSCOW 4/6 03 1405\r\nПРИВЕТ\r\nМИР"));
    row("REX400", int(Rex400Form),
        QStringLiteral("МОСКВА 1/2 7 03/07 1405=\r\n\nПРИВЕТ\r\nМИР=\r\nИВАНОВ") + End);
}

void TestTelegramForm::eachFormIsComposedInItsOrder()
{
    QFETCH(int, form);
    QTEST(composed(full(), form), "text");
}

void TestTelegramForm::secondSeriesStandsInFrontOfTheIndex()
{
    TelegramFields fields = full();
    fields.secondSeries = true;
    QCOMPARE(composed(fields, ShortForm), QStringLiteral("П02 123456\r\n|||\r\n\n\nПРИВЕТ\r\nМИР") + End);
}

void TestTelegramForm::emptyLinesAreLeftOutAsEachAllows_data()
{
    QTest::addColumn<int>("form");
    QTest::addColumn<QString>("text");
    row("full telegram", int(FullForm), QStringLiteral("П123456\r\n|||\r\n\n\nПРИВЕТ") + End);
    row("international", int(InternationalForm),
        QStringLiteral("П123456\r\n|||\r\n\n\n\r\n\r\n  \r\nПРИВЕТ")); // till, to, from with its two blanks
    row("REX400", int(Rex400Form), QStringLiteral("ПРИВЕТ") + End);
}

void TestTelegramForm::emptyLinesAreLeftOutAsEachAllows()
{
    QFETCH(int, form);
    TelegramFields fields = withText(QStringLiteral("ПРИВЕТ"));
    fields.category = QStringLiteral("П");
    fields.index = QStringLiteral("123456");
    fields.headerWords = fields.headerTime = QStringLiteral("0"); // of a line that is left out
    QTEST(composed(fields, form), "text");
}

void TestTelegramForm::hiddenRowTakesNoPart_data()
{
    QTest::addColumn<int>("hidden");
    QTest::addColumn<QString>("missing");
    row("category", int(CategoryRow), QStringLiteral("П123456\r\n|||\r\n\n\n"));
    row("header", int(HeaderRow), QStringLiteral("МОСКВА 1/2 7 03/07 1405=\r\n\n"));
    row("till", int(KassaRow), QStringLiteral("КАССА 5\r\n"));
    row("to", int(ToRow), QStringLiteral("PARIS\r\n"));
    row("from", int(FromRow), QStringLiteral("MOSCOW 4/6 03 1405\r\n"));
    row("marks", int(MarksRow), QStringLiteral("ЛЮКС\r\n\n"));
    row("address", int(AddressRow), QStringLiteral("КАЗАНЬ ПЕТРОВУ=\r\n"));
    row("signature", int(SignatureRow), QStringLiteral("=\r\nИВАНОВ"));
}

void TestTelegramForm::hiddenRowTakesNoPart()
{
    QFETCH(int, hidden);
    QFETCH(QString, missing);
    FormRows shown;
    shown.fill(true);
    QString whole = QStringLiteral("П123456\r\n|||\r\n\n\nМОСКВА 1/2 7 03/07 1405=\r\n\nКАССА 5\r\nPARIS\r\n"
                                   "MOSCOW 4/6 03 1405\r\nЛЮКС\r\n\nКАЗАНЬ ПЕТРОВУ=\r\n"
                                   "ПРИВЕТ\r\nМИР=\r\nИВАНОВ-\n\n\n\n\n\n");
    QCOMPARE(composeTelegram(full(), FullForm, shown, moment()), whole);
    shown[size_t(hidden)] = false;
    QCOMPARE(whole.count(missing), 1);
    QCOMPARE(composeTelegram(full(), FullForm, shown, moment()), whole.remove(missing));
}

void TestTelegramForm::textEndsAsItsFormSays_data()
{
    QTest::addColumn<int>("form");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("signature");
    QTest::addColumn<QString>("ends");
    const QString none;
    const QString name = QStringLiteral("ИВАНОВ");
    const int shortForm = ShortForm, rex = Rex400Form;
    row("form 0 has no end", int(MessageForm), QStringLiteral("АБВ"), none, QStringLiteral("АБВ"));
    row("international has no end", int(InternationalForm), QStringLiteral("АБВ"), name,
        QStringLiteral("АБВ"));
    row("plain", shortForm, QStringLiteral("АБВ"), none, QStringLiteral("АБВ") + End);
    row("a dash of the operator's", shortForm, QStringLiteral("АБВ-"), none, QStringLiteral("АБВ-"));
    row("a dash with lines behind", shortForm, QStringLiteral("АБВ-\r\n\r\n"), none,
        QStringLiteral("АБВ-\r\n\r\n"));
    row("signature is hidden", shortForm, QStringLiteral("АБВ-"), name, QStringLiteral("АБВ-"));
    row("a dash and a signature", rex, QStringLiteral("АБВ-"), name, QStringLiteral("АБВ-=\r\nИВАНОВ") + End);
    row("signature", rex, QStringLiteral("АБВ"), name, QStringLiteral("АБВ=\r\nИВАНОВ") + End);
    row("signature behind an =", rex, QStringLiteral("АБВ="), name, QStringLiteral("АБВ=\r\nИВАНОВ") + End);
    row("an = with a blank behind", rex, QStringLiteral("АБВ= "), name,
        QStringLiteral("АБВ= \r\nИВАНОВ") + End);
    row("one character", shortForm, QStringLiteral("А"), none, QStringLiteral("А"));
    row("two characters", shortForm, QStringLiteral("АБ"), none, QStringLiteral("АБ") + End);
    row("one and a signature", rex, QStringLiteral("А"), name, QStringLiteral("А"));
    row("nothing", shortForm, none, none, none);
    row("blanks alone", shortForm, QStringLiteral("  "), none, QStringLiteral("  ") + End);
}

void TestTelegramForm::textEndsAsItsFormSays()
{
    QFETCH(int, form);
    QFETCH(QString, text);
    QFETCH(QString, signature);
    TelegramFields fields = withText(text);
    fields.signature = signature;
    FormRows shown{};
    shown[SignatureRow] = rowsOfForm(form)[SignatureRow];
    QTEST(composeTelegram(fields, form, shown, moment()), "ends");
}

void TestTelegramForm::placeholdersAreReplaced_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("becomes");
    row("number", QStringLiteral("[/["), QStringLiteral("42/42"));
    row("day", QStringLiteral("{"), QStringLiteral("07.03"));
    row("time", QStringLiteral("}"), QStringLiteral("1405"));
    row("date", QStringLiteral("$DD.$MM.$YYYY"), QStringLiteral("03.07.2026"));
    row("short year", QStringLiteral("$YY"), QStringLiteral("26"));
    row("clock", QStringLiteral("$hh:$mm:$ss"), QStringLiteral("14:05:09"));
    row("words", QStringLiteral("А Б $"), QStringLiteral("А Б 3"));
    row("words and a figure", QStringLiteral("А $5"), QStringLiteral("А 25"));
    row("two counts", QStringLiteral("$ $"), QStringLiteral("2 2"));
    row("five of a year", QStringLiteral("$YYY"), QStringLiteral("26Y"));
}

void TestTelegramForm::placeholdersAreReplaced()
{
    QFETCH(QString, text);
    QTEST(composed(withText(text), MessageForm), "becomes");
}

void TestTelegramForm::wordCountIsOfTheBodyInTheHeadToo()
{
    TelegramFields fields = withText(QStringLiteral("А Б В"));
    fields.header = QStringLiteral("МОСКВА [");
    fields.headerWords = QStringLiteral("$");
    fields.headerTime = QStringLiteral("$DD/$MM");
    fields.signature = QStringLiteral("ИВАНОВ");
    QCOMPARE(composed(fields, Rex400Form), QStringLiteral("МОСКВА 42 4 03/07=\r\n\nА Б В=\r\nИВАНОВ") + End);
}

void TestTelegramForm::whatTheCodeCannotCarryIsDropped()
{
    TelegramFields fields = withText(QStringLiteral("привет~№"));
    fields.category = QStringLiteral("п]");
    QCOMPARE(composed(fields, ShortForm), QStringLiteral("П\r\n|||\r\n\n\nПРИВЕТ") + End);
}

void TestTelegramForm::templateKeepsPlaceholdersAndEmptyLines()
{
    TelegramFields fields = withText(QStringLiteral("ТЕКСТ $ [ {"));
    fields.header = QStringLiteral("МОСКВА [");
    fields.headerWords = QStringLiteral("12"); // goes with the line alone
    QCOMPARE(composeTemplate(fields, rowsOfForm(FullForm)),
             QStringLiteral("\r\n|||\r\n\n\nМОСКВА [=\r\n\n\r\n\n=\r\nТЕКСТ $ [ {=\r\n") + End);
    QCOMPARE(composeTemplate(fields, rowsOfForm(MessageForm)), QStringLiteral("ТЕКСТ $ [ {") + End);
}

void TestTelegramForm::templateIsTakenApart_data()
{
    QTest::addColumn<int>("form");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QStringList>(
        "fields"); // category, index, header, till, to, from, marks, address, text, signature
    row("telegram", int(ShortForm), QStringLiteral("П123456\r\n|||\r\n\n\nПРИВЕТ") + End,
        QStringList({"П", "123456", "", "", "", "", "", "", "ПРИВЕТ", ""}));
    row("full telegram", int(FullForm),
        QStringLiteral("С1\r\n|||\r\n\n\nМОСКВА=\r\n\nЛЮКС\r\n\nКАЗАНЬ=\r\nПРИВЕТ\r\nМИР=\r\nИВАНОВ") + End,
        QStringList({"С", "1", "МОСКВА", "", "", "", "ЛЮКС", "КАЗАНЬ", "ПРИВЕТ\r\nМИР", "ИВАНОВ"}));
    row("international", int(InternationalForm),
        QStringLiteral("П1\r\n|||\r\n\n\nКАССА\r\nPARIS\r\nMOSCOW\r\nТЕКСТ=\r\nИВАНОВ") + End,
        QStringList({"П", "1", "", "КАССА", "PARIS", "MOSCOW", "", "", "ТЕКСТ", "ИВАНОВ"}));
    row("REX400", int(Rex400Form), QStringLiteral("МОСКВА=\r\n\nТЕКСТ=\r\nИВАНОВ") + End,
        QStringList({"", "", "МОСКВА", "", "", "", "", "", "ТЕКСТ", "ИВАНОВ"}));
    row("last = in front of the tail", int(Rex400Form), QStringLiteral("Г=\r\n\nА=\r\nБ=\r\nВ") + End,
        QStringList({"", "", "Г", "", "", "", "", "", "А=\r\nБ", "В"}));
    row("message", int(MessageForm), QStringLiteral("П1\r\nТЕКСТ") + End,
        QStringList({"", "", "", "", "", "", "", "", "П1\r\nТЕКСТ", ""}));
}

void TestTelegramForm::templateIsTakenApart()
{
    QFETCH(int, form);
    QFETCH(QString, file);
    const TelegramFields f = parseTemplate(file, rowsOfForm(form));
    const QStringList found = {f.category, f.index, f.header,  f.kassa, f.to,
                               f.from,     f.marks, f.address, f.text,  f.signature};
    QTEST(found, "fields");
}

void TestTelegramForm::fieldOverLinesEndsTheTakingApart_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("header");
    QTest::addColumn<QString>("text");
    row("at the header", QStringLiteral("А\r\nБ=\r\n\nТЕКСТ=\r\nВ") + End, QString(),
        QStringLiteral("А\r\nБ=\r\n\nТЕКСТ=\r\nВ") + End);
    row("no separator", QStringLiteral("ТЕКСТ"), QString(), QStringLiteral("ТЕКСТ"));
    row("at the signature", QStringLiteral("А=\r\n\nТЕКСТ=\r\nВ\r\nГ") + End, QStringLiteral("А"),
        QStringLiteral("ТЕКСТ=\r\nВ\r\nГ") + End);
    row("no tail", QStringLiteral("А=\r\n\nТЕКСТ=\r\nВ"), QStringLiteral("А"), QStringLiteral("ТЕКСТ=\r\nВ"));
    row("empty", QString(), QString(), QString());
}

void TestTelegramForm::fieldOverLinesEndsTheTakingApart()
{
    QFETCH(QString, file);
    const TelegramFields fields = parseTemplate(file, rowsOfForm(Rex400Form));
    QTEST(fields.header, "header");
    QTEST(fields.text, "text");
    QCOMPARE(fields.signature, QString());
}

void TestTelegramForm::tailIsCutOnlyNearTheEndWithoutASignature_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("text");
    row("at the end", QStringLiteral("АБВ") + End, QStringLiteral("АБВ"));
    row("ten from the end", QStringLiteral("АБВ") + End + QStringLiteral("ГДЕ"), QStringLiteral("АБВ"));
    row("eleven from the end", QStringLiteral("АБВ") + End + QStringLiteral("ГДЕЖ"),
        QStringLiteral("АБВ") + End + QStringLiteral("ГДЕЖ"));
    row("none", QStringLiteral("АБВ-\n\n"), QStringLiteral("АБВ-\n\n"));
}

void TestTelegramForm::tailIsCutOnlyNearTheEndWithoutASignature()
{
    QFETCH(QString, file);
    QTEST(parseTemplate(file, rowsOfForm(MessageForm)).text, "text");
}

void TestTelegramForm::categoryIsReadFromItsLine_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("category");
    QTest::addColumn<bool>("second");
    QTest::addColumn<QString>("index");
    row("plain", QStringLiteral("П123456"), QStringLiteral("П"), false, QStringLiteral("123456"));
    row("first series", QStringLiteral("П01 123456"), QStringLiteral("П"), false, QStringLiteral("123456"));
    row("second series", QStringLiteral("П02 123456"), QStringLiteral("П"), true, QStringLiteral("123456"));
    row("double index", QStringLiteral("СЦ123=123"), QStringLiteral("СЦ"), false, QStringLiteral("123=123"));
    row("a second =", QStringLiteral("СЦ1=2=3"), QStringLiteral("СЦ"), false, QStringLiteral("1=2"));
    row("no category", QStringLiteral("123"), QString(""), false, QStringLiteral("123"));
    row("no index", QStringLiteral("П"), QStringLiteral("П"), false, QString(""));
    row("neither", QString(""), QString(""), false, QString(""));
}

void TestTelegramForm::categoryIsReadFromItsLine()
{
    QFETCH(QString, line);
    const TelegramFields fields =
        parseTemplate(line + QStringLiteral("\r\n|||\r\n\n\nТЕКСТ"), rowsOfForm(ShortForm));
    QTEST(fields.category, "category");
    QTEST(fields.secondSeries, "second");
    QTEST(fields.index, "index");
    QCOMPARE(fields.text, QStringLiteral("ТЕКСТ"));
}

// Fields as an operator can write them: on one line each, the text with line ends, "=" and dashes in it.
void TestTelegramForm::takingApartUndoesTheTemplate()
{
    QRandomGenerator random(20260703);
    const auto anyOf = [&random](const QString &characters, int most) {
        QString text;
        for (int i = random.bounded(most + 1); i > 0; --i)
            text += characters.at(random.bounded(characters.size()));
        return text;
    };
    const QString inLine = QStringLiteral("АБВ 12=-/$[{|");
    for (int round = 0; round < 5000; ++round) {
        TelegramFields fields;
        fields.category = anyOf(QStringLiteral("ПСЦ"), 2);
        fields.secondSeries = random.bounded(2) == 1;
        fields.index = anyOf(QStringLiteral("0123456789"), 6);
        for (QString F::*field :
             {&F::header, &F::marks, &F::address, &F::kassa, &F::to, &F::from, &F::signature})
            fields.*field = anyOf(inLine, 12);
        for (int i = random.bounded(4); i >= 0; --i)
            fields.text += anyOf(inLine, 20) + (random.bounded(2) == 1 ? QStringLiteral("\r\n") : QString());
        const int form = random.bounded(int(TelegramFormCount));
        const FormRows shown = rowsOfForm(form);
        const TelegramFields back = parseTemplate(composeTemplate(fields, shown), shown);
        const auto expected = [&shown](FormRow row, const QString &field) {
            return shown[row] ? field : QString();
        };
        QCOMPARE(back.text, fields.text);
        QCOMPARE(back.category, expected(CategoryRow, fields.category));
        QCOMPARE(back.index, expected(CategoryRow, fields.index));
        QCOMPARE(back.secondSeries, shown[CategoryRow] && fields.secondSeries);
        QCOMPARE(back.header, expected(HeaderRow, fields.header));
        QCOMPARE(back.marks, expected(MarksRow, fields.marks));
        QCOMPARE(back.address, expected(AddressRow, fields.address));
        QCOMPARE(back.kassa, expected(KassaRow, fields.kassa));
        QCOMPARE(back.to, expected(ToRow, fields.to));
        QCOMPARE(back.from, expected(FromRow, fields.from));
        QCOMPARE(back.signature, expected(SignatureRow, fields.signature));
    }
}

void TestTelegramForm::damagedTemplateLosesNoText()
{
    const QString whole = composeTemplate(full(), rowsOfForm(FullForm));
    for (int length = 0; length <= whole.size(); ++length) {
        const TelegramFields f = parseTemplate(whole.left(length), rowsOfForm(FullForm));
        const QString all = f.category + f.index + f.header + f.marks + f.address + f.text + f.signature;
        for (const QChar c : whole.left(length))
            QVERIFY2(!c.isLetterOrNumber() || all.contains(c), qPrintable(QString::number(length)));
    }
}

void TestTelegramForm::wordsAreCountedOfTheShownRows()
{
    QCOMPARE(billedWords(full(), rowsOfForm(MessageForm)), 2);
    QCOMPARE(billedWords(full(), rowsOfForm(Rex400Form)), 3);
    QCOMPARE(billedWords(full(), rowsOfForm(FullForm)), 6); // ЛЮКС, КАЗАНЬ ПЕТРОВУ, two, ИВАНОВ
}

void TestTelegramForm::internationalWordsAreTensAndWords_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shows");
    // "PARIS" and "X" with a blank behind each are 8 characters
    row("nothing", QString(), QStringLiteral("1/2"));
    row("ten", QStringLiteral("AB"), QStringLiteral("1/3"));
    row("eleven", QStringLiteral("ABC"), QStringLiteral("2/3"));
    row("twenty", QStringLiteral("ABCDE FGHIJK"), QStringLiteral("2/4"));
    row("twenty-one", QStringLiteral("ABCDE FGHIJKL"), QStringLiteral("3/4"));
}

void TestTelegramForm::internationalWordsAreTensAndWords()
{
    QFETCH(QString, text);
    TelegramFields fields = withText(text);
    fields.to = QStringLiteral("PARIS");
    fields.signature = QStringLiteral("X");
    QTEST(internationalWords(fields, rowsOfForm(InternationalForm)), "shows");
}

QTEST_APPLESS_MAIN(TestTelegramForm)
#include "test_telegram_form.moc"
