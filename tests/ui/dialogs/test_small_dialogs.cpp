#include "app/options.h"
#include "link/tlg_thread.h"
#include "tests/support/desk.h"
#include "ui/dialogs/about_dialog.h"
#include "ui/dialogs/edit_counter_dialog.h"
#include "ui/dialogs/file_dialog_with_codepage_select.h"
#include "ui/dialogs/number_dialog.h"
#include "ui/dialogs/string_dialog.h"
#include "ui/dialogs/test_dialog.h"
#include "ui/dialogs/text_dialog.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QtTest>

#include <memory>

class TestSmallDialogs : public QObject
{
    Q_OBJECT

private slots:
    void numberIsAppliedOnlyIfThereIsOne();
    void numberIsKeptUntilApplied();
    void emptyStringCannotBeSent();
    void stringThatTheCodeCarriesIsSent();
    void stringThatTheCodeDoesNotCarryIsShownAsItWouldGo();
    void stringOfNothingThatTheCodeCarriesIsEmptied();
    void stringDialogKeepsItsPlace();
    void emptyTextCannotBeSent();
    void textOfSeveralLinesIsSent();
    void textThatTheCodeDoesNotCarryIsShownAsItWouldGo();
    void counterClosedWithoutApplyChangesNothing();
    void counterIsApplied();
    void counterForgetsTheFormerRun();
    void aboutTellsWhatTheProgramIs();
    void lineTestSendsPairs();
    void fileDialogOffersTheCodings();

private:
    std::unique_ptr<Desk> m_desk;

private slots:
    void init() { m_desk = std::make_unique<Desk>(); }
    void cleanup() { m_desk.reset(); }
};

namespace
{
QPushButton *button(QDialog &dialog, const char *name)
{
    return dialog.findChild<QPushButton *>(QString::fromLatin1(name));
}

void press(QDialog &dialog, const char *name)
{
    QTest::mouseClick(button(dialog, name), Qt::LeftButton);
}

/// Runs \a run, which opens \a dialog, and \a act inside it.
int inside(QDialog &dialog, const std::function<int()> &run, const std::function<void()> &act)
{
    QTimer::singleShot(0, &dialog, [&] {
        act();
        if (dialog.isVisible())
            dialog.close();
    });
    return run();
}

QStringList buttonTexts(const QDialog &dialog)
{
    QStringList texts;
    for (const QPushButton *one : dialog.findChildren<QPushButton *>())
        texts << one->text();
    return texts;
}
} // namespace

void TestSmallDialogs::numberIsAppliedOnlyIfThereIsOne()
{
    CNumberDialog dialog;
    auto *edit = dialog.findChild<QLineEdit *>();
    QCOMPARE(dialog.findChild<QLabel *>()->text(), QStringLiteral("Номер"));
    QCOMPARE(buttonTexts(dialog), (QStringList{QStringLiteral("Применить"), QStringLiteral("Отменить")}));
    QVERIFY(!button(dialog, "apply")->isEnabled());
    edit->setText(QStringLiteral("1"));
    QVERIFY(button(dialog, "apply")->isEnabled());
    edit->clear();
    QVERIFY(!button(dialog, "apply")->isEnabled());
}

void TestSmallDialogs::numberIsKeptUntilApplied()
{
    CNumberDialog dialog;
    const auto run = [&dialog] {
        return dialog.exec(QStringLiteral("Номер абонента"), QStringLiteral("12"));
    };
    QCOMPARE(inside(dialog, run,
                    [&] {
                        QCOMPARE(dialog.windowTitle(), QStringLiteral("Номер абонента"));
                        QTest::keyClicks(dialog.findChild<QLineEdit *>(), QStringLiteral("345"));
                        press(dialog, "cancel");
                    }),
             0);
    QVERIFY(dialog.number.isEmpty());
    QCOMPARE(inside(dialog, run,
                    [&] {
                        QCOMPARE(dialog.findChild<QLineEdit *>()->text(), QStringLiteral("12"));
                        dialog.findChild<QLineEdit *>()->setText(QStringLiteral("345"));
                        press(dialog, "apply");
                    }),
             1);
    QCOMPARE(dialog.number, QStringLiteral("345"));
}

void TestSmallDialogs::emptyStringCannotBeSent()
{
    CStringDialog dialog;
    auto *edit = dialog.findChild<QLineEdit *>();
    QCOMPARE(dialog.findChild<QLabel *>()->text(), QStringLiteral("Строка"));
    QCOMPARE(buttonTexts(dialog), (QStringList{QStringLiteral("Отправить"), QStringLiteral("Отменить")}));
    QVERIFY(!button(dialog, "send")->isEnabled());
    edit->setText(QStringLiteral("А"));
    QVERIFY(button(dialog, "send")->isEnabled());
    edit->clear();
    QVERIFY(!button(dialog, "send")->isEnabled());
}

