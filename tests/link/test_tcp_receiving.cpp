// What a TCP link makes of the bytes that it reads, without a socket.

#include "app/options.h"
#include "link/stream_crypt.h"
#include "link/tcp_stream.h"
#include "link/tlg_thread.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"

#include <QRandomGenerator>
#include <QtTest>

class TestTcpReceiving : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void textArrivesInCapitals();
    void keepAliveIsAnsweredOnceAndRemoved();
    void everyReadStartsTheSilenceTimer();
    void windowReportGrantsTwiceItsLowBits_data();
    void windowReportGrantsTwiceItsLowBits();
    void secondOfTwoWindowReportsStaysInTheData();
    void bytesBesideTheWindowRangeAreData();
    void commandIsHandedOnAsItIs_data();
    void commandIsHandedOnAsItIs();
    void commandResetsTheFlowReport();
    void flowReportNarrowsTheNextChunk();
    void flowReportShowsTheGrant();
    void flowReportNeverReachesTheBuffers();
    void incompleteCommandIsHeldAndCompleted();
    void heldCommandSurvivesKeepAlive();
    void everySplitOfAStreamGivesTheSameText();
    void endlessNumberIsHeldInBoundsAndPassesAsText();
    void centreModeKeepsCommandsInTheText();
    void plainCentreLinkReadsText();
    void cipheredBytesAreDeciphered();
    void windowAndKeepAliveAreFilteredBeforeDeciphering();
    void blockOf256CipheredBytesStaysAsItIs();
    void longerBlockIsDecipheredModulo256();
    void otherProceduresNeverDecipher();
    void noiseIsTakenWithoutHarm();
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}

struct Far {
    Far() : stream(thread) {}
    QString text() { return thread.recvBuffer.mTake(); }
    CTlgThread thread;
    CTcpStream stream;
};
} // namespace

void TestTcpReceiving::init()
{
    resetGlobals();
    Options.processMode = 2;
    StreamCrypt = CStreamCrypt();
}

void TestTcpReceiving::textArrivesInCapitals()
{
    Far far;
    QCOMPARE(far.stream.take("\x8F\x90\x88\x82\x85\x92 \x05 12"), QByteArray());
    QCOMPARE(far.text(), qs("ПРИВЕТ * 12"));
    QCOMPARE(far.thread.receivedEvents.load(), 1);
}

void TestTcpReceiving::keepAliveIsAnsweredOnceAndRemoved()
{
    Far far;
    QCOMPARE(far.stream.take("A\x16\x16"
                             "B\x16"),
             QByteArray("\x16"));
    QCOMPARE(far.text(), qs("AB"));
    QCOMPARE(far.stream.take("\x16"), QByteArray("\x16"));
    QCOMPARE(far.text(), QString());
    QCOMPARE(far.thread.receivedEvents.load(), 1);
}

void TestTcpReceiving::everyReadStartsTheSilenceTimer()
{
    Far far;
    QCOMPARE(far.thread.synCountdown, 0);
    Options.TimeOut = 7;
    far.thread.refreshOptions();
    for (const char *bytes : {"\x16", "A", "\xB0", "@C"}) {
        far.thread.synCountdown = 1;
        (void)far.stream.take(bytes);
        QCOMPARE(far.thread.synCountdown, 7);
    }
}

void TestTcpReceiving::windowReportGrantsTwiceItsLowBits_data()
{
    QTest::addColumn<char>("report");
    QTest::addColumn<int>("granted");
    for (int i = 0; i < 16; ++i)
        row(qPrintable(QString::number(0xB0 + i, 16)), char(0xB0 + i), 2 * i);
}

void TestTcpReceiving::windowReportGrantsTwiceItsLowBits()
{
    QFETCH(char, report);
    QFETCH(int, granted);
    Far far;
    far.thread.peerWindow = 99;
    QCOMPARE(far.stream.take(QByteArray("A") + report + "B"), QByteArray("\xBF"));
    QCOMPARE(far.thread.peerWindow, granted);
    QCOMPARE(far.thread.shownWindow.load(), granted);
    QCOMPARE(far.text(), qs("AB"));
}

void TestTcpReceiving::secondOfTwoWindowReportsStaysInTheData()
{
    // In the data 0xB3 has no letter. With a cipher it would count; here the grant shows that it was not
    // read.
    Far far;
    QCOMPARE(far.stream.take("\xB2\xB3"), QByteArray("\xBF"));
    QCOMPARE(far.thread.peerWindow, 4);
    // The third is read again: the scan steps over one byte for each report.
    QCOMPARE(far.stream.take("\xB4\xB5\xB6\xB7"
                             "A"),
             QByteArray("\xBF\xBF"));
    QCOMPARE(far.thread.peerWindow, 12);
    QCOMPARE(far.text(), qs("A"));
}

