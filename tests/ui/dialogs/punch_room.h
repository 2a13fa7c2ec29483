#pragma once

#include "app/options.h"
#include "link/prf_thread.h"
#include "tests/support/desk.h"
#include "tests/support/patience.h"
#include "tests/support/row.h"
#include "tools/linesim/perforator/perforator.h"

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

#include <algorithm>
#include <functional>

/// A room with a simulated perforator at its port, and with the workstation's thread for it, which rests.
class PunchRoom
{
public:
    explicit PunchRoom(const std::function<void(PerforatorOptions &)> &prepare = {})
        : perforator(options(prepare), log)
    {
        if (!perforator.start())
            qFatal("no perforator");
        announce();
        startThread();
    }
    ~PunchRoom()
    {
        stopThread();
        qunsetenv("VELDA_PORTS");
    }
    PunchRoom(const PunchRoom &) = delete;
    PunchRoom &operator=(const PunchRoom &) = delete;

    static void startThread()
    {
        PrfThread.clearSend();
        PrfThread.clearSent();
        (void)PrfThread.getAndClearReceive();
        PrfThread.commandBytes.clear();
        PrfThread.stateText.clear();
        PrfThread.adapterFound = false;
        PrfThread.reportFailure = true;
        (void)PrfThread.setSorel(QStringLiteral("20000001"), 0, false);
        PrfThread.Deactivate();
        PrfThread.start();
    }
    static void stopThread()
    {
        PrfThread.stopThread();
        PrfThread.wait();
    }
    [[nodiscard]] bool saw(const QString &line) const { return lines.contains(line); }
    [[nodiscard]] QStringList breaches() const { return lines.filter(QStringLiteral("violation: ")); }
    /// Takes the perforator off its port, or puts it back.
    void unplug()
    {
        perforator.run(QStringLiteral("unplug"));
        qunsetenv("VELDA_PORTS");
    }
    void plug()
    {
        perforator.run(QStringLiteral("plug"));
        announce();
    }
    /// What has come out of the punch.
    [[nodiscard]] QByteArray codes() const { return desk.read(QStringLiteral("punched")); }

    Desk desk;
    QStringList lines;
    EventLog log{[this](const QString &line) { lines << line; }};
    Perforator perforator;

private:
    void announce() const { qputenv("VELDA_PORTS", "20000001=" + perforator.portName().toLocal8Bit()); }
    PerforatorOptions options(const std::function<void(PerforatorOptions &)> &prepare) const
    {
        PerforatorOptions options;
        options.punchFile = desk.path(QStringLiteral("punched"));
        options.speed = 2000;
        options.statusMs = 20;
        if (prepare)
            prepare(options);
        return options;
    }
};

namespace Dialog
{
inline QPushButton *button(const QDialog &dialog, const char *name)
{
    return dialog.findChild<QPushButton *>(QString::fromLatin1(name));
}

inline bool enabled(const QDialog &dialog, const char *name)
{
    return button(dialog, name)->isEnabled();
}

inline void press(const QDialog &dialog, const char *name)
{
    QTest::mouseClick(button(dialog, name), Qt::LeftButton);
}

/// Gives a button the keyboard, once it may have it: its window may not be the active one yet.
inline QWidget *focused(const QDialog &dialog, const char *name)
{
    QPushButton *const one = button(dialog, name);
    const bool has = QTest::qWaitFor(
        [&] {
            QApplication::setActiveWindow(one->window());
            one->setFocus();
            return one->isEnabled() && one->hasFocus();
        },
        30000);
    if (!has)
        qFatal("the button %s does not get the keyboard", name);
    return one;
}

/// Texts of the buttons from left to right, each with its tooltip behind it, if it has one.
inline QStringList buttonTexts(QDialog &dialog)
{
    dialog.ensurePolished();
    dialog.layout()->activate();
    QList<QPushButton *> buttons = dialog.findChildren<QPushButton *>();
    std::sort(buttons.begin(), buttons.end(),
              [](const QWidget *one, const QWidget *other) { return one->x() < other->x(); });
    QStringList texts;
    for (const QPushButton *one : buttons) {
        texts << one->text();
        if (!one->toolTip().isEmpty())
            texts << one->toolTip();
    }
    return texts;
}

inline QString state(const QDialog &dialog)
{
    return dialog.findChild<QLabel *>(QStringLiteral("state"))->text();
}

/// Names of those among \a names whose button may be pressed.
inline QByteArrayList enabledOf(const QDialog &dialog, const QByteArrayList &names)
{
    QByteArrayList result;
    for (const QByteArray &name : names)
        if (enabled(dialog, name.constData()))
            result << name;
    return result;
}

/// The ways to close a dialog without a result, as rows of a test.
inline void addWaysToClose()
{
    QTest::addColumn<QString>("way");
    for (const char *way : {"close", "cross", "Esc"})
        row(way, QString::fromLatin1(way));
}

inline void closeBy(const QString &way, QDialog &dialog)
{
    if (way == QLatin1String("close"))
        press(dialog, "close");
    else if (way == QLatin1String("Esc"))
        QTest::keyClick(&dialog, Qt::Key_Escape);
    else
        dialog.close();
    QVERIFY(!dialog.isVisible());
}

/// Runs \a run, which opens \a dialog, and \a act inside it, once the adapter is connected.
template <class Run> void inside(QDialog &dialog, Run run, const std::function<void()> &act)
{
    bool acted = false;
    QTimer::singleShot(0, &dialog, [&] {
        if (comesTrue([&] { return enabled(dialog, "start"); })) {
            act();
            acted = true;
        }
        if (dialog.isVisible())
            dialog.close();
    });
    run();
    QVERIFY2(acted, "not connected");
}
} // namespace Dialog
