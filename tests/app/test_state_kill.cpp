#include "app/state.h"
#include "tests/support/desk.h"

#include <QtTest>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

/// velda_state.ini where a copy of the process is killed in the middle of its writing.
class TestStateKill : public QObject
{
    Q_OBJECT

private slots:
    void killAtAnyMomentLeavesAWholeFile();
    void lockOfAKilledProcessHoldsNothingUp();
};

namespace
{
constexpr const char *StateFile = "velda_state.ini";
} // namespace

void TestStateKill::killAtAnyMomentLeavesAWholeFile()
{
    const Desk desk;
    State.Save();
    for (int round = 0; round < 12; ++round) {
        const pid_t counting = fork();
        QVERIFY(counting >= 0);
        if (counting == 0)
            for (;;)
                State.incInp();
        const QByteArray before = desk.read(StateFile);
        for (int changes = 0; changes < 1 + round % 3;) // the kill falls somewhere into the next write
            changes += desk.read(StateFile) != before ? 1 : 0;
        kill(counting, SIGKILL);
        QCOMPARE(waitpid(counting, nullptr, 0), counting);
        const QByteArray left = desk.read(StateFile);
        QCOMPARE(left.count('\n'), 10);
        QVERIFY(left.startsWith("[STATE]\nCKS_in=0\n"));
        QVERIFY(left.endsWith("\nautomatic=true\n"));
    }
    State.PK_out = 44;
    State.Save();
    QVERIFY(desk.read(StateFile).contains("\nPK_out=44\n"));
}

void TestStateKill::lockOfAKilledProcessHoldsNothingUp()
{
    const Desk desk;
    State.Save();
    State.CKS_in = 9;
    for (const char *end : {".lock", ".new.lock"})
        desk.write(StateFile + QByteArray(end), ""); // killed before its owner's name was in it
    const pid_t saving = fork();
    QVERIFY(saving >= 0);
    if (saving == 0) {
        State.Save();
        _exit(0);
    }
    const auto hasEnded = [saving] { return waitpid(saving, nullptr, WNOHANG) == saving; };
    const bool inTime = QTest::qWaitFor(hasEnded, 15000); // such a lock holds for 30 s
    if (!inTime)
        kill(saving, SIGKILL);
    QVERIFY(inTime);
    QVERIFY(desk.read(StateFile).contains("\nCKS_in=9\n"));
}

QTEST_MAIN(TestStateKill)
#include "test_state_kill.moc"
