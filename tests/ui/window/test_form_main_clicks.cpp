#include "app/options.h"
#include "app/state.h"
#include "tests/support/row.h"
#include "tests/ui/window/station.h"
#include "ui/form_main.h"

#include <QApplication>
#include <QDialog>
#include <QSettings>
#include <QSpinBox>
#include <QTableView>
#include <QtTest>

class TestFormMainClicks : public QObject
{
    Q_OBJECT

private slots:
    void counterIsEditedOnlyForACentreInManualMode_data();
    void counterIsEditedOnlyForACentreInManualMode();
    void editedCounterIsJournalledAndSaved_data();
    void editedCounterIsJournalledAndSaved();
    void cancelledEditChangesNothing();
    void counterThatMovedMeanwhileIsJournalledAsItStands();
    void clickOnCountdownScansInTwoSeconds();
    void scanFillsBothTables();
    void tableOfTheFailedShowsOnlyWithRows();
    void rowsDoNotMoveUnderTheOpenMenu();
    void operatorListIsShownOnlyIfUsed_data();
    void operatorListIsShownOnlyIfUsed();
    void operatorWhoIsGoneIsJournalled();
    void operatorWhoIsThereStays();
    void chosenOperatorSigns();
};

namespace
{
/// Runs \a act on the counter dialog as soon as it is open. Returns whether one opened.
bool withCounterDialog(QWidget *label, const std::function<void(QDialog *)> &act)
{
    bool opened = false;
    QTimer::singleShot(0, label, [&] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        opened = dialog != nullptr;
        if (dialog) {
            act(dialog);
            dialog->close();
        }
    });
    QTest::mouseClick(label, Qt::LeftButton);
    QApplication::processEvents();
    return opened;
}

void apply(QDialog *dialog, int value)
{
    dialog->findChild<QSpinBox *>(QStringLiteral("counter"))->setValue(value);
    QTest::mouseClick(dialog->findChild<QPushButton *>(QStringLiteral("apply")), Qt::LeftButton);
}
} // namespace

void TestFormMainClicks::counterIsEditedOnlyForACentreInManualMode_data()
{
    QTest::addColumn<int>("processMode");
    QTest::addColumn<bool>("manual");
    QTest::addColumn<bool>("opens");
    row("CKS, manual", int(CKS), true, true);
    row("CKS, automatic", int(CKS), false, false);
    row("SKK, manual", int(SKK), true, false);
    row("direct, manual", int(Direct), true, false);
}

void TestFormMainClicks::counterIsEditedOnlyForACentreInManualMode()
{
    QFETCH(int, processMode);
    QFETCH(bool, manual);
    QFETCH(bool, opens);
    for (const char *name : {"labelPKin", "labelPKout"}) {
        Station station(processMode);
        State.manualMode = manual;
        QCOMPARE(withCounterDialog(station.find<QWidget>(name), [](QDialog *) {}), opens);
    }
}

void TestFormMainClicks::editedCounterIsJournalledAndSaved_data()
{
    QTest::addColumn<QByteArray>("label");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("key");
    row("in", QByteArray("labelPKin"), "Принято телеграмм",
        "312:00:00 Оператор изменил количество принятых телеграмм: 7 на 123", "STATE/PK_in");
    row("out", QByteArray("labelPKout"), "Передано телеграмм",
        "312:00:00 Оператор изменил количество переданых телеграмм 8 на 123", "STATE/PK_out");
}

