#include "app/clock.h"
#include "app/options.h"
#include "app/run/globals.h"
#include "app/startup.h"
#include "app/state.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"

#include <QApplication>
#include <QSharedMemory>
#include <QtTest>

#include <cstdio>
#include <unistd.h>

/// The functions that the entry point is made of.
class TestStartup : public QObject
{
    Q_OBJECT

private slots:
    void dataDirectoryFollowsTheArguments_data();
    void dataDirectoryFollowsTheArguments();
    void relativePathIsMadeAbsolute();
    void dataDirectoryIsEntered();
    void separatorIsNotDoubled();
    void missingDataDirectoryIsRefused();

    void messageIsOneLineOfStandardError_data();
    void messageIsOneLineOfStandardError();
    void messageWithoutContextPrintsEmptyStrings();

    void modeWord_data();
    void modeWord();
    void buildDateIsMonthDayYear();
    void startLineNamesModeVersionAndBuild();
    void fontSizeIsCorrected_data();
    void fontSizeIsCorrected();
    void sharedMemoryIsNeverUsed();
};

namespace
{
/// What \a write prints on standard error.
template <class Write> QByteArray standardErrorOf(Write write)
{
    std::fflush(stderr);
    FILE *caught = std::tmpfile();
    const int former = dup(fileno(stderr));
    dup2(fileno(caught), fileno(stderr));
    write();
    std::fflush(stderr);
    dup2(former, fileno(stderr));
    close(former);
    QByteArray printed(4096, '\0');
    std::rewind(caught);
    printed.resize(int(std::fread(printed.data(), 1, size_t(printed.size()), caught)));
    std::fclose(caught);
    return printed;
}
} // namespace

void TestStartup::dataDirectoryFollowsTheArguments_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("directory"); // "." stands for the current directory
    row("none", QStringList(), "/program");
    row("-dc", QStringList("-dc"), ".");
    row("-d=", QStringList("-d=/data"), "/data");
    row("-dc, then -d=: that path", QStringList({"-dc", "-d=/data"}), "/data");
    row("-d=, then -dc: the current directory", QStringList({"-d=/data", "-dc"}), ".");
    row("the last of two paths", QStringList({"-d=/one", "-d=/two"}), "/two");
    row("begins with -dc", QStringList("-dcx"), "/program");
    row("-dc=", QStringList("-dc=/data"), "/program");
    row("-d without =", QStringList({"-d", "/data"}), "/program");
    row("-D=", QStringList("-D=/data"), "/program");
    row("others are ignored", QStringList({"x", "-d=/data", "--help", ""}), "/data");
    row("blanks and letters", QStringList("-d=/дата 1/="), "/дата 1/=");
    row("an empty path", QStringList("-d="), ".");
}

void TestStartup::dataDirectoryFollowsTheArguments()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, directory);
    const Desk desk;
    const QString expected = directory == QLatin1String(".") ? QDir::currentPath() : directory;
    QCOMPARE(dataDirectory(arguments, QStringLiteral("/program")), expected);
}

void TestStartup::relativePathIsMadeAbsolute()
{
    const Desk desk;
    QCOMPARE(dataDirectory({"-d=data/1"}, QStringLiteral("/program")), QDir::currentPath() + "/data/1");
    QCOMPARE(QFileInfo(dataDirectory({"-d=."}, QStringLiteral("/program"))).canonicalFilePath(),
             QDir::current().canonicalPath());
}

void TestStartup::dataDirectoryIsEntered()
{
    const Desk desk;
    desk.write("data/x", "");
    QVERIFY(enterDataDirectory(desk.path("data")));
    QCOMPARE(Options.appPath, desk.path("data") + QDir::separator());
    QCOMPARE(QDir::current().canonicalPath(), QDir(desk.path("data")).canonicalPath());
    QVERIFY(QFile::exists("x"));
}

void TestStartup::separatorIsNotDoubled()
{
    const Desk desk;
    desk.write("data/x", "");
    QVERIFY(enterDataDirectory(desk.path("data/")));
    QCOMPARE(Options.appPath, desk.path("data/"));
}

