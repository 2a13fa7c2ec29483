#include "link/tcp_stream.h"

#include "app/options.h"
#include "link/stream_crypt.h"
#include "link/tcp_protocol.h"
#include "link/tlg_thread.h"
#include "text/encodings.h"

#include <QMutexLocker>

#include <algorithm>

using namespace TcpProtocol;

namespace
{
bool centreMode()
{
    return Options.processMode == CKS;
}

/// One character per byte, zero bytes among them.
QString latin1(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.constData(), bytes.size());
}

bool isFlowReport(const QByteArray &command)
{
    const auto digit = [&](int i) { return command[i] >= '0' && command[i] <= '9'; };
    return command.size() == FlowReportLength && digit(1) && digit(2) && command[3] == '*';
}
} // namespace

CTcpStream::CTcpStream(CTlgThread &thread) : m_thread(thread)
{
    m_thread.synCountdown = 0;
    m_thread.peerWindow = 0; // a grant holds for the connection that it came on
    m_thread.txCredit = FullChunk;
}

QByteArray CTcpStream::take(const QByteArray &bytes)
{
    QByteArray data = heldCommand + bytes;
    heldCommand.clear();
    m_thread.synCountdown = m_thread.silenceLimit();
    QByteArray answers = takeKeepAlive(data);
    answers += takeWindowReports(data);
    if (!centreMode()) {
        takeCommandsAndText(data);
        return answers;
    }
    // Keep-alive and window bytes are gone by now, so a cipher byte of such a value is lost: so the line has
    // it.
    if (ciphered) {
        auto *raw = reinterpret_cast<unsigned char *>(data.data());
        StreamCrypt.decrypt_mess(raw, static_cast<unsigned char>(data.size()), raw);
    }
    takeText(data);
    return answers;
}

QByteArray CTcpStream::takeKeepAlive(QByteArray &bytes) const
{
    if (!bytes.contains(KeepAlive))
        return QByteArray();
    bytes.replace(QByteArray(1, KeepAlive), QByteArray());
    return QByteArray(1, KeepAlive);
}

// The byte after a window report is never looked at, so of two reports in a row the second stays in the
// data. The far ends know it.
QByteArray CTcpStream::takeWindowReports(QByteArray &bytes)
{
    QByteArray answers, rest;
    rest.reserve(bytes.size());
    for (int i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<quint8>(bytes[i]);
        if ((byte & WindowMask) != WindowReport) {
            rest += bytes[i];
            continue;
        }
        answers += WindowAnswer;
        m_thread.peerWindow = (byte & WindowValue) * 2;
        m_thread.shownWindow = m_thread.peerWindow;
        if (++i < bytes.size())
            rest += bytes[i];
    }
    bytes = rest;
    return answers;
}

void CTcpStream::takeCommandsAndText(QByteArray bytes)
{
    int done = 0;
    for (int mark = bytes.indexOf(CommandMark); mark >= 0; mark = bytes.indexOf(CommandMark, done)) {
        takeText(bytes.mid(done, mark - done));
        // A command is all ASCII, so a look at the longest possible one, byte by byte, is enough.
        const int length = CTlgThread::testCmdLength(latin1(bytes.mid(mark, CTlgThread::LongestCommand + 1)));
        if (length == 0) {
            heldCommand = bytes.mid(mark);
            return;
        }
        takeCommand(bytes.mid(mark, length));
        done = mark + length;
    }
    takeText(bytes.mid(done));
}

void CTcpStream::takeCommand(const QByteArray &command)
{
    if (isFlowReport(command)) {
        m_thread.txCredit = (command[1] - '0') * 10 + (command[2] - '0');
        m_thread.shownWindow = m_thread.peerWindow;
        return;
    }
    m_thread.txCredit = FullChunk;
    m_thread.addToReceive(latin1(command));
}

void CTcpStream::takeText(QByteArray bytes)
{
    if (bytes.isEmpty())
        return;
    QString text;
    QStringFromCORVA(bytes, text);
    m_thread.addToReceive(text);
}

// Once the peer has spoken, every chunk needs a fresh window report. The limit is used up even if the head
// of the buffer then turns out to be an incomplete command.
int CTcpStream::chunkLimit()
{
    int limit = FullChunk;
    if (m_thread.synCountdown > 0) {
        limit = m_thread.peerWindow;
        if (limit == 0)
            return 0;
        m_thread.peerWindow = 0;
    }
    if (m_thread.txCredit != FullChunk)
        limit = std::min(limit, m_thread.txCredit.exchange(FullChunk) / 2);
    return limit;
}

LineChunk CTcpStream::nextChunk()
{
    const bool granted = m_thread.synCountdown == 0 || m_thread.peerWindow > 0;
    if (!granted)
        return {};
    const int limit = chunkLimit();
    const QMutexLocker lock(&m_thread.sendBuffer.mutex);
    const QString &waiting = m_thread.sendBuffer.text;
    const int mark = waiting.indexOf(QLatin1Char(CommandMark));
    if (mark == 0)
        return m_thread.sendBuffer.holdHead(CTlgThread::loopCmdLength(waiting));
    return m_thread.sendBuffer.holdHead(mark < 0 ? limit : std::min(limit, mark));
}

QByteArray CTcpStream::encoded(const LineChunk &chunk) const
{
    QString text = chunk.withLineEnds();
    QByteArray bytes;
    CORVAFromQString(text, bytes);
    if (ciphered && centreMode()) {
        auto *raw = reinterpret_cast<unsigned char *>(bytes.data());
        StreamCrypt.crypt_mess(raw, static_cast<unsigned char>(bytes.size()), raw);
    }
    return bytes;
}
