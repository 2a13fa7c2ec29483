#include "tests/e2e/child.h"
#include "tests/e2e/screen.h"
#include "tests/e2e/station.h"
#include "tests/support/row.h"

#include <QtTest>

#include <csignal>

/// The finished program from its start to its end, as a process.
class TestProgram : public QObject
{
    Q_OBJECT

private slots:
    void argumentsChooseTheDataDirectory_data();
    void argumentsChooseTheDataDirectory();
    void withoutArgumentsTheDataLieBesideTheProgram();
    void missingDataDirectoryIsRefused();
    void installedProgramMakesAndFurnishesTheUsersDirectory();
    void installedProgramLeavesAnyOtherDirectoryAsItIs();
    void installedProgramWithoutRoomForItsDirectoryRefuses();

    void runBeginsAndEndsWithItsLines();
    void requestOfTheSystemEndsItInOrder_data();
    void requestOfTheSystemEndsItInOrder();
    void openQuestionDoesNotHoldTheEndUp();
    void hiddenWindowDoesNotHoldTheEndUp();
    void operatorsCloseEndsIt();

    void secondStartWarnsAndEndsWithStatus1();
    void stopDialogueStartsTheNewInstanceOnceTheOldOneIsGone();
    void killedInstanceLeavesTheDirectoryFree();
    void laterDateGoesThroughTheDayChangeOnTheFirstTick();
};

namespace
{
const QString MainTitle = QStringLiteral("Desk / Velda - ПС / V:2026.07.31");

/// The program with arguments of the test's choice.
class Program : public Child
{
public:
    Program() { m_environment.insert("QT_QPA_PLATFORM", "offscreen"); }

    void showOn(const QString &display) { useDisplay(m_environment, display); }
    void setDataHome(const QString &path) { m_environment.insert("XDG_DATA_HOME", path); }
    void start(const QString &program, const QStringList &arguments, const QString &directory)
    {
        process.setProcessEnvironment(m_environment);
        process.setWorkingDirectory(directory);
        process.start(program, arguments);
    }

private:
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
};

/// The program as an installation below \a base has it, with one sound; its path.
QString install(const QTemporaryDir &base)
{
    const QDir top(base.path());
    top.mkpath("usr/bin");
    top.mkpath("usr/share/velda/sound");
    QFile::copy(VELDA_PROGRAM, top.filePath("usr/bin/velda"));
    QFile(top.filePath("usr/share/velda/sound/input.wav")).open(QIODevice::WriteOnly);
    return top.filePath("usr/bin/velda");
}

bool holdsData(const QString &directory)
{
    return QFile::exists(directory + "/velda.lck") && QFile::exists(directory + "/inp") &&
           !QDir(directory + "/prt").entryList({"*.prt"}).isEmpty();
}

/// Presses \a key in the window, if it is there, unless \a done; whether it is done now.
template <class Done> bool pressOnce(const Screen &screen, const QString &title, const char *key, Done done)
{
    if (!done() && screen.hasWindow(title))
        screen.press(title, QString::fromLatin1(key));
    return done();
}

/// Presses \a key in the window until \a done: a key that comes before the window has the focus is lost.
template <class Done> bool pressUntil(const Screen &screen, const QString &title, const char *key, Done done)
{
    return QTest::qWaitFor([&] { return pressOnce(screen, title, key, done); }, 60000);
}

/// Confirms the program's only window on the display until the program has ended: a box without a title of
/// its own, which goes by the program's name or by none.
bool confirmBox(const Screen &screen, Program &program)
{
    const auto ended = [&] { return program.waitForEnd(0); };
    return QTest::qWaitFor(
        [&] { return pressOnce(screen, "velda", "Return", ended) || pressOnce(screen, "", "Return", ended); },
        60000);
}

bool isRunning(const Station &station, int starts = 1)
{
    return station.count(QStringLiteral("Запуск")) == starts &&
           station.logged(QStringLiteral("Протокол открыт"));
}
} // namespace

void TestProgram::argumentsChooseTheDataDirectory_data()
{
    QTest::addColumn<QStringList>("arguments"); // %1 is the test's directory, current is %1/here
    QTest::addColumn<QString>("used");
    row("-dc, then -d=", QStringList({"-dc", "-d=%1/there"}), "there");
    row("-d=, then -dc", QStringList({"-d=%1/there", "-dc"}), "here");
    row("a relative path", QStringList("-d=../there"), "there");
    row("others are ignored", QStringList({"x", "-d=%1/there", "-dcx", "-D"}), "there");
}

