#include "app/options.h"
#include "tests/support/row.h"
#include "tests/text/language.h"
#include "tests/ui/window/station.h"
#include "ui/form_main.h"
#include "ui/pages/editor_page.h"

#include <QCheckBox>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QtTest>

/// What goes into the editor from elsewhere, and what comes out of it.
class TestFormMainEditorText : public QObject
{
    Q_OBJECT

private slots:
    void textIsFilteredForTheCode_data();
    void textIsFilteredForTheCode();
    void cryptoModeShowsEachLineEnd();
    void textComesOutWithTheLinesEnds_data();
    void textComesOutWithTheLinesEnds();
    void cryptoModeTurnsTheTextBothWays();
    void maskedLettersAreUnmaskedOnlyWithALanguage_data();
    void maskedLettersAreUnmaskedOnlyWithALanguage();
    void georgianLettersKeepTheirForm();
    void textThatComesOutGoesInUnchanged_data();
    void textThatComesOutGoesInUnchanged();
    void cryptoModeIsOffWhereRegistersAreRemoved();
    void openedTextIsInFrontWithTheKeyboard();
    void tabulatorLeavesTheText();
};

namespace
{
QString shown(const Station &station)
{
    return station.form->editorPage->text->toPlainText();
}

void setCrypto(const Station &station, bool on)
{
    station.form->editorPage->cryptoMode->setChecked(on);
}
} // namespace

void TestFormMainEditorText::textIsFilteredForTheCode_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shows");
    row("empty", QStringLiteral(""), QStringLiteral(""));
    row("small letters", QStringLiteral("привет, мир 12"), QStringLiteral("ПРИВЕТ, МИР 12"));
    row("latin letters", QStringLiteral("abc"), QStringLiteral("ABC"));
    row("lines of a file", QStringLiteral("А\r\nБ\r\n\r\nВ"), QStringLiteral("А\nБ\n\nВ"));
    row("lines of another system", QStringLiteral("А\nБ"), QStringLiteral("А\nБ"));
    row("a mark of a line end", QStringLiteral("А>Б"), QStringLiteral("А\nБ"));
    row("marks of a template", QStringLiteral("[ { } $ $DD <"), QStringLiteral("[ { } $ $DD <"));
    row("no mark of a template", QStringLiteral("А]Б"), QStringLiteral("АБ"));
    row("what the code cannot carry", QStringLiteral("А~\t№Б\u00e9^_"), QStringLiteral("АБ"));
    row("register marks", QStringLiteral("|А&A#1"), QStringLiteral("|А&A#1"));
    row("letter without a code of its own", QStringLiteral("час"), QStringLiteral("ЧАС"));
}

void TestFormMainEditorText::textIsFilteredForTheCode()
{
    QFETCH(QString, text);
    Station station(CKS);
    station.form->setEditorText(QStringLiteral("БЫЛО"));
    station.form->setEditorText(text);
    QTEST(shown(station), "shows");
}

void TestFormMainEditorText::cryptoModeShowsEachLineEnd()
{
    Station station(CKS);
    setCrypto(station, true);
    station.form->setEditorText(QStringLiteral("12345\r\n67890<\r\n"));
    QCOMPARE(shown(station), QStringLiteral("12345<\n67890<<\n"));
}

void TestFormMainEditorText::textComesOutWithTheLinesEnds_data()
{
    QTest::addColumn<bool>("crypto");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("comes");
    row("plain", false, QStringLiteral("А\nБ\n"), QStringLiteral("А\r\nБ\r\n"));
    row("plain with a mark", false, QStringLiteral("А<\nБ"), QStringLiteral("А<\r\nБ"));
    row("cipher", true, QStringLiteral("12<\n34<\n"), QStringLiteral("12\r\n34\r\n"));
    row("cipher with two ends", true, QStringLiteral("12<<\n34\n"), QStringLiteral("12\r\r\n34\n"));
}

