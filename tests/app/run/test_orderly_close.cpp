#include "app/ask.h"
#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "records/protocol.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"
#include "ui/form_main.h"

#include <QMessageBox>
#include <QtTest>

/// The operator's way out, tick by tick, on the real window.
class TestOrderlyClose : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_formerAsk = askHandler; }
    void init();
    void cleanupTestCase() { askHandler = m_formerAsk; }

    void questionIsAskedOnce();
    void noKeepsTheProgramRunning();
    void closeTakes2TicksAndSendsNothing_data();
    void closeTakes2TicksAndSendsNothing();
    void closeInMode3Takes5Ticks_data();
    void closeInMode3Takes5Ticks();
    void closeButtonOnlyHidesTheWindow();
    void stopFileIsNeverSeen();
    void laterDateIsANewDayOnTheFirstTick();
    void clockSetBackLeavesTheOldJournalAlone();

private:
    QStringList m_asked;
    int m_answer = QMessageBox::Yes;
    std::function<int(QWidget *, const QString &, const QString &)> m_formerAsk;
};

namespace
{
/// A window whose threads do not run: the first tick is behind it.
class Window
{
public:
    explicit Window(int processMode)
    {
        Options.Load();
        Options.processMode = processMode;
        Options.saveWindowPos = false;
        form = new FormMain;
        form->firstStart = false;
        form->show();
        Log.addServiceString(QStringLiteral("начало"), ProtocolInfo);
    }
    ~Window() { delete form; }
    Window(const Window &) = delete;
    Window &operator=(const Window &) = delete;

    FormMain *form;
};
} // namespace

void TestOrderlyClose::init()
{
    m_asked.clear();
    m_answer = QMessageBox::Yes;
    askHandler = [this](QWidget *, const QString &title, const QString &text) {
        m_asked << title << text;
        return m_answer;
    };
}

void TestOrderlyClose::questionIsAskedOnce()
{
    const Desk desk;
    const Window window(2);
    window.form->closeApplication();
    QCOMPARE(m_asked, QStringList({"Velda", "Завершить приложение?"}));
    QCOMPARE(State.stopCountdown, 2);
    QVERIFY(window.form->isVisible()); // closes nothing itself
}

void TestOrderlyClose::noKeepsTheProgramRunning()
{
    const Desk desk;
    const Window window(2);
    m_answer = QMessageBox::No;
    window.form->closeApplication();
    QCOMPARE(State.stopCountdown, 0);
}

void TestOrderlyClose::closeTakes2TicksAndSendsNothing_data()
{
    QTest::addColumn<int>("processMode");
    QTest::addColumn<int>("tlgMode");
    for (int process = 0; process < 3; ++process)
        for (const int mode : {0, 1, 2, 4, 5})
            row(qPrintable(QStringLiteral("procedure %1, mode %2").arg(process).arg(mode)), process, mode);
}

void TestOrderlyClose::closeTakes2TicksAndSendsNothing()
{
    QFETCH(int, processMode);
    QFETCH(int, tlgMode);
    const Desk desk;
    const Window window(processMode);
    State.manualMode = true;
    State.tlgMode = tlgMode;
    window.form->closeApplication();

    window.form->slot_on_1sec();
    QVERIFY(window.form->isVisible() && !State.closeAllowed);
    window.form->slot_on_1sec();
    QVERIFY(!window.form->isVisible() && State.closeAllowed);
    QCOMPARE(desk.sent(), QString());
    QCOMPARE(State.tlgMode, tlgMode);
}

void TestOrderlyClose::closeInMode3Takes5Ticks_data()
{
    QTest::addColumn<int>("processMode");
    row("centre", 0);
    row("switched network", 1);
    row("direct", 2);
    row("none of the three", 3);
}

