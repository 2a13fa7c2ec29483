// The tab "Передача": what its buttons and its context menu do with the selected file.

#include "app/clock.h"
#include "app/state.h"
#include "records/protocol.h"
#include "tests/support/row.h"
#include "tests/ui/window/send_tab.h"

#include <QComboBox>
#include <QDialog>
#include <QTimer>

namespace
{
const QString A = QStringLiteral("20260731u001"), B = QStringLiteral("20260731u002");
const QString Failed = QStringLiteral("20260731u009.b012"), Restored = QStringLiteral("20260731u009");
const QString Stamped = A + QStringLiteral(".260731_110000");
const QString Record = QStringLiteral("123456|S|31.07.2026 11:00|u|3|N|Занято");
const QString Spent = QStringLiteral("123456|S|31.07.2026 11:00|u|0|N|Занято");

/// Does \a work in the dialog that \a open brings up; leaves it if it is still open then.
void dialogOf(const std::function<void()> &open, const std::function<void(QDialog *)> &work)
{
    bool done = false;
    QTimer::singleShot(0, [&] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog != nullptr);
        work(dialog);
        done = true;
        if (dialog->isVisible())
            dialog->reject();
    });
    open();
    QVERIFY(done);
}

void apply(QDialog *dialog, const QString &number)
{
    dialog->findChild<QComboBox *>("number")->setEditText(number);
    QTest::mouseClick(dialog->findChild<QPushButton *>("dial"), Qt::LeftButton);
}
} // namespace

class TestSendActions : public QObject
{
    Q_OBJECT

private slots:
    void deleteTakesTheSelectedFileAlone_data();
    void deleteTakesTheSelectedFileAlone();
    void deletedFileLeavesItsViewUntilTheNextSelection();
    void deleteByKeyboardReturnsToTheList();
    void fileThatIsGoneCannotBeDeletedTwice();
    void whatTookTheFilesPlaceIsNotDeleted();

    void failedFileOfTheCentreIsBackInTheQueue();
    void failedFileKeepsItsNameWhereTheFormerIsTaken();
    void repeatOfANameWithoutTheMarkDoesNothing();
    void repeatGivesAllTriesForNow_data();
    void repeatGivesAllTriesForNow();
    void repeatOnADirectLinkDoesNothing();

    void stoppedFileStaysSelectedAmongTheFailed();
    void stoppedFileWithoutARecordGetsOne();
    void stoppedFileIsStartedAnew();
    void fileThatIsGoneGetsNoRecord();

    void numberIsChanged();
    void leftDialogChangesNothing();
    void separatorOfTheRecordStaysOutOfTheNumber();
    void timeIsSetToNow();
    void lockedFileKeepsNumberAndTime_data();
    void lockedFileKeepsNumberAndTime();
    void lineTakenWhileTheNumberIsAskedKeepsIt();
};

void TestSendActions::deleteTakesTheSelectedFileAlone_data()
{
    QTest::addColumn<int>("procedure");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("record");
    row("CKS, queue", int(CKS), A, Record);
    row("CKS, failed", int(CKS), Failed, "");
    row("SKK, queue", int(SKK), A, Record);
    row("SKK, failed", int(SKK), A, Spent);
    row("direct", int(Direct), Stamped, "");
}

void TestSendActions::deleteTakesTheSelectedFileAlone()
{
    QFETCH(int, procedure);
    QFETCH(QString, name);
    QFETCH(QString, record);
    SendTab tab(procedure);
    tab.queue(B);
    tab.queue(B + ".260731_120000");
    tab.queue(name);
    if (!record.isEmpty())
        tab.queueWithRecord(name, record);
    tab.form->scanDir();
    QStringList others = tab.desk.names("out");
    others.removeAll(name);
    others.removeAll(name + ".dat");
    tab.click(name);
    QTest::mouseClick(tab.page->remove, Qt::LeftButton);
    QCOMPARE(tab.desk.names("out"), others);
    QVERIFY(!(tab.names(tab.waiting) + tab.names(tab.failed)).contains(name));
    QCOMPARE(tab.news(), QStringList{"312:00:00 Удаление out/" + name});
}