void TestSmallDialogs::stringThatTheCodeCarriesIsSent()
{
    CStringDialog dialog;
    QCOMPARE(inside(
                 dialog, [&] { return dialog.exec(QStringLiteral("Строка для передачи")); },
                 [&] {
                     QCOMPARE(dialog.windowTitle(), QStringLiteral("Строка для передачи"));
                     dialog.findChild<QLineEdit *>()->setText(QStringLiteral("ПРИВЕТ 12"));
                     press(dialog, "send");
                 }),
             1);
    QCOMPARE(dialog.text, QStringLiteral("ПРИВЕТ 12"));
}

void TestSmallDialogs::stringThatTheCodeDoesNotCarryIsShownAsItWouldGo()
{
    CStringDialog dialog;
    auto *edit = dialog.findChild<QLineEdit *>();
    QCOMPARE(inside(
                 dialog, [&] { return dialog.exec(QStringLiteral("Строка")); },
                 [&] {
                     edit->setText(QStringLiteral("Привет№"));
                     press(dialog, "send");
                     QVERIFY(dialog.isVisible());
                     QVERIFY(dialog.text.isEmpty());
                     QCOMPARE(edit->text(), QStringLiteral("ПРИВЕТ"));
                     press(dialog, "send");
                 }),
             1);
    QCOMPARE(dialog.text, QStringLiteral("ПРИВЕТ"));
}

void TestSmallDialogs::stringOfNothingThatTheCodeCarriesIsEmptied()
{
    CStringDialog dialog;
    auto *edit = dialog.findChild<QLineEdit *>();
    edit->setText(QStringLiteral("№№"));
    press(dialog, "send");
    QVERIFY(edit->text().isEmpty());
    QVERIFY(!button(dialog, "send")->isEnabled());
}

void TestSmallDialogs::stringDialogKeepsItsPlace()
{
    Options.geometrySendString = QRect(60, 80, 410, 120);
    CStringDialog dialog;
    inside(
        dialog, [&] { return dialog.exec(QStringLiteral("Строка")); },
        [&] {
            QCOMPARE(dialog.geometry(), QRect(60, 80, 410, 120));
            dialog.setGeometry(70, 90, 420, 130);
            press(dialog, "cancel");
        });
    QCOMPARE(Options.geometrySendString, QRect(70, 90, 420, 130));
}

void TestSmallDialogs::emptyTextCannotBeSent()
{
    CTextDialog dialog;
    auto *edit = dialog.findChild<QPlainTextEdit *>();
    QCOMPARE(buttonTexts(dialog), (QStringList{QStringLiteral("Отправить"), QStringLiteral("Отменить")}));
    QVERIFY(!button(dialog, "send")->isEnabled());
    edit->setPlainText(QStringLiteral("А"));
    QVERIFY(button(dialog, "send")->isEnabled());
    edit->clear();
    QVERIFY(!button(dialog, "send")->isEnabled());
}

void TestSmallDialogs::textOfSeveralLinesIsSent()
{
    CTextDialog dialog;
    QCOMPARE(inside(
                 dialog, [&] { return dialog.exec(QStringLiteral("Тест для передачи")); },
                 [&] {
                     QCOMPARE(dialog.windowTitle(), QStringLiteral("Тест для передачи"));
                     dialog.findChild<QPlainTextEdit *>()->setPlainText(QStringLiteral("РАЗ\nДВА"));
                     press(dialog, "send");
                 }),
             1);
    QCOMPARE(dialog.text, QStringLiteral("РАЗ\nДВА"));
}

void TestSmallDialogs::textThatTheCodeDoesNotCarryIsShownAsItWouldGo()
{
    CTextDialog dialog;
    auto *edit = dialog.findChild<QPlainTextEdit *>();
    QCOMPARE(inside(
                 dialog, [&] { return dialog.exec(QStringLiteral("Тест")); },
                 [&] {
                     edit->setPlainText(QStringLiteral("раз№\nдва"));
                     press(dialog, "send");
                     QVERIFY(dialog.isVisible());
                     QCOMPARE(edit->toPlainText(), QStringLiteral("РАЗ\nДВА"));
                     press(dialog, "send");
                 }),
             1);
    QCOMPARE(dialog.text, QStringLiteral("РАЗ\nДВА"));
}