void TestStartup::missingDataDirectoryIsRefused()
{
    const Desk desk;
    QVERIFY(!enterDataDirectory(desk.path("none")));
    QCOMPARE(QDir::current().canonicalPath(), QDir(desk.path()).canonicalPath());
}

void TestStartup::messageIsOneLineOfStandardError_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("line");
    row("debug", int(QtDebugMsg), QByteArray("D: text 50% (file.cpp:42, run())\n"));
    row("warning", int(QtWarningMsg), QByteArray("W: text 50% (file.cpp:42, run())\n"));
    row("critical", int(QtCriticalMsg), QByteArray("C: text 50% (file.cpp:42, run())\n"));
    row("fatal", int(QtFatalMsg), QByteArray("F: text 50% (file.cpp:42, run())\n"));
    row("info", int(QtInfoMsg), QByteArray("?: text 50% (file.cpp:42, run())\n"));
}

void TestStartup::messageIsOneLineOfStandardError()
{
    QFETCH(int, type);
    const QMessageLogContext context("file.cpp", 42, "run()", "category");
    const QByteArray printed =
        standardErrorOf([&] { Velda_MessageOutput(QtMsgType(type), context, QStringLiteral("text 50%")); });
    QTEST(printed, "line");
}

void TestStartup::messageWithoutContextPrintsEmptyStrings()
{
    const QMessageLogContext none;
    const QByteArray printed =
        standardErrorOf([&] { Velda_MessageOutput(QtWarningMsg, none, QStringLiteral("текст")); });
    QCOMPARE(printed, "W: " + QStringLiteral("текст").toLocal8Bit() + " (:0, )\n");
}

void TestStartup::modeWord_data()
{
    QTest::addColumn<QString>("word");
    row("0", "ЦКС");
    row("1", "СКК");
    row("2", "ПС");
    row("3", "ПС");
    row("-1", "ПС");
}

void TestStartup::modeWord()
{
    QTEST(processModeWord(QByteArray(QTest::currentDataTag()).toInt()), "word");
}

void TestStartup::buildDateIsMonthDayYear()
{
    const QString date = buildDate();
    QVERIFY2(
        QRegularExpression("^(Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec) [1-9][0-9]? 20[0-9][0-9]$")
            .match(date)
            .hasMatch(),
        qPrintable(date));
}

void TestStartup::startLineNamesModeVersionAndBuild()
{
    const Desk desk;
    QCoreApplication::setApplicationVersion(QStringLiteral("2026.07.31"));
    Options.processMode = 2;
    QCOMPARE(startLine(), "Запуск ------------ ПС ------------ V:2026.07.31 B:" + buildDate());
    Options.processMode = 0;
    QCOMPARE(startLine(), "Запуск ------------ ЦКС ------------ V:2026.07.31 B:" + buildDate());
}

void TestStartup::fontSizeIsCorrected_data()
{
    QTest::addColumn<int>("correction");
    QTest::addColumn<int>("size");
    row("none", 0, 10);
    row("greater", 4, 14);
    row("smaller", -3, 7);
}

void TestStartup::fontSizeIsCorrected()
{
    QFETCH(int, correction);
    const Desk desk;
    const QFont former = QApplication::font();
    QApplication::setFont(QFont(former.family(), 10));
    Options.fontSizeCorrect = correction;
    correctFontSize();
    const int size = QApplication::font().pointSize();
    QApplication::setFont(former);
    QCOMPARE(State.basePointSize, 10);
    QTEST(size, "size");
}

void TestStartup::sharedMemoryIsNeverUsed()
{
    QCOMPARE(MemKey, QStringLiteral("VELDA_SharedMemory"));
    QVERIFY(sharedMemory.key().isEmpty());
    QVERIFY(!sharedMemory.isAttached());
}

QTEST_MAIN(TestStartup)
#include "test_startup.moc"
