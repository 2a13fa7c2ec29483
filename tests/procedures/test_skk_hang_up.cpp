// The end of a connection: what is reset, stored, counted, printed.

#include "tests/procedures/skk_desk.h"
#include "tests/support/full_disk.h"
#include "tests/support/row.h"

#include <QDir>
#include <QSignalSpy>
#include <QtTest>

class TestSkkHangUp : public QObject
{
    Q_OBJECT

private slots:
    void everythingIsReset();
    void farEndHangsUpWithoutAConnection();
    void incomingTranscript();
    void outgoingTranscript();
    void transcriptFollowsTheClock();
    void registersAreRemovedFromTheFileOnRequest();
    void outgoingConnectionsAreCountedTwice();
    void countersAreNeitherSavedNorWrapped();
    void transcriptThatCannotBeSaved_data();
    void transcriptThatCannotBeSaved();
    void fullDiskKeepsCountersAndReset();
    void printing_data();
    void printing();
    void emptyTranscriptIsStoredToo();
    void directionGoesLast();
};

void TestSkkHangUp::everythingIsReset()
{
    const SkkDesk desk;
    desk.connect(Outgoing);
    QSignalSpy told(&ProcessSKK, &CProcessSKK::updateTlgModeInterface);
    State.callState = 6;
    State.waitTimeAfterCallEstablished = 7;
    State.AutoModeState = 11;
    State.AutoModeWaitTimer = 3;
    State.AutoModeWaitAA = 8;
    State.callResult = 2;
    State.fileInProgress = true;
    State.currentFile = QStringLiteral("a");
    ProcessSKK.secondsSinceCmdOut = 8;
    ProcessSKK.clearSKKConnection();
    QCOMPARE(State.hangUpPause, 5);
    QCOMPARE(desk.sent(), "@H");
    QCOMPARE(char(ProcessSKK.lastCmdOut), 'H');
    QCOMPARE(ProcessSKK.secondsSinceCmdOut, 0);
    QVERIFY(!State.connectionActive);
    QCOMPARE(State.callState, 0);
    QCOMPARE(State.waitTimeAfterCallEstablished, 0);
    QCOMPARE(State.AutoModeState, 0);
    QVERIFY(!State.fileInProgress);
    QCOMPARE(State.currentFile, "");
    QCOMPARE(State.callDirection, 0);
    QCOMPARE(State.tlgMode, 2);
    QCOMPARE(told.count(), 1);
    // These stay as they are.
    QCOMPARE(State.AutoModeWaitTimer, 3);
    QCOMPARE(State.AutoModeWaitAA, 8);
    QCOMPARE(State.callResult, 2);
}

void TestSkkHangUp::farEndHangsUpWithoutAConnection()
{
    const SkkDesk desk;
    State.connectionText = QStringLiteral("ТЕКСТ");
    State.connectionActive = true;
    State.scanCountdown = 20;
    State.tlgMode = 5;
    QSignalSpy told(&ProcessSKK, &CProcessSKK::updateTlgModeInterface);
    desk.receive("@H");
    QCOMPARE(desk.sent(), "@H");
    QCOMPARE(State.hangUpPause, 5);
    QVERIFY(!State.connectionActive);
    QCOMPARE(told.count(), 1);
    // Only the reset has taken place.
    QCOMPARE(desk.names("inp"), QStringList());
    QCOMPARE(desk.names("out"), QStringList());
    QCOMPARE(State.SKK_in + State.SKK_out, 0);
    QCOMPARE(State.scanCountdown, 20);
    QCOMPARE(State.tlgMode, 5);
    QCOMPARE(State.connectionText, "ТЕКСТ");
    QCOMPARE(desk.noted(), QStringList("312:00:00 Входящий отбой"));
}

void TestSkkHangUp::incomingTranscript()
{
    const SkkDesk desk;
    desk.connect(Incoming);
    State.connectionText = QStringLiteral("#*|ПРИВЕТ\r\n");
    State.scanCountdown = 20;
    ProcessSKK.clearSKKConnection();
    QCOMPARE(desk.names("inp/20260731"), QStringList("s120000"));
    QCOMPARE(QString::fromUtf8(desk.read("inp/20260731/s120000")), "#*|ПРИВЕТ\r\n");
    QCOMPARE(desk.names("out"), QStringList());
    QCOMPARE(desk.noted(), QStringList("312:00:00 Соединение сохранено inp/20260731/s120000"));
    QCOMPARE(State.SKK_in, 1);
    QCOMPARE(State.SKK_out, 0);
    QCOMPARE(State.scanCountdown, 1);
    QCOMPARE(State.connectionText, "");
    QCOMPARE(desk.printed(), "");
}

void TestSkkHangUp::outgoingTranscript()
{
    const SkkDesk desk;
    desk.connect(Outgoing);
    State.connectionText = QStringLiteral("#*|ПРИВЕТ\r\n");
    State.scanCountdown = 20;
    ProcessSKK.clearSKKConnection();
    QCOMPARE(desk.names("out/20260731"), QStringList("s120000"));
    QCOMPARE(QString::fromUtf8(desk.read("out/20260731/s120000")), "#*|ПРИВЕТ\r\n");
    QCOMPARE(desk.names("inp"), QStringList());
    QCOMPARE(desk.noted(), QStringList("312:00:00 Соединение сохранено out/20260731/s120000"));
    QCOMPARE(State.SKK_in, 0);
    QCOMPARE(State.scanCountdown, 1);
    QCOMPARE(State.connectionText, "");
}