void TestProgram::argumentsChooseTheDataDirectory()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, used);
    const QTemporaryDir base;
    QVERIFY(QDir(base.path()).mkdir("here") && QDir(base.path()).mkdir("there"));
    Program program;
    program.start(VELDA_PROGRAM, arguments.replaceInStrings("%1", base.path()), base.filePath("here"));
    QTRY_VERIFY_WITH_TIMEOUT(holdsData(base.filePath(used)), 20000);
    const QString other = used == QLatin1String("here") ? "there" : "here";
    QVERIFY(QDir(base.filePath(other)).isEmpty());
}

void TestProgram::withoutArgumentsTheDataLieBesideTheProgram()
{
    const QTemporaryDir base;
    QVERIFY(QDir(base.path()).mkdir("here") && QDir(base.path()).mkdir("program"));
    QVERIFY(QFile::copy(VELDA_PROGRAM, base.filePath("program/velda")));
    Program program;
    program.start(base.filePath("program/velda"), {"-dcx"}, base.filePath("here"));
    QTRY_VERIFY_WITH_TIMEOUT(holdsData(base.filePath("program")), 20000);
    QVERIFY(QDir(base.filePath("here")).isEmpty());
}

void TestProgram::missingDataDirectoryIsRefused()
{
    const Screen screen;
    const QTemporaryDir base;
    Program program;
    program.showOn(screen.display);
    program.start(VELDA_PROGRAM, {"-d=" + base.filePath("none")}, base.path());
    QVERIFY(confirmBox(screen, program));
    QVERIFY2(program.endedWith(1), qPrintable(program.lines.join('\n')));
    QVERIFY(QDir(base.path()).isEmpty());
}

