// The sounds of a dialled connection. None of them stops one that is running.

#include "tests/procedures/skk_desk.h"
#include "tests/support/row.h"
#include "tests/support/sound_server.h"
#include "tests/ui/wave_file.h"
#include "ui/sound.h"

#include <QtTest>

class TestSkkSound : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void incomingCall_data();
    void incomingCall();
    void telegram_data();
    void telegram();
    void storedTranscript_data();
    void storedTranscript();
    void transcriptThatCannotBeStored();

private:
    SoundServer m_server;
};

namespace
{
/// What plays, and what should.
void rows()
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

void begin(const SkkDesk &desk, bool running)
{
    desk.write("old.wav", waveFile(500, 20000));
    desk.write("new.wav", waveFile(700, 20000));
    if (running)
        sound.play("old.wav", 2);
}
} // namespace

void TestSkkSound::initTestCase()
{
    QVERIFY2(m_server.start(), qPrintable(m_server.error));
}

void TestSkkSound::cleanup()
{
    sound.stop();
}

void TestSkkSound::incomingCall_data()
{
    rows();
}

void TestSkkSound::incomingCall()
{
    QFETCH(int, type);
    QFETCH(bool, running);
    QFETCH(QString, playing);
    for (const QString &call : {QStringLiteral("@C"), QStringLiteral("!>ВЫЗОВ\n")}) {
        const SkkDesk desk;
        Options.TcpMode = true;
        Options.soundSKKInConnectType = type;
        Options.soundSKKInConnectFile = QStringLiteral("new.wav");
        begin(desk, running);
        desk.receive(call);
        QCOMPARE(sound.playingFileName(), playing);
        sound.stop();
    }
}

void TestSkkSound::telegram_data()
{
    rows();
}

void TestSkkSound::telegram()
{
    QFETCH(int, type);
    QFETCH(bool, running);
    QFETCH(QString, playing);
    const SkkDesk desk;
    Options.soundOTlgType = type;
    Options.soundOTlgFile = QStringLiteral("new.wav");
    begin(desk, running);
    desk.connect(Incoming);
    desk.receive("ЗЦЗЦ ТЕКСТ НННН  ");
    QCOMPARE(sound.playingFileName(), playing);
}

void TestSkkSound::storedTranscript_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("running");
    QTest::addColumn<int>("direction");
    QTest::addColumn<int>("length");
    QTest::addColumn<QString>("playing");
    row("silent", 0, false, 1, 21, "");
    row("once", 1, false, 1, 21, "new.wav");
    row("twenty characters", 1, false, 1, 20, "");
    row("outgoing", 1, false, 2, 21, "");
    row("another one runs", 2, true, 1, 21, "old.wav");
}

void TestSkkSound::storedTranscript()
{
    QFETCH(int, type);
    QFETCH(bool, running);
    QFETCH(int, direction);
    QFETCH(int, length);
    QFETCH(QString, playing);
    const SkkDesk desk;
    Options.soundSKKInConnectMessageSaveType = type;
    Options.soundSKKInConnectMessageSaveFile = QStringLiteral("new.wav");
    begin(desk, running);
    desk.connect(direction);
    State.connectionText = QString(length, 'A');
    ProcessSKK.clearSKKConnection();
    QCOMPARE(sound.playingFileName(), playing);
}

void TestSkkSound::transcriptThatCannotBeStored()
{
    const SkkDesk desk;
    Options.soundSKKInConnectMessageSaveType = 1;
    Options.soundSKKInConnectMessageSaveFile = QStringLiteral("new.wav");
    begin(desk, false);
    desk.write("inp/20260731", "a file in the directory's place");
    desk.connect(Incoming);
    State.connectionText = QString(21, 'A');
    ProcessSKK.clearSKKConnection();
    QCOMPARE(sound.playingFileName(), "");
}

QTEST_GUILESS_MAIN(TestSkkSound)
#include "test_skk_sound.moc"
