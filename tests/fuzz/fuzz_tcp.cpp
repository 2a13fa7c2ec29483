// A TCP peer that says any byte in any phase of a connection, in each procedure, with and without the cipher,
// while text and commands go to it. The bytes stand in the input in hexadecimal.

#include "app/options.h"
#include "link/stream_crypt.h"
#include "link/tcp_protocol.h"
#include "link/tcp_stream.h"
#include "link/tlg_thread.h"
#include "tests/fuzz/fuzz.h"
#include "tests/support/desk.h"

#include <algorithm>
#include <memory>

namespace
{
using namespace TcpProtocol;

/// Bytes that mean the same in one read and in many: no keep-alive, no window report.
bool isPlain(const QByteArray &bytes)
{
    return std::none_of(bytes.begin(), bytes.end(), [](char byte) {
        return byte == KeepAlive || (quint8(byte) & WindowMask) == WindowReport;
    });
}

class Session
{
public:
    Session() { connectAnew(); }

    void connectAnew() { m_stream = std::make_unique<CTcpStream>(TlgThread); }

    void agreeKey()
    {
        const QByteArray key = QByteArray::fromHex("0123456789ABCDEF");
        StreamCrypt.setKey(8, reinterpret_cast<const unsigned char *>(key.constData()));
        StreamCrypt.init_crypt(0x35);
        StreamCrypt.init_decrypt(0x7A);
        m_stream->ciphered = true;
    }

    void take(const QByteArray &bytes)
    {
        const int most = m_held + bytes.size() + TlgThread.frameIn.size();
        const QByteArray answers = m_stream->take(bytes);
        for (const char answer : answers)
            Fuzz::check(answer == KeepAlive || answer == WindowAnswer, "answers");
        Fuzz::check(answers.size() <= m_held + bytes.size(), "no more answers than bytes");
        Fuzz::check(m_stream->heldCommand.size() <= CTlgThread::LongestCommand, "a command ends");
        Fuzz::check(Options.processMode != CKS || m_stream->heldCommand.isEmpty(),
                    "a centre has no commands");
        Fuzz::check(TlgThread.peerWindow >= 0 && TlgThread.peerWindow <= 30, "window");
        Fuzz::check(TlgThread.txCredit >= 0 && TlgThread.txCredit <= 99, "credit");
        const QString text = TlgThread.recvBuffer.mTake();
        Fuzz::check(text.size() <= most, "no more text than bytes");
        m_held = m_stream->heldCommand.size();
    }

    /// The same bytes in one read and one by one.
    void checkPieces(const QByteArray &bytes)
    {
        if (!isPlain(bytes))
            return;
        CTcpStream whole(TlgThread);
        (void)whole.take(bytes);
        const QString text = TlgThread.recvBuffer.mTake();
        CTcpStream pieces(TlgThread);
        for (const char byte : bytes)
            (void)pieces.take(QByteArray(1, byte));
        Fuzz::check(TlgThread.recvBuffer.mTake() == text && pieces.heldCommand == whole.heldCommand,
                    "reads of any size give the same text");
    }

    void append(const QString &text) { TlgThread.sendBuffer.mAppend(text); }

    void send()
    {
        const bool spoken = TlgThread.synCountdown > 0;
        const int window = TlgThread.peerWindow;
        const QString before = TlgThread.sendBuffer.mGet();
        const LineChunk chunk = m_stream->nextChunk();
        Fuzz::check(before.startsWith(chunk.text), "text is taken from the head");
        Fuzz::check(TlgThread.sendBuffer.mGet() == before, "what has not gone stays");
        if (chunk.text.isEmpty())
            return;
        const bool command = chunk.text.startsWith(QLatin1Char(CommandMark));
        Fuzz::check(command || chunk.text.size() <= FullChunk, "a chunk's size");
        Fuzz::check(!spoken || window > 0, "who has spoken is sent what he grants");
        Fuzz::check(command || !spoken || chunk.text.size() <= window, "no more than was granted");
        (void)m_stream->encoded(chunk);
        TlgThread.chunkSent(chunk.text);
        Fuzz::check(TlgThread.sendBuffer.mGet() == before.mid(chunk.text.size()),
                    "nothing is lost or doubled");
    }

private:
    Desk m_desk;
    std::unique_ptr<CTcpStream> m_stream;
    int m_held = 0;
};

void act(Session &session, QChar command)
{
    switch (command.unicode()) {
    case '0':
    case '1':
    case '2': Options.processMode = command.digitValue(); return session.connectAnew();
    case 'c': return session.connectAnew();
    case 'k': return session.agreeKey();
    case 'q': TlgThread.synCountdown = 0; return; // the peer has not spoken
    case 'p': (void)TlgThread.startProtectedMode(); return;
    case 'P': TlgThread.stopProtectedMode(); return;
    case 'e': return session.append(QStringLiteral("ЗЦЗЦ 001 МОСКВА 12\r\nПРИВЕТ QUEEN\r\nНННН"));
    case 'x': return session.append(QStringLiteral("@C"));
    case 'd': return session.append(QStringLiteral("@N120+@ТЕКСТ"));
    case 'l': return session.append(QStringLiteral("@L"));
    case 'w': return session.append(QStringLiteral("@12*"));
    case '@': return session.append(QStringLiteral("@"));
    default: return;
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Session session;
    const QVector<Fuzz::Step> steps = Fuzz::session(data, size);
    for (const Fuzz::Step &step : steps) {
        session.take(QByteArray::fromHex(step.text.toLatin1()));
        act(session, step.command);
        session.send();
    }
    TlgThread.stopProtectedMode();
    for (const Fuzz::Step &step : steps)
        session.checkPieces(QByteArray::fromHex(step.text.toLatin1()));
    return 0;
}
