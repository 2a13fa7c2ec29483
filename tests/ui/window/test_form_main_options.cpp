// The way into the options, and what a confirmed change sets off in the window.

#include "app/clock.h"
#include "app/state.h"
#include "link/prf_thread.h"
#include "link/tlg_thread.h"
#include "records/protocol.h"
#include "tests/support/row.h"
#include "tests/ui/window/station.h"
#include "ui/dialogs/options/access_option_dialog.h"
#include "ui/dialogs/options/colour_button.h"
#include "ui/dialogs/options/options_dialog.h"
#include "ui/form_main.h"
#include "ui/pages/archive_page.h"
#include "ui/pages/editor_page.h"
#include "ui/roll/protocol_widget.h"
#include "ui/widgets/telegram_view.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTimer>
#include <QtTest>

class TestFormMainOptions : public QObject
{
    Q_OBJECT

private slots:
    void emptyCodesOpenAllPagesWithoutAQuestion();
    void codeDecidesWhichPagesAreSeen_data();
    void codeDecidesWhichPagesAreSeen();
    void wrongCodeIsJournalledAndNothingElse();
    void cancelledQuestionDoesNothing();
    void menuOpensThem();
    void cancelledDialogOnlyRenewsTheTitles();
    void unchangedLineGoesOn();
    void changedLineIsSetUpAgain_data();
    void changedLineIsSetUpAgain();
    void silenceLimitReachesARunningLink();
    void perforatorIsStoppedWithoutOne();
    void perforatorIsStarted();
    void interfaceFollowsAtOnce();
    void cipherIsOffWithoutRegisterMarks();
    void journalTakesItsLook();
    void lettersGrowAndShrinkBack();
    void newFoldersAreMadeAtOnce();
    void settingsAreSaved();
    void anotherProcedureClosesForARestart();
    void tickGoesOnWhileTheyAreOpen();
};

namespace
{
/// A station in manual mode, in which the options can be opened.
class Office : public Station
{
public:
    explicit Office(int processMode = CKS) : Station(processMode)
    {
        Options.processModeConfigured = processMode;
        Options.saveWindowPos = false;
        State.setAutomatic(false);
        (void)news();
    }
    ~Office()
    {
        PrfThread.stopThread();
        PrfThread.wait();
    }

    /// Opens the options, has \a act work on them and leaves them by the button of that name.
    void change(const std::function<void(COptionsDialog &)> &act, const char *button = "apply")
    {
        bool acted = false;
        QTimer::singleShot(0, form.get(), [&] {
            auto *dialog = qobject_cast<COptionsDialog *>(QApplication::activeModalWidget());
            QVERIFY(dialog != nullptr);
            act(*dialog);
            acted = true;
            QTest::mouseClick(dialog->findChild<QPushButton *>(QString::fromLatin1(button)), Qt::LeftButton);
        });
        form->openOptions();
        QVERIFY(acted);
    }

    /// Opens them with \a code typed, or none if it is null, and tells which pages are seen.
    QStringList pagesFor(const QString &code)
    {
        QStringList pages;
        QTimer::singleShot(0, form.get(), [&] {
            auto *question = qobject_cast<CAccessOptionDialog *>(QApplication::activeModalWidget());
            QVERIFY(question != nullptr);
            QTimer::singleShot(0, form.get(), [&] { pages = closePages(); });
            question->findChild<QLineEdit *>("code")->insert(code);
            QTest::mouseClick(question->findChild<QPushButton *>(code.isNull() ? "cancel" : "apply"),
                              Qt::LeftButton);
        });
        form->openOptions();
        QCoreApplication::processEvents();
        return pages;
    }

    static QStringList closePages()
    {
        QStringList pages;
        auto *dialog = qobject_cast<COptionsDialog *>(QApplication::activeModalWidget());
        if (dialog == nullptr)
            return pages;
        const auto *tabs = dialog->findChild<QTabWidget *>("tabs");
        for (int i = 0; i < tabs->count(); ++i)
            if (tabs->isTabVisible(i))
                pages << tabs->tabText(i);
        dialog->reject();
        return pages;
    }
};

template <class T> T *child(COptionsDialog &dialog, const char *name)
{
    return dialog.findChild<T *>(QString::fromLatin1(name));
}

void type(COptionsDialog &dialog, const char *name, const QString &text)
{
    child<QLineEdit>(dialog, name)->setText(text);
}

void check(COptionsDialog &dialog, const char *name, bool on)
{
    child<QCheckBox>(dialog, name)->setChecked(on);
}
} // namespace

