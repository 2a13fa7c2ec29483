#pragma once

#include <QByteArray>

/// The line's cipher seen from the far end: it follows the two working keys of the workstation, so that it
/// reads what the workstation writes, and writes what the workstation reads.
///
/// One call is one block: the workstation begins each write and each read at the same position again and
/// adds a seed once more, so both ends must cut the stream alike. Both directions feed the workstation's
/// receiving key; its sending key changes by the seed alone.
class StreamCipher
{
public:
    static constexpr int LongestKey = 16;

    /// \a key of 1 to 16 bytes, longer ones are cut; \a workstationSeed the byte that the workstation
    /// wrote, \a ownSeed the one that it was given.
    StreamCipher(const QByteArray &key, quint8 workstationSeed, quint8 ownSeed);

    /// The plain text of one block that the workstation wrote.
    [[nodiscard]] QByteArray fromWorkstation(const QByteArray &block);
    /// The line bytes of one block that the workstation is to read.
    [[nodiscard]] QByteArray toWorkstation(const QByteArray &block);

private:
    void feed(int position, quint8 lineByte);

    QByteArray m_sendingKey;   // of the workstation
    QByteArray m_receivingKey; // of the workstation
    quint8 m_workstationSeed;
    quint8 m_ownSeed;
};
