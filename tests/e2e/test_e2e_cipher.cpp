#include "tests/e2e/far_end.h"
#include "tests/e2e/station.h"
#include "tests/support/row.h"

#include <QtTest>

// The key agreement, and the very bytes that a ciphered link carries. What the program sends by itself with a
// centre is the receipt request "|ЗЗ ", in the line's code 7C 87 87 20.
class TestE2eCipher : public QObject
{
    Q_OBJECT

private slots:
    void receiptRequestIsCipheredByteForByte_data();
    void receiptRequestIsCipheredByteForByte();
    void silentPeerLeavesTheLinkPlain();
    void keyOfOneByteLeavesTheLinkPlain();
    void otherProceduresStayPlain();
};

namespace
{
const QByteArray request = QByteArray::fromHex("7c878720");

/// What the far end has taken as text, one piece after another.
QList<QByteArray> pieces(const FarEnd &farEnd)
{
    QList<QByteArray> result;
    for (const QString &line : farEnd.lines.filter(QRegularExpression(QStringLiteral("^raw: "))))
        result << QByteArray::fromHex(line.mid(5).toLatin1());
    return result;
}

/// The workstation's seed, as the far end tells it.
quint8 seedOf(const FarEnd &farEnd)
{
    const QString line = farEnd.lines.filter(QStringLiteral("cipher: on")).value(0);
    return quint8(line.section(QLatin1Char(' '), -1).toUInt(nullptr, 16));
}
} // namespace

void TestE2eCipher::receiptRequestIsCipheredByteForByte_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("peerSeed");
    // Plain byte XOR key byte, written out; the byte under the workstation's seed is left as 00 here.
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("under"); // the key byte that the seed is added to
    // From position 0: 7C^(11+s), 87^22, 87^33, 20^44.
    row("from the first key byte", "1122334455", "00", QByteArray("00a5b464"), 0x11);
    // From position 7 mod 5 = 2: 7C^(33+s), 87^44, 87^55, 20^11.
    row("from the third key byte", "1122334455", "07", QByteArray("00c3d231"), 0x33);
    // From position 1 of 2 the seeded byte comes again as the third: both are 22+s.
    row("shortest key", "1122", "01", QByteArray("00960031"), 0x22);
    // 20 bytes, the first 16 count: position FF mod 16 = 15: 7C^(1F+s), 87^10, 87^11, 20^12.
    row("key cut at sixteen bytes", "101112131415161718191a1b1c1d1e1f20212223", "ff", QByteArray("00979632"),
        0x1F);
}

void TestE2eCipher::receiptRequestIsCipheredByteForByte()
{
    QFETCH(QString, key);
    QFETCH(QString, peerSeed);
    QFETCH(QByteArray, line);
    QFETCH(int, under);
    FarEnd farEnd({QStringLiteral("--key"), key, QStringLiteral("--seed"), peerSeed,
                   QStringLiteral("--keep-alive"), QStringLiteral("0")});
    Station station;
    station.useKey(key);
    station.set(QStringLiteral("CONNECT/TimeOut"), QStringLiteral("600"));
    station.callTo(farEnd.port);
    station.fakeTime(QStringLiteral("@2026-07-31 12:00:00 x8"));
    station.start();
    // A block begins at the same position each time, with the seed added once more.
    QTRY_VERIFY_WITH_TIMEOUT(pieces(farEnd).size() >= 2, 60000);
    const quint8 seed = seedOf(farEnd);
    for (int block = 0; block < 2; ++block) {
        const quint8 seeded = quint8(under + (block + 1) * seed);
        QByteArray expected = QByteArray::fromHex(line);
        expected[0] = char(0x7C ^ seeded);
        if (key.size() == 4)
            expected[2] = char(0x87 ^ seeded);
        QCOMPARE(pieces(farEnd)[block].toHex(), expected.toHex());
    }
    QCOMPARE(farEnd.violations(), QStringList());
}

// The seed byte has gone, no answer came, and what follows is plain.
void TestE2eCipher::silentPeerLeavesTheLinkPlain()
{
    FarEnd farEnd({QStringLiteral("--silent")});
    Station station;
    station.useKey(QStringLiteral("1122"));
    station.callTo(farEnd.port);
    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.bytes().size(), 5, PatienceMs);
    QCOMPARE(farEnd.bytes().mid(1).toHex(), request.toHex());
}

void TestE2eCipher::keyOfOneByteLeavesTheLinkPlain()
{
    FarEnd farEnd({QStringLiteral("--silent")});
    Station station;
    station.useKey(QStringLiteral("11"));
    station.callTo(farEnd.port);
    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.bytes().toHex(), request.toHex(), PatienceMs);
}

void TestE2eCipher::otherProceduresStayPlain()
{
    FarEnd farEnd({QStringLiteral("--silent")});
    Station station;
    station.useKey(QStringLiteral("1122"));
    station.set(QStringLiteral("CONNECT/processMode"), QStringLiteral("2"));
    station.callTo(farEnd.port);
    station.write(QStringLiteral("out/20200101u001.200101_000000"), "|ZZ ");
    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.bytes(), QByteArray("|ZZ "), PatienceMs);
}

QTEST_GUILESS_MAIN(TestE2eCipher)
#include "test_e2e_cipher.moc"
