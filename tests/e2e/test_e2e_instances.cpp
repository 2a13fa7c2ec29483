#include "tests/e2e/screen.h"
#include "tests/e2e/station.h"
#include "tests/support/patience.h"

#include <QtTest>

// What an operator at a real screen sees of starting and leaving, with keys pressed in real windows.
class TestE2eInstances : public QObject
{
    Q_OBJECT

private slots:
    void secondInstanceIsRefused();
    void unansweredStopRequestIsAskedAgain();
    void stopRequestEndsWithTheFirstInstance();
    void unwritableDataDirectoryIsRefused();
    void crossHidesTheWindow();
    void operatorLeavesWithAltX();
    void endIsNotHeldUpByAQuestion();

private:
    [[nodiscard]] bool running(Station &station);

    Screen m_screen;
};

namespace
{
const QString box = QStringLiteral("velda"); // a box without a title of its own
const QString question = QStringLiteral("Velda");
const QString window = QStringLiteral("Velda - ПС / V:2026.07.31");
const QString request = QStringLiteral("velda.unlck");
} // namespace

bool TestE2eInstances::running(Station &station)
{
    return comesTrue([&] {
        return station.logged(QStringLiteral("Установлен АВТОМАТИЧЕСКИЙ режим")) ||
               station.logged(QStringLiteral("Смена суток"));
    });
}

void TestE2eInstances::secondInstanceIsRefused()
{
    Station first;
    first.start();
    QVERIFY(running(first));
    Station second;
    second.share(first);
    second.showOn(m_screen.display);
    second.start();
    QVERIFY(m_screen.waitForWindow(box));
    QVERIFY(second.isRunning());
    m_screen.press(box, QStringLiteral("Return"));
    QVERIFY(second.waitForEnd(30));
    QVERIFY(second.endedWith(1));
    QVERIFY(first.isRunning());
    QCOMPARE(first.count(QStringLiteral(" Запуск ")), 1);
    QVERIFY(!QFile::exists(first.path(request)));
    QVERIFY(first.end());
    QCOMPARE(first.count(QStringLiteral(" Выход")), 1);
}

// The running instance looks for a file without a name, so the request stays: after nine waits of two
// seconds the question comes again.
void TestE2eInstances::unansweredStopRequestIsAskedAgain()
{
    Station first;
    first.set(QStringLiteral("START/checkStopFile"), QStringLiteral("true"));
    first.start();
    QVERIFY(running(first));
    Station second;
    second.share(first);
    second.showOn(m_screen.display);
    second.fakeTime(QStringLiteral("+0 x4"));
    second.start();
    QVERIFY(m_screen.waitForWindow(question));
    QVERIFY(!QFile::exists(first.path(request)));
    m_screen.press(question, QStringLiteral("Return"));
    QTRY_VERIFY(QFile::exists(first.path(request)));
    QCOMPARE(first.read(request), QByteArray());
    QVERIFY(m_screen.waitForWindow(question));
    QVERIFY(!QFile::exists(first.path(request)));
    m_screen.press(question, QStringLiteral("Escape"));
    QVERIFY(second.waitForEnd(30));
    QVERIFY(second.endedWith(1));
    QVERIFY(first.isRunning());
    QVERIFY(!first.logged(QStringLiteral("Запрос на остановку приложения")));
    QVERIFY(first.end());
}

// The request goes away with the first instance. The second then runs on without holding the lock.
void TestE2eInstances::stopRequestEndsWithTheFirstInstance()
{
    Station first;
    first.set(QStringLiteral("START/checkStopFile"), QStringLiteral("true"));
    first.start();
    QVERIFY(running(first));
    Station second;
    second.share(first);
    second.showOn(m_screen.display);
    second.start();
    QVERIFY(m_screen.waitForWindow(question));
    m_screen.press(question, QStringLiteral("Return"));
    QTRY_VERIFY(QFile::exists(first.path(request)));
    QVERIFY(first.end());
    QVERIFY(!QFile::exists(first.path(request)));
    QVERIFY(m_screen.waitForWindow(window));
    QCOMPARE(second.count(QStringLiteral(" Запуск ")), 2);
    QVERIFY(!QFile::exists(first.path(QStringLiteral("velda.lck"))));
    QVERIFY(second.end());
    QCOMPARE(second.count(QStringLiteral(" Выход")), 2);
}

// Not even root may make files there.
void TestE2eInstances::unwritableDataDirectoryIsRefused()
{
    Station station;
    station.useDirectory(QStringLiteral("/sys"));
    station.showOn(m_screen.display);
    station.start();
    QVERIFY(m_screen.waitForWindow(box));
    m_screen.press(box, QStringLiteral("Return"));
    QVERIFY(station.waitForEnd(30));
    QVERIFY(station.endedWith(1));
}

void TestE2eInstances::crossHidesTheWindow()
{
    Station station;
    station.showOn(m_screen.display);
    station.start();
    QVERIFY(m_screen.waitForWindow(window));
    QVERIFY(running(station));
    m_screen.press(window, QStringLiteral("alt+F4"));
    QTRY_VERIFY_WITH_TIMEOUT(!m_screen.hasWindow(window), PatienceMs);
    QTest::qWait(3000);
    QVERIFY(station.isRunning());
    QVERIFY(!station.logged(QStringLiteral(" Выход")));
    QVERIFY(station.end());
}

void TestE2eInstances::operatorLeavesWithAltX()
{
    Station station;
    station.showOn(m_screen.display);
    station.start();
    QVERIFY(m_screen.waitForWindow(window));
    QVERIFY(running(station));
    m_screen.press(window, QStringLiteral("alt+x"));
    QVERIFY(m_screen.waitForWindow(question));
    m_screen.press(question, QStringLiteral("Escape"));
    QTRY_VERIFY_WITH_TIMEOUT(!m_screen.hasWindow(question), PatienceMs);
    m_screen.press(window, QStringLiteral("alt+x"));
    QVERIFY(m_screen.waitForWindow(question));
    m_screen.press(question, QStringLiteral("Return"));
    QVERIFY(station.waitForEnd(30));
    QVERIFY(station.endedWith(0));
    QVERIFY(station.logged(QStringLiteral(" Выход")));
}

void TestE2eInstances::endIsNotHeldUpByAQuestion()
{
    Station station;
    station.showOn(m_screen.display);
    station.start();
    QVERIFY(m_screen.waitForWindow(window));
    QVERIFY(running(station));
    m_screen.press(window, QStringLiteral("alt+x"));
    QVERIFY(m_screen.waitForWindow(question));
    QVERIFY(station.end());
    QVERIFY(station.logged(QStringLiteral(" Выход")));
}

QTEST_GUILESS_MAIN(TestE2eInstances)
#include "test_e2e_instances.moc"
