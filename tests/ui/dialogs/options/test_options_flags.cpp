// What applying the options sets off: each flag by each of its reasons and by none other.

#include "link/tlg_thread.h"
#include "tests/support/row.h"
#include "tests/ui/dialogs/options/option_room.h"

class TestOptionsFlags : public QObject
{
    Q_OBJECT

private slots:
    void everyControlSetsItsFlagAndNoOther_data();
    void everyControlSetsItsFlagAndNoOther();
    void cancelledDialogSetsNone();
    void perforatorThatStaysOffChangesNothing();
    void noToAnotherProcedureLeavesTheDialogOpenWithTheOldChoice();
    void yesToAnotherProcedureAsksForARestart();
    void procedureInForceIsNoChange();
    void prefixOfTheAddressIsStoredAsTheServerFlag_data();
    void prefixOfTheAddressIsStoredAsTheServerFlag();
    void serverFormIsShownAsThePrefix();
    void speedIsFiftyOnASwitchedNetwork_data();
    void speedIsFiftyOnASwitchedNetwork();
};

namespace
{
const char *const question = "Velda/Вы действительно хотите изменить тип подключения?\n"
                             "Будет произведен выход из программы";

void change(QWidget *control)
{
    if (auto *number = qobject_cast<QSpinBox *>(control))
        number->setValue(number->value() == number->maximum() ? number->value() - 1 : number->value() + 1);
    else if (auto *box = qobject_cast<QCheckBox *>(control))
        box->toggle();
    else if (auto *group = qobject_cast<QGroupBox *>(control))
        group->setChecked(!group->isChecked());
    else if (auto *line = qobject_cast<QLineEdit *>(control))
        line->setText(line->text() + "1");
    else if (auto *list = qobject_cast<QComboBox *>(control); list != nullptr && list->isEditable())
        list->setEditText(list->currentText() + "1");
    else if (list != nullptr)
        list->setCurrentIndex((list->currentIndex() + 1) % list->count());
    else
        qobject_cast<CColourButton *>(control)->setColour("#123456");
}

/// Settings of a station on that road, with a perforator.
void prepare(bool tcp)
{
    Options.TcpMode = tcp;
    Options.TRELO_SN = "10000001";
    Options.usePrf = true;
    Options.SOREL_SN = "20000001";
    Options.key = "01";
}
} // namespace

void TestOptionsFlags::everyControlSetsItsFlagAndNoOther_data()
{
    QTest::addColumn<bool>("tcp");
    QTest::addColumn<QStringList>("lineReasons");
    row("TCP", true, QStringList{"TcpMode", "Host", "Port"});
    row("adapter", false, QStringList{"TcpMode", "TRELO_SN", "tlgBaud"});
}

void TestOptionsFlags::everyControlSetsItsFlagAndNoOther()
{
    QFETCH(bool, tcp);
    QFETCH(QStringList, lineReasons);
    OptionRoom room;
    prepare(tcp);
    room.open();
    const int count = int(room.bindings().size());
    QVERIFY(count > 90);
    for (int i = 0; i < count; ++i) {
        resetGlobals();
        Options.processMode = CKS;
        Options.processModeConfigured = CKS;
        prepare(tcp);
        COptionsDialog &dialog = room.open();
        room.answers.yes = {true};
        QWidget *control = room.bindings()[size_t(i)].control;
        const QString name = control->objectName();
        change(control);
        dialog.slotApply();
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QVERIFY2(dialog.lineChanged == lineReasons.contains(name), qPrintable(name));
        QVERIFY2(dialog.perforatorChanged ==
                     QStringList({"usePrf", "SOREL_SN", "prfBaudIndex"}).contains(name),
                 qPrintable(name));
        QVERIFY2(dialog.restartNeeded == (name == "processMode"), qPrintable(name));
    }
}

void TestOptionsFlags::cancelledDialogSetsNone()
{
    OptionRoom room;
    prepare(true);
    room.open();
    room.line("Host")->setText("10.0.0.9");
    room.list("SOREL_SN")->setEditText("20000009");
    room.list("processMode")->setCurrentIndex(Direct);
    QTest::mouseClick(room.find<QPushButton>("cancel"), Qt::LeftButton);
    QVERIFY(!room.dialog->lineChanged && !room.dialog->perforatorChanged && !room.dialog->restartNeeded);
    QCOMPARE(Options.Host, "127.0.0.1");
    QCOMPARE(Options.SOREL_SN, "20000001");
    QCOMPARE(Options.processModeConfigured, int(CKS));
    QCOMPARE(room.answers.asked, QStringList());
}

