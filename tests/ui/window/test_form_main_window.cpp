#include "app/options.h"
#include "app/state.h"
#include "link/prf_thread.h"
#include "link/tlg_thread.h"
#include "tests/support/row.h"
#include "tests/ui/window/station.h"
#include "ui/form_main.h"
#include "ui/roll/protocol_widget.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QTabWidget>
#include <QtTest>

class TestFormMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void tabsStandInOrder();
    void buttonsFollowTheProcedure_data();
    void buttonsFollowTheProcedure();
    void settingsMenuFollowsTheProcedure_data();
    void settingsMenuFollowsTheProcedure();
    void questionMarkOpensAboutWithoutAManual();
    void questionMarkIsAMenuWithAManual();
    void windowTakesItsStoredPlace();
    void windowWithoutStoredPlaceIs800By600();
    void journalSwitchesComeFromTheOptions();
    void linkThreadGetsItsEndpoint();
    void perforatorGetsItsEndpointOnlyIfUsed();
    void perforatorControlsFollowTheOption();
    void serviceTimersRunOnceAtConstruction();
    void destroyedWindowLeavesNoPointer();
};

void TestFormMainWindow::tabsStandInOrder()
{
    Station station(Direct);
    QStringList titles, names;
    for (int i = 0; i < station.form->tabWidget->count(); ++i) {
        titles << station.form->tabWidget->tabText(i);
        names << station.form->tabWidget->widget(i)->objectName();
    }
    QCOMPARE(titles, QStringLiteral("Протокол,Передача,Входящие,Исходящие,Поиск,Редактор").split(','));
    QCOMPARE(names, QStringLiteral("tabProtocol,tabSend,tabInput,tabOutput,tabSearch,tabEditor").split(','));
    QCOMPARE(station.form->tabWidget->currentIndex(), 0);
}

void TestFormMainWindow::buttonsFollowTheProcedure_data()
{
    QTest::addColumn<int>("processMode");
    QTest::addColumn<QString>("texts");
    row("CKS", int(CKS), "КГ0 ЗЗ|КГ1 ВАШ|КГ2 СТОП|КГ4 P|КГ5 ТЕКСТ");
    row("SKK", int(SKK), "Вызов|Набор|КТО|АО|Отпр. файл|Отпр. строку|Звонок|Отбой");
    row("direct", int(Direct), "Отпр. файл|Отпр. строку|Отпр. текст");
}

void TestFormMainWindow::buttonsFollowTheProcedure()
{
    QFETCH(int, processMode);
    Station station(processMode);
    QMap<int, QString> fromLeft;
    station.form->show();
    station.form->resize(1000, 700);
    QApplication::processEvents();
    for (QPushButton *button : station.find<QWidget>("modeFrame")->findChildren<QPushButton *>())
        fromLeft[button->x()] = button->text();
    QTEST(QStringList(fromLeft.values()).join('|'), "texts");
}

void TestFormMainWindow::settingsMenuFollowsTheProcedure_data()
{
    QTest::addColumn<int>("processMode");
    QTest::addColumn<QString>("entries");
    row("CKS", int(CKS), "Параметры|-|Операторы");
    row("SKK", int(SKK), "Параметры|-|Абоненты|Списки абонентов|-|Операторы");
    row("direct", int(Direct), "Параметры|-|Операторы");
}

void TestFormMainWindow::settingsMenuFollowsTheProcedure()
{
    QFETCH(int, processMode);
    Station station(processMode);
    QStringList entries, top;
    for (QAction *action : station.find<QMenu>("menuSettings")->actions())
        entries << (action->isSeparator() ? QStringLiteral("-") : action->text());
    QTEST(entries.join('|'), "entries");
    for (QAction *action : station.form->menuBar->actions())
        top << action->text();
    QCOMPARE(top.join('|'), QStringLiteral("Настройки|Выход|?"));
    QVERIFY(!station.find<QAction>("actionOperators")->isVisible());
}

void TestFormMainWindow::questionMarkOpensAboutWithoutAManual()
{
    Station station(Direct);
    QVERIFY(!station.find<QMenu>("menuHelp"));
    QVERIFY(!station.find<QAction>("actionUserManual"));
    QString title;
    QTimer::singleShot(0, station.form.get(), [&title] {
        title = QApplication::activeModalWidget()->windowTitle();
        QApplication::activeModalWidget()->close();
    });
    station.find<QAction>("actionAbout")->trigger();
    QCOMPARE(title, QStringLiteral("О программе"));
}

