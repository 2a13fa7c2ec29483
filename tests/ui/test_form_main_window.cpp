#include "app/options.h"
#include "app/startup.h"
#include "app/state.h"
#include "link/prf_thread.h"
#include "link/tlg_thread.h"
#include "tests/ui/station.h"
#include "text/utils.h"
#include "ui/form_main.h"
#include "ui/protocol_widget.h"

#include <QAction>
#include <QApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QTabWidget>
#include <QtTest>

class TestFormMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup() { QApplication::setFont(m_font); }
    void stripShowsItsFirstTexts_data();
    void stripShowsItsFirstTexts();
    void stripStandsInThreeBoxes();
    void stripColoursDifferInTextAlone();
    void networkNameFollowsTheProcedure();
    void tabsStandInOrder();
    void buttonsFollowTheProcedure_data();
    void buttonsFollowTheProcedure();
    void settingsMenuFollowsTheProcedure_data();
    void settingsMenuFollowsTheProcedure();
    void questionMarkOpensAboutWithoutAManual();
    void questionMarkIsAMenuWithAManual();
    void trayHasTwoEntriesAndShowsTheStartIcon();
    void trayIconsAreThereButForModeBV();
    void trayClickTogglesTheWindow();
    void titlesFollowTheTable_data();
    void titlesFollowTheTable();
    void titleFollowsTheChannelName();
    void titlesCorrectTheFontSize();
    void windowTakesItsStoredPlace();
    void windowWithoutStoredPlaceIs800By600();
    void journalSwitchesComeFromTheOptions();
    void linkThreadGetsItsEndpoint();
    void perforatorGetsItsEndpointOnlyIfUsed();
    void perforatorControlsFollowTheOption();
    void serviceTimersRunOnceAtConstruction();
    void destroyedWindowLeavesNoPointer();

private:
    const QFont m_font = QApplication::font();
};

void TestFormMainWindow::initTestCase()
{
    QCoreApplication::setApplicationName(QStringLiteral("Velda"));
    QCoreApplication::setApplicationVersion(QStringLiteral("2026.07.31"));
}

void TestFormMainWindow::stripShowsItsFirstTexts_data()
{
    struct Row {
        const char *name;
        int box, row, column;
        const char *text;
    };
    static const Row rows[] = {
        {"labelWindow", 1, 0, 0, ""},
        {"labelNetIn", 1, 0, 1, "---"},
        {"labelNetOut", 1, 0, 3, "---"},
        {"labelScanCountdown", 1, 1, 0, "000"},
        {"lampSent", 1, 1, 1, "\xE2\x86\x91"},
        {"labelClock", 1, 1, 2, "00:00:00"},
        {"lampReceived", 1, 1, 3, "\xE2\x86\x93"},
        {"labelScanResult", 1, 2, 0, "000"},
        {"labelPKout", 1, 2, 1, "---"},
        {"labelPKName", 1, 2, 2, "ПК"},
        {"labelPKin", 1, 2, 3, "---"},
        {"labelAutomaticName", 2, 0, 0, "Режим (Alt+A)"},
        {"labelAutomatic", 2, 0, 1, "---"},
        {"labelTlgModeName", 2, 1, 0, "Состояние"},
        {"labelTlgMode", 2, 1, 1, "--"}, // the construction has set the mode's label
        {"labelLinkState", 3, 0, 0, ""},
        {"labelPrfState", 3, 1, 0, ""},
        {"labelReserved", 3, 2, 0, ""},
    };
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("box");
    QTest::addColumn<QPoint>("place");
    QTest::addColumn<QString>("text");
    for (const Row &row : rows)
        QTest::newRow(row.name) << QByteArray(row.name) << row.box << QPoint(row.column, row.row)
                                << QString::fromUtf8(row.text);
}

void TestFormMainWindow::stripShowsItsFirstTexts()
{
    QFETCH(QByteArray, name);
    QFETCH(int, box);
    QFETCH(QPoint, place);
    Station station(CKS);
    QTEST(station.shown(name.constData()), "text");
    auto *grid = qobject_cast<QGridLayout *>(station.form->stripBoxes[size_t(box) - 1]->layout());
    QVERIFY(grid);
    QLayoutItem *item = grid->itemAtPosition(place.y(), place.x());
    QVERIFY(item);
    QCOMPARE(item->widget()->objectName(), QString::fromLatin1(name));
}

