// Answerbacks of the automatic send. Each is told from other text by its opening and its length.

#include "procedures/process_skk.h"

#include "app/journal_words.h"
#include "app/state.h"
#include "procedures/telegram_files.h"
#include "text/marks.h"

namespace
{
constexpr int ShortLength = 20;     ///< characters of a subscriber's answerback and of a centre's short one
constexpr int OpeningWithText = 18; ///< characters before which nothing is judged
constexpr int NameDistance = 16;    ///< from the opening to the centre's name, at most
constexpr int DoralLength = 50;     ///< of the long answerback of a centre of type CentreDoral

const QString Opening = QStringLiteral("#\r\n");
const QString CentreOpening = QStringLiteral("\r\n#");
const QString CentreNumber = QStringLiteral("#01");
const QString CentreName = QStringLiteral("|ЦКС&");
} // namespace

bool CProcessSKK::isOpening(int p) const
{
    return isAt(p, Opening) || (State.sendInfo.toCKS && isAt(p, CentreOpening));
}

/// Position of an opening in the whole buffer, -1 if there is none: for a centre whose long answerback has
/// no form of its own.
int CProcessSKK::loneOpening() const
{
    const int at = receiveBuffer.indexOf(Opening);
    return at >= 0 ? at : receiveBuffer.indexOf(CentreOpening);
}

int CProcessSKK::processAutoModeWaitAA(int position)
{
    const int p = position;
    takeAnyText(p);
    if (p >= receiveBuffer.size() || !isOpening(p))
        return 0;
    extendWait();
    if (receiveBuffer.size() - p < OpeningWithText)
        return 0;
    switch (State.AutoModeWaitAA) {
    case ShortCentreAA: return takeShortCentre(p);
    case LongCentreAA: return takeLongCentre(p);
    case SubscriberAA: return takeSubscriber(p);
    default: return 0;
    }
}

/// The awaited answerback has come: step \a state answers it after the pause.
void CProcessSKK::answerIn(AutoState state)
{
    State.AutoModeWaitAA = NoAA;
    autoSet(state, timing->Pause_Before_Send_Answer_AA + OnNextTick);
}

/// A subscriber's answerback at \a p is in order.
void CProcessSKK::acceptSubscriber(int p)
{
    if (State.AutoModeState == AutoAsked || State.AutoModeState == AutoWaitAA) {
        answerIn(AutoGotAA);
    } else if (State.AutoModeState == AutoWaitLastAA) {
        compliteSKKFileSendedInAutoMode();
        answerIn(AutoDelivered);
    }
    receiveBuffer.removeHead(p + ShortLength);
}

/// The centre has the file. Where it shall not get the own answerback the send goes on with step \a
/// unanswered.
void CProcessSKK::fileAccepted(AutoState unanswered, int timer)
{
    compliteSKKFileSendedInAutoMode();
    if (Options.SKK_noSendCKSAOAfterSendFile)
        return autoSet(unanswered, timer);
    answerIn(AutoDelivered);
}

/// With the check of the text turned off, any text of the length is a subscriber's answerback.
void CProcessSKK::takeAnyText(int p)
{
    if (!Options.noCheckAOText || State.AutoModeWaitAA != SubscriberAA || receiveBuffer.size() < ShortLength)
        return;
    acceptSubscriber(p);
}

/// The opening alone shows that the far end answers: it gets time to finish.
void CProcessSKK::extendWait()
{
    if (State.AutoModeState == AutoBeforeQuestion) {
        autoSet(AutoWaitAA, timing->Pause_Before_Ask_Who2 + OnNextTick);
    } else if (State.AutoModeState == AutoAsked) {
        autoSet(AutoWaitAA, timing->Wait_AA + OnNextTick);
    } else if (State.AutoModeState == AutoBeforeLastQuestion) {
        State.AutoModeWaitAA = lastKind();
        autoSet(AutoWaitLastAA, timing->Wait_AA + OnNextTick);
    }
}

