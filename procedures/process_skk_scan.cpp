// The reading of the line: at each position of the buffer a fixed list of forms is tested, so the order of
// the tests is the order of precedence.
//
// By its rule each piece of text is scanned together with all that came before. In a long connection that
// would cost more with each character, so the scan remembers how far nothing can match any more and what
// waits for its end, and takes up there; the outcome is that of a scan from the start.

#include "procedures/process_skk.h"

#include "app/state.h"
#include "procedures/telegram_files.h"
#include "text/marks.h"

namespace
{
constexpr int MostNoise = 256; ///< characters kept without a connection; cut to NoiseKept
constexpr int NoiseKept = 200;
constexpr int LongestForm = 24; ///< no form that ends by itself is longer
constexpr int EncryptionMark = 25;

const QString Question = QStringLiteral("#*");
const QString HangUp = QStringLiteral("@H");
const QString SwitchHangUp = QStringLiteral("!>ОТБОЙ");
const QString SwitchPoint = QStringLiteral("ТОЧКА");
const QString SwitchRefusal = QStringLiteral("!>СИГНАЛ");
const QString SwitchCall = QStringLiteral("!>ВЫЗОВ");
const QString SwitchAccepted = QStringLiteral("=>ВЫЗОВ ПРИНЯТ");
const QString EncryptedBegin = QStringLiteral(" КРПТ КРПТ КРПТ ");
const QString EncryptedSigns = QStringLiteral("ЮЮЮЮЮЮЮЮЮ");

/// The characters that begin a form within a connection.
const QString FirstCharacters = QStringLiteral("#@!ЗН ");
} // namespace

void CProcessSKK::processReceiveCmd(QString command)
{
    processReceive(command);
}

void CProcessSKK::processReceive(QString text)
{
    receiveBuffer.append(text);
    scan();
}

bool CProcessSKK::isAt(int i, const QString &form) const
{
    return receiveBuffer.midRef(i, form.size()) == form;
}

/// Position of \a form at \a i or behind. Many beginnings without an end would each search the whole rest:
/// once it was in vain, \a none saves the next.
int CProcessSKK::indexBehind(int i, const QString &form, CScanPosition &none) const
{
    if (none.holds(receiveBuffer) && none.in(receiveBuffer) <= i)
        return -1;
    const int at = receiveBuffer.indexOf(form, i);
    if (at < 0)
        none.reach(receiveBuffer, i);
    return at;
}

/// The scan begins at the start of the buffer.
void CProcessSKK::beginScan()
{
    m_memory = Memory();
    m_memory.end.reach(receiveBuffer, 0);
}

void CProcessSKK::scan()
{
    int i = scanStart();
    m_noEndMark.forget(); // text has been appended
    m_noEncryptedSigns.forget();
    if (i == 0)
        beginScan();
    while (i < receiveBuffer.size()) {
        const Step step = testAt(i);
        if (step == End)
            return remember(i);
        if (step == Again) {
            i = 0;
            beginScan();
        } else if (step == NextTest) {
            ++i;
        }
    }
    if (State.callDirection == NoDirection && receiveBuffer.size() > MostNoise)
        receiveBuffer.keepTail(NoiseKept);
    remember(receiveBuffer.size());
}

CProcessSKK::Step CProcessSKK::testAt(int i)
{
    static constexpr Step (CProcessSKK::*tests[])(int) = {
        &CProcessSKK::testQuestion, &CProcessSKK::testHangUp, &CProcessSKK::testSwitchSignals,
        &CProcessSKK::testSetup, &CProcessSKK::testConnection};
    if (State.callDirection != NoDirection && State.AutoModeWaitAA == NoAA &&
        !FirstCharacters.contains(receiveBuffer.at(i)))
        return NextTest;
    for (const auto test : tests) {
        const Step step = (this->*test)(i);
        if (step != NextTest)
            return step;
    }
    return NextTest;
}

void CProcessSKK::remember(int from)
{
    // What was cut out without a new start may have joined text into a form in front of the present position.
    if (!m_memory.end.holds(receiveBuffer))
        return;
    m_memory.end.reach(receiveBuffer, receiveBuffer.size());
    m_memory.from = from;
    m_memory.ignoreAO = State.ignoreAO;
    m_memory.callDirection = State.callDirection;
    m_memory.autoModeState = State.AutoModeState;
    m_memory.waitAA = State.AutoModeWaitAA;
    m_memory.tcpMode = Options.TcpMode;
}

/// Where the scan must begin, now that text has been appended.
int CProcessSKK::scanStart() const
{
    const Memory &old = m_memory;
    const bool same = old.end.holds(receiveBuffer) && old.ignoreAO == State.ignoreAO &&
                      old.callDirection == State.callDirection && old.autoModeState == State.AutoModeState &&
                      old.waitAA == State.AutoModeWaitAA && old.tcpMode == Options.TcpMode;
    // Outside a connection the buffer is short; an awaited answerback may be read anywhere.
    if (!same || State.callDirection == NoDirection || State.AutoModeWaitAA != NoAA)
        return 0;
    const int known = old.end.in(receiveBuffer);
    int start = qMax(0, qMin(old.from, known - LongestForm));
    if (old.start >= 0 && receiveBuffer.indexOf(Marks::End, qMax(0, known - Marks::EndLength)) >= 0)
        start = qMin(start, old.start);
    if (old.crypt >= 0 && receiveBuffer.indexOf(EncryptedSigns, qMax(0, known - EncryptedSigns.size())) >= 0)
        start = qMin(start, old.crypt);
    return start;
}