void TestFormMainWindow::stripStandsInThreeBoxes()
{
    Station station(Direct);
    QWidget *strip = station.form->strip;
    QCOMPARE(strip->palette().color(QPalette::Window), QColor(64, 64, 64));
    for (QGroupBox *box : station.form->stripBoxes) {
        QVERIFY(box->autoFillBackground());
        QCOMPARE(box->layout()->contentsMargins(), QMargins(4, 4, 4, 4));
        QCOMPARE(box->layout()->spacing(), 2);
        QCOMPARE(box->palette().color(QPalette::Window), QColor(64, 64, 64));
    }
    const int width = CUtils::txtGUIWidth(24, station.form->font());
    QCOMPARE(station.form->stripBoxes[0]->width(), width);
    QCOMPARE(station.form->stripBoxes[1]->width(), width);
    QCOMPARE(strip->minimumHeight(), strip->maximumHeight());
    auto *row = qobject_cast<QHBoxLayout *>(strip->layout());
    QVERIFY(row);
    QCOMPARE((QList<int>{row->stretch(0), row->stretch(1), row->stretch(2)}), (QList<int>{1, 1, 8}));
    QCOMPARE(station.find<QLabel>("labelClock")->styleSheet(), QStringLiteral("QLabel { color : silver; }"));
}

void TestFormMainWindow::stripColoursDifferInTextAlone()
{
    Station station(Direct);
    const QColor colours[] = {Qt::white, Qt::red, Qt::yellow, Qt::green, Qt::black};
    for (size_t i = 0; i < station.form->palettes.size(); ++i) {
        QPalette palette = station.form->palettes[i];
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            QCOMPARE(palette.color(group, QPalette::WindowText), colours[i]);
            palette.setColor(group, QPalette::WindowText, Qt::white);
        }
        QCOMPARE(palette, station.form->palettes[0]);
    }
}

void TestFormMainWindow::networkNameFollowsTheProcedure()
{
    const char *const names[] = {"ЦКС", "СКК", "ПК"};
    for (const int mode : {CKS, SKK, Direct}) {
        Station station(mode);
        QCOMPARE(station.shown("labelNetName"), QString::fromUtf8(names[mode]));
    }
}

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
    QTest::newRow("CKS") << CKS << "КГ0 ЗЗ|КГ1 ВАШ|КГ2 СТОП|КГ4 P|КГ5 ТЕКСТ";
    QTest::newRow("SKK") << SKK << "Вызов|Набор|КТО|АО|Отпр. файл|Отпр. строку|Звонок|Отбой";
    QTest::newRow("direct") << Direct << "Отпр. файл|Отпр. строку|Отпр. текст";
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
    QTest::newRow("CKS") << CKS << "Параметры|-|Операторы";
    QTest::newRow("SKK") << SKK << "Параметры|-|Абоненты|Списки абонентов|-|Операторы";
    QTest::newRow("direct") << Direct << "Параметры|-|Операторы";
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

void TestFormMainWindow::trayHasTwoEntriesAndShowsTheStartIcon()
{
    Station station(Direct);
    QStringList entries;
    for (QAction *action : station.form->trayIcon.contextMenu()->actions())
        entries << action->text();
    QCOMPARE(entries, (QStringList{QStringLiteral("Развернуть"), QStringLiteral("Выход")}));
    QVERIFY(station.form->trayIcon.isVisible());
    QCOMPARE(station.form->trayIcon.icon().cacheKey(), station.form->icons[13].cacheKey());
    QCOMPARE(station.form->windowIcon().cacheKey(), station.form->icons[13].cacheKey());
    station.find<QAction>("trayShow")->trigger();
    QVERIFY(station.form->isVisible());
}