void TestTcpReceiving::bytesBesideTheWindowRangeAreData()
{
    Far far;
    QCOMPARE(far.stream.take("\xAF\xC0\xA0"), QByteArray());
    QCOMPARE(far.text(), qs("ПА")); // the second half of the code page gives capitals too; 0xC0 is empty
    QCOMPARE(far.thread.peerWindow, 0);
}

void TestTcpReceiving::commandIsHandedOnAsItIs_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *bytes) { ::row(bytes, QByteArray(bytes), qs(bytes)); };
    for (const char *command :
         {"@C", "@E", "@H", "@L", "@V", "@N123@", "@n123+@", "@N12X", "@Z", "@1AB", "@12X"})
        row(command);
    for (const char *mixed : {"AB@HCD", "@C@N12@", "A@CB@HC", "@@H"})
        row(mixed);
    ::row("letter behind", QByteArray("@\x80"), qs("@А"));
}

void TestTcpReceiving::commandIsHandedOnAsItIs()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    Far far;
    (void)far.stream.take(bytes);
    QCOMPARE(far.text(), text);
    QVERIFY(far.stream.heldCommand.isEmpty());
}

void TestTcpReceiving::commandResetsTheFlowReport()
{
    Far far;
    (void)far.stream.take("@07*");
    (void)far.stream.take("@C");
    QCOMPARE(far.thread.txCredit.load(), 32);
}

void TestTcpReceiving::flowReportNarrowsTheNextChunk()
{
    Far far;
    (void)far.stream.take("@07*");
    QCOMPARE(far.thread.txCredit.load(), 7);
    (void)far.stream.take("AB@99*CD");
    QCOMPARE(far.thread.txCredit.load(), 99);
}

void TestTcpReceiving::flowReportShowsTheGrant()
{
    Far far;
    far.thread.peerWindow = 14;
    far.thread.shownWindow = 3;
    (void)far.stream.take("@07*");
    QCOMPARE(far.thread.shownWindow.load(), 14);
}

void TestTcpReceiving::flowReportNeverReachesTheBuffers()
{
    Far far;
    (void)far.stream.take("AB@07*CD@00*");
    QCOMPARE(far.text(), qs("ABCD"));
}

void TestTcpReceiving::incompleteCommandIsHeldAndCompleted()
{
    Far far;
    (void)far.stream.take("AB@N12");
    QCOMPARE(far.text(), qs("AB"));
    QCOMPARE(far.stream.heldCommand, QByteArray("@N12"));
    (void)far.stream.take("3@CD");
    QCOMPARE(far.text(), qs("@N123@CD"));
    QVERIFY(far.stream.heldCommand.isEmpty());
}

void TestTcpReceiving::heldCommandSurvivesKeepAlive()
{
    Far far;
    (void)far.stream.take("@N12");
    QCOMPARE(far.stream.take("\x16\xB5"), QByteArray("\x16\xBF"));
    QCOMPARE(far.stream.heldCommand, QByteArray("@N12"));
    QCOMPARE(far.text(), QString());
    (void)far.stream.take("+@");
    QCOMPARE(far.text(), qs("@N12+@"));
}

void TestTcpReceiving::everySplitOfAStreamGivesTheSameText()
{
    const QByteArray bytes = "\x80\x81@C@N12+@\x82\x16@07*\xB5"
                             "A@1X@12*@LB@";
    const QString text = qs("АБ@C@N12+@ВA@1X@LB");
    for (int first = 0; first <= bytes.size(); ++first) {
        for (int second = first; second <= bytes.size(); ++second) {
            Far far;
            for (const QByteArray &piece :
                 {bytes.left(first), bytes.mid(first, second - first), bytes.mid(second)})
                if (!piece.isEmpty())
                    (void)far.stream.take(piece);
            QCOMPARE(far.text(), text);
            QCOMPARE(far.stream.heldCommand, QByteArray("@"));
        }
    }
}

void TestTcpReceiving::endlessNumberIsHeldInBoundsAndPassesAsText()
{
    Far far;
    QString text;
    (void)far.stream.take("@N");
    for (int i = 0; i < 3000; ++i) {
        (void)far.stream.take(QByteArray(1000, '7'));
        QVERIFY(far.stream.heldCommand.size() <= 2026);
        text += far.text();
    }
    (void)far.stream.take("A");
    text += far.text();
    QCOMPARE(text.size(), 2 + 3000000 + 1);
    QVERIFY(text == qs("@N") + QString(3000000, QLatin1Char('7')) + qs("A"));
}