void TestOptionsFlags::perforatorThatStaysOffChangesNothing()
{
    OptionRoom room;
    room.open();
    room.list("SOREL_SN")->setEditText("20000009");
    room.list("prfBaudIndex")->setCurrentIndex(3);
    room.apply();
    QVERIFY(!room.dialog->perforatorChanged);
    QCOMPARE(Options.SOREL_SN, "20000009");
    QCOMPARE(Options.prfBaudIndex, 3);
}

void TestOptionsFlags::noToAnotherProcedureLeavesTheDialogOpenWithTheOldChoice()
{
    OptionRoom room(SKK);
    room.answers.yes = {false};
    room.open();
    room.list("processMode")->setCurrentIndex(Direct);
    room.line("mainTitle")->setText("ПУНКТ");
    room.apply();
    QCOMPARE(room.answers.asked, QStringList(question));
    QVERIFY(room.dialog->isVisible());
    QCOMPARE(room.list("processMode")->currentIndex(), int(SKK));
    QVERIFY(!room.dialog->restartNeeded);
    QCOMPARE(Options.mainTitle, QString());

    room.apply();
    QVERIFY(!room.dialog->isVisible());
    QVERIFY(!room.dialog->restartNeeded);
    QCOMPARE(Options.mainTitle, "ПУНКТ");
    QCOMPARE(Options.processModeConfigured, int(SKK));
}

void TestOptionsFlags::yesToAnotherProcedureAsksForARestart()
{
    OptionRoom room(SKK);
    room.answers.yes = {true};
    room.open();
    room.list("processMode")->setCurrentIndex(CKS);
    room.apply();
    QCOMPARE(room.answers.asked, QStringList(question));
    QVERIFY(room.dialog->restartNeeded);
    QCOMPARE(room.dialog->result(), int(QDialog::Accepted));
    QCOMPARE(Options.processModeConfigured, int(CKS));
    QCOMPARE(Options.processMode, int(SKK)); // until the end of this run
}

void TestOptionsFlags::procedureInForceIsNoChange()
{
    OptionRoom room(3); // a number that is none of the procedures
    room.open();
    QCOMPARE(room.list("processMode")->currentIndex(), -1);
    room.apply();
    QCOMPARE(room.answers.asked, QStringList());
    QVERIFY(!room.dialog->restartNeeded);
    QCOMPARE(Options.processModeConfigured, 3);
}

void TestOptionsFlags::prefixOfTheAddressIsStoredAsTheServerFlag_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("host");
    QTest::addColumn<bool>("server");
    row("server", "S:10.0.0.1", "10.0.0.1", true);
    row("client", "10.0.0.1", "10.0.0.1", false);
    row("prefix alone", "S:", "S:", false);
    row("small letter", "s:10.0.0.1", "s:10.0.0.1", false);
}

void TestOptionsFlags::prefixOfTheAddressIsStoredAsTheServerFlag()
{
    QFETCH(QString, typed);
    QFETCH(QString, host);
    QFETCH(bool, server);
    OptionRoom room;
    room.open();
    room.line("Host")->setText(typed);
    room.apply();
    QCOMPARE(Options.Host, host);
    QCOMPARE(Options.AsTspSrv, server);
    QVERIFY(room.dialog->lineChanged);
}

void TestOptionsFlags::serverFormIsShownAsThePrefix()
{
    OptionRoom room;
    Options.AsTspSrv = true;
    Options.Host = "10.0.0.1";
    room.open();
    QCOMPARE(room.line("Host")->text(), "S:10.0.0.1");
    room.apply();
    QVERIFY(!room.dialog->lineChanged);

    room.open();
    room.line("Host")->setText("10.0.0.1");
    room.apply();
    QVERIFY(room.dialog->lineChanged);
    QVERIFY(!Options.AsTspSrv);
}

void TestOptionsFlags::speedIsFiftyOnASwitchedNetwork_data()
{
    QTest::addColumn<int>("processMode");
    QTest::addColumn<int>("baud");
    row("centre", int(CKS), 200);
    row("switched", int(SKK), 50);
    row("direct", int(Direct), 200);
}

void TestOptionsFlags::speedIsFiftyOnASwitchedNetwork()
{
    QFETCH(int, processMode);
    QFETCH(int, baud);
    OptionRoom room(processMode);
    Options.TcpMode = false;
    room.open();
    room.list("tlgBaud")->setCurrentText("200");
    room.apply();
    QCOMPARE(Options.tlgBaud, baud);
    QCOMPARE(room.dialog->lineChanged, baud != 50);
}

QTEST_MAIN(TestOptionsFlags)
#include "test_options_flags.moc"
