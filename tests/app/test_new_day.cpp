#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "records/protocol.h"
#include "tests/support/desk.h"

#include <QSignalSpy>
#include <QtTest>

/// The change of day: figures, directories, and what it leaves alone.
class TestNewDay : public QObject
{
    Q_OBJECT

private slots:
    void newDayMovesTheFiguresToThePreviousDay();
    void newDayOnTheSameDateZeroesButKeepsThePreviousDay();
    void clockSetBackIsANewDayToo();
    void newDayMakesTheDirectoriesOfTheDay();
    void directoriesThatCannotBeMadeAreNoHarm();
    void settingsOfTheRunSurviveTheNewDay();
};

void TestNewDay::newDayMovesTheFiguresToThePreviousDay()
{
    const Desk desk;
    State.YYYYMMDD = QStringLiteral("20260730");
    State.PK_in = 1;
    State.PK_out = 2;
    State.CKS_in = 3;
    State.CKS_out = 4;
    State.SKK_in = 5;
    State.SKK_out = 6;
    State.EditorN = 7;
    State.newDay();
    QCOMPARE(State.YYYYMMDD, QStringLiteral("20260731"));
    QCOMPARE(QList<int>({State.prevPK_in, State.prevPK_out, State.prevCKS_in, State.prevCKS_out}),
             QList<int>({1, 2, 3, 4}));
    QCOMPARE(QList<int>({State.PK_in, State.PK_out, State.CKS_in, State.CKS_out, State.SKK_in, State.SKK_out,
                         State.EditorN})
                 .count(0),
             7);
}

void TestNewDay::newDayOnTheSameDateZeroesButKeepsThePreviousDay()
{
    const Desk desk;
    State.prevPK_in = State.prevPK_out = State.prevCKS_in = State.prevCKS_out = 9;
    State.PK_in = State.PK_out = State.CKS_in = State.CKS_out = State.SKK_in = State.SKK_out = State.EditorN =
        5;
    State.newDay();
    QCOMPARE(QList<int>({State.prevPK_in, State.prevPK_out, State.prevCKS_in, State.prevCKS_out}).count(9),
             4);
    QCOMPARE(QList<int>({State.PK_in, State.PK_out, State.CKS_in, State.CKS_out, State.SKK_in, State.SKK_out,
                         State.EditorN})
                 .count(0),
             7);
}

void TestNewDay::clockSetBackIsANewDayToo()
{
    const Desk desk;
    State.PK_in = 12;
    Time.setTo(QDateTime(QDate(2026, 7, 30), QTime(23, 0)));
    State.newDay();
    QCOMPARE(State.YYYYMMDD, QStringLiteral("20260730"));
    QCOMPARE(State.prevPK_in, 12);
    QCOMPARE(State.PK_in, 0);
}

void TestNewDay::newDayMakesTheDirectoriesOfTheDay()
{
    const Desk desk;
    Options.pathInp = QStringLiteral("вход");
    Options.CheckAndMakeFolders();
    State.newDay();
    QVERIFY(QFileInfo(desk.path("вход/20260731")).isDir());
    QVERIFY(QFileInfo(desk.path("out/20260731")).isDir());
    State.newDay(); // they exist now
    QVERIFY(QFileInfo(desk.path("out/20260731")).isDir());
}

void TestNewDay::directoriesThatCannotBeMadeAreNoHarm()
{
    const Desk desk;
    Options.pathInp = QStringLiteral("no/such");
    desk.write("out/20260731", "a file where the directory should be");
    State.YYYYMMDD = QStringLiteral("20260730");
    State.newDay();
    QCOMPARE(State.YYYYMMDD, QStringLiteral("20260731"));
    QVERIFY(!QFileInfo::exists(desk.path("no")));
    QVERIFY(desk.read("velda_state.ini").contains("YYYYMMDD=20260731"));
}

void TestNewDay::settingsOfTheRunSurviveTheNewDay()
{
    const Desk desk;
    State.tlgMode = 3;
    State.manualMode = true;
    State.scanCountdown = 2;
    State.currentFile = QStringLiteral("a");
    State.YYYYMMDD = QStringLiteral("20260730");
    State.newDay();
    QCOMPARE(State.tlgMode, 3);
    QVERIFY(State.manualMode);
    QCOMPARE(State.scanCountdown, 2);
    QCOMPARE(State.currentFile, QStringLiteral("a"));
}

QTEST_MAIN(TestNewDay)
#include "test_new_day.moc"
