#include "tests/windows/child_windows.h"
#include "tests/windows/desk_program.h"

#include <QtTest>

/// The end of the user's session, as at shut-down.
class TestSystemEnd : public QObject
{
    Q_OBJECT

private slots:
    void sessionWaitsForTheOrderlyEnd();
    void sessionEndsWithTheWindowHidden();
};

void TestSystemEnd::sessionWaitsForTheOrderlyEnd()
{
    FarEndProgram farEnd(QStringLiteral("peer"));
    DeskProgram desk(farEnd.port);
    desk.start();
    QTRY_VERIFY(desk.logged(QStringLiteral("Соединено")));
    QVERIFY(desk.endSession());
    QVERIFY(desk.logged(QStringLiteral("Выход")));
    QVERIFY(desk.read(QStringLiteral("velda_state.ini")).contains("[STATE]"));
    QVERIFY(!QFile::exists(desk.path(QStringLiteral("velda.lck"))));
}

// Its cross hides the window; the session asks the program all the same.
void TestSystemEnd::sessionEndsWithTheWindowHidden()
{
    FarEndProgram farEnd(QStringLiteral("peer"));
    DeskProgram desk(farEnd.port);
    desk.start();
    QTRY_VERIFY(desk.logged(QStringLiteral("Соединено")));
    ChildWindows::close(desk);
    QTRY_VERIFY(ChildWindows::titles(desk).isEmpty());
    QVERIFY(desk.endSession());
    QVERIFY(desk.logged(QStringLiteral("Выход")));
}

QTEST_GUILESS_MAIN(TestSystemEnd)
#include "test_system_end.moc"