/// "#*": the far end asks who we are.
CProcessSKK::Step CProcessSKK::testQuestion(int i)
{
    if (State.ignoreAO || !isAt(i, Question))
        return NextTest;
    if (Options.CKS_Type == CentreOther && State.AutoModeWaitAA == LongCentreAA &&
        State.AutoModeState == AutoWaitLastAA)
        takeCentreAnswerbackAtQuestion(i);
    receiveBuffer.removeHead(i + 2);
    const int pause =
        Options.SKKTiming[SubscriberTiming].Pause_Before_Send_AA; // of this row, whichever is in force
    if (State.AutoModeState == AutoGotAA || State.AutoModeState == AutoDelivered)
        State.AutoModeWaitTimer = OnNextTick; // the pause is cut short
    else if (pause != 0)
        State.sendAOCountdown = pause;
    else
        sendAO();
    return Again;
}

CProcessSKK::Step CProcessSKK::testHangUp(int i)
{
    if (!isAt(i, HangUp))
        return NextTest;
    lastCmdIn = 'H';
    secondsSinceCmdIn = 0;
    if (State.connectionActive)
        noteEvent(QStringLiteral("Входящий отбой"));
    forgetUnsent();
    clearSKKConnection();
    receiveBuffer.removeHead(i + 2);
    return Again;
}

/// The signals of a network switch in text form, on TCP links.
CProcessSKK::Step CProcessSKK::testSwitchSignals(int i)
{
    if (!Options.TcpMode)
        return NextTest;
    if (isAt(i, SwitchHangUp))
        return takeLine(i, [this](int) {
            forgetUnsent();
            clearSKKConnection();
        });
    if (State.callDirection != NoDirection)
        return NextTest;
    if (isAt(i, SwitchPoint))
        return takeLine(i, [this, i](int) { takeChannelName(i); });
    if (isAt(i, SwitchRefusal))
        return takeLine(i, [this, i](int end) { takeSwitchRefusal(receiveBuffer.mid(i, end - i)); });
    if (isAt(i, SwitchCall))
        return takeLine(i, [this](int) { takeIncomingCall(); });
    if (isAt(i, SwitchAccepted))
        return takeLine(i, [this](int) { emit updateTlgModeInterface(); });
    return NextTest;
}

/// Runs \a take once the line that begins at \a i is whole, and consumes it up to its line feed.
template <class Take> CProcessSKK::Step CProcessSKK::takeLine(int i, Take take)
{
    const int end = receiveBuffer.indexOf(QLatin1Char('\n'), i);
    if (end < 0)
        return End; // the rest waits
    take(end);
    receiveBuffer.removeHead(end);
    return Again;
}

void CProcessSKK::takeChannelName(int i)
{
    constexpr int NameLength = 9;
    const QString channel = QStringLiteral("КАНАЛ: ");
    const int at = receiveBuffer.indexOf(channel, i);
    const QString name = at < 0 ? QString() : receiveBuffer.mid(at + channel.size(), NameLength);
    if (name.size() > 2 && name.at(2) == QLatin1Char('-'))
        State.setChannelName(name);
}

void CProcessSKK::takeSwitchRefusal(const QString &line)
{
    struct Row {
        const char *word;
        int result;
    };
    static const Row rows[] = {
        {"OCC", Busy}, {"DER", SubscriberFault}, {"NC", NoCircuit}, {"NP", WrongNumber}};
    State.callNumberResult = NoResult;
    for (const Row &row : rows)
        if (State.callNumberResult == NoResult && line.contains(QLatin1String(row.word)))
            State.callNumberResult = row.result;
    if (State.callNumberResult != NoResult && State.AutoModeState != AutoIdle)
        clearAutoMode();
}

void CProcessSKK::takeIncomingCall()
{
    setCallDirection(Incoming);
    emit updateTlgModeInterface();
    sendCommand(QStringLiteral("@E"), 'E');
    announce(Options.soundSKKInConnectFile, Options.soundSKKInConnectType);
}

CProcessSKK::Step CProcessSKK::testConnection(int i)
{
    if (State.callDirection == NoDirection)
        return NextTest;
    if (State.AutoModeState > AutoCalling && State.AutoModeWaitAA != NoAA && receiveBuffer.size() - i > 2) {
        const int found = processAutoModeWaitAA(i);
        if (found < 0)
            return End;
        if (found > 0)
            return Repeat;
    }
    if (isAt(i, Marks::Start)) {
        const int end = indexBehind(i, Marks::End, m_noEndMark);
        if (end >= 0) {
            takeTelegram(i, end + Marks::EndLength);
            return Again;
        }
        if (m_memory.start < 0)
            m_memory.start = i;
    }
    if (isAt(i, EncryptedBegin)) {
        if (indexBehind(i, EncryptedSigns, m_noEncryptedSigns) >= 0) {
            setIgnoreAO(true); // "#*" within encrypted text is no question
            receiveBuffer.removeHead(i + EncryptionMark);
            return Again;
        }
        if (m_memory.crypt < 0)
            m_memory.crypt = i;
    }
    if (State.ignoreAO && isAt(i, Marks::End)) {
        setIgnoreAO(false);
        receiveBuffer.removeHead(i + Marks::EndLength);
        return Again;
    }
    return NextTest;
}