void TestSkkHangUp::transcriptFollowsTheClock()
{
    const SkkDesk desk;
    desk.connect(Incoming);
    Time.setTo(QDateTime(QDate(2026, 8, 1), QTime(0, 5, 9)));
    ProcessSKK.clearSKKConnection();
    QCOMPARE(desk.names("inp/20260801"), QStringList("s000509"));
}

void TestSkkHangUp::registersAreRemovedFromTheFileOnRequest()
{
    const SkkDesk desk;
    Options.removeRegisterInInputFiles = true;
    for (const int direction : {1, 2}) {
        desk.connect(direction);
        State.connectionText = QStringLiteral("|4ТО #12&OK");
        ProcessSKK.clearSKKConnection();
    }
    QCOMPARE(QString::fromUtf8(desk.read("inp/20260731/s120000")), "ЧТО 12OK");
    QCOMPARE(QString::fromUtf8(desk.read("out/20260731/s120000")), "ЧТО 12OK");
}

void TestSkkHangUp::outgoingConnectionsAreCountedTwice()
{
    const SkkDesk desk;
    ProcessSKK.proccessCallSuccess();
    QCOMPARE(State.SKK_out, 1);
    ProcessSKK.clearSKKConnection();
    QCOMPARE(State.SKK_out, 2);
    desk.receive("@C");
    QCOMPARE(State.SKK_in, 0);
    ProcessSKK.clearSKKConnection();
    QCOMPARE(State.SKK_in, 1);
    QCOMPARE(State.SKK_out, 2);
}

void TestSkkHangUp::countersAreNeitherSavedNorWrapped()
{
    const SkkDesk desk;
    State.SKK_in = 999;
    State.SKK_out = 998;
    desk.connect(Incoming);
    ProcessSKK.clearSKKConnection();
    desk.connect(Outgoing);
    ProcessSKK.clearSKKConnection();
    QCOMPARE(State.SKK_in, 1000);
    QCOMPARE(State.SKK_out, 1000);
    QVERIFY(!QFile::exists(desk.path("velda_state.ini")));
}

void TestSkkHangUp::transcriptThatCannotBeSaved_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<QString>("directory");
    row("incoming", 1, "inp/20260731");
    row("outgoing", 2, "out/20260731");
}

void TestSkkHangUp::transcriptThatCannotBeSaved()
{
    QFETCH(int, direction);
    QFETCH(QString, directory);
    const SkkDesk desk;
    Options.autoPrintModeSKK = 3;
    desk.write(directory, "a file in the directory's place");
    desk.connect(direction);
    State.connectionText = QStringLiteral("|ТЕКСТ");
    ProcessSKK.clearSKKConnection();
    QCOMPARE(desk.noted(),
             QStringList("312:00:00 Ошибка сохранения соединения в файл: " + directory + "/s120000"));
    QCOMPARE(State.SKK_in, direction == 1 ? 1 : 0);
    QCOMPARE(State.SKK_out, direction == 2 ? 2 : 0);
    QCOMPARE(State.callDirection, 0);
    QCOMPARE(State.connectionText, "");
    QCOMPARE(desk.printed(), "ТЕКСТ");
}

void TestSkkHangUp::fullDiskKeepsCountersAndReset()
{
    const SkkDesk desk;
    desk.connect(Incoming);
    State.connectionText = QStringLiteral("ТЕКСТ");
    {
        const FullDisk full;
        ProcessSKK.clearSKKConnection();
    }
    QCOMPARE(desk.noted(),
             QStringList("312:00:00 Ошибка сохранения соединения в файл: inp/20260731/s120000"));
    QCOMPARE(desk.names("inp/20260731"), QStringList());
    QCOMPARE(State.SKK_in, 1);
    QCOMPARE(State.callDirection, 0);
}

void TestSkkHangUp::printing_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("direction");
    QTest::addColumn<bool>("isPrinted");
    for (int mode = 0; mode <= 4; ++mode) {
        QTest::addRow("mode %d, incoming", mode) << mode << 1 << (mode == 1 || mode == 3);
        QTest::addRow("mode %d, outgoing", mode) << mode << 2 << (mode == 2 || mode == 3);
    }
}

void TestSkkHangUp::printing()
{
    QFETCH(int, mode);
    QFETCH(int, direction);
    QFETCH(bool, isPrinted);
    const SkkDesk desk;
    Options.autoPrintModeSKK = mode;
    desk.connect(direction);
    State.connectionText = QStringLiteral("|ТЕКСТ #1@H\r\n");
    ProcessSKK.clearSKKConnection();
    QCOMPARE(desk.printed(), isPrinted ? "ТЕКСТ 1\r\n" : "");
    QCOMPARE(desk.noted().size(), 1); // printing has no line of its own
}

void TestSkkHangUp::emptyTranscriptIsStoredToo()
{
    const SkkDesk desk;
    desk.connect(Incoming);
    ProcessSKK.clearSKKConnection();
    QCOMPARE(desk.names("inp/20260731"), QStringList("s120000"));
    QCOMPARE(desk.read("inp/20260731/s120000"), QByteArray());
}

/// The window learns of the end when everything is over.
void TestSkkHangUp::directionGoesLast()
{
    const SkkDesk desk;
    desk.connect(Outgoing);
    QList<int> seen;
    connect(&ProcessSKK, &CProcessSKK::updateTlgModeInterface, this,
            [&seen] { seen << State.callDirection << State.tlgMode << State.SKK_out; });
    ProcessSKK.clearSKKConnection();
    disconnect(&ProcessSKK, nullptr, this, nullptr);
    QCOMPARE(seen, QList<int>({0, 2, 2}));
}

QTEST_GUILESS_MAIN(TestSkkHangUp)
#include "test_skk_hang_up.moc"
