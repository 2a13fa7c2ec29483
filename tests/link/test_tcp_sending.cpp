// What a TCP link takes off the send buffer, and when, without a socket.

#include "app/options.h"
#include "link/stream_crypt.h"
#include "link/tcp_stream.h"
#include "link/tlg_thread.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"

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
    void chunkStaysUntilItIsSent();
    void chunkThatWasWithdrawnIsLoggedAllTheSame();
    void operatorsLineEndsAreCrAndLf();
    void procedureMeansTheSignsThemselves();
    void chunkThatStaysKeepsItsOwners();
    void everyCutKeepsTheOwners_data();
    void everyCutKeepsTheOwners();
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
    /// The next chunk, which arrives at once.
    QString next()
    {
        const QString chunk = stream.nextChunk().text;
        thread.sendBuffer.dropHeld();
        return chunk;
    }
    /// The bytes of a text that a procedure wrote.
    [[nodiscard]] QByteArray encoded(const char *text) const { return stream.encoded({qs(text), {}}); }
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
    QCOMPARE(near.next(), letters(70).left(32));
    QCOMPARE(near.next(), letters(70).mid(32, 32));
    QCOMPARE(near.next(), letters(70).mid(64));
    QCOMPARE(near.next(), QString());
}

void TestTcpSending::nothingGoesWithoutWindowOnceThePeerHasSpoken()
{
    Near near(letters(10));
    (void)near.stream.take("\x16");
    QCOMPARE(near.next(), QString());
    (void)near.stream.take("A");
    QCOMPARE(near.next(), QString());
    QCOMPARE(near.left(), letters(10));
}

void TestTcpSending::oneWindowLetsOneChunkOut()
{
    Near near(letters(40));
    (void)near.stream.take("\xB5");
    QCOMPARE(near.next(), letters(40).left(10));
    QCOMPARE(near.thread.peerWindow, 0);
    QCOMPARE(near.next(), QString());
    (void)near.stream.take("\xBF");
    QCOMPARE(near.next(), letters(40).mid(10));
}

void TestTcpSending::windowOfZeroLetsNothingOut()
{
    Near near(letters(10));
    (void)near.stream.take("\xB0");
    QCOMPARE(near.next(), QString());
}

void TestTcpSending::flowReportHalvesOneChunk_data()
{
    QTest::addColumn<QByteArray>("report");
    QTest::addColumn<int>("limit");
    row("07", QByteArray("@07*"), 3);
    row("06", QByteArray("@06*"), 3);
    row("00", QByteArray("@00*"), 0);
    row("01", QByteArray("@01*"), 0);
    row("31", QByteArray("@31*"), 15);
    row("32 is none", QByteArray("@32*"), 32);
    row("64", QByteArray("@64*"), 32);
    row("99", QByteArray("@99*"), 32);
}

void TestTcpSending::flowReportHalvesOneChunk()
{
    QFETCH(QByteArray, report);
    QFETCH(int, limit);
    Near near(letters(70));
    (void)near.stream.take(report);
    near.thread.synCountdown = 0; // as if the silence timer were off
    QCOMPARE(near.next(), letters(70).left(limit));
    QCOMPARE(near.thread.txCredit.load(), 32);
    QCOMPARE(near.next(), letters(70).mid(limit, 32));
}

void TestTcpSending::windowAndFlowReportBothLimit_data()
{
    QTest::addColumn<QByteArray>("reports");
    QTest::addColumn<int>("limit");
    row("flow is less", QByteArray("\xB8@07*"), 3);
    row("window is less", QByteArray("\xB1@07*"), 2);
}

void TestTcpSending::windowAndFlowReportBothLimit()
{
    QFETCH(QByteArray, reports);
    QFETCH(int, limit);
    Near near(letters(70));
    (void)near.stream.take(reports);
    QCOMPARE(near.next(), letters(70).left(limit));
    QCOMPARE(near.next(), QString()); // needs a fresh window
    (void)near.stream.take("\xBA");
    QCOMPARE(near.next(), letters(70).mid(limit, 20));
}

void TestTcpSending::textStopsBeforeACommand()
{
    Near near(qs("AB@CDE@H"));
    QCOMPARE(near.next(), qs("AB"));
    QCOMPARE(near.next(), qs("@C"));
    QCOMPARE(near.next(), qs("DE"));
    QCOMPARE(near.next(), qs("@H"));
    QCOMPARE(near.next(), QString());
}

void TestTcpSending::commandGoesWholeWhateverTheLimit()
{
    const QString command = qs("@N0123456789012345678901234567890123456789@");
    Near near(command + qs("AB"), 2);
    QCOMPARE(near.next(), command);
    QCOMPARE(near.left(), qs("AB"));
}

void TestTcpSending::incompleteCommandStays()
{
    for (const char *text : {"@", "@N", "@N12", "@N12+", "@1", "@12"}) {
        Near near(qs(text));
        QCOMPARE(near.next(), QString());
        QCOMPARE(near.left(), qs(text));
    }
}

void TestTcpSending::incompleteCommandUsesTheWindowUp()
{
    Near near(qs("@N12"), 10);
    QCOMPARE(near.next(), QString());
    QCOMPARE(near.thread.peerWindow, 0);
}

