// What the readers of the link keep from one read to the next, an incomplete command, frame or register, must
// make no difference to what is read. Beside each stands a naive one that has kept every byte of the
// connection and takes them all from the first on at each look.

#include "app/options.h"
#include "link/adapter_stream.h"
#include "link/tcp_stream.h"
#include "link/tlg_thread.h"
#include "tests/support/sessions.h"
#include "text/encodings.h"
#include "text/mtk2.h"

#include <QtTest>

#include <iterator>

class TestLinkSessions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { resetGlobals(); }
    void guaranteedTransferEqualsANaiveReader();
    void acknowledgementsInFramesLoseNothing();
    void tcpStreamEqualsANaiveReader();
    void adapterStreamEqualsANaiveReader();
};

namespace
{
Session inPieces(quint32 seed, const QString &line, QRandomGenerator &random)
{
    Session session;
    session.seed = seed;
    for (const QString &piece : Sessions::pieces(line, random))
        session.steps.append({piece, 0, 0});
    return session;
}

// Guaranteed transfer

const QStringList Marks = {"&",    "#",      "&#",     "ТЕКСТ", "A",  "3",  "&#'3&E",
                           "&#Э3", "&#,3&E", "&#63&E", "&#ЭШ",  "\r", "@H", "&#Э3;"};

/// Frames that follow the last one that was accepted, good and torn, between text and marks.
QString framedLine(QRandomGenerator &random, bool acknowledgements)
{
    CTlgThread sender;
    sender.txSequence = 1;
    QString line;
    for (int i = random.bounded(12); i >= 0; --i) {
        if (random.bounded(2) == 0) {
            line += Sessions::anyOf(Marks, random);
            continue;
        }
        sender.makeProtectedData(
            QStringLiteral("ПРИВЕТ12,ABC").mid(random.bounded(9), 1 + random.bounded(8)));
        line += sender.frameOut.left(random.bounded(6) == 0 ? random.bounded(6) : -1);
        if (acknowledgements && random.bounded(4) == 0)
            line += QLatin1String("&|");
    }
    return acknowledgements ? line : line.replace(QLatin1String("&|"), QLatin1String("&A"));
}

/// What has been handed on of \a pieces, and what waits.
QString readFrames(const QStringList &pieces)
{
    CTlgThread thread;
    thread.startProtectedMode();
    for (const QString &piece : pieces)
        thread.addToReceive(piece);
    return thread.recvBuffer.mTake() + QStringLiteral(" WAITING ") + thread.frameIn;
}

QStringList runFrames(const Session &session, bool naive)
{
    QStringList all, pieces;
    for (const Session::Step &step : session.steps) {
        pieces << step.text;
        all << readFrames(naive ? QStringList(pieces.join(QString())) : pieces);
    }
    return all;
}

/// An acknowledgement waits for one more piece, so only the end is the same.
QStringList runAcknowledgements(const Session &session, bool naive)
{
    QStringList pieces;
    for (const Session::Step &step : session.steps)
        pieces << step.text;
    if (naive)
        pieces = QStringList(pieces.join(QString()));
    return QStringList(readFrames(pieces << QString()));
}

// TCP

const char *const byteForms[] = {
    "@", "0",    "7",    "*",    "@07*", "@C",       "@H",           "@N123@", "@n1",  "+", "@@",
    "A", "\r\n", "\x16", "\xB3", "\xBF", "\xB1\xB2", "\x80\x81\x82", "@9\xB4", "\xE5", "@V"};

/// A stream of bytes, one to a character.
QString byteLine(QRandomGenerator &random)
{
    QString line;
    for (int i = random.bounded(40); i >= 0; --i)
        line += QString::fromLatin1(byteForms[random.bounded(int(std::size(byteForms)))]);
    return line;
}

class NaiveTcp
{
public:
    QByteArray take(const QByteArray &read)
    {
        QByteArray answers(read.contains('\x16') ? 1 : 0, '\x16');
        QByteArray rest = held + read; // a report that was passed over may stand in what was held
        m_all.chop(held.size());
        rest.replace("\x16", "");
        for (int i = 0; i < rest.size(); ++i) { // the byte that moves up is passed over
            if ((quint8(rest.at(i)) & 0xF0) != 0xB0)
                continue;
            answers += '\xBF';
            window = (rest.at(i) & 0x0F) * 2;
            rest.remove(i, 1);
        }
        m_all += rest;
        readAll();
        return answers;
    }

