// Guaranteed transfer: text in short frames of 5-bit codes,
//
//     31 27 | header | length | register | payload
//
// with the sequence number (bits 3 and 4) and the CRC-3 (bits 0 to 2) in the header, the count of the
// payload's codes, 1 to 25, and the register code in which the payload starts. Frames travel as telegraph
// text, one character per code. Acknowledgements and the sender of frames do not exist.

#include "link/tlg_thread.h"

#include "text/mtk2.h"

#include <QMutexLocker>

namespace
{
constexpr int LengthAt = 3;      // place of the length code
constexpr int RegisterAt = 4;    // place of the register code
constexpr int FrameOverhead = 5; // codes of a frame beside the payload
constexpr int MaxPayload = 25;   // codes
constexpr int LongestFrame = FrameOverhead + MaxPayload;
constexpr int SequenceShift = 3;
constexpr int CrcMask = 7;
constexpr int CodeCrcBits = 3; // the low bits of a code that both checks look at

bool validLength(char length)
{
    return length >= 1 && length <= MaxPayload;
}

bool isRegisterCode(char code)
{
    return code == 0x00 || code == 0x1B || code == 0x1F;
}

/// The frame at the head of received text.
struct Candidate {
    QString text;     ///< the frame alone, as far as it is there
    QByteArray codes; ///< what \a text encodes to
    bool complete = false;
    bool broken = false; ///< a character stands in it that no frame holds
};

/// Cuts the frame out of what follows it. A frame holds characters of the code only, so neither a command,
/// which "@" begins, nor noise is ever part of one.
Candidate cutFrame(const QString &rest, int reg)
{
    Candidate frame;
    for (int i = 0; i < rest.size() && !frame.complete && !frame.broken; ++i) {
        QByteArray codes;
        MTK2FromQString(QString(rest[i]), codes, reg);
        frame.broken = codes.isEmpty();
        frame.codes += codes;
        frame.text += rest[i];
        frame.complete =
            frame.codes.size() > LengthAt && (!validLength(frame.codes[LengthAt]) ||
                                              frame.codes.size() >= frame.codes[LengthAt] + FrameOverhead);
    }
    return frame;
}

/// How much of a bad frame goes. A wrong length, or no register code where it belongs, leaves only the
/// marks, the header and the length known as frame; what follows is kept as text. Otherwise all of it goes,
/// but never the marks of a next frame inside.
int badFrameLength(const Candidate &bad, const QString &mark)
{
    const bool known = validLength(bad.codes[LengthAt]) && isRegisterCode(bad.codes[RegisterAt]);
    const int length = known ? bad.text.size() : qMin(LengthAt + 1, bad.text.size());
    const int next = bad.text.indexOf(mark, mark.size());
    return next < 0 ? length : qMin(length, next);
}

/// Feeds the low bits of each code, lowest first, to a register of \a width bits.
unsigned char crcOf(const QByteArray &codes, int width, unsigned crc, unsigned polynomial)
{
    const unsigned top = 1U << (width - 1);
    for (const char code : codes) {
        for (int bit = 0; bit < CodeCrcBits; ++bit) {
            const bool leaving = (crc & top) != 0;
            crc = (crc << 1) & (2 * top - 1);
            if (leaving)
                crc ^= polynomial;
            crc ^= (static_cast<unsigned>(code) >> bit) & 1U;
        }
    }
    return static_cast<unsigned char>(crc);
}
} // namespace

bool CTlgThread::startProtectedMode()
{
    return !protectedMode.exchange(true);
}

void CTlgThread::stopProtectedMode()
{
    protectedMode = false;
}

unsigned char CTlgThread::makeProtectedDataCRC3(const QByteArray &codes)
{
    return crcOf(codes, 3, 7, 3);
}

unsigned char CTlgThread::makeProtectedDataCRC5(const QByteArray &codes)
{
    return crcOf(codes, 5, 0, 0x15);
}

int CTlgThread::makeProtectedAck(const QString &)
{
    return 0;
}

int CTlgThread::checkProtectedAck(const QString &)
{
    return 0;
}

