#include "tools/linesim/line/stream_cipher.h"

namespace
{
// The workstation counts a block in 8 bits: only its length modulo 256 is treated, the rest goes as it is.
constexpr int BlockLimit = 256;

void addSeed(QByteArray &key, int position, quint8 seed)
{
    key[position] = char(uchar(key[position]) + seed);
}
} // namespace

StreamCipher::StreamCipher(const QByteArray &key, quint8 workstationSeed, quint8 ownSeed)
    : m_sendingKey(key.left(LongestKey)), m_receivingKey(m_sendingKey), m_workstationSeed(workstationSeed),
      m_ownSeed(ownSeed)
{
    Q_ASSERT(!key.isEmpty());
}

QByteArray StreamCipher::fromWorkstation(const QByteArray &block)
{
    QByteArray plain = block;
    int position = m_ownSeed % m_sendingKey.size();
    addSeed(m_sendingKey, position, m_workstationSeed);
    for (int i = 0; i < block.size() % BlockLimit; ++i) {
        plain[i] = char(block[i] ^ m_sendingKey[position]);
        position = (position + 1) % m_sendingKey.size();
        feed(position, quint8(block[i]));
    }
    return plain;
}

QByteArray StreamCipher::toWorkstation(const QByteArray &block)
{
    QByteArray line = block;
    int position = m_workstationSeed % m_receivingKey.size();
    addSeed(m_receivingKey, position, m_ownSeed);
    for (int i = 0; i < block.size() % BlockLimit; ++i) {
        line[i] = char(block[i] ^ m_receivingKey[position]);
        position = (position + 1) % m_receivingKey.size();
        feed(position, quint8(line[i]));
    }
    return line;
}

void StreamCipher::feed(int position, quint8 lineByte)
{
    const auto sum = quint8(uchar(m_receivingKey[position]) + lineByte);
    m_receivingKey[position] = char((sum << 1) | (sum >> 7));
}