void TestFormMainClicks::editedCounterIsJournalledAndSaved()
{
    QFETCH(QByteArray, label);
    Station station(CKS);
    State.manualMode = true;
    State.PK_in = 7;
    State.PK_out = 8;
    (void)station.news();
    QString title;
    QVERIFY(withCounterDialog(station.find<QWidget>(label.constData()), [&title](QDialog *dialog) {
        title = dialog->windowTitle();
        apply(dialog, 123);
    }));
    QTEST(title, "title");
    QFETCH(QString, line);
    QCOMPARE(station.news(), QStringList{line});
    QFETCH(QString, key);
    QCOMPARE(QSettings(Options.stateFileName, QSettings::IniFormat).value(key).toInt(), 123);
    QCOMPARE(State.PK_in, label == "labelPKin" ? 123 : 7);
    QCOMPARE(State.PK_out, label == "labelPKout" ? 123 : 8);
}

void TestFormMainClicks::cancelledEditChangesNothing()
{
    Station station(CKS);
    State.manualMode = true;
    State.PK_in = 7;
    (void)station.news();
    QVERIFY(withCounterDialog(station.find<QWidget>("labelPKin"), [](QDialog *dialog) {
        dialog->findChild<QSpinBox *>(QStringLiteral("counter"))->setValue(9);
    }));
    QCOMPARE(State.PK_in, 7);
    QVERIFY(station.news().isEmpty());
}

void TestFormMainClicks::counterThatMovedMeanwhileIsJournalledAsItStands()
{
    Station station(CKS);
    State.manualMode = true;
    State.PK_in = 7;
    (void)station.news();
    QVERIFY(withCounterDialog(station.find<QWidget>("labelPKin"), [](QDialog *dialog) {
        State.PK_in = 8; // a telegram has come in
        apply(dialog, 100);
    }));
    QCOMPARE(station.news(), QStringList{QStringLiteral(
                                 "312:00:00 Оператор изменил количество принятых телеграмм: 8 на 100")});
}

void TestFormMainClicks::clickOnCountdownScansInTwoSeconds()
{
    Station station(Direct);
    State.scanCountdown = 25;
    QTest::mouseClick(station.find<QWidget>("labelScanCountdown"), Qt::LeftButton);
    QCOMPARE(State.scanCountdown, 2);
}

void TestFormMainClicks::scanFillsBothTables()
{
    Station station(CKS);
    station.desk.write(QStringLiteral("out/20260731u002"), "Б");
    station.desk.write(QStringLiteral("out/20260731u001"), "А");
    station.desk.write(QStringLiteral("out/20260731u003.b1"), "В");
    station.form->scanDir();
    QCOMPARE(State.scanFoundCount, 3);
    auto *good = station.find<QTableView>("tableSend")->model();
    auto *bad = station.find<QTableView>("tableSendBad")->model();
    QCOMPARE(good->rowCount(), 2);
    QCOMPARE(good->index(0, 0).data().toString(), QStringLiteral("20260731u001"));
    QCOMPARE(bad->rowCount(), 1);
    QCOMPARE(bad->index(0, 0).data().toString(), QStringLiteral("20260731u003.b1"));
    QCOMPARE(bad->headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("Неудачные"));
}

void TestFormMainClicks::tableOfTheFailedShowsOnlyWithRows()
{
    Station station(CKS);
    auto *table = station.find<QTableView>("tableSendBad");
    QVERIFY(table->isHidden());
    station.desk.write(QStringLiteral("out/20260731u003.b1"), "В");
    station.form->scanDir();
    QVERIFY(!table->isHidden());
    QVERIFY(QFile::remove(QStringLiteral("out/20260731u003.b1")));
    station.form->scanDir();
    QVERIFY(table->isHidden());
}

void TestFormMainClicks::rowsDoNotMoveUnderTheOpenMenu()
{
    Station station(CKS);
    station.desk.write(QStringLiteral("out/20260731u001"), "А");
    station.form->sendMenuOpen = true;
    station.form->scanDir();
    QCOMPARE(station.form->modelSend.rowCount(), 0);
    station.form->sendMenuOpen = false;
    station.form->scanDir();
    QCOMPARE(station.form->modelSend.rowCount(), 1);
}

