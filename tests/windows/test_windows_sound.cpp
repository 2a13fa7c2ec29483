#include "tests/support/desk.h"
#include "tests/ui/wave_file.h"
#include "ui/sound.h"

#include <QDir>
#include <QElapsedTimer>
#include <QtTest>

/// The signal sounds on the sound devices that Windows has, if any.
class TestWindowsSound : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { sound.stop(); }
    void toneEndsByItself();
    void endlessToneGoesOnUntilStopped();
    void fileBelowACyrillicDirectoryIsPlayed();
};

void TestWindowsSound::toneEndsByItself()
{
    const Desk desk;
    desk.write("a.wav", waveFile(500, 300));
    QElapsedTimer timer;
    timer.start();
    sound.play("a.wav", CSound::Once);
    QCOMPARE(sound.playingFileName(), QString("a.wav"));
    QTRY_COMPARE(sound.playingFileName(), QString());
    QVERIFY(timer.elapsed() >= 200);
}

void TestWindowsSound::endlessToneGoesOnUntilStopped()
{
    const Desk desk;
    desk.write("a.wav", waveFile(500, 100));
    sound.play("a.wav", CSound::Loop);
    QTest::qWait(1000);
    QCOMPARE(sound.playingFileName(), QString("a.wav"));
    sound.stop();
    QCOMPARE(sound.playingFileName(), QString());
}

void TestWindowsSound::fileBelowACyrillicDirectoryIsPlayed()
{
    const Desk desk;
    const QString name = QStringLiteral("Оператор связи\\вызов.wav");
    desk.write(QDir::fromNativeSeparators(name), waveFile(500, 300));
    sound.play(name, CSound::Once);
    QCOMPARE(sound.playingFileName(), QDir::fromNativeSeparators(name));
    QTRY_COMPARE(sound.playingFileName(), QString());
}

QTEST_MAIN(TestWindowsSound)
#include "test_windows_sound.moc"
