// The dialog from which firmware is loaded, with the adapters' ports as pseudo-terminals.

#include "app/options.h"
#include "link/prf_thread.h"
#include "link/tlg_thread.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"
#include "tools/linesim/serial/pseudo_terminal.h"
#include "ui/dialogs/fw_update_dialog.h"

#include <QComboBox>
#include <QPushButton>
#include <QtTest>

#include <functional>
#include <memory>

class TestFwUpdateDialog : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void titleListAndButtons();
    void withoutAdaptersNothingCanBeStarted();
    void choiceEnablesTheButtons();
    void fixedPortEnablesTheButtonsWithoutAdapters();
    void linksPauseWhileItIsOpen_data();
    void linksPauseWhileItIsOpen();
    void linksRestartWhenItIsDestroyed();
    void pausedPerforatorStaysPaused();
    void runningLinkLeavesThePortToTheDialog();
    void dialogNeverOpenedLeavesTheLinksAlone();
    void updateOfAnAdapterWhoseImageIsMissing_data();
    void updateOfAnAdapterWhoseImageIsMissing();
    void lockSendsItsByteTwice();
    void operationIsNotBrokenInto();
    void lockOfAPortThatCannotBeOpened();
    void fixedPortTakesTheTestImage_data();
    void fixedPortTakesTheTestImage();

private:
    std::unique_ptr<Desk> m_desk;
};

using Close = std::function<void(CFWUpdateDialog &)>;
Q_DECLARE_METATYPE(Close)

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}

/// An adapter's port that notes what comes.
struct Adapter {
    explicit Adapter(const char *serial)
    {
        if (!terminal.plug())
            qFatal("no pseudo-terminal");
        qputenv("VELDA_PORTS", serial + QByteArray("=") + terminal.portName().toLocal8Bit());
        QObject::connect(&terminal, &PseudoTerminal::opened, &terminal, [this] { ++openings; });
        QObject::connect(&terminal, &PseudoTerminal::closed, &terminal, [this] { ++closings; });
        QObject::connect(&terminal, &PseudoTerminal::received, &terminal, [this](const QByteArray &bytes) {
            received += bytes;
            terminal.write("\x2F\x8F");
        });
    }

    PseudoTerminal terminal;
    QByteArray received;
    int openings = 0, closings = 0;
};

QPushButton *button(const QDialog &dialog, const char *name)
{
    return dialog.findChild<QPushButton *>(QLatin1String(name));
}

void press(const QDialog &dialog, const char *name)
{
    QTest::mouseClick(button(dialog, name), Qt::LeftButton);
}

bool enabled(const QDialog &dialog)
{
    const bool apply = button(dialog, "apply")->isEnabled();
    if (button(dialog, "lock")->isEnabled() != apply)
        qFatal("the buttons differ");
    return apply;
}

QStringList devices(const QDialog &dialog)
{
    const auto *box = dialog.findChild<QComboBox *>();
    QStringList items;
    for (int i = 0; i < box->count(); ++i)
        items << box->itemText(i);
    return items;
}
} // namespace

void TestFwUpdateDialog::init()
{
    m_desk = std::make_unique<Desk>();
    PrfThread.paused = false;
    PrfThread.restartRequested = false;
    TlgThread.paused = false;
}

void TestFwUpdateDialog::cleanup()
{
    qunsetenv("VELDA_PORTS");
    m_desk.reset();
}

void TestFwUpdateDialog::titleListAndButtons()
{
    qputenv("VELDA_PORTS",
            "10000001ABCD=/dev/a;40000001=/dev/b;20000001=/dev/c;A1=/dev/d;3=/dev/e;01234567=/dev/f");
    const CFWUpdateDialog dialog;
    QCOMPARE(dialog.windowTitle(), qs("Firmware update"));
    QCOMPARE(devices(dialog), (QStringList{qs("10000001"), qs("20000001"), qs("3")}));
    QCOMPARE(button(dialog, "apply")->text(), qs("Обновить"));
    QCOMPARE(button(dialog, "lock")->text(), qs("Заблокировать"));
    QCOMPARE(button(dialog, "cancel")->text(), qs("Отменить"));
    QVERIFY(enabled(dialog));
}

void TestFwUpdateDialog::withoutAdaptersNothingCanBeStarted()
{
    qputenv("VELDA_PORTS", "40000001=/dev/b");
    const CFWUpdateDialog dialog;
    QVERIFY(devices(dialog).isEmpty());
    QVERIFY(!enabled(dialog));
    QVERIFY(button(dialog, "cancel")->isEnabled());
}