// The text form starts from the register that was in force before the frame, not from the one that the
// marks leave behind. That is the form of the frame.
bool CTlgThread::makeProtectedData(const QString &text)
{
    int reg = protectedRegister;
    QByteArray codes;
    MTK2FromQString(text, codes, protectedRegister);
    QByteArray body(1, static_cast<char>(codes.size()));
    body += static_cast<char>(MTK2Registr(reg));
    body += codes;
    lastCRC = makeProtectedDataCRC3(body);
    const QByteArray frame = static_cast<char>((txSequence << SequenceShift) + lastCRC) + body;
    QString shown;
    QStringFromMTK2(frame, shown, reg);
    frameOut = frameStartData + shown;
    return true;
}

// Everything is done on the codes to the end of the buffer; the scan passes one frame at a time. The length
// and the register code are decoded with the payload, a repeat claims the whole buffer, and a frame out of
// turn is answered like an incomplete one: a check that differs would part this end from all others.
int CTlgThread::checkProtectedData(const QString &buffer)
{
    int reg = protectedRegister;
    QByteArray codes;
    MTK2FromQString(buffer, codes, reg);
    if (codes.size() <= LengthAt)
        return 0;
    const char length = codes[LengthAt];
    if (!validLength(length))
        return -1;
    if (codes.size() <= length + LengthAt + 1)
        return 0;
    const auto header = static_cast<unsigned char>(codes[LengthAt - 1]);
    if (makeProtectedDataCRC3(codes.mid(LengthAt)) != (header & CrcMask))
        return -1;
    const int sequence = header >> SequenceShift;
    if (sequence == rxSequence)
        return buffer.size();
    if (sequence != (rxSequence + 1) % 4)
        return 0;
    QStringFromMTK2(codes.mid(LengthAt), framePayload, protectedRegister);
    return length + FrameOverhead;
}

void CTlgThread::dataSendedToLine(const QString &text, Sent kind)
{
    if (kind == SentCommand || !protectedMode)
        sentLog.mAppend(text);
    sentEvents.add(1);
}

void CTlgThread::addToReceive(const QString &text)
{
    QString plain = text;
    if (protectedMode) {
        const int waited = frameIn.size();
        frameIn += text;
        plain = scanFrames(waited);
        if (plain.isEmpty())
            return;
    }
    recvBuffer.mAppend(plain);
    receivedEvents.add(1);
}

// Acknowledgements have no form yet. What looks like one waits for one more chunk and passes as text; with a
// command in the text it does not wait at all.
QString CTlgThread::scanFrames(int waited)
{
    QString plain;
    const bool command = frameIn.contains(QLatin1Char('@'));
    int done = 0;
    while (done < frameIn.size()) {
        const int mark = frameIn.indexOf(frameStartData[0], done);
        plain += frameIn.midRef(done, mark < 0 ? -1 : mark - done);
        done = mark < 0 ? frameIn.size() : mark;
        if (frameIn.size() - done < 3)
            break;
        int taken = -1;
        if (frameIn[done + 1] == frameStartData[1])
            taken = takeFrame(frameIn.mid(done, LongestFrame + 1), plain);
        else if (frameIn[done + 1] == frameStartAck[1] && done >= waited && !command)
            taken = 0;
        if (taken == 0)
            break;
        if (taken < 0)
            plain += frameIn[done];
        done += qMax(1, taken);
    }
    frameIn.remove(0, done);
    return plain;
}

int CTlgThread::takeFrame(const QString &rest, QString &plain)
{
    const Candidate frame = cutFrame(rest, protectedRegister);
    if (frame.broken)
        return -1;
    if (!frame.complete)
        return 0;
    const int result = checkProtectedData(frame.text);
    if (result < 0)
        return badFrameLength(frame, frameStartData);
    plain += framePayload;
    framePayload.clear();
    // A frame out of turn waits as an incomplete one does; text behind it tells that waiting has no end.
    return result == 0 && rest.size() == frame.text.size() ? 0 : frame.text.size();
}
