// The sound of a telegram of the numbered exchange that comes.

#include "app/options.h"
#include "tests/procedures/cks_desk.h"
#include "tests/support/row.h"
#include "tests/support/sound_server.h"
#include "tests/ui/wave_file.h"
#include "ui/sound.h"

#include <QtTest>

class TestCksSound : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY2(m_server.start(), qPrintable(m_server.error)); }
    void cleanup() { sound.stop(); }
    void soundOfATelegram_data();
    void soundOfATelegram();

private:
    SoundServer m_server;
};

void TestCksSound::soundOfATelegram_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("running");
    QTest::addColumn<QString>("playing");
    row("silent", 0, false, "");
    row("once", 1, false, "new.wav");
    row("in a loop", 2, false, "new.wav");
    row("silent, another one runs", 0, true, "old.wav");
    row("once, another one runs", 1, true, "old.wav");
}

void TestCksSound::soundOfATelegram()
{
    QFETCH(int, type);
    QFETCH(bool, running);
    QFETCH(QString, playing);
    const CksDesk desk;
    Options.soundOTlgType = type;
    Options.soundOTlgFile = QStringLiteral("new.wav");
    desk.write("old.wav", waveFile(500, 20000));
    desk.write("new.wav", waveFile(700, 20000));
    if (running)
        sound.play("old.wav", 2);
    ProcessCKS.ProcessTlg(1, QStringLiteral("ТЕКСТ"), QStringLiteral("ЗЦЗЦ 001 "), QStringLiteral(" НННН  "));
    QCOMPARE(State.PK_in, 1);
    QCOMPARE(sound.playingFileName(), playing);
}

QTEST_MAIN(TestCksSound)
#include "test_cks_sound.moc"
