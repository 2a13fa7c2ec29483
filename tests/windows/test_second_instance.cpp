#include "tests/windows/child_windows.h"
#include "tests/windows/desk_program.h"

#include <QtTest>

/// Two starts of the finished program on one data directory.
class TestSecondInstance : public QObject
{
    Q_OBJECT

private slots:
    void secondIsRefusedAndTheFirstGoesOn();
    void lockOfAKilledProgramHoldsNobodyUp();
};

namespace
{
const QString Start = QStringLiteral("Запуск");

bool isUp(const DeskProgram &desk)
{
    return desk.logged(Start);
}

/// Another start on the directory of \a first.
class Second : public Child
{
public:
    explicit Second(const DeskProgram &first)
    {
        process.setProcessEnvironment(first.process.processEnvironment());
        process.start(QStringLiteral(VELDA_PROGRAM), {QStringLiteral("-d=") + first.path()});
    }
};
} // namespace

void TestSecondInstance::secondIsRefusedAndTheFirstGoesOn()
{
    FarEndProgram farEnd(QStringLiteral("peer"));
    DeskProgram first(farEnd.port);
    first.start();
    QTRY_VERIFY(isUp(first));
    Second second(first);
    QVERIFY(second.process.waitForStarted());
    QTRY_VERIFY(!ChildWindows::titles(second).isEmpty());
    ChildWindows::close(second); // the box that says so
    QVERIFY(second.waitForEnd(60));
    QCOMPARE(first.journal().count(Start), 1);
    QVERIFY(first.endSession());
}

void TestSecondInstance::lockOfAKilledProgramHoldsNobodyUp()
{
    FarEndProgram farEnd(QStringLiteral("peer"));
    DeskProgram desk(farEnd.port);
    desk.start();
    QTRY_VERIFY(isUp(desk));
    desk.kill();
    desk.start();
    QTRY_COMPARE(desk.journal().count(Start), 2);
    QTRY_VERIFY(!ChildWindows::titles(desk).isEmpty());
    QVERIFY(desk.endSession());
}

QTEST_GUILESS_MAIN(TestSecondInstance)
#include "test_second_instance.moc"
