// Guaranteed transfer: any text in any pieces, and frames of our own among it.

#include "link/tlg_thread.h"
#include "tests/fuzz/fuzz.h"
#include "tests/support/desk.h"

namespace
{
constexpr int LongestFrame = 30;

class Session
{
public:
    void take(const QString &piece)
    {
        const int waited = TlgThread.frameIn.size();
        TlgThread.addToReceive(piece);
        const QString plain = TlgThread.recvBuffer.mTake();
        const QString &held = TlgThread.frameIn;
        m_given += piece;
        m_plain += plain;
        Fuzz::check(held.isEmpty() || held.startsWith(u'&'), "only what may be a frame waits");
        const bool acknowledges = held.startsWith(TlgThread.frameStartAck);
        Fuzz::check(acknowledges ? held.size() <= waited + piece.size() : held.size() <= LongestFrame + 1,
                    "what waits is bounded");
        if (!m_given.contains(TlgThread.frameStartData))
            Fuzz::check(m_plain + held == m_given, "text without frames passes as it is");
    }

    /// A frame in turn, in pieces of \a step characters, leaves nothing that grows.
    void frame(const QString &text, int step)
    {
        clear();
        TlgThread.protectedRegister = 0;
        TlgThread.txSequence = static_cast<unsigned char>((TlgThread.rxSequence + 1) % 4);
        (void)TlgThread.makeProtectedData(text);
        TlgThread.protectedRegister = 0;
        const QString made = TlgThread.frameOut;
        for (int at = 0; at < made.size(); at += step)
            TlgThread.addToReceive(made.mid(at, step));
        Fuzz::check(TlgThread.frameIn.size() <= LongestFrame + 1, "a frame does not grow");
        clear();
    }

    void clear()
    {
        TlgThread.frameIn.clear();
        (void)TlgThread.recvBuffer.mTake();
        m_given.clear();
        m_plain.clear();
    }

private:
    const Desk m_desk;
    QString m_given;
    QString m_plain;
};
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    constexpr int SafePayload = 8; // characters: each may need a change of register
    static Session session;
    session.clear();
    TlgThread.protectedMode = true;
    TlgThread.protectedRegister = 0;
    TlgThread.rxSequence = 0;
    for (const Fuzz::Step &step : Fuzz::session(data, size)) {
        session.take(step.text);
        const int sequence = step.command.digitValue();
        if (sequence >= 0 && sequence < 4)
            TlgThread.rxSequence = static_cast<unsigned char>(sequence);
        else if (step.command == u'm')
            session.frame(step.text.left(SafePayload), 1 + step.text.size() % 7);
        else if (step.command == u'o') // the mode is left and entered, as the operator does
            session.clear();
    }
    return 0;
}
