// The expected bytes are worked out by hand, step by step, from the rules of the cipher.

#include "link/stream_crypt.h"

#include <QtTest>

class TestStreamCrypt : public QObject
{
    Q_OBJECT

private slots:
    void keyOfTwentyBytesUsesTheFirstSixteen();
    void cipheringTakesPositionFromTheOtherSeed();
    void cipheringFeedsTheReceivingState();
    void everyCallStartsAnewWithTheSeedAddedAgain();
    void decipheringFollowsTheReceivedBytes();
    void sumsWrapAndBitsRotate();
    void cipherDoesNotTurnBackIntoPlainText();
    void blockMayBeTreatedInPlace();
    void emptyBlockStillAddsTheSeed();
    void nothingIsDoneWithoutKey();
    void initOfOneDirectionLeavesTheOther();
};

namespace
{
using Bytes = std::vector<unsigned char>;

CStreamCrypt keyed(const Bytes &key, unsigned char encSeed, unsigned char decSeed)
{
    CStreamCrypt crypt;
    crypt.setKey(static_cast<unsigned char>(key.size()), key.data());
    crypt.init_crypt(encSeed);
    crypt.init_decrypt(decSeed);
    return crypt;
}

Bytes ciphered(CStreamCrypt &crypt, const Bytes &in)
{
    Bytes out(in.size());
    const auto count = static_cast<unsigned char>(in.size());
    return crypt.crypt_mess(in.data(), count, out.data()) == count ? out : Bytes();
}

Bytes deciphered(CStreamCrypt &crypt, const Bytes &in)
{
    Bytes out(in.size());
    const auto count = static_cast<unsigned char>(in.size());
    return crypt.decrypt_mess(in.data(), count, out.data()) == count ? out : Bytes();
}
} // namespace

void TestStreamCrypt::keyOfTwentyBytesUsesTheFirstSixteen()
{
    Bytes key(20);
    for (int i = 0; i < 20; ++i)
        key[static_cast<size_t>(i)] = static_cast<unsigned char>(0x40 + i);
    CStreamCrypt crypt;
    crypt.setKey(20, key.data());
    QCOMPARE(int(crypt.keyLen), 16);
    QVERIFY(std::equal(crypt.key.begin(), crypt.key.end(), key.begin()));
    crypt.init_crypt(0);
    crypt.init_decrypt(16); // 16 modulo 16 is position 0
    QCOMPARE(ciphered(crypt, {0x00}), Bytes({0x40}));
}

void TestStreamCrypt::cipheringTakesPositionFromTheOtherSeed()
{
    // Position 4 mod 3 = 1; there 02 + 05 = 07. 41^07, then 42^03, then 43^01.
    CStreamCrypt crypt = keyed({0x01, 0x02, 0x03}, 5, 4);
    QCOMPARE(ciphered(crypt, {0x41, 0x42, 0x43}), Bytes({0x46, 0x41, 0x42}));
    QCOMPARE(int(crypt.encPos), 1);
}

void TestStreamCrypt::cipheringFeedsTheReceivingState()
{
    // 03+46=49 rotates to 92, 01+41=42 to 84, 02+42=44 to 88; the sending state has the seed alone.
    CStreamCrypt crypt = keyed({0x01, 0x02, 0x03}, 5, 4);
    ciphered(crypt, {0x41, 0x42, 0x43});
    QCOMPARE(Bytes(crypt.decState.begin(), crypt.decState.begin() + 3), Bytes({0x84, 0x88, 0x92}));
    QCOMPARE(Bytes(crypt.encState.begin(), crypt.encState.begin() + 3), Bytes({0x01, 0x07, 0x03}));
}

void TestStreamCrypt::everyCallStartsAnewWithTheSeedAddedAgain()
{
    CStreamCrypt crypt = keyed({0x01, 0x02, 0x03}, 5, 4);
    QCOMPARE(ciphered(crypt, {0x41}), Bytes({0x46}));             // 41^07
    QCOMPARE(ciphered(crypt, {0x41}), Bytes({0x4D}));             // 41^0C
    QCOMPARE(ciphered(crypt, {0x41, 0x42}), Bytes({0x50, 0x41})); // 41^11, 42^03
}