void TestFormMainWindow::trayIconsAreThereButForModeBV()
{
    Station station(Direct);
    QCOMPARE(station.form->icons.size(), size_t(14));
    for (size_t i = 0; i < station.form->icons.size(); ++i)
        QCOMPARE(station.form->icons[i].availableSizes().isEmpty(), i == 6);
    QCOMPARE(station.form->prevIconN, -1); // so that the first tick sets its own
}

void TestFormMainWindow::trayClickTogglesTheWindow()
{
    Station station(Direct);
    station.form->iconActivated(QSystemTrayIcon::Trigger);
    QVERIFY(station.form->isVisible());
    station.form->iconActivated(QSystemTrayIcon::DoubleClick);
    station.form->iconActivated(QSystemTrayIcon::Context);
    QVERIFY(station.form->isVisible());
    station.form->showMinimized();
    station.form->iconActivated(QSystemTrayIcon::Trigger);
    QVERIFY(station.form->isVisible());
    QVERIFY(!station.form->isMinimized());
    station.form->iconActivated(QSystemTrayIcon::Trigger);
    QVERIFY(!station.form->isVisible());
}

void TestFormMainWindow::titlesFollowTheTable_data()
{
    QTest::addColumn<int>("processMode");
    QTest::addColumn<QString>("mainTitle");
    QTest::addColumn<QString>("channel");
    QTest::addColumn<bool>("tcp");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("toolTip");
    const QString built = QStringLiteral("Velda (") + buildDate() + QStringLiteral(")");
    QTest::newRow("direct, TCP") << Direct << ""
                                 << "" << true << "Velda - ПС / V:2026.07.31"
                                 << built + " - ПС\n10.1.2.3:5674";
    QTest::newRow("CKS, adapter") << CKS << ""
                                  << "" << false << "Velda - ЦКС / V:2026.07.31"
                                  << built + " - ЦКС\n10000001";
    QTest::newRow("SKK, channel") << SKK << ""
                                  << "МСК12" << true << "МСК12 - СКК / V:2026.07.31"
                                  << "МСК12 - СКК\n10.1.2.3:5674";
    QTest::newRow("main title") << CKS << "УЗЕЛ"
                                << "" << true << "УЗЕЛ / Velda - ЦКС / V:2026.07.31"
                                << "УЗЕЛ";
    QTest::newRow("main title, channel") << SKK << "УЗЕЛ"
                                         << "МСК12" << false << "УЗЕЛ / Velda - СКК / V:2026.07.31"
                                         << "УЗЕЛ";
}

void TestFormMainWindow::titlesFollowTheTable()
{
    QFETCH(int, processMode);
    QFETCH(QString, mainTitle);
    QFETCH(QString, channel);
    QFETCH(bool, tcp);
    Station station(processMode, [&] {
        Options.mainTitle = mainTitle;
        Options.TcpMode = tcp;
        Options.Host = QStringLiteral("10.1.2.3");
        Options.Port = 5674;
        Options.TRELO_SN = QStringLiteral("10000001");
        State.channelName = channel;
    });
    QTEST(station.form->windowTitle(), "title");
    QTEST(station.form->trayIcon.toolTip(), "toolTip");
}

void TestFormMainWindow::titleFollowsTheChannelName()
{
    Station station(Direct);
    State.setChannelName(QStringLiteral("МСК12"));
    QCOMPARE(station.form->windowTitle(), QStringLiteral("МСК12 - ПС / V:2026.07.31"));
    State.setChannelName(QString());
    QCOMPARE(station.form->windowTitle(), QStringLiteral("Velda - ПС / V:2026.07.31"));
}

void TestFormMainWindow::titlesCorrectTheFontSize()
{
    Station station(Direct);
    State.basePointSize = 9;
    const int before = QApplication::font().pointSize();
    station.form->updateTitles();
    QCOMPARE(QApplication::font().pointSize(), before);
    Options.fontSizeCorrect = 4;
    station.form->updateTitles();
    QCOMPARE(QApplication::font().pointSize(), 13);
    Options.fontSizeCorrect = -2;
    station.form->updateTitles();
    QCOMPARE(QApplication::font().pointSize(), 7);
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
