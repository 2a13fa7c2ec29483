// The reading of the line while there is no connection: calls, the network's go-ahead and its results.

#include "procedures/process_skk.h"

#include "app/state.h"
#include "procedures/telegram_files.h"
#include "procedures/utils_skk.h"

namespace
{
const QString GoAheadText = QStringLiteral("\r\n&GA #");
const QString AnsweredText = QStringLiteral("&DF");
const QString QuestionText = QStringLiteral("#*");

struct Result {
    const char *text;        ///< from the network; null for what it does not say
    const char *description; ///< for the operator
};
const Result results[] = {
    {nullptr, ""},
    {nullptr, ""},
    {"\r\n&OCC", "Абонент занят"},
    {"\r\n&DER", "Повреждение абонента"},
    {"\r\n&NC&", "Нет цепи"},
    {"\r\n&NP&", "Неправильный набор"},
    {"\r\n&ABS", "Абонент временно не работает"},
    {"\r\n&CI&", "Повреждение на сети"},
    {"\r\n&NA&", "Связь с абонентом запрещена"},
    {"\r\n&INF", ""},
    {"\r\n&NCH", ""},
    {"\r\n&BK\r\n", "Соединение не установлено"},
    {nullptr, "Таймаут"},
};
constexpr int ResultCount = int(sizeof results / sizeof *results);

/// Position behind "#" with two digits, at or behind \a from; -1 if there is none.
int behindTwoDigits(const QString &text, int from)
{
    const auto isDigit = [&text](int i) {
        return text.at(i) >= QLatin1Char('0') && text.at(i) <= QLatin1Char('9');
    };
    for (int i = text.indexOf(QLatin1Char('#'), from); i >= 0; i = text.indexOf(QLatin1Char('#'), i + 1))
        if (i + 2 < text.size() && isDigit(i + 1) && isDigit(i + 2))
            return i + 3;
    return -1;
}
} // namespace

QString CProcessSKK::resultDescription(int index)
{
    return index < 0 || index >= ResultCount ? QString() : QString::fromUtf8(results[index].description);
}

CProcessSKK::Step CProcessSKK::testSetup(int i)
{
    if (State.callDirection != NoDirection)
        return NextTest;
    if (receiveBuffer.at(i) == QLatin1Char('@')) {
        const Step step = testAdapterEvents(i);
        if (step != NextTest)
            return step;
    }
    if (State.callState == Seized) {
        const int at = receiveBuffer.indexOf(GoAheadText, i);
        if (at < 0)
            return End;
        State.waitTimeAfterCallEstablished = timing->timeCallEstablish;
        State.callState = GoAhead;
        receiveBuffer.removeHead(at + GoAheadText.size());
        return End;
    }
    return State.callState == WaitResult ? testResult(i) : NextTest;
}

CProcessSKK::Step CProcessSKK::testAdapterEvents(int i)
{
    if (i + 1 >= receiveBuffer.size())
        return NextTest;
    const char letter = receiveBuffer.at(i + 1).toLatin1();
    if (letter != 'E' && letter != 'C' && letter != 'S' && letter != 'I')
        return NextTest;
    if (letter != 'I') {
        lastCmdIn = static_cast<unsigned char>(letter);
        secondsSinceCmdIn = 0;
    }
    if (letter == 'E') {
        if (!State.connectionActive) {
            State.connectionActive = true;
            emit updateTlgModeInterface();
        }
        if (State.callState == Dialled)
            State.callState = WaitResult;
    } else if (letter == 'C') {
        noteEvent(QStringLiteral("Входящий вызов"));
        takeIncomingCall();
    } else if (letter == 'S') {
        if (State.waitTimeAfterCallEstablished != 0)
            return NextTest; // it stays in the buffer, as text to the search for a result
        State.waitTimeAfterCallEstablished = timing->timeCallEstablish;
        State.callState = WaitResult;
    }
    receiveBuffer.removeHead(i + 2);
    return Again;
}

/// The network's refusals go before its signs of success, wherever they stand.
CProcessSKK::Step CProcessSKK::testResult(int i)
{
    for (int index = FirstRefusal; index <= LastRefusal; ++index) {
        const QString text = QString::fromLatin1(results[index].text);
        const int at = receiveBuffer.indexOf(text, i);
        if (at < 0)
            continue;
        receiveBuffer.removeHead(at + text.size());
        takeRefusal(index);
        return Again;
    }
    return testSuccess(i);
}

void CProcessSKK::takeRefusal(int index)
{
    State.callResult = index;
    noteEvent(resultDescription(index));
    clearAutoMode();
    State.waitTimeAfterCallEstablished = 0;
    State.callState = NoCall;
}

CProcessSKK::Step CProcessSKK::testSuccess(int i)
{
    const int behindStamp = CUtilsSKK::behindTimeStamp(receiveBuffer, i, Options.timeFormat);
    if (behindStamp >= 0) {
        receiveBuffer.removeHead(behindStamp);
        if (Options.debugInfoToProtocol)
            Log.addCacheServiceString(QStringLiteral("Время распознано"), ProtocolInfo, false);
        State.callState = Connected;
        return Again;
    }
    const int behindDigits = Options.timeFormat.isEmpty() ? behindTwoDigits(receiveBuffer, i) : -1;
    const int answered = receiveBuffer.indexOf(AnsweredText, i);
    if (behindDigits >= 0 || answered >= 0) {
        receiveBuffer.removeHead(behindDigits >= 0 ? behindDigits : answered + AnsweredText.size());
        State.callState = Connected;
        return Again;
    }
    const int question = receiveBuffer.indexOf(QuestionText, i);
    if (question < 0)
        return End;
    State.callState = Connected;
    receiveBuffer.removeHead(question + QuestionText.size());
    const int pause = Options.SKKTiming[SubscriberTiming].Pause_Before_Send_AA;
    if (pause == 0)
        sendAO();
    else
        State.sendAOCountdown = pause;
    return End;
}