void TestFormMainWindow::questionMarkIsAMenuWithAManual()
{
    Station station(Direct, [] {
        QVERIFY(QDir().mkpath(QStringLiteral("docs")));
        QFile manual(Options.appPath + QStringLiteral("docs/Velda. Руководство пользователя.pdf"));
        QVERIFY(manual.open(QIODevice::WriteOnly));
    });
    auto *menu = station.find<QMenu>("menuHelp");
    QVERIFY(menu);
    QStringList entries;
    for (QAction *action : menu->actions())
        entries << action->text();
    QCOMPARE(entries,
             (QStringList{QStringLiteral("Руководство пользователя"), QStringLiteral("О программе")}));
}

void TestFormMainWindow::windowTakesItsStoredPlace()
{
    Station station(Direct, [] { Options.geometryMainForm = QRect(20, 60, 700, 500); });
    QCOMPARE(station.form->geometry(), QRect(20, 60, 700, 500));
}

void TestFormMainWindow::windowWithoutStoredPlaceIs800By600()
{
    Station station(Direct, [] {
        Options.saveWindowPos = false;
        Options.geometryMainForm = QRect(20, 60, 700, 500);
    });
    QCOMPARE(station.form->size(), QSize(800, 600));
    station.form.reset();
    Station empty(Direct, [] { Options.geometryMainForm = QRect(); });
    QCOMPARE(empty.form->size(), QSize(800, 600));
}

void TestFormMainWindow::journalSwitchesComeFromTheOptions()
{
    for (const bool on : {false, true}) {
        Station station(SKK, [on] { Options.ShowRegisters = Options.ShowInfo = Options.ShowCmd = on; });
        QCOMPARE(station.form->protocolWidget->showRegisters(), on);
        QCOMPARE(station.form->protocolWidget->showInfo(), on);
        QCOMPARE(station.form->protocolWidget->showCmd(), on);
    }
}

void TestFormMainWindow::linkThreadGetsItsEndpoint()
{
    for (const bool server : {false, true}) {
        Station station(Direct, [server] {
            Options.Host = QStringLiteral("10.1.2.3");
            Options.Port = 1234;
            Options.AsTspSrv = server;
        });
        QCOMPARE(TlgThread.linkType.load(), int(server ? CTlgThread::TcpServer : CTlgThread::TcpClient));
        QCOMPARE(TlgThread.tcpAddress, QStringLiteral("10.1.2.3"));
        QCOMPARE(TlgThread.tcpPort, 1234);
        QVERIFY(!TlgThread.isRunning());
    }
    Station station(Direct, [] {
        Options.TcpMode = false;
        Options.TRELO_SN = QStringLiteral("10000001");
        Options.tlgBaud = 100;
    });
    QCOMPARE(TlgThread.linkType.load(), int(CTlgThread::AdapterPort));
    QCOMPARE(TlgThread.adapterSN, QStringLiteral("10000001"));
}

void TestFormMainWindow::perforatorGetsItsEndpointOnlyIfUsed()
{
    for (const bool used : {false, true}) {
        Station station(Direct, [used] {
            PrfThread.adapterSN.clear();
            Options.usePrf = used;
            Options.SOREL_SN = QStringLiteral("20000001");
        });
        QCOMPARE(PrfThread.adapterSN, used ? QStringLiteral("20000001") : QString());
    }
    PrfThread.adapterSN.clear();
}

void TestFormMainWindow::perforatorControlsFollowTheOption()
{
    Station station(Direct);
    for (const bool used : {true, false}) {
        Options.usePrf = used;
        station.form->setPrfInterface();
        for (const char *name :
             {"inputToPerforatorButton", "editorToPerforatorButton", "editorFromPerforatorButton"})
            QCOMPARE(station.button(name)->isHidden(), !used);
    }
}

void TestFormMainWindow::serviceTimersRunOnceAtConstruction()
{
    // The centre's request countdown shows it: it falls with each run on a link that is up.
    Station station(CKS, [] {
        TlgThread.connected = true;
        State.secondsSinceRx = 10;
        State.askReceiptCountdown = 5;
    });
    QCOMPARE(State.askReceiptCountdown, 4);
}

void TestFormMainWindow::destroyedWindowLeavesNoPointer()
{
    Station station(Direct);
    mainWindow = station.form.get();
    station.form.reset();
    QVERIFY(!mainWindow);
}

QTEST_MAIN(TestFormMainWindow)
#include "test_form_main_window.moc"
