#pragma once

#include <array>

/// Stream cipher of the TCP links: a key of 1 to 16 bytes, keyed per connection by two seeds of one byte.
/// Used by the link thread alone. Four of its properties look like slips and are part of the line's
/// protocol; the far ends rely on them. They are marked where they stand in the source.
class CStreamCrypt
{
public:
    /// Takes the first \a len bytes of \a key, 16 at most.
    void setKey(unsigned char len, const unsigned char *key);
    void init_crypt(unsigned char seed);
    void init_decrypt(unsigned char seed);
    /// Ciphers \a count bytes of \a in to \a out (which may be the same) and returns the count. Nothing is
    /// done without a key.
    unsigned char crypt_mess(const unsigned char *in, unsigned char count, unsigned char *out);
    unsigned char decrypt_mess(const unsigned char *in, unsigned char count, unsigned char *out);

    unsigned char keyLen = 0;
    std::array<unsigned char, 16> key{};
    std::array<unsigned char, 16> encState{};
    unsigned char encPos = 0;
    unsigned char encSeed = 0;
    unsigned char encFresh = 0;
    std::array<unsigned char, 16> decState{};
    unsigned char decPos = 0;
    unsigned char decSeed = 0;
    unsigned char decFresh = 0;
};

extern CStreamCrypt StreamCrypt;