void TestProgram::installedProgramMakesAndFurnishesTheUsersDirectory()
{
    const QTemporaryDir base;
    Program program;
    program.setDataHome(base.filePath("home/.local/share"));
    program.start(install(base), {}, base.path());
    QTRY_VERIFY_WITH_TIMEOUT(holdsData(base.filePath("home/.local/share/velda")), 20000);
    QTRY_VERIFY(QFile::exists(base.filePath("home/.local/share/velda/sound/input.wav")));
    QCOMPARE(QDir(base.filePath("usr/bin")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList("velda"));
}

void TestProgram::installedProgramLeavesAnyOtherDirectoryAsItIs()
{
    const QTemporaryDir base;
    QVERIFY(QDir(base.path()).mkdir("here"));
    Program program;
    program.setDataHome(base.filePath("home"));
    program.start(install(base), {"-dc"}, base.filePath("here"));
    QTRY_VERIFY_WITH_TIMEOUT(holdsData(base.filePath("here")), 20000);
    program.terminate();
    QVERIFY(program.waitForEnd(30));
    QVERIFY(!QFile::exists(base.filePath("here/sound")));
    QVERIFY(!QFile::exists(base.filePath("home")));
}

void TestProgram::installedProgramWithoutRoomForItsDirectoryRefuses()
{
    const Screen screen;
    const QTemporaryDir base;
    QVERIFY(QFile(base.filePath("home")).open(QIODevice::WriteOnly)); // a file where the folder should be
    Program program;
    program.showOn(screen.display);
    program.setDataHome(base.filePath("home"));
    program.start(install(base), {}, base.path());
    QVERIFY(confirmBox(screen, program));
    QVERIFY2(program.endedWith(1), qPrintable(program.lines.join('\n')));
    QVERIFY(!QFile::exists(base.filePath("usr/bin/velda.lck")));
}

void TestProgram::runBeginsAndEndsWithItsLines()
{
    Station station;
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(isRunning(station), 20000);
    QVERIFY(station.end());

    const QStringList journal = station.journal();
    const QString first = journal.value(0).mid(9);
    QVERIFY2(QRegularExpression(
                 "^Запуск ------------ ПС ------------ V:2026\\.07\\.31 B:[A-Z][a-z]{2} [1-9]\\d? 20\\d\\d$")
                 .match(first)
                 .hasMatch(),
             qPrintable(first));
    QCOMPARE(journal.count(QString()), 1); // the one behind the last line's end
    QCOMPARE(journal.value(journal.size() - 3).mid(9), QStringLiteral("Выход"));
    QVERIFY(
        QRegularExpression("^\\d\\d:\\d\\d:\\d\\d $").match(journal.value(journal.size() - 2)).hasMatch());
    QVERIFY(!QFile::exists(station.path("velda.lck")));
    QCOMPARE(station.state("YYYYMMDD"), QDate::currentDate().toString("yyyyMMdd"));
    QVERIFY(station.read("velda.ini").contains("\nHost=127.0.0.1\n"));
}

void TestProgram::requestOfTheSystemEndsItInOrder_data()
{
    QTest::addColumn<int>("number");
    row("SIGTERM", SIGTERM);
    row("SIGINT", SIGINT);
}

void TestProgram::requestOfTheSystemEndsItInOrder()
{
    QFETCH(int, number);
    Station station;
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(isRunning(station), 20000);
    ::kill(pid_t(station.process.processId()), number);
    QVERIFY(station.waitForEnd(30));
    QVERIFY(station.endedWith(0));
    QVERIFY(station.logged("Выход"));
}

void TestProgram::openQuestionDoesNotHoldTheEndUp()
{
    const Screen screen;
    Station station;
    station.set("WINDOW/mainTitle", "Desk");
    station.showOn(screen.display);
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(isRunning(station), 20000);
    QVERIFY(screen.waitForWindow(MainTitle));
    QVERIFY(pressUntil(screen, MainTitle, "alt+x", [&] { return screen.hasWindow("Velda"); }));
    QVERIFY(station.end());
    QVERIFY(station.logged("Выход"));
}

void TestProgram::hiddenWindowDoesNotHoldTheEndUp()
{
    const Screen screen;
    Station station;
    station.set("WINDOW/mainTitle", "Desk");
    station.showOn(screen.display);
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(isRunning(station), 20000);
    QVERIFY(screen.waitForWindow(MainTitle));
    // the close button: to the tray
    QVERIFY(pressUntil(screen, MainTitle, "alt+F4", [&] { return !screen.hasWindow(MainTitle); }));
    QVERIFY(!station.waitForEnd(4));
    QVERIFY(station.end());
}

void TestProgram::operatorsCloseEndsIt()
{
    const Screen screen;
    Station station;
    station.set("WINDOW/mainTitle", "Desk");
    station.showOn(screen.display);
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(isRunning(station), 20000);
    QVERIFY(screen.waitForWindow(MainTitle));
    QVERIFY(pressUntil(screen, MainTitle, "alt+x", [&] { return screen.hasWindow("Velda"); }));
    QVERIFY(pressUntil(screen, "Velda", "Return", [&] { return station.waitForEnd(0); }));
    QVERIFY(station.endedWith(0));
    QVERIFY(station.logged("Выход"));
}

void TestProgram::secondStartWarnsAndEndsWithStatus1()
{
    const Screen screen;
    Station first;
    first.start();
    QTRY_VERIFY_WITH_TIMEOUT(isRunning(first), 20000);

    Program second;
    QElapsedTimer waited;
    waited.start();
    second.showOn(screen.display);
    second.start(VELDA_PROGRAM, {"-d=" + first.path()}, first.path());
    QVERIFY(confirmBox(screen, second));
    QVERIFY(waited.elapsed() >= 1000);
    QVERIFY(second.endedWith(1));

    QVERIFY(first.isRunning());
    QCOMPARE(first.count("Запуск"), 1);
    QVERIFY(!first.logged("Выход"));
    QVERIFY(first.end());
}

void TestProgram::stopDialogueStartsTheNewInstanceOnceTheOldOneIsGone()
{
    const Screen screen;
    Station first;
    first.set("START/checkStopFile", "true");
    first.start();
    QTRY_VERIFY_WITH_TIMEOUT(isRunning(first), 20000);

    Program second;
    second.showOn(screen.display);
    second.start(VELDA_PROGRAM, {"-d=" + first.path()}, first.path());
    QVERIFY(screen.waitForWindow("Velda"));
    QVERIFY(pressUntil(screen, "Velda", "Return", [&] { return QFile::exists(first.path("velda.unlck")); }));
    QCOMPARE(first.count("Запуск"), 1);
    QVERIFY(first.end()); // by hand: the running instance does not see the request

    QTRY_COMPARE_WITH_TIMEOUT(first.count("Запуск"), 2, 20000);
    QVERIFY(second.isRunning());
    QVERIFY(!QFile::exists(first.path("velda.lck"))); // it runs on without the lock
    second.terminate();
    QVERIFY(second.waitForEnd(30));
    QVERIFY(second.endedWith(0));
}

void TestProgram::killedInstanceLeavesTheDirectoryFree()
{
    Station station;
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(isRunning(station), 20000);
    station.kill();
    QVERIFY(QFile::exists(station.path("velda.lck")));
    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(station.count("Запуск"), 2, 20000);
    QVERIFY(station.end());
}

void TestProgram::laterDateGoesThroughTheDayChangeOnTheFirstTick()
{
    Station station;
    station.write("velda_state.ini", "[STATE]\nYYYYMMDD=20260101\nPK_in=7\nautomatic=false\n");
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(isRunning(station), 20000);
    QCOMPARE(station.count("Смена суток"), 1);
    QCOMPARE(station.state("PK_in"), QStringLiteral("0"));
    QVERIFY(station.end());

    station.start(); // the same day again
    QTRY_COMPARE_WITH_TIMEOUT(station.count("Запуск"), 2, 20000);
    QVERIFY(station.end());
    QCOMPARE(station.count("Смена суток"), 1);
}

QTEST_GUILESS_MAIN(TestProgram)
#include "test_program.moc"
