// An adapter that says any byte at any moment, in each procedure and both firmware generations, while text
// and commands go to it. The bytes stand in the input in hexadecimal.

#include "app/options.h"
#include "link/adapter_stream.h"
#include "link/tlg_thread.h"
#include "tests/fuzz/fuzz.h"
#include "tests/support/desk.h"
#include "text/mtk2.h"

#include <QRegularExpression>

#include <algorithm>
#include <memory>

namespace
{
int countIn(const QByteArray &bytes, quint8 first, quint8 last)
{
    return int(std::count_if(bytes.begin(), bytes.end(),
                             [=](char byte) { return quint8(byte) >= first && quint8(byte) <= last; }));
}

bool isTail(const QString &whole, const QString &tail)
{
    return whole.size() >= tail.size() && whole.right(tail.size()) == tail;
}

/// The telegraph characters of a text: without register marks, commands and an "@" alone. A number may take
/// the "@" of the next command as its end, whose letter then is text.
QString plain(QString text)
{
    static const QRegularExpression command(QStringLiteral("@(?:[CEH]|[Nn][0-9]*\\+?@?|[0-9][0-9]\\*)?"));
    text.remove(command);
    for (const char mark : {'|', '#', '&'})
        text.remove(QLatin1Char(mark));
    return text.toUpper();
}

class Session
{
public:
    Session() { connectTo(0); }

    void connectTo(int version)
    {
        m_echoes = version >= 20231111;
        m_stream = std::make_unique<CAdapterStream>(TlgThread, QStringLiteral("Порт"), version);
        m_wireRegister = 0;
        TlgThread.txCredit = 0;
    }

    void take(const QByteArray &bytes)
    {
        const QString pending = TlgThread.pendingEcho.mGet();
        TlgThread.statusPending = false;
        (void)TlgThread.sentLog.mTake();
        m_stream->take(bytes);
        const bool hasStatus = countIn(bytes, 0x20, 0x3F) > 0;
        Fuzz::check(TlgThread.statusPending == hasStatus, "a batch with a status, and no other, is answered");
        Fuzz::check(TlgThread.txCredit >= 0 && TlgThread.txCredit <= 15, "credit");
        Fuzz::check(TlgThread.lineError >= 0 && TlgThread.lineError <= 3, "errors of the line");
        Fuzz::check(isTail(pending, TlgThread.pendingEcho.mGet()), "echoes take from the head");
        checkReceived(bytes);
        checkLogged(bytes);
    }

    void append(const QString &text)
    {
        TlgThread.sendBuffer.mAppend(text);
        m_given += text;
    }

    void clear()
    {
        (void)TlgThread.sendBuffer.mTake();
        m_given.clear();
        m_wire.clear();
    }

    void send()
    {
        const int credit = TlgThread.txCredit;
        const QString before = TlgThread.sendBuffer.mGet();
        const int events = TlgThread.sentEvents;
        const int onWire = m_wire.size();
        int writes = 0;
        m_stream->send([&](const QByteArray &bytes) { return takeWritten(bytes, credit, ++writes); });
        const QString after = TlgThread.sendBuffer.mGet();
        Fuzz::check(isTail(before, after), "text is taken from the head");
        Fuzz::check(writes == 0 || TlgThread.sentEvents > events, "what has gone is reported");
        Fuzz::check(writes == 0 || !TlgThread.allSent, "what has gone is not yet sent");
        Fuzz::check(m_wire.size() == onWire || TlgThread.txCredit == 0, "one chunk uses a grant up");
        Fuzz::check(plain(m_given.chopped(after.size())) == m_wire, "nothing is lost, doubled or moved");
        if (!m_echoes && !TlgThread.protectedMode && writes > 0)
            Fuzz::check(!TlgThread.sentLog.mIsEmpty(), "an old adapter's text is logged as it goes");
    }

private:
    void checkReceived(const QByteArray &bytes)
    {
        const QString text = TlgThread.recvBuffer.mTake();
        if (TlgThread.protectedMode)
            return;
        const int codes = countIn(bytes, 0x00, 0x1F);
        const int breaks = countIn(bytes, 0x4F, 0x4F);
        const int events = countIn(bytes, 0x41, 0x45) - countIn(bytes, 0x42, 0x42);
        const int commands = Options.processMode == 1 ? events : 0;
        Fuzz::check(text.count(QLatin1Char('@')) == commands, "call events");
        Fuzz::check(text.count(QLatin1Char('^')) <= breaks, "line breaks");
        Fuzz::check(text.size() <= codes + breaks + 2 * commands, "no more text than codes");
    }

    void checkLogged(const QByteArray &bytes) const
    {
        const int echoes = m_echoes && !TlgThread.protectedMode ? countIn(bytes, 0x80, 0x9F) : 0;
        Fuzz::check(TlgThread.sentLog.mGet().size() <= echoes, "only an echo is logged");
    }

    bool takeWritten(const QByteArray &bytes, int credit, int writes)
    {
        Fuzz::check(writes == 1, "one chunk or one command in a step");
        if (countIn(bytes, 0x40, 0xFF) > 0) {
            Fuzz::check(Options.processMode == 1, "commands are of the switched channel");
            return true;
        }
        QString text;
        for (const char code : bytes)
            text += QStringFromMTK2(code, m_wireRegister);
        text = plain(text);
        Fuzz::check(!text.isEmpty() && text.size() <= credit, "no more than was granted");
        m_wire += text;
        return true;
    }

    Desk m_desk;
    std::unique_ptr<CAdapterStream> m_stream;
    bool m_echoes = false;
    int m_wireRegister = 0;
    QString m_given; ///< all that was to be sent
    QString m_wire;  ///< the characters of it that went
};

void appendText(Session &session, QChar command)
{
    switch (command.unicode()) {
    case 'e': return session.append(QStringLiteral("EASIUDRJNFCKTZLWHYPQOBGMXV"));
    case 'r': return session.append(QStringLiteral("ЗЦЗЦ 001 МОСКВА 12\r\nПРИВЕТ QUEEN\r\nНННН"));
    case 'f': return session.append(QStringLiteral("1234567890"));
    case 'x': return session.append(QStringLiteral("@C"));
    case 'h': return session.append(QStringLiteral("@H"));
    case 'E': return session.append(QStringLiteral("@E"));
    case 'd': return session.append(QStringLiteral("@N120+@"));
    case 'D': return session.append(QStringLiteral("@n9"));
    case 'l': return session.append(QStringLiteral("@L"));
    case 'w': return session.append(QStringLiteral("@12*"));
    case '@': return session.append(QStringLiteral("@"));
    default: return;
    }
}

void act(Session &session, QChar command)
{
    switch (command.unicode()) {
    case '0':
    case '1':
    case '2': Options.processMode = command.digitValue(); break;
    case 'n': session.connectTo(20231111); break;
    case 'o': session.connectTo(20231110); break;
    case 'c': session.clear(); break;
    case 'p': (void)TlgThread.startProtectedMode(); break;
    case 'P': TlgThread.stopProtectedMode(); break;
    default: appendText(session, command);
    }
    session.send();
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Session session;
    for (const Fuzz::Step &step : Fuzz::session(data, size)) {
        session.take(QByteArray::fromHex(step.text.toLatin1()));
        act(session, step.command);
    }
    return 0;
}
