#pragma once

#include "link/line_chunk.h"

#include <QByteArray>
#include <QString>

class CTlgThread;

/// The rules of a TCP link between the bytes of one connection and the texts of the link thread, without
/// the socket. Lives for one connection; the link thread owns it.
class CTcpStream
{
public:
    /// Begins a connection: no grant, no silence timer, the full chunk.
    explicit CTcpStream(CTlgThread &thread);

    /// Takes the bytes of one read, hands their text on, and returns the answers owed to the peer. Starts
    /// the silence timer anew. An incomplete command at the end is kept for the next read.
    [[nodiscard]] QByteArray take(const QByteArray &bytes);
    /// Holds the next chunk at the head of the send buffer: one whole command, or text up to the next command
    /// within what the peer grants. Empty if nothing may go now. It stays there until chunkSent().
    [[nodiscard]] LineChunk nextChunk();
    /// The bytes of a chunk as they go on the wire, the operator's line ends as CR and LF.
    [[nodiscard]] QByteArray encoded(const LineChunk &chunk) const;

    bool ciphered = false;  ///< both seeds are exchanged and StreamCrypt is keyed
    QByteArray heldCommand; ///< the incomplete command, with its "@"

private:
    QByteArray takeKeepAlive(QByteArray &bytes) const;
    QByteArray takeWindowReports(QByteArray &bytes);
    void takeCommandsAndText(QByteArray bytes);
    void takeCommand(const QByteArray &command);
    void takeText(QByteArray bytes);
    [[nodiscard]] int chunkLimit();

    CTlgThread &m_thread;
};
