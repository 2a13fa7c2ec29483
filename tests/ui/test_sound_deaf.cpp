#include "tests/support/desk.h"
#include "tests/support/patience.h"
#include "tests/ui/wave_file.h"
#include "ui/sound.h"

#include <QElapsedTimer>
#include <QtTest>

/// The signal sounds on a machine without any sound server.
class TestSoundDeaf : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void playingHoldsUpNobody();
};

void TestSoundDeaf::initTestCase()
{
    qputenv("PULSE_SERVER", "unix:/nonexistent/socket");
}

void TestSoundDeaf::playingHoldsUpNobody()
{
    const Desk desk;
    desk.write("a.wav", waveFile(500, 200));
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 5; ++i) {
        sound.play("a.wav", 1 + i % 2);
        QTest::qWait(50);
    }
    sound.stop();
    QCOMPARE(sound.playingFileName(), QString());
    QVERIFY(timer.elapsed() < PatienceMs);
}

QTEST_GUILESS_MAIN(TestSoundDeaf)
#include "test_sound_deaf.moc"
