// The key agreement of the TCP links, with the exact bytes on the wire.

#include "app/options.h"
#include "tests/link/line.h"
#include "tests/support/desk.h"
#include "tests/support/patience.h"
#include "tests/support/row.h"

#include <QTcpServer>
#include <QtTest>

class TestTcpKey : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void bothRolesExchangeSeedsAndCipher_data();
    void bothRolesExchangeSeedsAndCipher();
    void linkStaysPlain_data();
    void linkStaysPlain();
    void withoutAnswerTheSeedIsGoneAndTheLinkPlain();
    void textOfAnEarlyLossIsNotReadWithKey();

private:
    [[nodiscard]] std::unique_ptr<Peer> join(Line &line, bool asServer);

    std::unique_ptr<Desk> m_desk;
    std::unique_ptr<QTcpServer> m_server;
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}
} // namespace

void TestTcpKey::init()
{
    m_desk = std::make_unique<Desk>();
    Options.processMode = 0;
    m_server = std::make_unique<QTcpServer>();
    QVERIFY(m_server->listen(QHostAddress::LocalHost));
}

// The peer of a link in the given role, connected.
std::unique_ptr<Peer> TestTcpKey::join(Line &line, bool asServer)
{
    if (asServer) {
        const quint16 port = freePort();
        line.listenOnce(port);
        if (!comesTrue([&] { return !line.states().isEmpty(); }))
            return nullptr;
        return std::make_unique<Peer>(port);
    }
    line.connectOnce(m_server->serverPort());
    if (!comesTrue([&] { return m_server->hasPendingConnections(); }))
        return nullptr;
    QTcpSocket *socket = m_server->nextPendingConnection();
    socket->setParent(nullptr);
    return std::make_unique<Peer>(socket);
}

void TestTcpKey::bothRolesExchangeSeedsAndCipher_data()
{
    QTest::addColumn<bool>("asServer");
    row("client", false);
    row("server", true);
}

void TestTcpKey::bothRolesExchangeSeedsAndCipher()
{
    QFETCH(bool, asServer);
    Options.key = qs("01 02 03");
    Line line;
    const auto peer = join(line, asServer);
    QVERIFY(peer);
    peer->send("\x04"); // neither end waits for the other
    QTRY_COMPARE(peer->got.size(), 1);
    const auto seed = static_cast<unsigned char>(peer->got[0]);
    peer->got.clear();

    // To the line, peer's seed 4: position 4 mod 3 = 1 holds 02 + seed, then come 03, 01 and again 02 + seed.
    line.send(qs("АБВГ"));
    const auto first = static_cast<unsigned char>(2 + seed);
    const QByteArray wire = QByteArray(1, char(0x80 ^ first)) + '\x82' + '\x83' + char(0x83 ^ first);
    QTRY_COMPARE(peer->got, wire);

    // From the line: position seed mod 3, where the key and what was fed back on sending stand: after the
    // wire bytes w0..w3 from position 1, place 2 holds rot(03+w0), 0 rot(01+w1), 1 rot(02+w2), 2 again.
    const auto fed = [&](unsigned char held, int i) {
        const auto sum = static_cast<unsigned char>(held + static_cast<unsigned char>(wire[i]));
        return static_cast<unsigned char>((sum << 1) | (sum >> 7));
    };
    const unsigned char state[] = {fed(0x01, 1), fed(0x02, 2), fed(fed(0x03, 0), 3)};
    const auto used = static_cast<unsigned char>(state[seed % 3] + 4);
    // A letter whose ciphered byte is neither keep-alive nor window.
    QChar letter(u'A');
    const auto taken = [&] { return static_cast<unsigned char>(letter.unicode() ^ used); };
    while (taken() == 0x16 || (taken() & 0xF0) == 0xB0)
        letter = QChar(letter.unicode() + 16);
    peer->send(QByteArray(1, static_cast<char>(taken())));
    QTRY_COMPARE(line.thread.recvBuffer.mGet(), QString(letter));
}

void TestTcpKey::linkStaysPlain_data()
{
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<int>("mode");
    row("centre", QStringList({QString(), qs("A1"), qs("ключ")}), 0); // none, one byte, no digits
    row("switched channels", QStringList(qs("010203")), 1);
    row("direct", QStringList(qs("010203")), 2);
}

void TestTcpKey::linkStaysPlain()
{
    QFETCH(QStringList, keys);
    QFETCH(int, mode);
    Options.processMode = mode;
    std::vector<std::unique_ptr<Line>> lines;
    std::vector<std::unique_ptr<Peer>> peers;
    for (const QString &key : keys) {
        Options.key = key;
        lines.push_back(std::make_unique<Line>());
        lines.back()->send(qs("АБВ"));
        peers.push_back(join(*lines.back(), false));
        QVERIFY(peers.back());
    }
    for (size_t i = 0; i < lines.size(); ++i) {
        QTRY_COMPARE(peers[i]->got, QByteArray("\x80\x81\x82"));
        peers[i]->send("\x83");
        QTRY_COMPARE(lines[i]->thread.recvBuffer.mGet(), qs("Г"));
    }
    for (const auto &line : lines)
        line->thread.stopThread();
}

void TestTcpKey::withoutAnswerTheSeedIsGoneAndTheLinkPlain()
{
    Options.key = qs("0102030405060708090A0B0C0D0E0F1011121314");
    Line line;
    line.send(qs("АБВ"));
    const auto peer = join(line, false);
    QVERIFY(peer);
    QTRY_COMPARE(peer->got.size(), 4);
    QCOMPARE(peer->got.mid(1), QByteArray("\x80\x81\x82"));
    peer->send("\x41"); // too late for a seed
    QTRY_COMPARE(line.thread.recvBuffer.mGet(), qs("A"));
}

void TestTcpKey::textOfAnEarlyLossIsNotReadWithKey()
{
    Options.key = qs("0102");
    Line line;
    const auto peer = join(line, false);
    QVERIFY(peer);
    peer->send("\x04\x41");
    peer->socket->disconnectFromHost();
    QTRY_VERIFY(line.ended());
    QVERIFY(line.thread.recvBuffer.mIsEmpty());
    QVERIFY(line.lastState().contains(qs("Сброшено соединение")));
}

QTEST_GUILESS_MAIN(TestTcpKey)
#include "test_tcp_key.moc"
