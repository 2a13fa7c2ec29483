// An adapter that says any byte at any time on a real serial port, always the same ones, while text and
// commands go to it.

#include "app/options.h"
#include "tests/link/adapter_port.h"
#include "tests/support/patience.h"

#include <QtTest>

#include <random>

class TestPortNoise : public QObject
{
    Q_OBJECT

private slots:
    void anyByteInTheLoop_data();
    void anyByteInTheLoop();
    void anyByteWhileTheLinkOpens_data();
    void anyByteWhileTheLinkOpens();
};

namespace
{
constexpr int Batches = 300;
const QString Letters = QStringLiteral("E\nA SIU\rDRJNFCKTZLWHYPQOBG"); // of the codes 01..1A

/// What the adapter says, and what it gets.
class Noise
{
public:
    Noise(AdapterLink &link, bool switched) : m_link(link), m_mode(switched ? 0x69 : 0x66) {}

    /// Any bytes, with one status at most, so that exactly one answer is due or none.
    QByteArray batch()
    {
        QByteArray bytes;
        for (int left = 1 + below(8); left > 0; --left) {
            const int byte = below(256);
            bytes += char(isStatus(byte) ? byte | 0x80 : byte);
        }
        if (below(2) == 0)
            bytes.insert(below(bytes.size() + 1), char(0x20 + below(32)));
        return bytes;
    }

    QString text()
    {
        QString text;
        for (int left = below(8); left > 0; --left)
            text += Letters.at(below(Letters.size()));
        return text;
    }

    /// Gives the link text to send; what an unused grant allows goes at once.
    [[nodiscard]] bool give(const QString &text)
    {
        m_waiting += text.size();
        useGrant();
        m_link.line.send(text);
        return allIsDone();
    }

    /// Sends a batch and waits for what is due to it: the mode byte behind a status, and text by its grant.
    [[nodiscard]] bool exchange(const QByteArray &bytes)
    {
        for (const char byte : bytes)
            if (isStatus(quint8(byte))) {
                ++m_answers;
                m_credit = byte & 0x0F;
            }
        useGrant();
        m_link.adapter.send(bytes.toHex());
        return allIsDone();
    }

    [[nodiscard]] int answers() const { return wire().count(m_mode); }
    [[nodiscard]] QByteArray codes() const
    {
        QByteArray codes = wire();
        return codes.replace(QByteArray(1, m_mode), QByteArray());
    }
    [[nodiscard]] QString asText() const
    {
        QString text;
        for (const char code : codes())
            text += code >= 1 && code <= Letters.size() ? Letters.at(code - 1) : QLatin1Char('?');
        return text;
    }
    int below(int limit) { return int(m_random() % unsigned(limit)); }

private:
    static bool isStatus(int byte) { return byte >= 0x20 && byte <= 0x3F; }
    [[nodiscard]] QByteArray wire() const { return QByteArray::fromHex(m_link.adapter.got()); }
    [[nodiscard]] bool allIsDone() const
    {
        return comesTrue([this] { return answers() == m_answers && codes().size() == m_codes; });
    }
    void useGrant()
    {
        const int going = qMin(m_credit, m_waiting);
        m_codes += going;
        m_waiting -= going;
        if (going > 0) // the rest of a grant is void
            m_credit = 0;
    }

    AdapterLink &m_link;
    char m_mode;
    int m_answers = 0;
    int m_codes = 0;
    int m_waiting = 0; // characters
    int m_credit = 0;
    std::mt19937 m_random{20260731};
};
} // namespace

void TestPortNoise::anyByteInTheLoop_data()
{
    QTest::addColumn<int>("processMode");
    QTest::addColumn<QByteArray>("version");
    for (const int mode : {0, 1, 2}) {
        QTest::addRow("procedure %d, old firmware", mode) << mode << QByteArray("170b0a");
        QTest::addRow("procedure %d, new firmware", mode) << mode << QByteArray("170b0b");
    }
}

void TestPortNoise::anyByteInTheLoop()
{
    QFETCH(int, processMode);
    QFETCH(QByteArray, version);
    AdapterLink link(processMode);
    QVERIFY(link.open(version.constData()));
    Noise noise(link, processMode == 1);
    QString given;
    for (int batch = 0; batch < Batches; ++batch) {
        const QString text = noise.text();
        given += text;
        QVERIFY2(noise.give(text) && noise.exchange(noise.batch()),
                 qPrintable(QStringLiteral("batch %1").arg(batch)));
        if (batch % 20 == 0)
            QVERIFY(link.line.second());
    }
    QVERIFY(!link.line.ended() && link.thread.connected);
    QCOMPARE(noise.asText() + link.thread.sendBuffer.mGet(), given);
}

void TestPortNoise::anyByteWhileTheLinkOpens_data()
{
    QTest::addColumn<int>("processMode");
    for (const int mode : {0, 1, 2})
        QTest::addRow("procedure %d", mode) << mode;
}

// The reply for the version may drown in it; the link comes up all the same.
void TestPortNoise::anyByteWhileTheLinkOpens()
{
    QFETCH(int, processMode);
    AdapterLink link(processMode);
    link.realWaits();
    Noise noise(link, processMode == 1);
    link.line.send(QStringLiteral("EA"));
    link.begin(true);
    for (int batch = 0; batch < 100 && link.states().size() < 3; ++batch) {
        link.adapter.send(noise.batch().toHex());
        if (link.adapter.got().endsWith("5b"))
            link.adapter.send("170b0b");
        QTest::qWait(noise.below(60));
    }
    QVERIFY(link.shows(3));
    QTRY_VERIFY(link.thread.connected);
    link.adapter.send("2f");
    QTRY_VERIFY(link.thread.sendBuffer.mIsEmpty());
    QTRY_VERIFY(link.adapter.got().contains("0103"));
}

QTEST_GUILESS_MAIN(TestPortNoise)
#include "test_port_noise.moc"
