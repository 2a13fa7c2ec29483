#include "link/stream_crypt.h"

#include <algorithm>

namespace
{
unsigned char byteOf(int value)
{
    return static_cast<unsigned char>(value & 0xFF);
}

unsigned char rotatedLeft(unsigned char value)
{
    return byteOf((value << 1) | (value >> 7));
}
} // namespace

void CStreamCrypt::setKey(unsigned char len, const unsigned char *bytes)
{
    keyLen = std::min<unsigned char>(len, static_cast<unsigned char>(key.size()));
    std::copy_n(bytes, keyLen, key.begin());
}

void CStreamCrypt::init_crypt(unsigned char seed)
{
    std::copy_n(key.begin(), keyLen, encState.begin());
    encSeed = seed;
    encFresh = 1;
}

void CStreamCrypt::init_decrypt(unsigned char seed)
{
    std::copy_n(key.begin(), keyLen, decState.begin());
    decSeed = seed;
    decFresh = 1;
}

// The far ends do the same, in this and the next function; changed here alone, any of it makes their text
// unreadable:
// - the seeds cross: the position comes from the seed of the other direction, which brings both ends to the
//   same position;
// - the fresh flags are never cleared: each call starts at the same position and adds the seed again;
// - the feedback of the sending direction goes to decState, so encState changes by the seed alone;
// - the count has 8 bits: of a longer block only its length modulo 256 is treated.
unsigned char CStreamCrypt::crypt_mess(const unsigned char *in, unsigned char count, unsigned char *out)
{
    if (keyLen == 0)
        return count;
    if (encFresh != 0) {
        encPos = byteOf(decSeed % keyLen);
        encState[encPos] = byteOf(encState[encPos] + encSeed);
    }
    for (int i = 0; i < count; ++i) {
        const unsigned char next = byteOf((encPos + 1) % keyLen);
        out[i] = byteOf(in[i] ^ encState[encPos]);
        decState[next] = rotatedLeft(byteOf(decState[next] + out[i]));
        encPos = next;
    }
    return count;
}

unsigned char CStreamCrypt::decrypt_mess(const unsigned char *in, unsigned char count, unsigned char *out)
{
    if (keyLen == 0)
        return count;
    if (decFresh != 0) {
        decPos = byteOf(encSeed % keyLen);
        decState[decPos] = byteOf(decState[decPos] + decSeed);
    }
    for (int i = 0; i < count; ++i) {
        const unsigned char next = byteOf((decPos + 1) % keyLen);
        const unsigned char ciphered = in[i]; // in and out may be the same
        out[i] = byteOf(ciphered ^ decState[decPos]);
        decState[next] = rotatedLeft(byteOf(decState[next] + ciphered));
        decPos = next;
    }
    return count;
}