void TestStreamCrypt::decipheringFollowsTheReceivedBytes()
{
    // Position 5 mod 3 = 2; there 03+04 = 07. 46^07 = 41; place 0 becomes 01+46=47 rotated, 8E; 41^8E = CF;
    // place 1 becomes 02+41=43 rotated, 86; 42^86 = C4; place 2 becomes 07+42=49 rotated, 92.
    CStreamCrypt crypt = keyed({0x01, 0x02, 0x03}, 5, 4);
    QCOMPARE(deciphered(crypt, {0x46, 0x41, 0x42}), Bytes({0x41, 0xCF, 0xC4}));
    QCOMPARE(Bytes(crypt.decState.begin(), crypt.decState.begin() + 3), Bytes({0x8E, 0x86, 0x92}));
    // Again from position 2: 92+04 = 96.
    QCOMPARE(deciphered(crypt, {0x96}), Bytes({0x00}));
}

void TestStreamCrypt::sumsWrapAndBitsRotate()
{
    // Position 0; F0+20 wraps to 10. 00^10 = 10; place 1 becomes F1+10 = 01 (wrapped), rotated 02.
    CStreamCrypt crypt = keyed({0xF0, 0xF1}, 0, 0x20);
    QCOMPARE(deciphered(crypt, {0x10}), Bytes({0x00}));
    QCOMPARE(int(crypt.decState[1]), 0x02);
    // Position 0; F0+20 = 10. 80^10 = 90; place 1 becomes F1+90 = 81 (wrapped), rotated 03.
    CStreamCrypt sender = keyed({0xF0, 0xF1}, 0x20, 0);
    QCOMPARE(ciphered(sender, {0x80}), Bytes({0x90}));
    QCOMPARE(int(sender.decState[1]), 0x03);
}

void TestStreamCrypt::cipherDoesNotTurnBackIntoPlainText()
{
    // The far end of the first case has the seeds the other way round. Only the first byte comes back.
    CStreamCrypt far = keyed({0x01, 0x02, 0x03}, 4, 5);
    // Position 4 mod 3 = 1; there 02+05 = 07. 46^07 = 41; place 2: 03+46=49, 92; 41^92 = D3.
    QCOMPARE(deciphered(far, {0x46, 0x41}), Bytes({0x41, 0xD3}));
}

void TestStreamCrypt::blockMayBeTreatedInPlace()
{
    CStreamCrypt crypt = keyed({0x01, 0x02, 0x03}, 5, 4);
    Bytes block = {0x41, 0x42, 0x43};
    crypt.crypt_mess(block.data(), 3, block.data());
    QCOMPARE(block, Bytes({0x46, 0x41, 0x42}));
    CStreamCrypt other = keyed({0x01, 0x02, 0x03}, 5, 4);
    other.decrypt_mess(block.data(), 3, block.data());
    QCOMPARE(block, Bytes({0x41, 0xCF, 0xC4}));
}

void TestStreamCrypt::emptyBlockStillAddsTheSeed()
{
    // What becomes of a block of 256 bytes, whose low byte of length is 0.
    CStreamCrypt crypt = keyed({0x01, 0x02, 0x03}, 5, 4);
    unsigned char untouched = 0x55;
    QCOMPARE(int(crypt.crypt_mess(&untouched, 0, &untouched)), 0);
    QCOMPARE(int(untouched), 0x55);
    QCOMPARE(int(crypt.encState[1]), 0x07);
}

void TestStreamCrypt::nothingIsDoneWithoutKey()
{
    CStreamCrypt crypt;
    crypt.init_crypt(1);
    crypt.init_decrypt(2);
    unsigned char byte = 0x41;
    QCOMPARE(int(crypt.crypt_mess(&byte, 1, &byte)), 1);
    QCOMPARE(int(crypt.decrypt_mess(&byte, 1, &byte)), 1);
    QCOMPARE(int(byte), 0x41);
}

void TestStreamCrypt::initOfOneDirectionLeavesTheOther()
{
    CStreamCrypt crypt = keyed({0x01, 0x02}, 5, 4);
    QCOMPARE(int(crypt.encFresh), 1);
    QCOMPARE(int(crypt.decFresh), 1);
    deciphered(crypt, {0x30, 0x31});
    const auto former = crypt.decState;
    crypt.init_crypt(9);
    QCOMPARE(int(crypt.encSeed), 9);
    QCOMPARE(int(crypt.decSeed), 4);
    QVERIFY(crypt.decState == former);
}

QTEST_GUILESS_MAIN(TestStreamCrypt)
#include "test_stream_crypt.moc"
