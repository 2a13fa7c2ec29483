#include "tests/support/row.h"
#include "tools/linesim/peer/peer.h"
#include "tools/linesim/subcommands.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QtTest>

namespace
{
void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A listening peer and a socket in the workstation's place.
struct Line {
    explicit Line(const QStringList &more = {})
        : log([this](const QString &line) { lines << line; }),
          peer(*readPeerOptions(
                   QStringList{QStringLiteral("peer"), QStringLiteral("--listen"), QStringLiteral("0")} +
                   more),
               log)
    {
        if (!peer.start())
            qFatal("the peer cannot listen");
        workstation.connectToHost(QHostAddress::LocalHost, peer.place().toUShort());
        QObject::connect(&workstation, &QTcpSocket::readyRead, [this] { received += workstation.readAll(); });
    }

    [[nodiscard]] bool has(const char *line) const { return lines.contains(QString::fromUtf8(line)); }

    QStringList lines;
    EventLog log;
    Peer peer;
    QTcpSocket workstation;
    QByteArray received;
};
} // namespace

class TestLinesimPeer : public QObject
{
    Q_OBJECT

private slots:
    void connectionIsOpenedWithKeepAliveAndWindow();
    void telegramsAreCutAndStored();
    void confirmationIsNoTelegram();
    void telegramIsConfirmed();
    void telegramIsSentBackWithItsRegisterMarks();
    void longTelegramInPiecesIsCut();
    void confirmationWaitsForTheFileOnItsWay();
    void filesAreSentByName();
    void filesAreWrappedInMarks();
    void fileCutOffBeginsAgain();
    void telegramCutOffIsForgotten();
    void commandsReachTheLine();
    void unknownCommandIsAnError();
    void connectionIsDropped();
    void callerCallsAgain();
    void secondCallerIsRefused();
    void timedCommandRuns();
    void optionsThatAreNotUnderstood_data();
    void optionsThatAreNotUnderstood();
    void usageOffersWhatIsThere();
};

void TestLinesimPeer::connectionIsOpenedWithKeepAliveAndWindow()
{
    Line line;
    QTRY_COMPARE(line.received.toHex(), QByteArray("16bf"));
    line.workstation.write(QByteArray::fromHex("16bf80"));
    QTRY_VERIFY(line.has("text: 1 А"));
    QTRY_COMPARE(line.received.toHex(), QByteArray("16bfbf"));
    QCOMPARE(line.log.violations, 0);
}

void TestLinesimPeer::telegramsAreCutAndStored()
{
    const QTemporaryDir directory;
    Line line({QStringLiteral("--store"), directory.path()});
    QVERIFY(line.workstation.waitForConnected());
    line.workstation.write("noise ZCZC 1\r\nONE\r\nNNNN  between ZCZ");
    line.workstation.write("C 2\r\nTWO\r\nNNNN  ");
    QTRY_VERIFY(line.has("telegram: 002.txt 19"));
    QCOMPARE(read(directory.filePath(QStringLiteral("001.txt"))), QByteArray("ZCZC 1\r\nONE\r\nNNNN  "));
    QCOMPARE(read(directory.filePath(QStringLiteral("002.txt"))), QByteArray("ZCZC 2\r\nTWO\r\nNNNN  "));
    QVERIFY(read(directory.filePath(QStringLiteral("stream.bin"))).startsWith("noise ZCZC 1\r\n"));
    QVERIFY(read(directory.filePath(QStringLiteral("stream.txt"))).endsWith("TWO\r\nNNNN  "));
}

void TestLinesimPeer::confirmationIsNoTelegram()
{
    Line line({QStringLiteral("--confirm")});
    QVERIFY(line.workstation.waitForConnected());
    line.workstation.write("ZCZC RECEIVED NNNN  1200\r\n");
    QTRY_VERIFY(line.has("line: ZCZC RECEIVED NNNN  "));
    QVERIFY(line.lines.filter(QStringLiteral("confirmed")).isEmpty());
}

void TestLinesimPeer::telegramIsConfirmed()
{
    Line line({QStringLiteral("--confirm")});
    QTRY_COMPARE(line.received.toHex(), QByteArray("16bf"));
    line.workstation.write("ZCZC 1\r\nONE\r\nNNNN  ");
    QTRY_VERIFY(line.has("confirmed: 1"));
    // "\r\nЗЦЗЦ СООБЩЕНИЕ ПРИНЯТО НННН  "
    QTRY_VERIFY(
        line.received.contains(QByteArray::fromHex("0d0a87968796"
                                                   "20918e8e819985 8d8885208f90888d9f928e208d8d8d8d2020")));
}

void TestLinesimPeer::telegramIsSentBackWithItsRegisterMarks()
{
    Line line({QStringLiteral("--echo"), QStringLiteral("--speed"), QStringLiteral("0")});
    QTRY_COMPARE(line.received.toHex(), QByteArray("16bf"));
    line.workstation.write("ZCZC 1\r\n-&FILE-###12###-&FILE-\r\nNNNN  ");
    QTRY_VERIFY2(line.received.contains("\r\nZCZC #1\r\n-&FILE#-###12###-&FILE#-\r\n&NNNN  \r\n"),
                 line.received.constData());
}

