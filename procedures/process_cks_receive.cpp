// The sorting of received text into service messages and telegrams.

#include "procedures/process_cks.h"

#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "procedures/telegram_files.h"
#include "text/marks.h"
#include "text/utils.h"

namespace
{
constexpr int MostNoise = 256; // characters kept without a start mark; cut to NoiseKept
constexpr int NoiseKept = 200;
constexpr int SilenceWithoutReturn = 5; // seconds after which a message counts without its return

/// "012 " at \a position: three decimal digits with a blank.
bool isNumberAt(const QString &text, int position)
{
    if (text.size() < position + 4)
        return false;
    for (int i = position; i < position + 3; ++i)
        if (!text.at(i).isDigit())
            return false;
    return text.at(position + 3) == QLatin1Char(' ');
}

/// A message that waits for its end stands at the head of the buffer.
bool beginsMessage(const QString &text)
{
    return text.startsWith(Marks::Start) || text.startsWith(Marks::LatinStart);
}

/// Position of the last start mark, -1 if there is none.
int lastStartMark(const QString &text)
{
    return qMax(text.lastIndexOf(Marks::Start), text.lastIndexOf(Marks::LatinStart));
}

/// Length of the text from its start through the note that \a text, which begins with the end mark, holds;
/// -1 if no form of the note decides it.
int lengthThroughNote(const QString &text)
{
    const QString longForms[] = {QStringLiteral("....МИН...."), QStringLiteral("....|МИН#....")};
    for (const QString &form : longForms) {
        const int note = text.indexOf(form);
        if (note <= 0)
            continue;
        for (const QString &end : {QStringLiteral("----\r\n"), QStringLiteral("\r\n")}) {
            const int position = text.indexOf(end, note + form.size());
            if (position >= 0)
                return position + end.size();
        }
        return -1;
    }
    constexpr int ShortNoteLength = 13; // of both short forms, though the one with marks is longer
    const QString shortForms[] = {QStringLiteral("....|МИН#.\r\n\n\n\n"),
                                  QStringLiteral("....МИН.\r\n\n\n\n")};
    for (const QString &form : shortForms) {
        const int note = text.indexOf(form);
        if (note >= 0)
            return note + ShortNoteLength;
    }
    return -1;
}
} // namespace

void CProcessCKS::processReceive(QString text)
{
    receiveBuffer.append(text);
    ++receiveChunks;
}

/// Position of the end mark, -1 if there is none. A message may wait for it through thousands of checks, so
/// each looks only at what is new.
int CProcessCKS::findEnd()
{
    const int from = m_sought.in(receiveBuffer);
    const int found = CUtils::indexOfNNNN(receiveBuffer.mid(from));
    const int end = found < 0 ? -1 : from + found;
    // The last characters may be the first ones of a mark.
    m_sought.reach(receiveBuffer, end >= 0 ? end : qMax(from, receiveBuffer.size() - (Marks::EndLength - 1)));
    return end;
}

void CProcessCKS::checkReceive()
{
    const int start = beginsMessage(receiveBuffer) ? 0 : CUtils::indexOfZCZC(receiveBuffer);
    if (start < 0)
        return dropNoise();
    receiveBuffer.removeHead(start);
    const int end = findEnd();
    if (end < 0)
        return;
    QString tail;
    const int carriageReturn = receiveBuffer.indexOf(QLatin1Char('\r'), end);
    if (carriageReturn >= 0) {
        tail = receiveBuffer.mid(end, carriageReturn - end);
        checkTimeAfterNNNN(end + Marks::EndLength);
    } else if (State.secondsSinceRx < SilenceWithoutReturn) {
        return;
    } else {
        tail = receiveBuffer.mid(end, Marks::EndLength);
    }
    takeMessage(end, tail);
}

/// Without a start mark there is no message; a time stamp behind a lone end mark is still compared.
void CProcessCKS::dropNoise()
{
    constexpr int MarkWithStamp = 11;
    const int end = CUtils::indexOfNNNN(receiveBuffer);
    if (end >= 0 && end + MarkWithStamp < receiveBuffer.size()) {
        checkTimeAfterNNNN(end + Marks::EndLength);
        receiveBuffer.removeHead(end + Marks::EndLength);
    }
    if (receiveBuffer.size() > MostNoise)
        receiveBuffer.keepTail(NoiseKept);
}

/// Takes the message in front of the end mark at \a end, unless it waits for its note. The message leaves
/// the buffer before it is acted on: a print job or a dialog may let the tick run in between.
void CProcessCKS::takeMessage(int end, QString tail)
{
    QString head;
    QString copy = receiveBuffer.left(end);
    // A message interrupted by a new start mark is void: only what follows the last mark counts.
    const int mark = lastStartMark(copy);
    if (mark >= 0) {
        head = copy.mid(mark, Marks::StartLength);
        copy.remove(0, mark + Marks::StartLength);
    }
    const int numberAt = copy.startsWith(QLatin1Char('#')) ? 1 : 0;
    if (!isNumberAt(copy, numberAt)) {
        receiveBuffer.removeHead(end + Marks::EndLength);
        ProcessKG(copy);
        return;
    }
    if (Options.waitNote != NoNote && State.secondsSinceRx < Options.waitNoteTimeOut) {
        const int length = lengthThroughNote(receiveBuffer.mid(end));
        if (length >= 0)
            tail = receiveBuffer.mid(end, length);
        else if (CUtils::indexOfZCZC(receiveBuffer.mid(end)) < 0)
            return;
    }
    receiveBuffer.removeHead(end + Marks::EndLength);
    const int number = copy.midRef(numberAt, 3).toInt();
    head += copy.leftRef(numberAt + 4);
    ProcessTlg(number, copy.mid(numberAt + 4), head, tail);
}

void CProcessCKS::checkTimeAfterNNNN(int position) const
{
    constexpr int FirstComparedMinute = 6; // the turn of the day is not compared
    constexpr int LastComparedMinute = 1434;
    if (position < receiveBuffer.size() && receiveBuffer.at(position) == QLatin1Char('#'))
        ++position;
    if (receiveBuffer.size() < position + 4)
        return;
    int digits[4];
    for (int i = 0; i < 4; ++i) {
        digits[i] = receiveBuffer.at(position + i).digitValue();
        if (digits[i] < 0)
            return;
    }
    if (receiveBuffer.size() > position + 4 && receiveBuffer.at(position + 4) > QLatin1Char(' '))
        return;
    const int own = Time.time.hour() * 60 + Time.time.minute();
    if (own < FirstComparedMinute || own > LastComparedMinute)
        return;
    const int centre = (digits[0] * 10 + digits[1]) * 60 + digits[2] * 10 + digits[3];
    if (qAbs(own - centre) > 1)
        noteEvent(QStringLiteral("Расхождение времени c ЦКС более 1 мин"));
}
