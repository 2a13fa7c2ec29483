#include "app/options.h"
#include "app/run/leftovers.h"
#include "app/state.h"
#include "app/whole_file.h"
#include "records/file_info.h"
#include "tests/support/desk.h"

#include <QtTest>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

/// The sweep of what copies of the process have left that were killed in the middle of their writing.
class TestLeftoversKill : public QObject
{
    Q_OBJECT

private slots:
    void killsLeaveNothingBehindTheSweep();
};

namespace
{
void writeAll()
{
    State.Save();
    Options.Save();
    (void)CFileInfo().Save(QStringLiteral("out/20260731u001"));
    (void)replaceWholeFile(QStringLiteral("prt/20260731.prt"), QByteArray(100000, 'A'));
}
} // namespace

void TestLeftoversKill::killsLeaveNothingBehindTheSweep()
{
    const Desk desk;
    writeAll();
    for (int microseconds = 0; microseconds < 6000; microseconds += 200) {
        const pid_t writer = fork();
        QVERIFY(writer >= 0);
        if (writer == 0)
            for (;;)
                writeAll();
        usleep(useconds_t(20000 + microseconds));
        QCOMPARE(kill(writer, SIGKILL), 0);
        QCOMPARE(waitpid(writer, nullptr, 0), writer);
    }
    sweepLeftovers();
    QCOMPARE(desk.names(".", "velda*"), QStringList({"velda.ini", "velda_state.ini"}));
    QCOMPARE(desk.names("out"), QStringList({"20260731u001.dat"}));
    QCOMPARE(desk.names("prt"), QStringList({"20260731.prt"}));
}

QTEST_GUILESS_MAIN(TestLeftoversKill)
#include "test_leftovers_kill.moc"