void TestSmallDialogs::counterClosedWithoutApplyChangesNothing()
{
    CEditCounterDialog dialog;
    QCOMPARE(dialog.counter, -1);
    for (const char *cancel : {"cancel", ""}) { // the button, and the cross of the window
        QCOMPARE(inside(
                     dialog, [&] { return dialog.exec(17, QStringLiteral("Принято телеграмм")); },
                     [&] {
                         dialog.findChild<QSpinBox *>()->setValue(18);
                         if (*cancel)
                             press(dialog, cancel);
                     }),
                 0);
        QCOMPARE(dialog.counter, -1);
    }
}

void TestSmallDialogs::counterIsApplied()
{
    CEditCounterDialog dialog;
    QCOMPARE(inside(
                 dialog, [&] { return dialog.exec(17, QStringLiteral("Принято телеграмм")); },
                 [&] {
                     auto *box = dialog.findChild<QSpinBox *>();
                     QCOMPARE(dialog.windowTitle(), QStringLiteral("Принято телеграмм"));
                     QCOMPARE(box->value(), 17);
                     QCOMPARE(box->minimum(), 0);
                     QCOMPARE(box->maximum(), 999);
                     box->setValue(999);
                     press(dialog, "apply");
                 }),
             1);
    QCOMPARE(dialog.counter, 999);
}

void TestSmallDialogs::counterForgetsTheFormerRun()
{
    CEditCounterDialog dialog;
    dialog.counter = 5;
    inside(
        dialog, [&] { return dialog.exec(17, QStringLiteral("Принято телеграмм")); }, [] {});
    QCOMPARE(dialog.counter, -1);
}

void TestSmallDialogs::aboutTellsWhatTheProgramIs()
{
    QCoreApplication::setApplicationVersion(QStringLiteral("2026.07.31"));
    CAboutDialog dialog;
    QCOMPARE(dialog.windowTitle(), QStringLiteral("О программе"));
    QCOMPARE(dialog.findChild<QLabel *>(QStringLiteral("text"))->text(),
             QStringLiteral("Клиентское программное обеспечение оконечной телеграфной установки."));
    QVERIFY(
        dialog.findChild<QLabel *>(QStringLiteral("version"))->text().contains(QStringLiteral("2026.07.31")));
    QCOMPARE(buttonTexts(dialog), QStringList{QStringLiteral("Закрыть")});
    dialog.show();
    press(dialog, "close");
    QVERIFY(!dialog.isVisible());
}

void TestSmallDialogs::lineTestSendsPairs()
{
    CTestDialog dialog;
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Test"));
    QCOMPARE(buttonTexts(dialog), (QStringList{QStringLiteral("ТЕСТ"), QStringLiteral("Закрыть")}));
    press(dialog, "start");
    const QString byButton = m_desk->sent();
    QStringList lines = byButton.split(QStringLiteral("\r\n"));
    QVERIFY(lines.takeLast().isEmpty());
    QVERIFY(lines.size() > 2);
    QVERIFY(QRegularExpression(QStringLiteral("^(РЫ){2,34}$")).match(lines.takeFirst()).hasMatch());
    for (const QString &line : qAsConst(lines))
        QCOMPARE(line, QStringLiteral("РЫ"));
    dialog.startTestRY();
    QCOMPARE(m_desk->sent(), byButton);
    dialog.show();
    press(dialog, "close");
    QVERIFY(!dialog.isVisible());
}

void TestSmallDialogs::fileDialogOffersTheCodings()
{
    CFileDialogWithCodepageSelect dialog(nullptr, QStringLiteral("Загрузить"));
    auto *combo = dialog.findChild<QComboBox *>(QStringLiteral("codepage"));
    QStringList codings, labels;
    for (int i = 0; i < combo->count(); ++i)
        codings << combo->itemText(i);
    for (const QLabel *label : dialog.findChildren<QLabel *>())
        labels << label->text();
    QCOMPARE(codings, QStringLiteral("UTF-8,CP866,CP1251").split(','));
    QVERIFY(labels.contains(QStringLiteral("Кодировка файла")));
    QCOMPARE(dialog.codepage(), QStringLiteral("UTF-8"));
    dialog.setCodepage(QStringLiteral("CP866"));
    QCOMPARE(combo->currentIndex(), 1);
    QCOMPARE(dialog.codepage(), QStringLiteral("CP866"));
}

QTEST_MAIN(TestSmallDialogs)
#include "test_small_dialogs.moc"