void TestFormMainOptions::emptyCodesOpenAllPagesWithoutAQuestion()
{
    Office office;
    int pages = 0;
    office.change(
        [&pages](COptionsDialog &dialog) {
            const auto *tabs = child<QTabWidget>(dialog, "tabs");
            for (int i = 0; i < tabs->count(); ++i)
                pages += int(tabs->isTabVisible(i));
        },
        "cancel");
    QCOMPARE(pages, 9);
}

void TestFormMainOptions::codeDecidesWhichPagesAreSeen_data()
{
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("admin");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("pages");
    row("administrator", "1", "2", "2", 9);
    row("user", "1", "2", "1", 5);
    row("the same for both", "1", "1", "1", 9);
    row("user alone", "1", "", "1", 5);
    row("nothing typed where the administrator has no code", "1", "", "", 9);
    row("administrator alone", "", "2", "2", 9);
    row("nothing typed where the user has no code", "", "2", "", 5);
    row("Russian", "ключ", "КЛЮЧ", "ключ", 5);
}

void TestFormMainOptions::codeDecidesWhichPagesAreSeen()
{
    QFETCH(QString, user);
    QFETCH(QString, admin);
    QFETCH(QString, typed);
    QFETCH(int, pages);
    Office office;
    Options.accessCodeUser = user;
    Options.accessCodeAdmin = admin;
    QCOMPARE(office.pagesFor(typed + "").size(), pages);
    QCOMPARE(office.news(), QStringList());
}

void TestFormMainOptions::wrongCodeIsJournalledAndNothingElse()
{
    Office office;
    Options.accessCodeUser = "1";
    Options.accessCodeAdmin = "2";
    for (const char *code : {"3", "12", ""}) {
        QCOMPARE(office.pagesFor(QString::fromLatin1(code) + ""), QStringList());
        QCOMPARE(office.news(), QStringList("312:00:00 Введен неверный код доступа к настройкам"));
    }
    QVERIFY(!QFile::exists(office.desk.path("velda.ini")));
}

void TestFormMainOptions::cancelledQuestionDoesNothing()
{
    Office office;
    Options.accessCodeUser = "1";
    QCOMPARE(office.pagesFor(QString()), QStringList());
    QCOMPARE(office.news(), QStringList());
}

void TestFormMainOptions::menuOpensThem()
{
    Office office;
    bool opened = false;
    QTimer::singleShot(0, office.form.get(), [&opened] { opened = !Office::closePages().isEmpty(); });
    office.form->actionOptions->trigger();
    QVERIFY(opened);
}

void TestFormMainOptions::cancelledDialogOnlyRenewsTheTitles()
{
    Office office;
    office.form->setWindowTitle("stale");
    office.change([](COptionsDialog &dialog) { type(dialog, "mainTitle", "ПУНКТ"); }, "cancel");
    QVERIFY(office.form->windowTitle().contains("ЦКС"));
    QCOMPARE(Options.mainTitle, QString());
    QVERIFY(!QFile::exists(office.desk.path("velda.ini")));

    office.change([](COptionsDialog &dialog) { type(dialog, "mainTitle", "ПУНКТ"); });
    QVERIFY(office.form->windowTitle().startsWith("ПУНКТ / "));
}

void TestFormMainOptions::unchangedLineGoesOn()
{
    Office office;
    TlgThread.restartRequested = false;
    TlgThread.sendBuffer.mAppend("НЕ ОТПРАВЛЕНО");
    office.change([](COptionsDialog &dialog) {
        type(dialog, "mainTitle", "ПУНКТ");
        type(dialog, "key", "0102");
        child<QSpinBox>(dialog, "TimeOut")->setValue(60);
        check(dialog, "autodetectPortTrelo", true);
    });
    QVERIFY(!TlgThread.restartRequested);
    QCOMPARE(TlgThread.sendBuffer.mGet(), "НЕ ОТПРАВЛЕНО");
}

void TestFormMainOptions::changedLineIsSetUpAgain_data()
{
    QTest::addColumn<bool>("tcp");
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("linkType");
    row("client", true, "10.0.0.1", int(CTlgThread::TcpClient));
    row("server", true, "S:10.0.0.1", int(CTlgThread::TcpServer));
    row("adapter", false, "127.0.0.1", int(CTlgThread::AdapterPort));
}