// Marks are cut, and the piece that brings an end mark brings the next beginning too.
void TestLinesimPeer::longTelegramInPiecesIsCut()
{
    const QTemporaryDir directory;
    Line line({QStringLiteral("--store"), directory.path()});
    QVERIFY(line.workstation.waitForConnected());
    const QByteArray first = "ZCZC 1\r\n" + QByteArray(300, 'A') + "NNNN NNNN  ";
    const QByteArray second = "ZCZC 2\r\nNNNN  ";
    const QByteArray all = "NNNN  ZCZ " + first + second;
    for (int at = 0; at < all.size(); at += 7) {
        line.workstation.write(all.mid(at, 7));
        line.workstation.flush();
        QTest::qWait(1);
    }
    QTRY_VERIFY(line.has("telegram: 002.txt 14"));
    QCOMPARE(read(directory.filePath(QStringLiteral("001.txt"))), first);
    QCOMPARE(read(directory.filePath(QStringLiteral("002.txt"))), second);
}

void TestLinesimPeer::confirmationWaitsForTheFileOnItsWay()
{
    const QTemporaryDir directory;
    const QByteArray file(200, 'A');
    write(directory.filePath(QStringLiteral("a")), file + "END");
    Line line({QStringLiteral("--confirm"), QStringLiteral("--send"), directory.path(),
               QStringLiteral("--speed"), QStringLiteral("100")});
    QTRY_VERIFY(line.received.contains("AAA"));
    line.workstation.write("ZCZC 1\r\nONE\r\nNNNN  ZCZC 2\r\nTWO\r\nNNNN  ");
    QTRY_VERIFY(line.has("confirmed: 2"));
    QVERIFY(line.lines.indexOf(QStringLiteral("telegram: 002.txt 19")) <
            line.lines.indexOf(QStringLiteral("sent: a")));
    QVERIFY(line.lines.indexOf(QStringLiteral("sent: a")) <
            line.lines.indexOf(QStringLiteral("confirmed: 1")));
    QTRY_COMPARE(line.received.count(QByteArray::fromHex("0d0a8796879620918e8e81")), 2);
    QVERIFY(line.received.contains(file + "END" + QByteArray::fromHex("0d0a87968796")));
}

void TestLinesimPeer::filesAreSentByName()
{
    const QTemporaryDir directory;
    write(directory.filePath(QStringLiteral("b")), "SECOND");
    write(directory.filePath(QStringLiteral("a")), "FIRST\nLINE\r\n");
    Line line({QStringLiteral("--send"), directory.path(), QStringLiteral("--pause"), QStringLiteral("100")});
    QTRY_VERIFY(line.has("done: all sent"));
    QTRY_COMPARE(line.received, QByteArray("\x16\xBF"
                                           "FIRST\r\nLINE\r\nSECOND"));
    QVERIFY(line.lines.indexOf(QStringLiteral("sent: a")) < line.lines.indexOf(QStringLiteral("sent: b")));
}

void TestLinesimPeer::filesAreWrappedInMarks()
{
    const QTemporaryDir directory;
    write(directory.filePath(QStringLiteral("a")), "ONE");
    Line line({QStringLiteral("--send"), directory.path(), QStringLiteral("--wrap"),
               QStringLiteral("--end-mark"), QStringLiteral("\\r\\nNNNN  "), QStringLiteral("--start-mark"),
               QStringLiteral("ZCZC ")});
    QTRY_COMPARE(line.received, QByteArray("\x16\xBFZCZC ONE\r\nNNNN  "));
}

void TestLinesimPeer::fileCutOffBeginsAgain()
{
    const QTemporaryDir directory;
    write(directory.filePath(QStringLiteral("a")), QByteArray(100, 'A') + "END");
    Line line({QStringLiteral("--send"), directory.path(), QStringLiteral("--speed"), QStringLiteral("200")});
    QTRY_VERIFY(line.received.contains("AAA"));
    line.peer.run(QStringLiteral("drop"));
    QTRY_COMPARE(line.workstation.state(), QAbstractSocket::UnconnectedState);
    line.received.clear();
    line.workstation.connectToHost(QHostAddress::LocalHost, line.peer.place().toUShort());
    QTRY_COMPARE(line.received, "\x16\xBF" + QByteArray(100, 'A') + "END");
}