    QString text;
    QByteArray held;
    int credit = 32, window = 0;

private:
    void readAll()
    {
        static const QRegularExpression form(
            "^@(?:[CEHLV]|[Nn][0-9]*+\\+?+(?:@|(?=[^@]))|[0-9][0-9]\\*|[0-9](?=..)|(?![CEHLVNn0-9]).)",
            QRegularExpression::DotMatchesEverythingOption);
        text.clear();
        held.clear();
        credit = 32;
        QByteArray left = m_all;
        while (!left.isEmpty() && held.isEmpty()) {
            const int mark = Options.processMode == 0 ? -1 : left.indexOf('@');
            if (mark != 0) {
                QByteArray plain = left.mid(0, mark);
                QString decoded;
                QStringFromCORVA(plain, decoded);
                text += decoded;
                left = mark < 0 ? QByteArray() : left.mid(mark);
                continue;
            }
            const QString head = form.match(QString::fromLatin1(left)).captured();
            if (head.isEmpty()) {
                held = left;
            } else {
                takeCommand(head);
                left = left.mid(commandLength(head));
            }
        }
    }
    /// "@5" without the rest of a report, and "@" before what is no command, are the mark alone.
    static int commandLength(const QString &head)
    {
        return head.size() == 2 && !QStringLiteral("CEHLVNn").contains(head.at(1)) ? 1 : head.size();
    }
    void takeCommand(const QString &head)
    {
        const bool report = head.size() == 4 && head.endsWith('*');
        credit = report ? head.mid(1, 2).toInt() : 32;
        if (!report)
            text += head.left(commandLength(head));
    }

    QByteArray m_all;
};

QStringList runTcp(const Session &session, bool naive)
{
    CTlgThread thread;
    CTcpStream stream(thread);
    NaiveTcp reader;
    Options.processMode = int(session.seed % 3);
    QStringList all;
    QString text;
    for (const Session::Step &step : session.steps) {
        const QByteArray bytes = step.text.toLatin1();
        const QByteArray answers = naive ? reader.take(bytes) : stream.take(bytes);
        text += thread.recvBuffer.mTake();
        const auto figures = naive ? qMakePair(reader.credit, reader.window)
                                   : qMakePair(thread.txCredit.load(), thread.peerWindow);
        all << QStringList{QString::fromLatin1(answers.toHex()), naive ? reader.text : text,
                           QString::fromLatin1(naive ? reader.held : stream.heldCommand),
                           QString::number(figures.first), QString::number(figures.second)}
                   .join(QLatin1Char('/'));
    }
    return all;
}

// Adapter

QString adapterLine(QRandomGenerator &random)
{
    static const quint8 others[] = {0x4F, 0x4F, 0x5E, 0x43, 0x41, 0x44, 0x45, 0x20, 0x30, 0x38, 0x70, 0xFF};
    QString line;
    for (int i = random.bounded(80); i >= 0; --i) {
        const int kind = random.bounded(10);
        line += QChar(kind < 5   ? random.bounded(32)
                      : kind < 7 ? 0x80 + random.bounded(32)
                      : kind < 8 ? 0x20 + random.bounded(32)
                                 : others[random.bounded(int(sizeof others))]);
    }
    return line;
}

/// All that the bytes of a connection have come to.
struct NaiveAdapter {
    NaiveAdapter(const QByteArray &bytes, bool echoing) : echoes(echoing)
    {
        for (const char byte : bytes)
            take(quint8(byte));
    }