void TestFormMainOptions::changedLineIsSetUpAgain()
{
    QFETCH(bool, tcp);
    QFETCH(QString, address);
    QFETCH(int, linkType);
    Office office;
    TlgThread.restartRequested = false;
    TlgThread.paused = true;
    office.change([&](COptionsDialog &dialog) {
        child<QGroupBox>(dialog, "TcpMode")->setChecked(tcp);
        type(dialog, "Host", address);
        child<QComboBox>(dialog, "TRELO_SN")->setEditText("10000009"); // which is not there
        child<QComboBox>(dialog, "tlgBaud")->setCurrentText("200");
    });
    QVERIFY(TlgThread.restartRequested);
    QVERIFY(!TlgThread.paused);
    QCOMPARE(int(TlgThread.linkType), linkType);
    QCOMPARE(int(TlgThread.reconnectDelay), 0);
    if (tcp) {
        QCOMPARE(TlgThread.tcpAddress, "10.0.0.1");
    } else {
        QCOMPARE(TlgThread.adapterSN, "10000009");
        QCOMPARE(int(TlgThread.tlgBaud), 200);
    }
}

void TestFormMainOptions::silenceLimitReachesARunningLink()
{
    Office office;
    office.change([](COptionsDialog &dialog) { child<QSpinBox>(dialog, "TimeOut")->setValue(77); });
    QCOMPARE(TlgThread.silenceLimit(), 77);
}

void TestFormMainOptions::perforatorIsStoppedWithoutOne()
{
    Office office;
    Options.usePrf = true;
    PrfThread.start();
    office.change([](COptionsDialog &dialog) { child<QGroupBox>(dialog, "usePrf")->setChecked(false); });
    QVERIFY(PrfThread.wait(30000));
    QVERIFY(office.form->editorPage->toPerforator->isHidden());
}

void TestFormMainOptions::perforatorIsStarted()
{
    Office office;
    office.change([](COptionsDialog &dialog) {
        child<QGroupBox>(dialog, "usePrf")->setChecked(true);
        child<QComboBox>(dialog, "SOREL_SN")->setEditText("20000009");
        child<QComboBox>(dialog, "prfBaudIndex")->setCurrentIndex(2);
    });
    QVERIFY(PrfThread.isRunning());
    QCOMPARE(PrfThread.adapterSN, "20000009");
    QCOMPARE(PrfThread.baudIndex, 2);
    QVERIFY(!office.form->editorPage->toPerforator->isHidden());

    // A running one is begun anew.
    office.change(
        [](COptionsDialog &dialog) { child<QComboBox>(dialog, "SOREL_SN")->setEditText("20000008"); });
    QVERIFY(PrfThread.isRunning());
    QCOMPARE(PrfThread.adapterSN, "20000008");
}

void TestFormMainOptions::interfaceFollowsAtOnce()
{
    Office office;
    office.change([](COptionsDialog &dialog) {
        type(dialog, "CategoryList", "А,Б,В");
        check(dialog, "enableAttachFiles", true);
        check(dialog, "useOperators", true);
        check(dialog, "limitProtocolStringWidth", true);
        child<QSpinBox>(dialog, "protocolStringWidth")->setValue(40);
        check(dialog, "interfaceMode1", false);
        child<QSpinBox>(dialog, "tlgFontSize")->setValue(23);
    });
    const CEditorPage &editor = *office.form->editorPage;
    QCOMPARE(editor.category->count(), 3);
    QVERIFY(!editor.attach->isHidden());
    QVERIFY(!office.form->inputPage->saveAttach->isHidden());
    QVERIFY(office.form->actionOperators->isVisible());
    QCOMPARE(Log.lineWidthLimit, 40);
    QCOMPARE(editor.form->findText("Телеграмма"), -1);
    QCOMPARE(editor.text->font().pointSize(), 23);
    QCOMPARE(office.form->inputPage->text->font().pointSize(), 23);

    office.change([](COptionsDialog &dialog) {
        check(dialog, "enableAttachFiles", false);
        check(dialog, "useOperators", false);
        check(dialog, "limitProtocolStringWidth", false);
    });
    QVERIFY(editor.attach->isHidden() && office.form->inputPage->saveAttach->isHidden());
    QVERIFY(!office.form->actionOperators->isVisible());
    QCOMPARE(Log.lineWidthLimit, 0);
}