void TestSendActions::deletedFileLeavesItsViewUntilTheNextSelection()
{
    SendTab tab(CKS);
    tab.queue(A, "ПЕРВЫЙ");
    tab.queue(B, "ВТОРОЙ");
    tab.form->scanDir();
    tab.click(A);
    QTest::mouseClick(tab.page->remove, Qt::LeftButton);
    QCOMPARE(tab.text(), QStringLiteral("ПЕРВЫЙ"));
    QCOMPARE(tab.selected(tab.waiting), QString());
    QVERIFY(!tab.page->remove->isEnabled());
    QTest::mouseClick(tab.page->remove, Qt::LeftButton);
    tab.form->sendDeleteFile();
    QVERIFY(tab.isQueued(B));
    tab.click(B);
    QCOMPARE(tab.text(), QStringLiteral("ВТОРОЙ"));
}

void TestSendActions::deleteByKeyboardReturnsToTheList()
{
    SendTab tab(CKS);
    tab.queue(A);
    tab.queue(B);
    tab.form->scanDir();
    QVERIFY(QTest::qWaitForWindowActive(tab.form.get()));
    tab.click(A);
    tab.page->remove->setFocus();
    QTest::keyClick(tab.page->remove, Qt::Key_Space);
    QVERIFY(!tab.isQueued(A));
    QVERIFY(tab.waiting->hasFocus());
    QTest::keyClick(tab.waiting, Qt::Key_Down);
    QCOMPARE(tab.selected(tab.waiting), B);
}

void TestSendActions::fileThatIsGoneCannotBeDeletedTwice()
{
    SendTab tab(CKS);
    tab.queue(A);
    tab.form->scanDir();
    tab.click(A);
    tab.remove(A);
    QTest::mouseClick(tab.page->remove, Qt::LeftButton);
    QCOMPARE(tab.news(), QStringList{"412:00:00 Ошибка удаления out/" + A});
    QCOMPARE(tab.names(tab.waiting), QStringList());
}

void TestSendActions::whatTookTheFilesPlaceIsNotDeleted()
{
    SendTab tab(SKK);
    tab.queueWithRecord(A, Record);
    tab.form->scanDir();
    tab.click(A);
    tab.remove(A);
    tab.desk.write("out/" + A + "/b", "ЧУЖОЙ");
    QTest::mouseClick(tab.page->remove, Qt::LeftButton);
    QVERIFY(tab.isQueued(A + "/b"));
    QCOMPARE(tab.record(A), Record);
    QCOMPARE(tab.news(), QStringList{"412:00:00 Ошибка удаления out/" + A});
}

void TestSendActions::failedFileOfTheCentreIsBackInTheQueue()
{
    SendTab tab(CKS);
    tab.queue(Failed, "НЕУДАЧНЫЙ");
    tab.form->scanDir();
    tab.click(Failed);
    QTest::mouseClick(tab.page->reSend, Qt::LeftButton);
    QCOMPARE(tab.desk.read("out/" + Restored), QByteArray("НЕУДАЧНЫЙ"));
    QVERIFY(!tab.isQueued(Failed));
    QCOMPARE(tab.names(tab.waiting), QStringList{Restored});
    QVERIFY(tab.failed->isHidden());
    QCOMPARE(tab.selected(tab.waiting), Restored);
    QCOMPARE(tab.form->sendSelectedPath(), QDir::toNativeSeparators("out/" + Restored));
    QCOMPARE(tab.text(), QStringLiteral("НЕУДАЧНЫЙ"));
    QVERIFY(!tab.page->reSend->isEnabled());
}

void TestSendActions::failedFileKeepsItsNameWhereTheFormerIsTaken()
{
    SendTab tab(CKS);
    tab.queue(Failed, "НЕУДАЧНЫЙ");
    tab.queue(Restored, "НОВЫЙ");
    tab.form->scanDir();
    tab.click(Failed);
    QTest::mouseClick(tab.page->reSend, Qt::LeftButton);
    QCOMPARE(tab.desk.read("out/" + Failed), QByteArray("НЕУДАЧНЫЙ"));
    QCOMPARE(tab.desk.read("out/" + Restored), QByteArray("НОВЫЙ"));
    QCOMPARE(tab.news().last(), QStringLiteral("412:00:00 Ошибка переименования"));
    QCOMPARE(tab.selected(tab.failed), Failed);
}

