// The window's dialog by which the operator prints a text, with a file for a printer.

#include "app/options.h"
#include "tests/support/row.h"
#include "tests/ui/window/station.h"
#include "ui/form_main.h"
#include "ui/printing/print_queue.h"

#include <QDialog>
#include <QTextEdit>
#include <QTimer>
#include <QtTest>

class TestPrintDialog : public QObject
{
    Q_OBJECT

private slots:
    void opensOnTheTextInFrontOfTheWindow();
    void textGoesToThePrinterAsEdited();
    void pastedTextLosesItsLooks();
    void codingAndLineFeedsAreThoseOfTheSettings();
    void printsOnce();
    void leavingPrintsNothing_data();
    void leavingPrintsNothing();
    void placeIsKept();
    void failedPrintingIsJournalled();
};

namespace
{
/// A workstation on the switched network that prints raw, into a file.
struct Printing : Station {
    Printing()
        : Station(SKK, [] {
              Options.PrinterType = 1;
              Options.PrinterRaw = QStringLiteral("printed");
              Options.PrinterCodePage = 2;
              Options.PrinterRawLFCount = 0;
          })
    {
        form->show();
        (void)news();
    }
    /// Opens the dialog on \a text and does \a act in it.
    void dialogOf(const QString &text, const std::function<void(QDialog &, QTextEdit &)> &act) const
    {
        bool acted = false;
        QTimer::singleShot(0, form.get(), [&] {
            auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            act(*dialog, *dialog->findChild<QTextEdit *>("text"));
            acted = true;
            dialog->close();
        });
        form->printTextDialog(text);
        QVERIFY(acted);
    }
};

void press(const QDialog &dialog, const char *name)
{
    QTest::mouseClick(dialog.findChild<QPushButton *>(QString::fromLatin1(name)), Qt::LeftButton);
}
} // namespace

void TestPrintDialog::opensOnTheTextInFrontOfTheWindow()
{
    const Printing station;
    station.dialogOf("РАЗ\nДВА", [&](QDialog &dialog, QTextEdit &text) {
        QCOMPARE(dialog.windowTitle(), QString("Печать текста"));
        QCOMPARE(dialog.parentWidget(), static_cast<QWidget *>(station.form.get()));
        QCOMPARE(text.toPlainText(), QString("РАЗ\nДВА"));
        QVERIFY(!text.isReadOnly());
        QCOMPARE(dialog.findChild<QPushButton *>("print")->text(), QString("Распечатать"));
        QCOMPARE(dialog.findChild<QPushButton *>("close")->text(), QString("Закрыть"));
    });
}

void TestPrintDialog::textGoesToThePrinterAsEdited()
{
    const Printing station;
    station.dialogOf("|РАЗ<>\r\n#12 & @H", [](QDialog &dialog, QTextEdit &text) {
        text.moveCursor(QTextCursor::End);
        QTest::keyClicks(&text, " 3");
        press(dialog, "print");
        QVERIFY(!dialog.isVisible());
    });
    QCOMPARE(station.desk.readPrinted(), QByteArray("|РАЗ<>\n#12 & @H 3")); // marks and all
}

void TestPrintDialog::pastedTextLosesItsLooks()
{
    const Printing station;
    station.dialogOf("", [](QDialog &dialog, QTextEdit &text) {
        QVERIFY(!text.acceptRichText());
        text.insertPlainText("<b>А</b>");
        press(dialog, "print");
    });
    QCOMPARE(station.desk.readPrinted(), QByteArray("<b>А</b>"));
}

void TestPrintDialog::codingAndLineFeedsAreThoseOfTheSettings()
{
    const Printing station;
    Options.PrinterCodePage = 1;
    Options.PrinterRawLFCount = 2;
    station.dialogOf("АБВ", [](QDialog &dialog, QTextEdit &) { press(dialog, "print"); });
    QCOMPARE(station.desk.readPrinted(), QByteArray("\xC0\xC1\xC2\n\n"));
}

void TestPrintDialog::printsOnce()
{
    const Printing station;
    Options.PrinterRaw = QStringLiteral("first");
    station.dialogOf("А", [](QDialog &dialog, QTextEdit &) {
        press(dialog, "print");
        Options.PrinterRaw = QStringLiteral("second");
        dialog.close();
    });
    QCOMPARE(station.desk.readPrinted("first"), QByteArray("А"));
    QVERIFY(!QFile::exists("second"));
}

void TestPrintDialog::leavingPrintsNothing_data()
{
    QTest::addColumn<QString>("way");
    for (const char *way : {"button", "cross", "Esc"})
        row(way, QString::fromLatin1(way));
}

void TestPrintDialog::leavingPrintsNothing()
{
    QFETCH(QString, way);
    const Printing station;
    station.dialogOf("А", [&](QDialog &dialog, QTextEdit &text) {
        if (way == "button")
            press(dialog, "close");
        else if (way == "cross")
            dialog.close();
        else
            QTest::keyClick(&text, Qt::Key_Escape);
        QVERIFY(!dialog.isVisible());
    });
    QCOMPARE(station.desk.readPrinted(), QByteArray());
    QVERIFY(!QFile::exists("printed"));
}

void TestPrintDialog::placeIsKept()
{
    const Printing station;
    const QRect place(40, 60, 500, 300);
    station.dialogOf("А", [&](QDialog &dialog, QTextEdit &) { dialog.setGeometry(place); });
    QCOMPARE(Options.geometryPrintTxt, place);
    station.dialogOf("А", [&](QDialog &dialog, QTextEdit &) { QCOMPARE(dialog.geometry(), place); });
}

void TestPrintDialog::failedPrintingIsJournalled()
{
    Printing station;
    Options.PrinterRaw = QStringLiteral("none/printer");
    station.dialogOf("А", [](QDialog &dialog, QTextEdit &) { press(dialog, "print"); });
    QVERIFY(CPrintQueue::instance().waitForIdle(30000));
    QCOMPARE(station.news(), QStringList{"412:00:00 Error open printer none/printer"});
}

QTEST_MAIN(TestPrintDialog)
#include "test_print_dialog.moc"
