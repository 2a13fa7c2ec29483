#include "tests/ui/window/editor_room.h"
#include "ui/dialogs/perforator_in_dialog.h"
#include "ui/dialogs/perforator_out_dialog.h"
#include "ui/dialogs/print_txt_dialog.h"

#include <QApplication>
#include <QTextEdit>
#include <QTimer>

/// The editor's text on its way to a printer, and to and from paper tape.
class TestEditorDevices : public QObject
{
    Q_OBJECT

private slots:
    void telegramIsPrintedAsItGoes();
    void textGoesToTheTapeWithItsLinesEnds_data();
    void textGoesToTheTapeWithItsLinesEnds();
    void tapeThatIsTakenBecomesTheText();
    void tapeThatIsNotTakenLeavesTheText();
    void tapesButtonsNeedAPerforator();
};

namespace
{
/// Clicks \a button and lets \a work deal with the dialog, of the class \a D, that it opens.
template <class D> void inDialogOf(QPushButton *button, const std::function<void(D &)> &work)
{
    bool came = false;
    QTimer::singleShot(0, button, [&] {
        auto *dialog = qobject_cast<D *>(QApplication::activeModalWidget());
        QVERIFY(dialog != nullptr);
        came = true;
        work(*dialog);
        dialog->close();
    });
    EditorRoom::click(button);
    QVERIFY(came);
}

const auto withPerforator = [] { Options.usePrf = true; };
} // namespace

void TestEditorDevices::telegramIsPrintedAsItGoes()
{
    EditorRoom room(SKK);
    room.choose(ShortForm);
    room.page.index->setText("123456");
    room.type("всего 50% {");
    QString shown;
    inDialogOf<CPrintTxtDialog>(room.page.print, [&shown](CPrintTxtDialog &dialog) {
        shown = dialog.findChild<QTextEdit *>()->toPlainText();
    });
    shown.remove('\r');
    QCOMPARE(shown, QString("П123456\n|||\n\n\nВСЕГО 50 ПРОЦЕНТЫ  07.31-\n\n\n\n\n\n"));
}

void TestEditorDevices::textGoesToTheTapeWithItsLinesEnds_data()
{
    QTest::addColumn<bool>("cipher");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("punched");
    row("plain", false, "ПРИВЕТ\nМИР", "ПРИВЕТ\r\nМИР");
    row("cipher", true, "12345<\n678", "12345\r\n678");
}

void TestEditorDevices::textGoesToTheTapeWithItsLinesEnds()
{
    QFETCH(bool, cipher);
    QFETCH(QString, text);
    EditorRoom room(SKK, withPerforator);
    room.page.cryptoMode->setChecked(cipher);
    room.type(text);
    QString punched;
    inDialogOf<CPerforatorOutDialog>(room.page.toPerforator,
                                     [&punched](CPerforatorOutDialog &dialog) { punched = dialog.text; });
    QTEST(punched, "punched");
}

void TestEditorDevices::tapeThatIsTakenBecomesTheText()
{
    EditorRoom room(SKK, withPerforator);
    room.type("БЫЛО");
    inDialogOf<CPerforatorInDialog>(room.page.fromPerforator, [](CPerforatorInDialog &dialog) {
        dialog.data = "|ПРИВЕТ\r\n#12";
        dialog.slotApply();
    });
    QCOMPARE(room.text(), QString("|ПРИВЕТ\n#12"));
}

void TestEditorDevices::tapeThatIsNotTakenLeavesTheText()
{
    EditorRoom room(SKK, withPerforator);
    room.type("БЫЛО");
    inDialogOf<CPerforatorInDialog>(room.page.fromPerforator,
                                    [](CPerforatorInDialog &dialog) { dialog.data = "|ПРИВЕТ"; });
    QCOMPARE(room.text(), QString("БЫЛО"));
}

void TestEditorDevices::tapesButtonsNeedAPerforator()
{
    EditorRoom room(SKK);
    room.form->show();
    for (const bool use : {false, true}) {
        Options.usePrf = use;
        room.form->setPrfInterface();
        for (const QPushButton *button : {room.page.toPerforator, room.page.fromPerforator}) {
            QCOMPARE(button->isVisibleTo(&room.page), use);
            QVERIFY(button->isEnabled());
        }
    }
}

QTEST_MAIN(TestEditorDevices)
#include "test_editor_devices.moc"
