// What a TCP link takes off the send buffer, and when, without a socket.

#include "app/options.h"
#include "link/stream_crypt.h"
#include "link/tcp_stream.h"
#include "link/tlg_thread.h"
#include "tests/support/desk.h"

#include <QtTest>

class TestTcpSending : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void chunkIs32CharactersBeforeThePeerSpeaks();
    void nothingGoesWithoutWindowOnceThePeerHasSpoken();
    void oneWindowLetsOneChunkOut();
    void windowOfZeroLetsNothingOut();
    void flowReportHalvesOneChunk_data();
    void flowReportHalvesOneChunk();
    void windowAndFlowReportBothLimit_data();
    void windowAndFlowReportBothLimit();
    void textStopsBeforeACommand();
    void commandGoesWholeWhateverTheLimit();
    void incompleteCommandStays();
    void incompleteCommandUsesTheWindowUp();
    void operatorKeysGoAsMarkThenText();
    void flowReportInTheTextGoesOut();
    void newConnectionForgetsTheGrant();
    void textGoesOutInCorva();
    void charactersWithoutCodeGoAsNothing();
    void cipheredChunkHasExactBytes();
    void onlyTheCentreModeCiphers();
    void sentChunkIsLoggedAndCounted();
    void guaranteedTransferKeepsTextOutOfTheLog();
    void refusedChunkReturnsToTheHead();
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}

/// A link with text to send. With a window the peer has spoken.
struct Near {
    explicit Near(const QString &text, int window = -1) : stream(thread)
    {
        thread.sendBuffer.text = text;
        thread.synCountdown = window < 0 ? 0 : 30;
        thread.peerWindow = qMax(0, window);
    }
    QString left() { return thread.sendBuffer.mGet(); }
    CTlgThread thread;
    CTcpStream stream;
};

QString letters(int count)
{
    QString text;
    for (int i = 0; i < count; ++i)
        text += QChar('A' + i % 26);
    return text;
}
} // namespace

void TestTcpSending::init()
{
    resetGlobals();
    Options.processMode = 2;
    StreamCrypt = CStreamCrypt();
}

void TestTcpSending::chunkIs32CharactersBeforeThePeerSpeaks()
{
    Near near(letters(70));
    QCOMPARE(near.stream.nextChunk(), letters(70).left(32));
    QCOMPARE(near.stream.nextChunk(), letters(70).mid(32, 32));
    QCOMPARE(near.stream.nextChunk(), letters(70).mid(64));
    QCOMPARE(near.stream.nextChunk(), QString());
}

void TestTcpSending::nothingGoesWithoutWindowOnceThePeerHasSpoken()
{
    Near near(letters(10));
    (void)near.stream.take("\x16");
    QCOMPARE(near.stream.nextChunk(), QString());
    (void)near.stream.take("A");
    QCOMPARE(near.stream.nextChunk(), QString());
    QCOMPARE(near.left(), letters(10));
}

void TestTcpSending::oneWindowLetsOneChunkOut()
{
    Near near(letters(40));
    (void)near.stream.take("\xB5");
    QCOMPARE(near.stream.nextChunk(), letters(40).left(10));
    QCOMPARE(near.thread.peerWindow, 0);
    QCOMPARE(near.stream.nextChunk(), QString());
    (void)near.stream.take("\xBF");
    QCOMPARE(near.stream.nextChunk(), letters(40).mid(10));
}

void TestTcpSending::windowOfZeroLetsNothingOut()
{
    Near near(letters(10));
    (void)near.stream.take("\xB0");
    QCOMPARE(near.stream.nextChunk(), QString());
}

void TestTcpSending::flowReportHalvesOneChunk_data()
{
    QTest::addColumn<QByteArray>("report");
    QTest::addColumn<int>("limit");
    QTest::newRow("07") << QByteArray("@07*") << 3;
    QTest::newRow("06") << QByteArray("@06*") << 3;
    QTest::newRow("00") << QByteArray("@00*") << 0;
    QTest::newRow("01") << QByteArray("@01*") << 0;
    QTest::newRow("31") << QByteArray("@31*") << 15;
    QTest::newRow("32 is none") << QByteArray("@32*") << 32;
    QTest::newRow("64") << QByteArray("@64*") << 32;
    QTest::newRow("99") << QByteArray("@99*") << 32;
}

void TestTcpSending::flowReportHalvesOneChunk()
{
    QFETCH(QByteArray, report);
    QFETCH(int, limit);
    Near near(letters(70));
    (void)near.stream.take(report);
    near.thread.synCountdown = 0; // as if the silence timer were off
    QCOMPARE(near.stream.nextChunk(), letters(70).left(limit));
    QCOMPARE(near.thread.txCredit.load(), 32);
    QCOMPARE(near.stream.nextChunk(), letters(70).mid(limit, 32));
}

void TestTcpSending::windowAndFlowReportBothLimit_data()
{
    QTest::addColumn<QByteArray>("reports");
    QTest::addColumn<int>("limit");
    QTest::newRow("flow is less") << QByteArray("\xB8@07*") << 3;
    QTest::newRow("window is less") << QByteArray("\xB1@07*") << 2;
}

void TestTcpSending::windowAndFlowReportBothLimit()
{
    QFETCH(QByteArray, reports);
    QFETCH(int, limit);
    Near near(letters(70));
    (void)near.stream.take(reports);
    QCOMPARE(near.stream.nextChunk(), letters(70).left(limit));
    QCOMPARE(near.stream.nextChunk(), QString()); // needs a fresh window
    (void)near.stream.take("\xBA");
    QCOMPARE(near.stream.nextChunk(), letters(70).mid(limit, 20));
}

