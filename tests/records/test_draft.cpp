#include "records/draft.h"
#include "tests/support/row.h"

#include <QRandomGenerator>

/// A telegram that is being written, as the content of a file.
class TestDraft : public QObject
{
    Q_OBJECT

private slots:
    void everyFieldComesBack();
    void anyTextComesBack();
    void changeOfAnyFieldIsAChange();
    void damagedContentIsNoDraft_data();
    void damagedContentIsNoDraft();
    void anyPartOfADraftIsNone();
    void anyChangedByteIsHarmless();
};

namespace
{
using F = TelegramFields;
QString F::*const lines[] = {&F::category,  &F::index,    &F::header, &F::headerWords, &F::headerTime,
                             &F::marks,     &F::address,  &F::kassa,  &F::to,          &F::from,
                             &F::fromWords, &F::fromTime, &F::text,   &F::signature};

/// Each field its own number.
Draft numbered()
{
    Draft draft;
    draft.form = InternationalForm;
    draft.cryptoMode = true;
    draft.fields.secondSeries = true;
    int number = 0;
    for (QString F::*line : lines)
        draft.fields.*line = QString::number(++number);
    return draft;
}

QString anyText(QRandomGenerator &random)
{
    const QString letters = QStringLiteral("АЯаяAZ09 \n\r\t\"\\/<>[]{}$|&#\u10D0\u04D8\u0001\u2028");
    QString text;
    for (int i = random.bounded(40); i > 0; --i)
        text += letters.at(random.bounded(letters.size()));
    return text;
}
} // namespace

void TestDraft::everyFieldComesBack()
{
    const auto back = draftOf(contentOf(numbered()));
    QVERIFY(back);
    QVERIFY(*back == numbered());
    for (int i = 0; i < int(std::size(lines)); ++i)
        QCOMPARE(back->fields.*lines[i], QString::number(i + 1));
    QCOMPARE(back->form, int(InternationalForm));
    QVERIFY(back->cryptoMode && back->fields.secondSeries);
    QVERIFY(*draftOf(contentOf(Draft())) == Draft());
}

void TestDraft::anyTextComesBack()
{
    QRandomGenerator random(1);
    for (int i = 0; i < 500; ++i) {
        Draft draft;
        draft.form = random.bounded(5);
        for (QString F::*line : lines)
            draft.fields.*line = anyText(random);
        const auto back = draftOf(contentOf(draft));
        QVERIFY(back);
        QVERIFY(*back == draft);
    }
}

void TestDraft::changeOfAnyFieldIsAChange()
{
    for (QString F::*line : lines) {
        Draft draft = numbered();
        draft.fields.*line += u'0';
        QVERIFY(draft != numbered());
    }
    Draft form = numbered(), crypto = numbered(), series = numbered();
    form.form = ShortForm;
    crypto.cryptoMode = false;
    series.fields.secondSeries = false;
    for (const Draft &changed : {form, crypto, series})
        QVERIFY(changed != numbered());
}

void TestDraft::damagedContentIsNoDraft_data()
{
    QTest::addColumn<QByteArray>("content");
    row("nothing", QByteArray());
    row("zeros", QByteArray(5000, 0));
    row("another text", QByteArray("ПРИВЕТ"));
    row("a list", QByteArray("[1, 2]"));
    row("nothing in it", QByteArray("{}"));
    row("a field missing", contentOf(Draft()).replace("address", "ADDRESS"));
    row("a number for a text", contentOf(Draft()).replace("\"text\": \"\"", "\"text\": 5"));
    row("a text for a number", contentOf(Draft()).replace("\"form\": 0", "\"form\": \"0\""));
    row("a text for a choice", contentOf(Draft()).replace("\"cryptoMode\": false", "\"cryptoMode\": \"\""));
    row("deep nesting", QByteArray(100000, '['));
}

void TestDraft::damagedContentIsNoDraft()
{
    QFETCH(QByteArray, content);
    QVERIFY(!draftOf(content));
}

void TestDraft::anyPartOfADraftIsNone()
{
    const QByteArray whole = contentOf(numbered()).trimmed();
    for (int size = 0; size < whole.size(); ++size)
        QVERIFY(!draftOf(whole.left(size)));
}

void TestDraft::anyChangedByteIsHarmless()
{
    QRandomGenerator random(2);
    for (int i = 0; i < 3000; ++i) {
        QByteArray content = contentOf(numbered());
        content[random.bounded(content.size())] = char(random.bounded(256));
        (void)draftOf(content);
    }
}

QTEST_GUILESS_MAIN(TestDraft)
#include "test_draft.moc"