    void take(quint8 byte)
    {
        const auto isIn = [byte](quint8 first, quint8 last) { return byte >= first && byte <= last; };
        if (isIn(0x00, 0x1F)) {
            text += QCharFromMTK2(byte, textRegister);
            error &= ~1;
        } else if (isIn(0x80, 0x9F) && echoes) {
            echo += QStringFromMTK2(byte & 0x1F, echoRegister);
        } else if (isIn(0x20, 0x3F)) {
            credit = byte & 0x0F;
            if ((byte & 0x10) != 0)
                allSent = true;
            else if (!echoes)
                allSent = credit != 0;
            if (credit != 0 && (error & 2) != 0)
                error = 0;
        } else if (byte == 0x4F) {
            text += QString((error & 1) == 0 ? 1 : 0, '^');
            error |= 1;
        } else if (byte == 0x5E) {
            error |= 2;
        } else if (Options.processMode == 1 && QByteArray("CADE").contains(char(byte))) {
            text += QLatin1Char('@') + QString("H-CES").at(byte - 0x41);
        }
    }

    bool echoes;
    QString text, echo;
    int textRegister = 0, echoRegister = 0, credit = 32, error = 0;
    bool allSent = true;
};

QString shownAdapter(const QString &text, const QString &echo, int credit, int error, bool allSent)
{
    return QStringLiteral("%1/%2/%3/%4/%5").arg(text, echo).arg(credit).arg(error).arg(allSent);
}

QStringList runAdapter(const Session &session, bool naive)
{
    Options.processMode = int(session.seed % 3);
    const int version = session.seed % 2 == 0 ? 20231111 : 0;
    CTlgThread thread;
    CAdapterStream stream(thread, QStringLiteral("Порт"), version);
    QStringList all;
    QByteArray bytes;
    QString text, echo;
    for (const Session::Step &step : session.steps) {
        bytes += step.text.toLatin1();
        if (naive) {
            const NaiveAdapter read(bytes, version != 0);
            all << shownAdapter(read.text, read.echo, read.credit, read.error, read.allSent);
            continue;
        }
        stream.take(step.text.toLatin1());
        text += thread.recvBuffer.mTake();
        echo += thread.sentLog.mTake();
        all << shownAdapter(text, echo, thread.txCredit, thread.lineError, thread.allSent);
    }
    return all;
}

QByteArray compared(const std::function<QString(QRandomGenerator &)> &line, const Sessions::Run &run)
{
    const auto make = [&](quint32 seed) {
        QRandomGenerator random(seed);
        const QString text = line(random);
        return inPieces(seed, text, random);
    };
    return Sessions::compare(Sessions::count(3000), make, run);
}
} // namespace

void TestLinkSessions::guaranteedTransferEqualsANaiveReader()
{
    const QByteArray difference =
        compared([](QRandomGenerator &random) { return framedLine(random, false); }, runFrames);
    QVERIFY2(difference.isEmpty(), difference.constData());
}

void TestLinkSessions::acknowledgementsInFramesLoseNothing()
{
    const QByteArray difference =
        compared([](QRandomGenerator &random) { return framedLine(random, true); }, runAcknowledgements);
    QVERIFY2(difference.isEmpty(), difference.constData());
}

void TestLinkSessions::tcpStreamEqualsANaiveReader()
{
    const QByteArray difference = compared(byteLine, runTcp);
    QVERIFY2(difference.isEmpty(), difference.constData());
}

void TestLinkSessions::adapterStreamEqualsANaiveReader()
{
    const QByteArray difference = compared(adapterLine, runAdapter);
    QVERIFY2(difference.isEmpty(), difference.constData());
}

QTEST_GUILESS_MAIN(TestLinkSessions)
#include "test_link_sessions.moc"