void TestTcpReceiving::centreModeKeepsCommandsInTheText()
{
    Options.processMode = 0;
    Far far;
    (void)far.stream.take("A@07*B@N1");
    QCOMPARE(far.text(), qs("A@07*B@N1"));
    QCOMPARE(far.thread.txCredit.load(), 32);
    QVERIFY(far.stream.heldCommand.isEmpty());
}

void TestTcpReceiving::plainCentreLinkReadsText()
{
    Options.processMode = 0;
    StreamCrypt.setKey(3, reinterpret_cast<const unsigned char *>("\x01\x02\x03"));
    StreamCrypt.init_crypt(5);
    StreamCrypt.init_decrypt(4);
    Far far; // no seeds were exchanged on this connection
    (void)far.stream.take("AB");
    QCOMPARE(far.text(), qs("AB"));
}

namespace
{
/// A link with both seeds exchanged: key 01 02 03, own seed 5, peer's seed 4.
struct CipheredFar : Far {
    CipheredFar()
    {
        const unsigned char key[] = {1, 2, 3};
        StreamCrypt = CStreamCrypt();
        StreamCrypt.setKey(3, key);
        StreamCrypt.init_crypt(5);
        StreamCrypt.init_decrypt(4);
        stream.ciphered = true;
    }
};
} // namespace

void TestTcpReceiving::cipheredBytesAreDeciphered()
{
    // Position 5 mod 3 = 2; there 03+04 = 07. 46^07 = 41 A; place 0 becomes 01+46=47 rotated, 8E; CC^8E = 42
    // B.
    Options.processMode = 0;
    CipheredFar far;
    (void)far.stream.take("\x46\xCC");
    QCOMPARE(far.text(), qs("AB"));
}

void TestTcpReceiving::windowAndKeepAliveAreFilteredBeforeDeciphering()
{
    // The same two bytes with both kinds among them: they are gone before the cipher counts.
    Options.processMode = 0;
    CipheredFar far;
    QCOMPARE(far.stream.take("\x46\x16\xB5\xCC"), QByteArray("\x16\xBF"));
    QCOMPARE(far.text(), qs("AB"));
    // Of two window bytes in a row the second is data. Position 2 holds 07, made 93 by two feedings
    // (its own place is fed by the second byte only, 02+CC rotated goes to place 1): 07+04 = 0B; B5^0B = BE,
    // which has no letter.
    QCOMPARE(far.stream.take("\xB4\xB5"), QByteArray("\xBF"));
    QCOMPARE(far.thread.peerWindow, 8);
    QCOMPARE(far.text(), QString());
    QCOMPARE(int(StreamCrypt.decState[2]), 0x0B);
}

void TestTcpReceiving::blockOf256CipheredBytesStaysAsItIs()
{
    Options.processMode = 0;
    CipheredFar far;
    (void)far.stream.take(QByteArray(256, 'A'));
    QCOMPARE(far.text(), QString(256, QLatin1Char('A')));
}

void TestTcpReceiving::longerBlockIsDecipheredModulo256()
{
    // 257 bytes: one is treated, 46^07 = 41.
    Options.processMode = 0;
    CipheredFar far;
    (void)far.stream.take("\x46" + QByteArray(256, 'Z'));
    QCOMPARE(far.text(), qs("A") + QString(256, QLatin1Char('Z')));
}

void TestTcpReceiving::otherProceduresNeverDecipher()
{
    CipheredFar far;
    (void)far.stream.take("\x46");
    QCOMPARE(far.text(), qs("F"));
}

void TestTcpReceiving::noiseIsTakenWithoutHarm()
{
    QRandomGenerator random(31072026);
    for (const int mode : {0, 1, 2}) {
        Options.processMode = mode;
        Far far;
        for (int i = 0; i < 1000; ++i) {
            QByteArray noise(1 + int(random.bounded(4000U)), '\0');
            for (char &byte : noise)
                byte = char(random.bounded(256U));
            QVERIFY(far.stream.take(noise).size() <= noise.size() + 1);
            QVERIFY(far.text().size() <= noise.size() + 1100);
            QVERIFY(far.stream.heldCommand.size() <= 1026);
        }
        (void)far.stream.take("   ");
        far.text();
        (void)far.stream.take("AB");
        QCOMPARE(far.text(), qs("AB"));
    }
}

QTEST_GUILESS_MAIN(TestTcpReceiving)
#include "test_tcp_receiving.moc"
