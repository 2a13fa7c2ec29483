#include "tests/support/desk.h"
#include "tests/support/patience.h"
#include "tests/support/row.h"
#include "tests/support/sound_server.h"
#include "tests/ui/wave_file.h"
#include "ui/sound.h"

#include <QtTest>

/// The signal sounds, heard by a sound server of the test.
class TestSound : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void defaultSounds_data();
    void defaultSounds();
    void typeOnePlaysOnce();
    void typeTwoPlaysUntilStop();
    void secondPlayStopsTheFirst();
    void whatEndsThePlaying_data();
    void whatEndsThePlaying();
    void badFileIsNotPlaying_data();
    void badFileIsNotPlaying();
    void otherChunksArePassedOver();
    void stopWithoutSoundDoesNothing();
    void soundsHaveOneConnection();

private:
    /// Whether the last third of a second holds this frequency, to one part in forty.
    [[nodiscard]] bool isHeard(int frequency);
    /// What the server tells of the connections of this program, a line each.
    [[nodiscard]] static QStringList connections();

    SoundServer m_server;
};

bool TestSound::isHeard(int frequency)
{
    return qAbs(SoundServer::frequency(m_server.samples(), 300) - frequency) <= frequency / 40;
}

QStringList TestSound::connections()
{
    QProcess pactl;
    pactl.start("pactl", {"list", "short", "clients"});
    pactl.waitForFinished(PatienceMs);
    return QString::fromUtf8(pactl.readAllStandardOutput()).split('\n').filter("test_sound");
}

void TestSound::initTestCase()
{
    QVERIFY2(m_server.start(), qPrintable(m_server.error));
}

void TestSound::cleanup()
{
    sound.stop();
    const auto quiet = [this] {
        m_server.forget();
        QTest::qWait(200);
        return !m_server.samples().isEmpty() && SoundServer::peak(m_server.samples()) == 0;
    };
    QVERIFY(comesTrue(quiet));
}

void TestSound::defaultSounds_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("heard"); // ms, at least

    row("rocket", "raketa.wav", 1200);
    row("category", "category.wav", 800);
    row("any other", "input.wav", 150);
}

void TestSound::defaultSounds()
{
    QFETCH(QString, name);
    QFETCH(int, heard);
    const Desk desk;
    QVERIFY(QDir().mkpath("sound"));
    QVERIFY(QFile::copy(QString(VELDA_SOUND_DIR "/") + name, "sound/" + name));
    m_server.forget();
    sound.play("sound/" + name, 1); // relative to the data directory
    QCOMPARE(sound.playingFileName(), "sound/" + name);
    QTRY_COMPARE(sound.playingFileName(), QString());
    QTRY_VERIFY2(SoundServer::heardMs(m_server.samples()) >= heard,
                 qPrintable(QString::number(SoundServer::heardMs(m_server.samples()))));
    QVERIFY(SoundServer::peak(m_server.samples()) > 8000);
}

void TestSound::typeOnePlaysOnce()
{
    const Desk desk;
    desk.write("a.wav", waveFile(500, 1000));
    m_server.forget();
    sound.play("a.wav", 1);
    QTRY_COMPARE(sound.playingFileName(), QString());
    QTRY_VERIFY(SoundServer::audibleMs(m_server.samples()) > 600);
    QTest::qWait(1200); // a second round would be heard by now
    const int heard = SoundServer::audibleMs(m_server.samples());
    QVERIFY2(heard < 1400, qPrintable(QString::number(heard)));
}

void TestSound::typeTwoPlaysUntilStop()
{
    const Desk desk;
    desk.write("a.wav", waveFile(500, 200));
    m_server.forget();
    sound.play("a.wav", 2);
    QTRY_VERIFY(SoundServer::heardMs(m_server.samples()) > 1500);
    QCOMPARE(sound.playingFileName(), "a.wav");

    sound.stop();
    QCOMPARE(sound.playingFileName(), QString());
}

void TestSound::secondPlayStopsTheFirst()
{
    const Desk desk;
    desk.write("low.wav", waveFile(400, 20000));
    desk.write("high.wav", waveFile(1600, 20000));
    m_server.forget();
    sound.play("low.wav", 2);
    QVERIFY(comesTrue([&] { return isHeard(400); }));
    sound.play("high.wav", 1);
    QCOMPARE(sound.playingFileName(), "high.wav");
    QVERIFY(comesTrue([&] { return isHeard(1600); }));
}

void TestSound::whatEndsThePlaying_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("type");

    row("silent type", "a.wav", 0);
    row("no file name", "", 1);
    row("missing file", "absent.wav", 2);
    row("directory", ".", 1);
}

void TestSound::whatEndsThePlaying()
{
    QFETCH(QString, file);
    QFETCH(int, type);
    const Desk desk;
    desk.write("a.wav", waveFile(500, 200));
    sound.play("a.wav", 2);
    QCOMPARE(sound.playingFileName(), "a.wav");
    sound.play(file, type);
    QCOMPARE(sound.playingFileName(), QString());
}

void TestSound::badFileIsNotPlaying_data()
{
    QTest::addColumn<QByteArray>("content");

    row("empty", QByteArray());
    row("no sound file", QByteArray(5000, 'x'));
    row("torn in the head", waveFile(500, 100).left(20));
    row("no samples", waveFile(500, 0));
    row("torn in the samples", waveFile(500, 300).chopped(1));
    row("samples without a format", waveFile(500, 100).replace("fmt ", "xxxx"));
    row("compressed", waveFile(500, 100).replace(20, 1, "\x55"));
    row("endless chunk", waveFile(500, 100).replace(16, 4, "\xFF\xFF\xFF\x7F"));
}

void TestSound::badFileIsNotPlaying()
{
    QFETCH(QByteArray, content);
    const Desk desk;
    desk.write("bad.wav", content);
    desk.write("good.wav", waveFile(500, 200));
    m_server.forget();
    sound.play("bad.wav", 2);
    QTRY_COMPARE(sound.playingFileName(), QString());
    QCOMPARE(SoundServer::peak(m_server.samples()), 0);

    sound.play("good.wav", 1);
    QTRY_VERIFY(SoundServer::heardMs(m_server.samples()) > 100);
}

void TestSound::otherChunksArePassedOver()
{
    const Desk desk;
    desk.write("a.wav", waveFile(500, 300).insert(36, QByteArray("LIST\x04\0\0\0abcd", 12)));
    m_server.forget();
    sound.play("a.wav", 1);
    QTRY_VERIFY(SoundServer::heardMs(m_server.samples()) > 200);
}

void TestSound::stopWithoutSoundDoesNothing()
{
    sound.stop();
    sound.stop();
    QCOMPARE(sound.playingFileName(), QString());
}

void TestSound::soundsHaveOneConnection()
{
    const Desk desk;
    desk.write("a.wav", waveFile(500, 200));
    sound.play("a.wav", 2);
    QTRY_VERIFY(SoundServer::heardMs(m_server.samples()) > 100);
    const QStringList former = connections();
    QCOMPARE(former.size(), 1);

    sound.stop();
    QTest::qWait(100); // the toolkit lets go of a sound with the next events
    QCOMPARE(connections(), former);
    sound.play("a.wav", 1);
    m_server.forget();
    QTRY_VERIFY(SoundServer::heardMs(m_server.samples()) > 100);
    QCOMPARE(connections(), former);
}

QTEST_GUILESS_MAIN(TestSound)
#include "test_sound.moc"
