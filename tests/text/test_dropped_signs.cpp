#include "tests/support/row.h"
#include "text/dropped_signs.h"
#include "text/filters.h"

#include <QtTest>

/// What the operator is told of text that does not reach the line as he wrote it.
class TestDroppedSigns : public QObject
{
    Q_OBJECT

private slots:
    void eachSignIsToldOnce_data();
    void eachSignIsToldOnce();
    void fieldIsJudgedAsItGoes_data();
    void fieldIsJudgedAsItGoes();
    void hiddenRowsAreNotTold();
    void lineEndsOfACipherAreCarriedInTheTextAlone();
    void longTextTakesNoLonger();
};

void TestDroppedSigns::eachSignIsToldOnce_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("told");
    row("nothing", "", "");
    row("all carried", "Привет, мир 12\r\n|&#", "");
    row("in the order of their appearance", "А~Б№~^№В", "~ № ^");
    row("signs that are not seen", QString("А\tБ") + QChar(0x200B) + QChar(0xA0), "U+0009 U+200B U+00A0");
    row("a sign of two halves", QString::fromUcs4(U"А\U0001F600Б\U0001F600"),
        QString::fromUcs4(U"\U0001F600"));
    row("half of a sign", QString("А") + QChar(0xD83D), "U+D83D");
    row("as many as are told", "~`^_№€%;", "~ ` ^ _ № € % ;");
    row("more", "~`^_№€%;]", "~ ` ^ _ № € % ; ...");
}

void TestDroppedSigns::eachSignIsToldOnce()
{
    QFETCH(QString, text);
    QTEST(droppedSigns(text, QStringClearNonMTK2), "told");
}

void TestDroppedSigns::fieldIsJudgedAsItGoes_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("told");
    // The first are spelled out as they are left, the others go as they stand; marks of a template are
    // filled in, but "]" is none, and neither "<" nor ">" is in the code.
    const QString written = "час №~[{}$]<>!";
    row("header", int(HeaderRow), "~ ] < >");
    row("marks", int(MarksRow), "~ ] < >");
    row("address", int(AddressRow), "~ ] < >");
    row("index", int(CategoryRow), "№ ~ ] < > !");
    row("cash desk", int(KassaRow), "№ ~ ] < > !");
    row("to", int(ToRow), "№ ~ ] < > !");
    row("from", int(FromRow), "№ ~ ] < > !");
    row("signature", int(SignatureRow), "№ ~ ] < > !");
    row("text", -1, "~ ] < >");
}

void TestDroppedSigns::fieldIsJudgedAsItGoes()
{
    QFETCH(int, row);
    const QString written = "час №~[{}$]<>!";
    TelegramFields fields;
    QString *const lines[] = {&fields.index, &fields.header, &fields.marks, &fields.address,
                              &fields.kassa, &fields.to,     &fields.from,  &fields.signature};
    *(row < 0 ? &fields.text : lines[row]) = written;
    FormRows all;
    all.fill(true);
    QTEST(signsNotCarried(fields, all, false), "told");
}

void TestDroppedSigns::hiddenRowsAreNotTold()
{
    TelegramFields fields;
    fields.address = "~";
    fields.signature = "^";
    FormRows shown{};
    shown[SignatureRow] = true;
    QCOMPARE(signsNotCarried(fields, shown, false), "^");
}

void TestDroppedSigns::lineEndsOfACipherAreCarriedInTheTextAlone()
{
    TelegramFields fields;
    fields.text = "12345<\n";
    QCOMPARE(signsNotCarried(fields, FormRows{}, true), "");
    QCOMPARE(signsNotCarried(fields, FormRows{}, false), "<");
    fields.address = "<";
    FormRows all;
    all.fill(true);
    QCOMPARE(signsNotCarried(fields, all, true), "<");
}

void TestDroppedSigns::longTextTakesNoLonger()
{
    TelegramFields fields;
    fields.text = QString("ПРИВЕТ МИР\n").repeated(200000) + '~';
    QCOMPARE(signsNotCarried(fields, FormRows{}, false), "~");
}

QTEST_MAIN(TestDroppedSigns)
#include "test_dropped_signs.moc"