void TestFormMainEditorText::textComesOutWithTheLinesEnds()
{
    QFETCH(bool, crypto);
    QFETCH(QString, typed);
    Station station(CKS);
    setCrypto(station, crypto);
    station.form->editorPage->text->setPlainText(typed);
    QTEST(station.form->getEditorText(), "comes");
}

void TestFormMainEditorText::cryptoModeTurnsTheTextBothWays()
{
    Station station(SKK);
    station.form->setEditorText(QStringLiteral("12\r\n34\r\n5<6"));
    setCrypto(station, true);
    QCOMPARE(shown(station), QStringLiteral("12<\n34<\n5<6"));
    setCrypto(station, false);
    QCOMPARE(shown(station), QStringLiteral("12\n34\n5<6"));
}

void TestFormMainEditorText::maskedLettersAreUnmaskedOnlyWithALanguage_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("shows");
    row("none", int(Language::None), QStringLiteral("???"));
    row("Tatar", int(Language::Tatar), QStringLiteral("\u04D8"));
}

void TestFormMainEditorText::maskedLettersAreUnmaskedOnlyWithALanguage()
{
    QFETCH(int, language);
    Station station(CKS);
    const Language scope(language);
    station.form->setEditorText(QStringLiteral("???"));
    QTEST(shown(station), "shows");
}

void TestFormMainEditorText::georgianLettersKeepTheirForm()
{
    Station station(CKS);
    const Language scope(Language::Georgian);
    const QString an(QChar(0x10D0));
    station.form->setEditorText(an);
    QCOMPARE(shown(station), an);
}

void TestFormMainEditorText::textThatComesOutGoesInUnchanged_data()
{
    QTest::addColumn<bool>("crypto");
    QTest::addColumn<QString>("text");
    row("plain", false, QStringLiteral("ПРИВЕТ\nМИР $ [ {\n\n"));
    row("cipher", true, QStringLiteral("12345<\n67890<\n"));
}

void TestFormMainEditorText::textThatComesOutGoesInUnchanged()
{
    QFETCH(bool, crypto);
    QFETCH(QString, text);
    Station station(CKS);
    setCrypto(station, crypto);
    station.form->editorPage->text->setPlainText(text);
    station.form->setEditorText(station.form->getEditorText());
    QCOMPARE(shown(station), text);
}

void TestFormMainEditorText::cryptoModeIsOffWhereRegistersAreRemoved()
{
    Station kept(CKS);
    QVERIFY(kept.form->editorPage->cryptoMode->isEnabled());
    kept.form.reset();
    Station removed(CKS, [] { Options.removeRegisterInInputFiles = true; });
    QVERIFY(!removed.form->editorPage->cryptoMode->isEnabled());
}

void TestFormMainEditorText::openedTextIsInFrontWithTheKeyboard()
{
    Station station(CKS);
    station.form->show();
    QVERIFY(QTest::qWaitForWindowActive(station.form.get()));
    station.form->openInEditor(QStringLiteral("текст"));
    QCOMPARE(station.form->tabWidget->currentWidget(), static_cast<QWidget *>(station.form->editorPage));
    QVERIFY(station.form->editorPage->text->hasFocus());
    QTest::keyClick(station.form->editorPage->text, Qt::Key_X);
    QCOMPARE(shown(station), QStringLiteral("xТЕКСТ"));
}

void TestFormMainEditorText::tabulatorLeavesTheText()
{
    Station station(CKS);
    station.form->show();
    QVERIFY(QTest::qWaitForWindowActive(station.form.get()));
    station.form->openInEditor(QStringLiteral("ТЕКСТ"));
    QTest::keyClick(station.form->editorPage->text, Qt::Key_Tab);
    QVERIFY(!station.form->editorPage->text->hasFocus());
    QCOMPARE(shown(station), QStringLiteral("ТЕКСТ"));
}

QTEST_MAIN(TestFormMainEditorText)
#include "test_form_main_editor_text.moc"