void TestTcpSending::operatorKeysGoAsMarkThenText()
{
    Near near(qs("@LAB@V"));
    QCOMPARE(near.next(), qs("@"));
    QCOMPARE(near.next(), qs("LAB"));
    QCOMPARE(near.next(), qs("@"));
    QCOMPARE(near.next(), qs("V"));
}

void TestTcpSending::flowReportInTheTextGoesOut()
{
    Near near(qs("@12*AB"));
    QCOMPARE(near.next(), qs("@12*"));
    QCOMPARE(near.next(), qs("AB"));
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
    QCOMPARE(near.encoded("ЗЦЗЦ 01*\r\n|#&"), QByteArray("\x87\x96\x87\x96 01\x05\r\n|#&"));
    QCOMPARE(near.encoded("@N12+@"), QByteArray("@N12+@"));
}

void TestTcpSending::charactersWithoutCodeGoAsNothing()
{
    Near near{QString()};
    QCOMPARE(near.encoded("€№"), QByteArray());
    QCOMPARE(near.encoded("A€B"), QByteArray("AB"));
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
    QCOMPARE(near.encoded("АБВГ"), QByteArray("\x87\x82\x83\x84"));
    // The next chunk starts at the same position with the seed added once more: 0C.
    QCOMPARE(near.encoded("АБВГ"), QByteArray("\x8C\x82\x83\x8F"));
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
        QCOMPARE(near.encoded("АБ"), QByteArray("\x80\x81"));
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

void TestTcpSending::chunkStaysUntilItIsSent()
{
    Near near(letters(40));
    const LineChunk chunk = near.stream.nextChunk();
    QCOMPARE(near.left(), letters(40));
    QCOMPARE(near.stream.nextChunk().text, chunk.text); // as the next link would find it
    near.thread.chunkSent(chunk.text);
    QCOMPARE(near.left(), letters(40).mid(32));
    QCOMPARE(near.thread.sentLog.mGet(), letters(32));
}

void TestTcpSending::chunkThatWasWithdrawnIsLoggedAllTheSame()
{
    Near near(letters(40));
    const LineChunk chunk = near.stream.nextChunk();
    QCOMPARE(near.thread.sendBuffer.mTake(), letters(40));
    near.thread.sendBuffer.mAppend(letters(40));
    near.thread.chunkSent(chunk.text);
    QCOMPARE(near.left(), letters(40));
    QCOMPARE(near.thread.sentLog.mGet(), letters(32));
}

void TestTcpSending::operatorsLineEndsAreCrAndLf()
{
    Near near{QString()};
    near.thread.sendBuffer.mAppendOperators(qs("АБ<>В"));
    const LineChunk chunk = near.stream.nextChunk();
    QCOMPARE(chunk.text, qs("АБ<>В")); // what the journal gets
    QCOMPARE(near.stream.encoded(chunk), QByteArray("\x80\x81\r\n\x82"));
}

void TestTcpSending::procedureMeansTheSignsThemselves()
{
    Near near{QString()};
    near.thread.sendBuffer.mAppend(qs("А<>\r\n"));
    QCOMPARE(near.stream.encoded(near.stream.nextChunk()), QByteArray("\x80<>\r\n"));
}

void TestTcpSending::chunkThatStaysKeepsItsOwners()
{
    Near near{QString()};
    near.thread.sendBuffer.mAppend(qs("<"));
    near.thread.sendBuffer.mAppendOperators(qs("<"));
    QCOMPARE(near.stream.encoded(near.stream.nextChunk()), QByteArray("<\r"));
    near.thread.sendBuffer.mAppend(qs("<"));
    QCOMPARE(near.stream.encoded(near.stream.nextChunk()), QByteArray("<\r<"));
}

void TestTcpSending::everyCutKeepsTheOwners_data()
{
    QTest::addColumn<QByteArray>("grant");
    row("windows of 2", QByteArray("\xB1"));
    row("windows of 10", QByteArray("\xB5"));
    row("flow reports for 3", QByteArray("\xBF@07*"));
    row("flow reports for 1", QByteArray("\xBF@02*"));
}

void TestTcpSending::everyCutKeepsTheOwners()
{
    QFETCH(QByteArray, grant);
    Near near{QString()};
    near.thread.sendBuffer.mAppend(qs("A<B>"));
    near.thread.sendBuffer.mAppendOperators(qs("<>@H<>C<"));
    near.thread.sendBuffer.mAppend(qs(">@C<>\r\n"));
    near.thread.sendBuffer.mAppendOperators(qs("<>"));
    QByteArray wire;
    QString journal;
    for (int turn = 0; turn < 30; ++turn) {
        (void)near.stream.take(grant);
        const LineChunk chunk = near.stream.nextChunk();
        wire += near.stream.encoded(chunk);
        journal += chunk.text;
        near.thread.sendBuffer.dropHeld();
    }
    QCOMPARE(wire, QByteArray("A<B>\r\n@H\r\nC\r>@C<>\r\n\r\n"));
    QCOMPARE(journal, qs("A<B><>@H<>C<>@C<>\r\n<>"));
    QCOMPARE(near.left(), QString());
}

QTEST_GUILESS_MAIN(TestTcpSending)
#include "test_tcp_sending.moc"