void TestFwUpdateDialog::choiceEnablesTheButtons()
{
    CFWUpdateDialog dialog;
    for (const char *serial : {"10000001", "20000001", "30000001"}) {
        dialog.deviceChanged(QString());
        QVERIFY(!enabled(dialog));
        dialog.deviceChanged(qs(serial));
        QVERIFY(enabled(dialog));
    }
    dialog.deviceChanged(qs("40000001"));
    QVERIFY(!enabled(dialog));
}

void TestFwUpdateDialog::fixedPortEnablesTheButtonsWithoutAdapters()
{
    Options.ovverrideTreloPort = qs("ttyS1");
    CFWUpdateDialog dialog;
    QVERIFY(enabled(dialog));
    dialog.deviceChanged(QString());
    QVERIFY(enabled(dialog));
}

void TestFwUpdateDialog::linksPauseWhileItIsOpen_data()
{
    QTest::addColumn<Close>("close");
    row("button", Close([](CFWUpdateDialog &dialog) { press(dialog, "cancel"); }));
    row("cross", Close([](CFWUpdateDialog &dialog) { dialog.close(); }));
    row("Esc", Close([](CFWUpdateDialog &dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }));
}

void TestFwUpdateDialog::linksPauseWhileItIsOpen()
{
    QFETCH(Close, close);
    CFWUpdateDialog dialog;
    QVERIFY(!TlgThread.paused && !PrfThread.paused);
    dialog.open();
    QVERIFY(TlgThread.paused && TlgThread.restartRequested);
    QVERIFY(PrfThread.paused && PrfThread.restartRequested);
    TlgThread.restartRequested = PrfThread.restartRequested = false;
    close(dialog);
    QVERIFY(!dialog.isVisible());
    QVERIFY(!TlgThread.paused && TlgThread.restartRequested);
    QVERIFY(!PrfThread.paused && PrfThread.restartRequested);
}

void TestFwUpdateDialog::linksRestartWhenItIsDestroyed()
{
    {
        CFWUpdateDialog dialog;
        dialog.show();
        QVERIFY(TlgThread.paused && PrfThread.paused);
    }
    QVERIFY(!TlgThread.paused && !PrfThread.paused);
}

// It holds its port only for the dialogs that read and punch tape.
void TestFwUpdateDialog::pausedPerforatorStaysPaused()
{
    PrfThread.paused = true;
    CFWUpdateDialog dialog;
    for (int opening = 0; opening < 2; ++opening) {
        dialog.open();
        dialog.showMinimized();
        dialog.showNormal();
        QVERIFY(TlgThread.paused && PrfThread.paused);
        dialog.close();
        QVERIFY(!TlgThread.paused && PrfThread.paused);
    }
}

void TestFwUpdateDialog::runningLinkLeavesThePortToTheDialog()
{
    const Adapter adapter("10000001");
    QVERIFY(TlgThread.setTrelo(qs("10000001"), 50, false));
    TlgThread.start();
    QTRY_COMPARE(adapter.openings, 1);
    {
        CFWUpdateDialog dialog;
        dialog.open();
        QTRY_COMPARE(adapter.closings, 1);
        press(dialog, "lock");
        QTRY_COMPARE(adapter.closings, 2);
        QVERIFY(adapter.received.endsWith("\x5A\x5A"));
        press(dialog, "cancel");
    }
    QTRY_COMPARE(adapter.openings, 3);
    TlgThread.stopThread();
    QVERIFY(TlgThread.wait(30000));
}

void TestFwUpdateDialog::dialogNeverOpenedLeavesTheLinksAlone()
{
    TlgThread.paused = true;
    PrfThread.paused = true;
    {
        const CFWUpdateDialog dialog;
    }
    QVERIFY(TlgThread.paused && PrfThread.paused);
    QVERIFY(!PrfThread.restartRequested);
}

void TestFwUpdateDialog::updateOfAnAdapterWhoseImageIsMissing_data()
{
    QTest::addColumn<QByteArray>("serial");
    for (const char *serial : {"10000001", "20000001", "30000001"})
        row(serial, QByteArray(serial));
}