bool CProcessSKK::isShortCentre(int p) const
{
    switch (Options.CKS_Type) {
    case CentreDoral:
    case CentreStin: {
        const int name = receiveBuffer.indexOf(CentreName, p + 1);
        return receiveBuffer.indexOf(CentreNumber, p) >= 0 && name >= 0 && name - p <= NameDistance;
    }
    case CentreStinShort: return receiveBuffer.indexOf(QStringLiteral("911"), p) >= 0;
    case CentreTTSoft:
    case CentreOther: return true;
    default: return false;
    }
}

bool CProcessSKK::isLongCentre(int p) const
{
    const int name = receiveBuffer.indexOf(CentreName, p + 1);
    return receiveBuffer.indexOf(CentreNumber, p) >= 0 && name >= 0 && name - p <= NameDistance &&
           receiveBuffer.indexOf(QLatin1Char('.'), name + 1) >= 0;
}

int CProcessSKK::takeShortCentre(int p)
{
    if (receiveBuffer.size() - p < ShortLength)
        return 0;
    if (!isShortCentre(p)) {
        noteEvent(QStringLiteral("Неправильный АО ЦКС"));
        clearAutoMode();
        return 1;
    }
    answerIn(AutoGotAA);
    receiveBuffer.removeHead(p + ShortLength);
    return 1;
}

int CProcessSKK::takeLongCentre(int p)
{
    const int present = receiveBuffer.size() - p;
    if (present < ShortLength || Options.CKS_Type < CentreDoral || Options.CKS_Type > CentreStinShort)
        return 0;
    if (present < (Options.CKS_Type == CentreDoral ? DoralLength : Options.CKS_LongAOLength))
        return 0;
    if (!isLongCentre(p))
        return takeBadLongCentre(p);
    if (State.AutoModeState != AutoWaitLastAA)
        return -1;
    noteEvent(JournalWords::CentreAnswered);
    fileAccepted(AutoAnswered, OnNextTick);
    return -1;
}

/// The centre may send a telegram in place of its answerback.
int CProcessSKK::takeBadLongCentre(int p)
{
    const int start = receiveBuffer.indexOf(Marks::Start, p);
    if (start < 0) {
        noteEvent(QStringLiteral("Неправильный длинный АО ЦКС"));
        clearAutoMode();
        return -1;
    }
    const int end = receiveBuffer.indexOf(Marks::End, start);
    if (end < 0)
        return -1;
    receiveBuffer.removeHead(end + Marks::EndLength);
    return 1;
}

bool CProcessSKK::holdsCalledNumber(int p) const
{
    constexpr int Compared = 6;
    for (const int from : {0, 2}) {
        const QString digits = State.dialledNumber.mid(from, Compared);
        if (!digits.isEmpty() && receiveBuffer.indexOf(digits, p + 1) >= 0)
            return true;
    }
    return false;
}

int CProcessSKK::takeSubscriber(int p)
{
    if (receiveBuffer.size() - p < ShortLength)
        return 0;
    if (!holdsCalledNumber(p) && !Options.noCheckAOAbonent) {
        noteEvent(QStringLiteral("Неправильный АО"));
        clearAutoMode();
        return -1;
    }
    acceptSubscriber(p);
    return -1;
}

/// "#*" at \a i while the last answerback of a centre without a form of its own is awaited: what came before
/// the question is that answerback.
void CProcessSKK::takeCentreAnswerbackAtQuestion(int i)
{
    const int at = loneOpening();
    if (at < 0 || at >= i || receiveBuffer.size() - at <= ShortLength)
        return;
    noteEvent(JournalWords::CentreAsked);
    fileAccepted(AutoAnswered, OnNextTick);
}

/// The same when the centre has fallen silent without a question.
void CProcessSKK::fixSilentCentre()
{
    constexpr int SilentSeconds = 2;
    if (Options.CKS_Type != CentreOther || State.secondsSinceRx <= SilentSeconds ||
        State.AutoModeWaitAA != LongCentreAA || State.AutoModeState != AutoWaitLastAA)
        return;
    const int at = loneOpening();
    if (at < 0 || receiveBuffer.size() - at <= ShortLength)
        return;
    noteEvent(JournalWords::CentreSilent);
    fileAccepted(AutoLastPause, timing->timeAfterOwnAO);
}