void TestSendActions::repeatOfANameWithoutTheMarkDoesNothing()
{
    SendTab tab(CKS);
    tab.queue(A);
    tab.form->scanDir();
    tab.click(A);
    tab.form->sendReSendFile();
    QCOMPARE(tab.desk.names("out"), QStringList{A});
    QCOMPARE(tab.news(), QStringList());
    QCOMPARE(tab.selected(tab.waiting), A);
}

void TestSendActions::repeatGivesAllTriesForNow_data()
{
    QTest::addColumn<QString>("record");
    row("of the failed", Spent);
    row("of the queue", Record);
}

void TestSendActions::repeatGivesAllTriesForNow()
{
    QFETCH(QString, record);
    SendTab tab(SKK, [] { Options.sendTrys = 7; });
    tab.queueWithRecord(A, record);
    tab.form->scanDir();
    tab.click(A);
    if (record == Spent)
        QTest::mouseClick(tab.page->reSend, Qt::LeftButton);
    else
        tab.form->sendReSendFile();
    QCOMPARE(tab.record(A), QStringLiteral("123456|S|31.07.2026 12:00|u|7|N|Занято"));
    QCOMPARE(tab.selected(tab.waiting), A);
    QCOMPARE(tab.form->modelSend.at(0).trys, 7);
    QVERIFY(tab.failed->isHidden());
}

void TestSendActions::repeatOnADirectLinkDoesNothing()
{
    SendTab tab(Direct);
    tab.queue(Stamped);
    tab.form->scanDir();
    tab.click(Stamped);
    tab.form->sendReSendFile();
    QCOMPARE(tab.desk.names("out"), QStringList{Stamped});
}

void TestSendActions::stoppedFileStaysSelectedAmongTheFailed()
{
    SendTab tab(SKK);
    tab.queueWithRecord(A, Record, "ТЕКСТ");
    tab.form->scanDir();
    tab.choose(tab.openMenu(A), tab.page->pause);
    QCOMPARE(tab.record(A), Spent);
    QCOMPARE(tab.names(tab.waiting), QStringList());
    QCOMPARE(tab.selected(tab.failed), A);
    QCOMPARE(tab.form->sendBadPath, QDir::toNativeSeparators("out/" + A));
    QCOMPARE(tab.form->sendPath, QString());
    tab.desk.write("out/" + A, "ДРУГОЙ");
    tab.form->scanDir();
    QCOMPARE(tab.text(), QStringLiteral("ТЕКСТ"));
}

void TestSendActions::stoppedFileWithoutARecordGetsOne()
{
    SendTab tab(SKK);
    tab.queue(A);
    tab.form->scanDir();
    tab.choose(tab.openMenu(A), tab.page->pause);
    QCOMPARE(tab.record(A), QStringLiteral("|C|31.07.2026 12:00|u|0|N|"));
    QCOMPARE(tab.names(tab.failed), QStringList{A});
}

void TestSendActions::stoppedFileIsStartedAnew()
{
    SendTab tab(SKK, [] { Options.sendTrys = 5; });
    tab.queueWithRecord(A, Record);
    tab.form->scanDir();
    tab.choose(tab.openMenu(A), tab.page->pause);
    QVERIFY(tab.page->reSend->isEnabled());
    tab.choose(tab.openMenu(A), tab.page->reSendAction);
    QCOMPARE(tab.record(A), QStringLiteral("123456|S|31.07.2026 12:00|u|5|N|Занято"));
    QCOMPARE(tab.selected(tab.waiting), A);
}

void TestSendActions::fileThatIsGoneGetsNoRecord()
{
    SendTab tab(SKK);
    tab.queue(A);
    for (const auto act :
         {&FormMain::sendPauseFile, &FormMain::slotSendResetSendTime, &FormMain::sendReSendFile}) {
        tab.queue(A);
        tab.form->scanDir();
        tab.click(A);
        tab.remove(A);
        (void)tab.news();
        (tab.form.get()->*act)();
        QCOMPARE(tab.desk.names("out"), QStringList());
        QCOMPARE(tab.news(), QStringList{"412:00:00 Нет файла out/" + A});
        QCOMPARE(tab.names(tab.waiting), QStringList());
    }
}