/// This test carries erased flash in the place of the images, as a build without them.
void TestFwUpdateDialog::updateOfAnAdapterWhoseImageIsMissing()
{
    QFETCH(QByteArray, serial);
    const Adapter adapter(serial.constData());
    CFWUpdateDialog dialog;
    dialog.open();
    press(dialog, "apply");
    QCOMPARE(
        m_desk->journal(),
        (QStringList{qs("412:00:00 Эта сборка программы не содержит firmware для устройства"), QString()}));
    QCOMPARE(button(dialog, "cancel")->text(), qs("Закрыть"));
    QCOMPARE(button(dialog, "apply")->text(), qs("Обновить"));
    QVERIFY(dialog.isVisible());
    QTest::qWait(50); // a port that had been opened would tell
    QCOMPARE(adapter.openings, 0);
    press(dialog, "cancel");
    QVERIFY(!dialog.isVisible());
}

void TestFwUpdateDialog::lockSendsItsByteTwice()
{
    const Adapter adapter("10000001");
    CFWUpdateDialog dialog;
    dialog.open();
    press(dialog, "lock");
    QTRY_COMPARE(adapter.closings, 1);
    QCOMPARE(adapter.received, QByteArray("\x5A\x5A"));
    QCOMPARE(adapter.openings, 1);
    QCOMPARE(m_desk->journal(), (QStringList{qs("312:00:00 Send lock cmd for 10000001"), QString()}));
    QCOMPARE(button(dialog, "cancel")->text(), qs("Закрыть"));
}

// The lock command waits for seconds, in which the operator may press what he likes.
void TestFwUpdateDialog::operationIsNotBrokenInto()
{
    const Adapter adapter("10000001");
    CFWUpdateDialog dialog;
    dialog.open();
    bool looked = false;
    QTimer::singleShot(500, &dialog, [&] {
        looked = true;
        for (const char *name : {"apply", "lock", "cancel"}) {
            QVERIFY(!button(dialog, name)->isEnabled());
            press(dialog, name);
        }
        QVERIFY(!dialog.findChild<QComboBox *>()->isEnabled());
        QTest::keyClick(&dialog, Qt::Key_Escape);
        dialog.close();
        QVERIFY(dialog.isVisible());
        QVERIFY(TlgThread.paused);
    });
    press(dialog, "lock");
    QVERIFY(looked);
    QTRY_COMPARE(adapter.closings, 1);
    QCOMPARE(adapter.received, QByteArray("\x5A\x5A"));
    QCOMPARE(adapter.openings, 1);
    QVERIFY(enabled(dialog));
    QVERIFY(button(dialog, "cancel")->isEnabled());
    press(dialog, "cancel");
    QVERIFY(!dialog.isVisible());
    QVERIFY(!TlgThread.paused);
}

void TestFwUpdateDialog::lockOfAPortThatCannotBeOpened()
{
    qputenv("VELDA_PORTS", ("10000001=" + m_desk->path(qs("none"))).toLocal8Bit());
    CFWUpdateDialog dialog;
    dialog.open();
    press(dialog, "lock");
    QVERIFY(m_desk->journal().isEmpty());
    QCOMPARE(button(dialog, "cancel")->text(), qs("Закрыть"));
}

void TestFwUpdateDialog::fixedPortTakesTheTestImage_data()
{
    QTest::addColumn<QString>("pressed");
    row("update", qs("apply"));
    row("lock", qs("lock"));
}

/// The port is silent: what shows here is that the boot loader was called there, and not on the adapter.
void TestFwUpdateDialog::fixedPortTakesTheTestImage()
{
    QFETCH(QString, pressed);
    const Adapter fixed("10000009");
    const Adapter listed("10000001");
    Options.ovverrideTreloPort = fixed.terminal.portName();
    CFWUpdateDialog dialog;
    dialog.open();
    press(dialog, qPrintable(pressed));
    QTRY_COMPARE(fixed.closings, 1);
    QCOMPARE(fixed.received, QByteArray("\x30\x20\x30\x20\x30\x20"));
    QCOMPARE(listed.openings, 0);
    QCOMPARE(m_desk->journal(), (QStringList{qs("312:00:00 Программатор не обнаружен"),
                                             qs("412:00:00 Error update firmware"), QString()}));
    QCOMPARE(button(dialog, "cancel")->text(), qs("Закрыть"));
}

QTEST_MAIN(TestFwUpdateDialog)
#include "test_fw_update_dialog.moc"