void TestOrderlyClose::closeInMode3Takes5Ticks()
{
    QFETCH(int, processMode);
    const Desk desk;
    const Window window(processMode);
    State.tlgMode = 3;
    QCOMPARE(desk.sent(), QString());
    window.form->closeApplication();
    QCOMPARE(State.stopCountdown, 5);

    window.form->slot_on_1sec(); // the line is left, and the mode with it
    QCOMPARE(State.tlgMode, 0);
    QCOMPARE(State.manualMode, processMode == 0);
    QCOMPARE(State.stopCountdown, 4);
    const QString leave = desk.sent();
    if (processMode == 0)
        QVERIFY(!leave.isEmpty()); // the centre is told
    else
        QCOMPARE(leave, processMode == 1 ? QStringLiteral("@H") : QString());

    for (int tick = 2; tick <= 4; ++tick) {
        window.form->slot_on_1sec();
        QVERIFY2(window.form->isVisible() && !State.closeAllowed, qPrintable(QString::number(tick)));
    }
    QCOMPARE(desk.sent(), QString());
    window.form->slot_on_1sec();
    QVERIFY(!window.form->isVisible() && State.closeAllowed);
}

void TestOrderlyClose::closeButtonOnlyHidesTheWindow()
{
    const Desk desk;
    const Window window(2);
    Options.mainTitle = QStringLiteral("x");
    window.form->close();
    QVERIFY(!window.form->isVisible());
    for (int tick = 0; tick < 10; ++tick)
        window.form->slot_on_1sec();
    QVERIFY(!State.closeAllowed);
    QCOMPARE(State.stopCountdown, 0);
    QVERIFY(m_asked.isEmpty());
}

void TestOrderlyClose::stopFileIsNeverSeen()
{
    const Desk desk;
    const Window window(2);
    Options.checkStopFile = true;
    desk.write("velda.unlck", "");
    for (int tick = 0; tick < 25; ++tick) // five looks
        window.form->slot_on_1sec();
    QCOMPARE(State.stopCountdown, 0);
    QVERIFY(desk.journal().filter("Запрос на остановку приложения").isEmpty());
    QVERIFY(QFile::exists(desk.path("velda.unlck")));
}

void TestOrderlyClose::laterDateIsANewDayOnTheFirstTick()
{
    const Desk desk(QTime(9, 0));
    desk.write("velda_state.ini", "[STATE]\nYYYYMMDD=20260730\nPK_in=5\nPK_out=6\n");
    const Window window(2);
    State.Load();
    Time.setTo(QDateTime(QDate(2026, 7, 31), QTime(9, 0)));
    window.form->slot_on_1sec();
    QCOMPARE(State.YYYYMMDD, QStringLiteral("20260731"));
    QCOMPARE(State.PK_in + State.PK_out, 0);
    QCOMPARE(State.prevPK_out, 6);
    QCOMPARE(desk.journal().mid(desk.journal().size() - 3),
             QStringList({"309:00:00 Смена суток", "309:00:00 Протокол открыт", ""}));
    QVERIFY(QFileInfo(desk.path("inp/20260731")).isDir());
}

void TestOrderlyClose::clockSetBackLeavesTheOldJournalAlone()
{
    const Desk desk(QTime(0, 30));
    const Window window(2);
    Log.addServiceString(QStringLiteral("00:30:00 Последняя"), ProtocolInfo);
    State.PK_in = 8;
    Time.setTo(QDateTime(QDate(2026, 7, 30), QTime(23, 30)));
    window.form->slot_on_1sec();
    QCOMPARE(State.YYYYMMDD, QStringLiteral("20260730"));
    QCOMPARE(State.PK_in, 0);
    const QByteArray old = desk.read("prt/20260731.prt"); // ends with the change itself
    QVERIFY(old.endsWith(QStringLiteral("\u000323:30:00 Смена суток\n").toUtf8()));
    QVERIFY(
        desk.read("prt/20260730.prt").endsWith(QStringLiteral("\u000323:30:00 Протокол открыт\n").toUtf8()));

    Log.addServiceString(QStringLiteral("23:30:01 Дальше"), ProtocolInfo);
    QCOMPARE(desk.read("prt/20260731.prt"), old);
}

QTEST_MAIN(TestOrderlyClose)
#include "test_orderly_close.moc"