void TestSendActions::numberIsChanged()
{
    SendTab tab(SKK);
    tab.queueWithRecord(A, Record);
    tab.form->scanDir();
    QMenu *menu = tab.openMenu(A);
    dialogOf([&] { tab.choose(menu, tab.page->changeNumber); },
             [](QDialog *dialog) {
                 QCOMPARE(dialog->windowTitle(), QStringLiteral("Номер абонента"));
                 QCOMPARE(dialog->findChild<QComboBox *>("number")->currentText(), QStringLiteral("123456"));
                 apply(dialog, QStringLiteral("654321"));
             });
    QCOMPARE(tab.record(A), QStringLiteral("654321|S|31.07.2026 11:00|u|3|N|Занято"));
    QCOMPARE(tab.form->modelSend.at(0).number, QStringLiteral("654321"));
    QCOMPARE(tab.selected(tab.waiting), A);
}

void TestSendActions::leftDialogChangesNothing()
{
    SendTab tab(SKK);
    tab.queueWithRecord(A, Record);
    tab.form->scanDir();
    tab.click(A);
    dialogOf([&] { tab.form->slotSendChangeAbonentNumber(); },
             [](QDialog *dialog) {
                 dialog->findChild<QComboBox *>("number")->setEditText(QStringLiteral("654321"));
                 QTest::keyClick(dialog, Qt::Key_Escape);
             });
    QCOMPARE(tab.record(A), Record);
}

void TestSendActions::separatorOfTheRecordStaysOutOfTheNumber()
{
    SendTab tab(SKK);
    tab.queueWithRecord(A, Record);
    tab.form->scanDir();
    tab.click(A);
    dialogOf([&] { tab.form->slotSendChangeAbonentNumber(); },
             [](QDialog *dialog) { apply(dialog, QStringLiteral("65|43|21")); });
    QCOMPARE(tab.record(A), QStringLiteral("654321|S|31.07.2026 11:00|u|3|N|Занято"));
}

void TestSendActions::timeIsSetToNow()
{
    SendTab tab(SKK);
    tab.queueWithRecord(A, QStringLiteral("123456|S|01.08.2026 11:00|u|3|N|"));
    tab.form->scanDir();
    tab.choose(tab.openMenu(A), tab.page->resetTime);
    QCOMPARE(tab.record(A), QStringLiteral("123456|S|31.07.2026 12:00|u|3|N|"));
    QCOMPARE(tab.form->modelSend.at(0).sendTime, QDateTime(QDate(2026, 7, 31), QTime(12, 0)));
}

void TestSendActions::lockedFileKeepsNumberAndTime_data()
{
    QTest::addColumn<int>("procedure");
    QTest::addColumn<int>("tlgMode");
    row("SKK, connected", int(SKK), 3);
    row("CKS", int(CKS), 0);
    row("direct", int(Direct), 0);
}

void TestSendActions::lockedFileKeepsNumberAndTime()
{
    QFETCH(int, procedure);
    QFETCH(int, tlgMode);
    SendTab tab(procedure);
    const QString name = procedure == Direct ? Stamped : A;
    tab.queueWithRecord(name, Record);
    tab.form->scanDir();
    tab.click(name);
    State.setTlgMode(TlgMode(tlgMode));
    tab.form->slotSendChangeAbonentNumber(); // opens no dialog, whose loop would not end
    tab.form->slotSendResetSendTime();
    QCOMPARE(tab.record(name), Record);
}

void TestSendActions::lineTakenWhileTheNumberIsAskedKeepsIt()
{
    SendTab tab(SKK);
    tab.queueWithRecord(A, Record);
    tab.form->scanDir();
    tab.click(A);
    (void)tab.news();
    dialogOf([&] { tab.form->slotSendChangeAbonentNumber(); },
             [](QDialog *dialog) {
                 State.fileInProgress = true; // its call has begun
                 State.currentFile = A;
                 apply(dialog, QStringLiteral("654321"));
             });
    QCOMPARE(tab.record(A), Record);
    QCOMPARE(tab.news(), QStringList{"412:00:00 Идет передача, номер абонента не изменен: out/" + A});
}

QTEST_MAIN(TestSendActions)
#include "test_send_actions.moc"