void TestFormMainClicks::operatorListIsShownOnlyIfUsed_data()
{
    QTest::addColumn<bool>("used");
    QTest::addColumn<QStringList>("list");
    QTest::addColumn<bool>("action");
    QTest::addColumn<bool>("combo");
    const QStringList two{QStringLiteral("ИВАНОВ"), QStringLiteral("ПЕТРОВ")};
    row("unused", false, two, false, false);
    row("empty list", true, QStringList(), true, false);
    row("used", true, two, true, true);
}

void TestFormMainClicks::operatorListIsShownOnlyIfUsed()
{
    QFETCH(bool, used);
    QFETCH(QStringList, list);
    Station station(Direct, [&] {
        Options.useOperators = used;
        Options.listOperators = list;
    });
    auto *combo = station.find<QComboBox>("editorOperator");
    QTEST(station.find<QAction>("actionOperators")->isVisible(), "action");
    QTEST(!combo->isHidden(), "combo");
    QStringList items;
    for (int i = 0; i < combo->count(); ++i)
        items << combo->itemText(i);
    QCOMPARE(items, QStringList{QStringLiteral("-")} + list);
}

void TestFormMainClicks::operatorWhoIsGoneIsJournalled()
{
    Station station(Direct, [] {
        Options.useOperators = true;
        Options.listOperators = QStringList{QStringLiteral("ИВАНОВ")};
        Options.lastOperator = QStringLiteral("СИДОРОВ");
    });
    QCOMPARE(station.find<QComboBox>("editorOperator")->currentText(), QStringLiteral("-"));
    QCOMPARE(Options.lastOperator, QStringLiteral("-"));
    QCOMPARE(station.news().count(QStringLiteral("312:00:00 Оператор не указан ")), 1);
    station.form->checkOperatorList();
    QVERIFY(station.news().isEmpty());
}

void TestFormMainClicks::operatorWhoIsThereStays()
{
    Station station(Direct, [] {
        Options.useOperators = true;
        Options.listOperators = QStringList{QStringLiteral("ИВАНОВ"), QStringLiteral("ПЕТРОВ")};
        Options.lastOperator = QStringLiteral("ПЕТРОВ");
    });
    QCOMPARE(station.find<QComboBox>("editorOperator")->currentText(), QStringLiteral("ПЕТРОВ"));
    QCOMPARE(Options.lastOperator, QStringLiteral("ПЕТРОВ"));
    QVERIFY(!station.news().contains(QStringLiteral("312:00:00 Оператор не указан ")));
    QVERIFY(station.find<QLineEdit>("editorPScript")->text().isEmpty()); // nobody has chosen anew
}

void TestFormMainClicks::chosenOperatorSigns()
{
    Station station(Direct, [] {
        Options.useOperators = true;
        Options.listOperators = QStringList{QStringLiteral("ИВАНОВ")};
        Options.lastOperator = QStringLiteral("-");
    });
    (void)station.news();
    auto *combo = station.find<QComboBox>("editorOperator");
    combo->setCurrentText(QStringLiteral("ИВАНОВ"));
    QCOMPARE(station.news(), QStringList{QStringLiteral("312:00:00 Оператор: ИВАНОВ")});
    QCOMPARE(Options.lastOperator, QStringLiteral("ИВАНОВ"));
    QCOMPARE(station.find<QLineEdit>("editorPScript")->text(), QStringLiteral("ИВАНОВ"));
    combo->setCurrentText(QStringLiteral("-"));
    QCOMPARE(station.news(), QStringList{QStringLiteral("312:00:00 Оператор не указан ")});
    QCOMPARE(Options.lastOperator, QStringLiteral("-"));
    Options.useOperators = false;
    combo->setCurrentText(QStringLiteral("ИВАНОВ"));
    QVERIFY(Options.lastOperator.isEmpty());
    QVERIFY(station.news().isEmpty());
}

QTEST_MAIN(TestFormMainClicks)
#include "test_form_main_clicks.moc"
