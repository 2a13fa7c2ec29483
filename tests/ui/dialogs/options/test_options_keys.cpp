// The keys of the options: the two commands that no button shows, and every control by keyboard.

#include "tests/support/row.h"
#include "tests/ui/dialogs/options/option_room.h"
#include "ui/dialogs/fw_update_dialog.h"
#include "ui/dialogs/nerva_config_dialog.h"

#include <QApplication>
#include <QScrollArea>
#include <QSet>
#include <QTimer>

class TestOptionsKeys : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { qunsetenv("VELDA_PORTS"); }
    void ctrlShiftFOpensTheFirmwareOfAnAdapter();
    void ctrlShiftFDoesNothingWithoutAdapters();
    void ctrlShiftCOpensTheConfigurationOfAnEthernetAdapter();
    void ctrlShiftCDoesNothing_data();
    void ctrlShiftCDoesNothing();
    void otherModifiersDoNothing_data();
    void otherModifiersDoNothing();
    void keysReachTheDialogFromEveryControl();
    void buttonOpensTheConfigurationOfAnEthernetAdapter();
    void tabReachesEveryControl();
    void ctrlTabShowsNoHiddenPage();
    void wheelOverAListDoesNotChangeIt();
    void enterAppliesAndEscLeaves();
};

namespace
{
constexpr Qt::KeyboardModifiers CtrlShift = Qt::ControlModifier | Qt::ShiftModifier;

/// Does \a act, closing every dialog that it opens; their class names.
QStringList opened(const std::function<void()> &act)
{
    QStringList names;
    QTimer closer;
    QObject::connect(&closer, &QTimer::timeout, [&names] {
        if (QWidget *dialog = QApplication::activeModalWidget()) {
            names << dialog->metaObject()->className();
            static_cast<QDialog *>(dialog)->reject();
        }
    });
    closer.start(10);
    act();
    return names;
}

QStringList openedBy(QWidget *widget, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    return opened([=] { QTest::keyClick(widget, key, modifiers); });
}
} // namespace

void TestOptionsKeys::ctrlShiftFOpensTheFirmwareOfAnAdapter()
{
    OptionRoom room;
    qputenv("VELDA_PORTS", "10000001=/dev/null");
    room.open();
    QCOMPARE(openedBy(room.dialog.get(), Qt::Key_F, CtrlShift), QStringList("CFWUpdateDialog"));
}

void TestOptionsKeys::ctrlShiftFDoesNothingWithoutAdapters()
{
    OptionRoom room;
    qputenv("VELDA_PORTS", "20000001=/dev/null"); // a perforator is none
    Options.TRELO_SN = "10000001";
    room.open();
    QCOMPARE(room.list("TRELO_SN")->count(), 0);
    QCOMPARE(openedBy(room.dialog.get(), Qt::Key_F, CtrlShift), QStringList());
}

void TestOptionsKeys::ctrlShiftCOpensTheConfigurationOfAnEthernetAdapter()
{
    OptionRoom room;
    Options.TcpMode = false;
    Options.TRELO_SN = "30000001";
    room.open();
    QCOMPARE(openedBy(room.dialog.get(), Qt::Key_C, CtrlShift), QStringList("CNervaConfigDialog"));
}

void TestOptionsKeys::ctrlShiftCDoesNothing_data()
{
    QTest::addColumn<bool>("adapter");
    QTest::addColumn<QString>("serial");
    row("while the adapter is not checked", false, "30000001");
    row("for a line adapter", true, "10000001");
    row("without a serial number", true, "");
}

void TestOptionsKeys::ctrlShiftCDoesNothing()
{
    QFETCH(bool, adapter);
    QFETCH(QString, serial);
    OptionRoom room;
    Options.TcpMode = !adapter;
    Options.TRELO_SN = serial;
    room.open();
    QCOMPARE(openedBy(room.dialog.get(), Qt::Key_C, CtrlShift), QStringList());
    // The key is used up, whether or not it has opened anything.
    QKeyEvent key(QEvent::KeyPress, Qt::Key_C, CtrlShift);
    key.ignore();
    QApplication::sendEvent(room.dialog.get(), &key);
    QVERIFY(key.isAccepted());
}

void TestOptionsKeys::otherModifiersDoNothing_data()
{
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<bool>("adapter");
    row("Ctrl+Alt while the adapter is not checked", int(Qt::ControlModifier | Qt::AltModifier), false);
    row("Ctrl+Alt", int(Qt::ControlModifier | Qt::AltModifier), true);
    row("Ctrl", int(Qt::ControlModifier), true);
    row("Shift", int(Qt::ShiftModifier), true);
    row("none", 0, true);
}