void TestLinesimPeer::telegramCutOffIsForgotten()
{
    Line line;
    QTRY_COMPARE(line.received.toHex(), QByteArray("16bf"));
    line.workstation.write("ZCZC 1\r\nHALF");
    QTRY_VERIFY(line.has("text: 12 ZCZC 1\\r\\nHALF"));
    line.peer.run(QStringLiteral("drop"));
    QTRY_COMPARE(line.workstation.state(), QAbstractSocket::UnconnectedState);
    line.workstation.connectToHost(QHostAddress::LocalHost, line.peer.place().toUShort());
    QVERIFY(line.workstation.waitForConnected());
    line.workstation.write("ZCZC 1\r\nWHOLE\r\nNNNN  ");
    QTRY_VERIFY(line.has("telegram: 001.txt 21"));
}

void TestLinesimPeer::commandsReachTheLine()
{
    Line line({QStringLiteral("--no-windows"), QStringLiteral("--keep-alive"), QStringLiteral("0")});
    QTRY_COMPARE(line.received.toHex(), QByteArray("16"));
    for (const char *command : {"grant 4", "text \\r\\n*А", "raw 16b0", "flow 12", "half-command", "flood 3"})
        line.peer.run(QString::fromUtf8(command));
    QTRY_COMPARE(line.received.toHex(), QByteArray("16"
                                                   "b2"
                                                   "0d0a0580"
                                                   "16b0"
                                                   "4031322a"
                                                   "404e3132"
                                                   "808080"));
    line.peer.run(QStringLiteral("noise 5 7"));
    QTRY_COMPARE(line.received.size(), 24);
    const QByteArray noise = line.received.right(5);
    line.peer.run(QStringLiteral("noise 5 7"));
    QTRY_COMPARE(line.received.size(), 29);
    QCOMPARE(line.received.right(5), noise);
}

void TestLinesimPeer::unknownCommandIsAnError()
{
    Line line;
    line.peer.run(QStringLiteral("dance now"));
    QVERIFY(line.has("error: no command dance now"));
}

void TestLinesimPeer::connectionIsDropped()
{
    Line line;
    QTRY_COMPARE(line.received.toHex(), QByteArray("16bf"));
    line.peer.run(QStringLiteral("drop"));
    QTRY_COMPARE(line.workstation.state(), QAbstractSocket::UnconnectedState);
    QVERIFY(line.has("closed: dropped"));
}

void TestLinesimPeer::callerCallsAgain()
{
    QTcpServer workstation;
    QVERIFY(workstation.listen(QHostAddress::LocalHost));
    QStringList lines;
    EventLog log([&lines](const QString &line) { lines << line; });
    const QString target = QStringLiteral("127.0.0.1:%1").arg(workstation.serverPort());
    Peer peer(*readPeerOptions({QStringLiteral("peer"), QStringLiteral("--connect"), target,
                                QStringLiteral("--retry"), QStringLiteral("50")}),
              log);
    QVERIFY(peer.start());
    QTRY_VERIFY(workstation.hasPendingConnections());
    delete workstation.nextPendingConnection();
    QTRY_VERIFY(workstation.hasPendingConnections());
}

void TestLinesimPeer::secondCallerIsRefused()
{
    Line line;
    QTRY_COMPARE(line.received.toHex(), QByteArray("16bf"));
    QTcpSocket second;
    second.connectToHost(QHostAddress::LocalHost, line.peer.place().toUShort());
    QTRY_VERIFY(line.has("refused: a second connection"));
    QTRY_COMPARE(second.state(), QAbstractSocket::UnconnectedState);
    QCOMPARE(line.workstation.state(), QAbstractSocket::ConnectedState);
}

void TestLinesimPeer::timedCommandRuns()
{
    Line line({QStringLiteral("--silent"), QStringLiteral("--do"), QStringLiteral("text A"),
               QStringLiteral("--after"), QStringLiteral("100:text B:C")});
    QTRY_COMPARE(line.received, QByteArray("AB:C"));
}

void TestLinesimPeer::optionsThatAreNotUnderstood_data()
{
    QTest::addColumn<QString>("options");
    row("neither end", "");
    row("both ends", "--listen 0 --connect 127.0.0.1:1");
    row("port is no number", "--listen x");
    row("port too high", "--listen 65536");
    row("host is no address", "--connect localhost:1");
    row("unknown option", "--listen 0 --dance");
    row("seed above a byte", "--listen 0 --seed 100");
    row("negative speed", "--listen 0 --speed -1");
    row("delay is no number", "--listen 0 --after x:drop");
    row("stray argument", "--listen 0 stray");
}

void TestLinesimPeer::optionsThatAreNotUnderstood()
{
    QFETCH(QString, options);
    QVERIFY(!readPeerOptions(QStringList{QStringLiteral("peer")} +
                             options.split(QLatin1Char(' '), Qt::SkipEmptyParts)));
}

void TestLinesimPeer::usageOffersWhatIsThere()
{
    QVERIFY(usage().contains(QStringLiteral("\n  peer ")));
    QCOMPARE(runSubcommand({QStringLiteral("linesim")}), 2);
    QCOMPARE(runSubcommand({QStringLiteral("linesim"), QStringLiteral("nothing")}), 2);
}

QTEST_GUILESS_MAIN(TestLinesimPeer)
#include "test_linesim_peer.moc"
