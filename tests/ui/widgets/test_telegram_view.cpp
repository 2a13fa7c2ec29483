#include "ui/widgets/telegram_view.h"

#include <QApplication>
#include <QClipboard>
#include <QScrollBar>
#include <QtTest>

const QString LongText = QStringLiteral("ЗЦЗЦ\n").repeated(500);

class TestTelegramView : public QObject
{
    Q_OBJECT

private slots:
    void textCannotBeChanged();
    void keyboardAloneSelectsAndCopies();
    void anotherTextBeginsAtItsTop();
    void anotherFormKeepsThePlace();
    void troubleTakesThePlaceOfTheText();
    void lineIsBrokenAtItsBlanksAlone();
};

void TestTelegramView::textCannotBeChanged()
{
    CTelegramView view;
    view.showText(QStringLiteral("АБВ"));
    QTest::keyClicks(&view, QStringLiteral("X"));
    QTest::keyClick(&view, Qt::Key_Delete);
    QCOMPARE(view.toPlainText(), QStringLiteral("АБВ"));
}

void TestTelegramView::keyboardAloneSelectsAndCopies()
{
    CTelegramView view;
    view.showText(QStringLiteral("АБВ"));
    QTest::keyClick(&view, Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClick(&view, Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("АБ"));
}

void TestTelegramView::anotherTextBeginsAtItsTop()
{
    CTelegramView view;
    view.show();
    view.showText(LongText);
    view.verticalScrollBar()->setValue(100);
    view.showText(LongText);
    QCOMPARE(view.verticalScrollBar()->value(), 0);
}

void TestTelegramView::anotherFormKeepsThePlace()
{
    CTelegramView view;
    view.show();
    view.showText(LongText);
    view.verticalScrollBar()->setValue(100);
    view.showForm(LongText.toLower());
    QCOMPARE(view.verticalScrollBar()->value(), 100);
    QCOMPARE(view.toPlainText(), LongText.toLower());
}

void TestTelegramView::troubleTakesThePlaceOfTheText()
{
    CTelegramView view;
    view.showText(QStringLiteral("АБВ"));
    view.showTrouble(QStringLiteral("Невозможно"));
    QCOMPARE(view.toPlainText(), QString());
    QCOMPARE(view.placeholderText(), QStringLiteral("Невозможно"));
    view.showText(QStringLiteral("АБВ"));
    QCOMPARE(view.placeholderText(), QString());
}

// Broken anywhere, a long one keeps the window busy for seconds.
void TestTelegramView::lineIsBrokenAtItsBlanksAlone()
{
    const CTelegramView view;
    QCOMPARE(view.wordWrapMode(), QTextOption::WordWrap);
}

QTEST_MAIN(TestTelegramView)
#include "test_telegram_view.moc"
