#include "link/adapter_stream.h"

#include "app/journal_words.h"
#include "app/options.h"
#include "link/adapter_protocol.h"
#include "link/tlg_thread.h"
#include "text/mtk2.h"

#include <QMutexLocker>

using namespace AdapterProtocol;

namespace
{
bool switchedChannel()
{
    return Options.processMode == SKK;
}

QByteArray dialBytes(char first, const QString &command)
{
    QByteArray bytes{1, first};
    bytes += DialBegin;
    for (int i = 2; i < command.size(); ++i) {
        const int value = command.at(i) == QLatin1Char('+') ? DialPlus : command.at(i).digitValue();
        if (value < 0)
            break;
        bytes += static_cast<char>(value);
    }
    return bytes + DialEnd;
}
} // namespace

CAdapterStream::CAdapterStream(CTlgThread &thread, const QString &prefix, int version)
    : m_thread(thread), m_prefix(prefix), m_echoes(version >= EchoVersion)
{
}

char CAdapterStream::modeByte(int baud)
{
    if (switchedChannel())
        return ModeSwitched;
    switch (baud) {
    case 50: return Mode50;
    case 100: return Mode100;
    case 200: return Mode200;
    default: return ModeNoSpeed;
    }
}

QByteArray CAdapterStream::codesIn(const QByteArray &bytes)
{
    QByteArray codes;
    for (const char byte : bytes)
        if (static_cast<quint8>(byte) <= LastCode)
            codes += byte;
    return codes;
}

int CAdapterStream::versionFrom(const QByteArray &reply)
{
    const QByteArray date = codesIn(reply); // a status may stand between
    return date.size() == VersionCodes ? VersionBase + date[0] * 10000 + date[1] * 100 + date[2] : -1;
}

void CAdapterStream::take(const QByteArray &bytes)
{
    m_gathered.clear();
    for (const char byte : bytes)
        takeByte(static_cast<quint8>(byte));
    if (!m_gathered.isEmpty())
        m_thread.addToReceive(m_gathered);
}

void CAdapterStream::takeByte(quint8 byte)
{
    if (byte <= LastCode)
        takeCode(byte);
    else if (byte >= EchoFirst && byte <= EchoLast && m_echoes)
        takeEcho(byte & CodeMask);
    else if (byte >= StatusFirst && byte <= StatusLast)
        takeStatus(byte);
    else if (byte == LineBreak)
        takeLineBreak();
    else if (byte == NoInputSignal)
        takeNoSignal();
    else if (switchedChannel())
        (void)takeEvent(byte); // anything else means nothing
}

void CAdapterStream::takeCode(quint8 code)
{
    m_thread.lineError = m_thread.lineError & ~CTlgThread::BreakSeen;
    m_gathered += QCharFromMTK2(code, m_rxRegister);
}

void CAdapterStream::takeEcho(quint8 code)
{
    const QString text = QStringFromMTK2(code, m_echoRegister);
    {
        const QMutexLocker lock(&m_thread.pendingEcho.mutex);
        m_thread.pendingEcho.text.remove(0, text.size());
    }
    m_thread.dataSendedToLine(text);
}

void CAdapterStream::takeStatus(quint8 status)
{
    const int credit = status & StatusCredit;
    m_thread.txCredit = credit;
    if (status & StatusDrained) {
        m_thread.allSent = true;
        m_thread.pendingEcho.mSet(QString());
    } else if (!m_echoes) {
        m_thread.allSent = credit != 0;
    }
    if (credit != 0) {
        m_thread.shownWindow = credit;
        if (m_thread.lineError & CTlgThread::SignalLost) {
            m_thread.lineError = CTlgThread::LineGood;
            m_thread.setState(m_prefix + JournalWords::SignalBack);
        }
    }
    m_thread.statusPending = true;
}

// A run of breaks is shown as one sign; the next code ends it.
void CAdapterStream::takeLineBreak()
{
    if (m_thread.lineError & CTlgThread::BreakSeen)
        return;
    m_gathered += QLatin1Char('^');
    m_thread.lineError = m_thread.lineError | CTlgThread::BreakSeen;
}

void CAdapterStream::takeNoSignal()
{
    if (m_thread.lineError & CTlgThread::SignalLost)
        return;
    m_thread.lineError = m_thread.lineError | CTlgThread::SignalLost;
    m_thread.setState(m_prefix + QStringLiteral(": Нет входного сигнала "));
}

bool CAdapterStream::takeEvent(quint8 byte)
{
    switch (byte) {
    case Called: m_gathered += QStringLiteral("@C"); return true;
    case HungUp: m_gathered += QStringLiteral("@H"); return true;
    case Answered: m_gathered += QStringLiteral("@E"); return true;
    case EventS: m_gathered += QStringLiteral("@S"); return true;
    default: return false;
    }
}

void CAdapterStream::send(const std::function<bool(const QByteArray &bytes)> &write)
{
    const QMutexLocker lock(&m_thread.sendBuffer.mutex);
    if (m_thread.sendBuffer.text.isEmpty() || sendText(write) || sendCommand(write))
        return;
    // What the line cannot carry vanishes, but who waits for the end of a file must learn that the buffer is
    // empty.
    if (m_thread.sendBuffer.text.isEmpty())
        m_thread.sentEvents.add(1);
}

// The credit counts characters, not codes: the register codes that the encoder adds are free.
bool CAdapterStream::sendText(const std::function<bool(const QByteArray &bytes)> &write)
{
    const QString &waiting = m_thread.sendBuffer.text;
    const int mark = waiting.indexOf(QLatin1Char('@'));
    const int length = qMin(mark < 0 ? waiting.size() : mark, m_thread.txCredit.load());
    const QString chunk = m_thread.sendBuffer.getDataAndClear(length);
    QByteArray codes;
    MTK2FromQString(chunk, codes, m_txRegister);
    if (codes.isEmpty()) // no credit, or nothing that the code can carry
        return false;
    write(codes);
    m_thread.allSent = false;
    if (m_echoes) {
        m_thread.pendingEcho.mAppend(chunk);
        m_thread.sentEvents.add(1);
    } else {
        m_thread.dataSendedToLine(chunk);
    }
    m_thread.txCredit = 0; // nothing more before the next status
    return true;
}

bool CAdapterStream::sendCommand(const std::function<bool(const QByteArray &bytes)> &write)
{
    const int length = CTlgThread::loopCmdLength(m_thread.sendBuffer.text);
    if (length == 0)
        return false;
    const QString command = m_thread.sendBuffer.getDataAndClear(length);
    // An unknown command loses its "@" and goes out as text. "@L" and "@V" are unknown here and reach the
    // line as letters: a slip of the operator's hand must not lock the adapter.
    const QByteArray bytes = commandBytes(command);
    if (bytes.isEmpty() || !write(bytes))
        return false;
    m_thread.allSent = false;
    m_thread.dataSendedToLine(command, CTlgThread::SentCommand);
    return true;
}

/// What a command is on the wire; nothing for one that has no bytes, as all have outside of the switched
/// channel.
QByteArray CAdapterStream::commandBytes(const QString &command)
{
    if (command.size() < 2 || !switchedChannel())
        return QByteArray();
    switch (command.at(1).unicode()) {
    case 'C': return QByteArray(1, SeizeLine);
    case 'E': return QByteArray(1, Answer);
    case 'H': return QByteArray(1, HangUp);
    case 'N': return dialBytes(DialN, command);
    case 'n': return dialBytes(Dialn, command);
    default: return QByteArray(); // a flow report means nothing to an adapter
    }
}
