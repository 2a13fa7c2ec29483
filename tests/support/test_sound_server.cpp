// What the sound server of the tests makes of what it has recorded.

#include "tests/support/sound_server.h"

#include <QtTest>

#include <cmath>

class TestSoundServer : public QObject
{
    Q_OBJECT

private slots:
    void silenceIsNotHeard();
    void gapIsHeardOverButNotAudible();
    void toneHasItsFrequency_data();
    void toneHasItsFrequency();
    void frequencyIsThatOfTheEnd();
};

namespace
{
QVector<qint16> silence(int ms)
{
    return QVector<qint16>(SoundServer::Rate * ms / 1000);
}

QVector<qint16> tone(int hertz, int ms)
{
    QVector<qint16> samples = silence(ms);
    for (int i = 0; i < samples.size(); ++i)
        samples[i] = qint16(20000 * std::sin(2 * M_PI * hertz * i / SoundServer::Rate));
    return samples;
}

bool isNear(int value, int wanted)
{
    return std::abs(value - wanted) <= wanted / 50;
}
} // namespace

void TestSoundServer::silenceIsNotHeard()
{
    for (const QVector<qint16> &samples : {QVector<qint16>(), silence(500)}) {
        QCOMPARE(SoundServer::peak(samples), 0);
        QCOMPARE(SoundServer::heardMs(samples), 0);
        QCOMPARE(SoundServer::audibleMs(samples), 0);
    }
}

void TestSoundServer::gapIsHeardOverButNotAudible()
{
    const QVector<qint16> samples =
        silence(200) + tone(500, 300) + silence(400) + tone(500, 100) + silence(50);
    QVERIFY(isNear(SoundServer::peak(samples), 20000));
    QVERIFY(isNear(SoundServer::heardMs(samples), 800));
    QVERIFY(isNear(SoundServer::audibleMs(samples), 400));
}

void TestSoundServer::toneHasItsFrequency_data()
{
    QTest::addColumn<int>("hertz");
    for (const int hertz : {100, 400, 1600})
        QTest::addRow("%d Hz", hertz) << hertz;
}

void TestSoundServer::toneHasItsFrequency()
{
    QFETCH(int, hertz);
    QVERIFY(isNear(SoundServer::frequency(tone(hertz, 1000), 300), hertz));
}

void TestSoundServer::frequencyIsThatOfTheEnd()
{
    QVERIFY(isNear(SoundServer::frequency(tone(400, 1000) + tone(1600, 400), 300), 1600));
}

QTEST_GUILESS_MAIN(TestSoundServer)
#include "test_sound_server.moc"