void TestOptionsKeys::otherModifiersDoNothing()
{
    QFETCH(int, modifiers);
    QFETCH(bool, adapter);
    OptionRoom room;
    qputenv("VELDA_PORTS", "30000001=/dev/null");
    Options.TcpMode = !adapter;
    Options.TRELO_SN = "30000001";
    room.open();
    for (const Qt::Key key : {Qt::Key_C, Qt::Key_F})
        QCOMPARE(openedBy(room.dialog.get(), key, Qt::KeyboardModifiers(modifiers)), QStringList());
}

// Lists would search for the letter, fields would take it.
void TestOptionsKeys::keysReachTheDialogFromEveryControl()
{
    OptionRoom room;
    qputenv("VELDA_PORTS", "10000001=/dev/null");
    room.open();
    for (const char *name : {"processMode", "Host", "Port", "TRELO_SN", "autodetectPortTrelo"})
        QCOMPARE(openedBy(room.find<QWidget>(name), Qt::Key_F, CtrlShift), QStringList("CFWUpdateDialog"));
}

void TestOptionsKeys::buttonOpensTheConfigurationOfAnEthernetAdapter()
{
    OptionRoom room;
    Options.TcpMode = false;
    Options.TRELO_SN = "30000001";
    room.open();
    auto *button = room.find<QAbstractButton>("adapterConfigure");
    QCOMPARE(opened([button] { button->click(); }), QStringList("CNervaConfigDialog"));
}

void TestOptionsKeys::tabReachesEveryControl()
{
    OptionRoom room(SKK);
    Options.usePrf = true;
    Options.key = "01";
    COptionsDialog &dialog = room.open();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    auto *tabs = room.find<QTabWidget>("tabs");
    for (int page = 0; page < tabs->count(); ++page) {
        if (!tabs->isTabVisible(page))
            continue;
        tabs->setCurrentIndex(page);
        QSet<QWidget *> reached;
        for (int i = 0; i < 120; ++i) {
            reached << dialog.focusWidget();
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
        }
        for (QWidget *control : tabs->widget(page)->findChildren<QWidget *>())
            if ((control->focusPolicy() & Qt::TabFocus) != 0 && control->isVisible() &&
                control->isEnabled() && control->focusProxy() == nullptr)
                QVERIFY2(reached.contains(control),
                         qPrintable(tabs->tabText(page) + ": " + control->objectName()));
    }
}

void TestOptionsKeys::ctrlTabShowsNoHiddenPage()
{
    OptionRoom room(SKK);
    room.open(false);
    QVERIFY(QTest::qWaitForWindowActive(room.dialog.get()));
    auto *tabs = room.find<QTabWidget>("tabs");
    QStringList shown;
    for (int i = 0; i < 5; ++i) {
        shown << tabs->tabText(tabs->currentIndex());
        QTest::keyClick(tabs, Qt::Key_Tab, Qt::ControlModifier);
    }
    QCOMPARE(shown, (QStringList{"Файлы", "Печать", "Оформление", "Звуки", "Редактор"}));
}

void TestOptionsKeys::wheelOverAListDoesNotChangeIt()
{
    OptionRoom room;
    room.open();
    for (const char *name : {"processMode", "Port"}) {
        auto *control = room.find<QWidget>(name);
        QWheelEvent wheel(QPointF(2, 2), control->mapToGlobal(QPoint(2, 2)), QPoint(), QPoint(0, -120),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(control, &wheel);
    }
    QCOMPARE(room.list("processMode")->currentIndex(), int(CKS));
    QCOMPARE(room.number("Port")->value(), 5674);
}

void TestOptionsKeys::enterAppliesAndEscLeaves()
{
    OptionRoom room;
    room.open();
    room.showTab("Оформление");
    room.line("mainTitle")->setText("ПУНКТ");
    QTest::keyClick(room.line("mainTitle"), Qt::Key_Escape);
    QVERIFY(!room.dialog->isVisible());
    QCOMPARE(Options.mainTitle, QString());
    room.open();
    room.showTab("Оформление");
    room.line("mainTitle")->setText("ПУНКТ");
    QTest::keyClick(room.line("mainTitle"), Qt::Key_Return);
    QVERIFY(!room.dialog->isVisible());
    QCOMPARE(Options.mainTitle, "ПУНКТ");
}

QTEST_MAIN(TestOptionsKeys)
#include "test_options_keys.moc"