void TestFormMainOptions::cipherIsOffWithoutRegisterMarks()
{
    Office office;
    const CEditorPage &editor = *office.form->editorPage;
    editor.text->setPlainText("АБВ\nГДЕ");
    editor.cryptoMode->setChecked(true);
    QCOMPARE(editor.text->toPlainText(), "АБВ<\nГДЕ");
    office.change([](COptionsDialog &dialog) { check(dialog, "removeRegisterInInputFiles", true); });
    QVERIFY(!editor.cryptoMode->isEnabled() && !editor.cryptoMode->isChecked());
    QCOMPARE(editor.text->toPlainText(), "АБВ\nГДЕ");
    office.change([](COptionsDialog &dialog) { check(dialog, "removeRegisterInInputFiles", false); });
    QVERIFY(editor.cryptoMode->isEnabled() && !editor.cryptoMode->isChecked());
}

void TestFormMainOptions::journalTakesItsLook()
{
    Office office;
    office.form->show();
    office.change([](COptionsDialog &dialog) {
        child<CColourButton>(dialog, "LogColor_Foreground")->setColour("#123456");
        child<QSpinBox>(dialog, "protocolFontSize")->setValue(31);
    });
    CProtocolWidget &roll = *office.form->protocolWidget;
    QCOMPARE(roll.font().pointSize(), 31);
    QCOMPARE(roll.grab().toImage().pixelColor(roll.textArea().bottomRight() - QPoint(2, 2)),
             QColor("#123456"));
}

void TestFormMainOptions::lettersGrowAndShrinkBack()
{
    const QFont former = QApplication::font();
    Office office;
    State.basePointSize = 10;
    for (const int correction : {4, 0}) {
        office.change([correction](COptionsDialog &dialog) {
            child<QSpinBox>(dialog, "fontSizeCorrect")->setValue(correction);
        });
        QCOMPARE(QApplication::font().pointSize(), 10 + correction);
    }
    QApplication::setFont(former);
}

void TestFormMainOptions::newFoldersAreMadeAtOnce()
{
    Office office(Direct);
    office.change([](COptionsDialog &dialog) {
        type(dialog, "pathInp", "received");
        type(dialog, "pathOut", "queue");
        type(dialog, "pathPrt", "no/such");
    });
    office.receive("ЗЦЗЦ ТЕКСТ\r\nНННН  ");
    QCOMPARE(office.desk.names("received/20260731", "*").size(), 1);
    QVERIFY(QFileInfo(office.desk.path("queue")).isDir());
    QVERIFY(!QFileInfo::exists(office.desk.path("no")));
}

void TestFormMainOptions::settingsAreSaved()
{
    Office office;
    office.change([](COptionsDialog &dialog) { child<QSpinBox>(dialog, "keepFilesDays")->setValue(77); });
    QVERIFY(office.desk.read("velda.ini").replace("\r\n", "\n").contains("\nkeepFilesDays=77\n"));
    QVERIFY(!State.closeAllowed && !State.restartAfterExit);
}

void TestFormMainOptions::anotherProcedureClosesForARestart()
{
    Office office(SKK);
    const Answer yes(QMessageBox::Yes);
    office.form->show();
    office.change(
        [](COptionsDialog &dialog) { child<QComboBox>(dialog, "processMode")->setCurrentIndex(Direct); });
    QVERIFY(State.closeAllowed && State.restartAfterExit);
    QVERIFY(!office.form->isVisible());
    QVERIFY(office.desk.read("velda.ini").replace("\r\n", "\n").contains("\nprocessMode=2\n"));
    QCOMPARE(Options.processMode, int(SKK));
    QCOMPARE(State.stopCountdown, 0); // nothing is said to the line
    QCOMPARE(office.desk.sent(), QString());
}

void TestFormMainOptions::tickGoesOnWhileTheyAreOpen()
{
    Office office;
    office.change(
        [&office](COptionsDialog &dialog) {
            auto *tabs = child<QTabWidget>(dialog, "tabs");
            for (int i = 0; i < tabs->count(); ++i) {
                tabs->setCurrentIndex(i);
                office.tick();
            }
        },
        "cancel");
    QCOMPARE(Time.time, QTime(12, 0, 11));
}

QTEST_MAIN(TestFormMainOptions)
#include "test_form_main_options.moc"