void TestTcpSending::textStopsBeforeACommand()
{
    Near near(qs("AB@CDE@H"));
    QCOMPARE(near.stream.nextChunk(), qs("AB"));
    QCOMPARE(near.stream.nextChunk(), qs("@C"));
    QCOMPARE(near.stream.nextChunk(), qs("DE"));
    QCOMPARE(near.stream.nextChunk(), qs("@H"));
    QCOMPARE(near.stream.nextChunk(), QString());
}

void TestTcpSending::commandGoesWholeWhateverTheLimit()
{
    const QString command = qs("@N0123456789012345678901234567890123456789@");
    Near near(command + qs("AB"), 2);
    QCOMPARE(near.stream.nextChunk(), command);
    QCOMPARE(near.left(), qs("AB"));
}

void TestTcpSending::incompleteCommandStays()
{
    for (const char *text : {"@", "@N", "@N12", "@N12+", "@1", "@12"}) {
        Near near(qs(text));
        QCOMPARE(near.stream.nextChunk(), QString());
        QCOMPARE(near.left(), qs(text));
    }
}

void TestTcpSending::incompleteCommandUsesTheWindowUp()
{
    Near near(qs("@N12"), 10);
    QCOMPARE(near.stream.nextChunk(), QString());
    QCOMPARE(near.thread.peerWindow, 0);
}

void TestTcpSending::operatorKeysGoAsMarkThenText()
{
    Near near(qs("@LAB@V"));
    QCOMPARE(near.stream.nextChunk(), qs("@"));
    QCOMPARE(near.stream.nextChunk(), qs("LAB"));
    QCOMPARE(near.stream.nextChunk(), qs("@"));
    QCOMPARE(near.stream.nextChunk(), qs("V"));
}

void TestTcpSending::flowReportInTheTextGoesOut()
{
    Near near(qs("@12*AB"));
    QCOMPARE(near.stream.nextChunk(), qs("@12*"));
    QCOMPARE(near.stream.nextChunk(), qs("AB"));
}

void TestTcpSending::newConnectionForgetsTheGrant()
{
    Near near(letters(10), 20);
    near.thread.txCredit = 7;
    const CTcpStream next(near.thread);
    QCOMPARE(near.thread.peerWindow, 0);
    QCOMPARE(near.thread.synCountdown, 0);
    QCOMPARE(near.thread.txCredit.load(), 32);
    QVERIFY(!next.ciphered);
    QVERIFY(next.heldCommand.isEmpty());
}

void TestTcpSending::textGoesOutInCorva()
{
    Near near{QString()};
    QCOMPARE(near.stream.encoded(qs("ЗЦЗЦ 01*\r\n|#&")), QByteArray("\x87\x96\x87\x96 01\x05\r\n|#&"));
    QCOMPARE(near.stream.encoded(qs("@N12+@")), QByteArray("@N12+@"));
}

void TestTcpSending::charactersWithoutCodeGoAsNothing()
{
    Near near{QString()};
    QCOMPARE(near.stream.encoded(qs("€№")), QByteArray());
    QCOMPARE(near.stream.encoded(qs("A€B")), QByteArray("AB"));
}

void TestTcpSending::cipheredChunkHasExactBytes()
{
    // Key 01 02 03, own seed 5, peer's 4: position 1, 02+05 = 07. 80^07, 81^03, 82^01, 83^07.
    Options.processMode = 0;
    const unsigned char key[] = {1, 2, 3};
    StreamCrypt.setKey(3, key);
    StreamCrypt.init_crypt(5);
    StreamCrypt.init_decrypt(4);
    Near near{QString()};
    near.stream.ciphered = true;
    QCOMPARE(near.stream.encoded(qs("АБВГ")), QByteArray("\x87\x82\x83\x84"));
    // The next chunk starts at the same position with the seed added once more: 0C.
    QCOMPARE(near.stream.encoded(qs("АБВГ")), QByteArray("\x8C\x82\x83\x8F"));
}

void TestTcpSending::onlyTheCentreModeCiphers()
{
    const unsigned char key[] = {1, 2, 3};
    StreamCrypt.setKey(3, key);
    StreamCrypt.init_crypt(5);
    StreamCrypt.init_decrypt(4);
    for (const int mode : {1, 2}) {
        Options.processMode = mode;
        Near near{QString()};
        near.stream.ciphered = true;
        QCOMPARE(near.stream.encoded(qs("АБ")), QByteArray("\x80\x81"));
    }
}

void TestTcpSending::sentChunkIsLoggedAndCounted()
{
    Near near{QString()};
    near.thread.chunkSent(qs("АБ"));
    QCOMPARE(near.thread.sentEvents.load(), 2);
    near.thread.chunkSent(qs("В"));
    QCOMPARE(near.thread.sentEvents.load(), 4);
    QCOMPARE(near.thread.sentLog.mTake(), qs("АБВ"));
}

void TestTcpSending::guaranteedTransferKeepsTextOutOfTheLog()
{
    Near near{QString()};
    near.thread.startProtectedMode();
    near.thread.chunkSent(qs("АБ"));
    QVERIFY(near.thread.sentLog.mIsEmpty());
    QCOMPARE(near.thread.sentEvents.load(), 1);
    near.thread.sentLog.mSet(qs("ДО")); // from before the mode: it still waits for the journal
    near.thread.chunkSent(qs("В"));
    QCOMPARE(near.thread.sentEvents.load(), 3);
    QCOMPARE(near.thread.sentLog.mGet(), qs("ДО"));
}

void TestTcpSending::refusedChunkReturnsToTheHead()
{
    Near near(letters(40));
    const QString chunk = near.stream.nextChunk();
    near.thread.returnToSendBuffer(chunk);
    QCOMPARE(near.left(), letters(40));
}

QTEST_GUILESS_MAIN(TestTcpSending)
#include "test_tcp_sending.moc"
