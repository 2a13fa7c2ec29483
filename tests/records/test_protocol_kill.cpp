#include "app/options.h"
#include "tests/records/journal_file.h"
#include "tests/support/row.h"

#include <csignal>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

/// The journal where a copy of the process is killed in the middle of its writing, and where its file is a
/// FIFO.
class TestProtocolKill : public QObject
{
    Q_OBJECT

private slots:
    void killAtAnyMomentLosesNoLineOnDisk_data() { twoModes(); }
    void killAtAnyMomentLosesNoLineOnDisk();
    void fifoInPlaceOfTheFileStaysAFifo();
};

void TestProtocolKill::killAtAnyMomentLosesNoLineOnDisk()
{
    QFETCH(bool, keepOpen);
    Desk desk;
    const QByteArray kept = QByteArray("\3СТРОКА\n").repeated(500);
    for (int microseconds = 0; microseconds < 6000; microseconds += 300) {
        // A blank at the end makes the first save replace the file; the rest of the saves continue it.
        desk.write(Today, kept + "\1A ");
        const pid_t writer = fork();
        if (writer == 0) {
            Options.protocolFileNoClose = keepOpen;
            Log.Load();
            for (;;)
                Log.addServiceString(text("Событие"), ProtocolInfo);
        }
        QVERIFY(writer > 0);
        usleep(useconds_t(microseconds));
        QCOMPARE(kill(writer, SIGKILL), 0);
        QCOMPARE(waitpid(writer, nullptr, 0), writer);
        const QByteArray left = desk.read(Today);
        QVERIFY2(left.startsWith(kept + "\1A"), left.left(100).constData());
    }
}

void TestProtocolKill::fifoInPlaceOfTheFileStaysAFifo()
{
    Desk desk;
    const QByteArray path = QFile::encodeName(desk.path(Today));
    QCOMPARE(mkfifo(path.constData(), 0600), 0);
    Log.Load(); // does not wait for a writer
    QVERIFY(Log.lines.isEmpty());
    Log.add(text("А"), ProtocolSent);
    struct stat status = {};
    QCOMPARE(stat(path.constData(), &status), 0);
    QVERIFY(S_ISFIFO(status.st_mode));
}

QTEST_GUILESS_MAIN(TestProtocolKill)
#include "test_protocol_kill.moc"
