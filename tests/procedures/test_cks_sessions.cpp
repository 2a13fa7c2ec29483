// The reader of the centre's text remembers how far it has looked. Beside it stands a naive one, which takes
// the buffer from its start on each check, and random sessions that compare them.

#include "app/clock.h"
#include "app/options.h"
#include "tests/procedures/cks_desk.h"
#include "tests/support/sessions.h"

#include <QtTest>

class TestCksSessions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Sessions::workInMemory(); }
    void equalsANaiveReader();
};

namespace
{
enum Act { Text = 0, Tick, Silence, Mode, Automatic };

/// The rules of reception in their plain order, on a buffer of its own; what is found is acted on by the
/// procedure itself.
class NaiveReader
{
public:
    void take(const QString &text)
    {
        m_buffer += text;
        ++m_chunks;
    }
    [[nodiscard]] QString buffer() const { return m_buffer; }

    void tick()
    {
        if (m_chunks == 0 && State.secondsSinceRx % 5 != 0)
            return;
        m_chunks = 0;
        check();
    }

private:
    static int first(const QString &text, const char *cyrillic, const char *latin)
    {
        const int at = text.indexOf(QString::fromUtf8(cyrillic));
        const int other = text.indexOf(QLatin1String(latin));
        return at < 0 || other < 0 ? qMax(at, other) : qMin(at, other);
    }
    static int startOf(const QString &text) { return first(text, "ЗЦЗЦ ", "ZCZC "); }
    static int endOf(const QString &text) { return first(text, "НННН  ", "NNNN  "); }

    void compareClock(int position) const
    {
        ProcessCKS.receiveBuffer = m_buffer;
        ProcessCKS.checkTimeAfterNNNN(position);
        ProcessCKS.receiveBuffer.clear();
    }

    void check()
    {
        const int start = startOf(m_buffer);
        if (start < 0)
            return drop();
        m_buffer = m_buffer.mid(start);
        const int end = endOf(m_buffer);
        if (end < 0)
            return;
        const int carriageReturn = m_buffer.indexOf('\r', end);
        if (carriageReturn < 0 && State.secondsSinceRx < 5)
            return;
        if (carriageReturn >= 0)
            compareClock(end + 6);
        takeMessage(end, m_buffer.mid(end, carriageReturn < 0 ? 6 : carriageReturn - end));
    }

    void drop()
    {
        const int end = endOf(m_buffer);
        if (end >= 0 && end + 11 < m_buffer.size()) {
            compareClock(end + 6);
            m_buffer = m_buffer.mid(end + 6);
        }
        if (m_buffer.size() > 256)
            m_buffer = m_buffer.right(200);
    }

    void takeMessage(int end, const QString &tail)
    {
        QString head, copy = m_buffer.left(end);
        while (startOf(copy) >= 0) {
            head = copy.mid(startOf(copy), 5);
            copy = copy.mid(startOf(copy) + 5);
        }
        const QRegularExpression number("^(#?(\\d\\d\\d) )", QRegularExpression::UseUnicodePropertiesOption);
        const QRegularExpressionMatch match = number.match(copy);
        if (match.hasMatch() && Options.waitNote != 0 && State.secondsSinceRx < Options.waitNoteTimeOut &&
            startOf(m_buffer.mid(end)) < 0)
            return; // none of the sessions holds a note
        m_buffer = m_buffer.mid(end + 6);
        if (match.hasMatch())
            ProcessCKS.ProcessTlg(match.captured(2).toInt(), copy.mid(match.capturedLength()),
                                  head + match.captured(1), tail);
        else
            ProcessCKS.ProcessKG(copy);
    }

    QString m_buffer;
    int m_chunks = 0;
};

const QStringList Forms = {"ЗЦЗЦ СВЯЗЬ ОТКРЫТА НННН  \r\n",
                           "ЗЦЗЦ ",
                           "НННН  1200\r\n",
                           "НННН  \r\n",
                           "ЗЦЗЦ ВАШ 000 НАШ 000 НННН  1200\r\n",
                           "\r\n",
                           "ТЕКСТ ",
                           "А",
                           "НННН  ",
                           "НННН",
                           "НН",
                           "ЗЦЗЦ КС НННН  \r\n",
                           "ZCZC ",
                           "NNNN  ",
                           "ЗЦЗЦ СВЯЗЬ ЗАКРЫТА НННН  \r\n",
                           "ЗЦЗЦ |ЗАПРОСИТЕ КВИТАНЦИЮ НННН  \r\n",
                           "НННН  1207\r\n",
                           "|#&",
                           "ШУМ ШУМ ШУМ ШУМ ШУМ ШУМ ШУМ ШУМ ШУМ ШУМ ШУМ ШУМ ШУМ ШУМ ШУМ ШУМ ШУМ ШУМ ШУМ "};

/// A telegram under its number, or a form of the line. What the texts are made of is short and little, so
/// that texts of equal length follow each other.
QString next(QRandomGenerator &random, int &number)
{
    if (random.bounded(3) != 0)
        return Sessions::anyOf(Forms, random);
    number += random.bounded(20) == 0 ? 0 : 1;
    return QStringLiteral("ЗЦЗЦ %1%2 %3 НННН  %4\r\n")
        .arg(random.bounded(5) == 0 ? "#" : "")
        .arg(number, 3, 10, QLatin1Char('0'))
        .arg(QStringLiteral("ТЕКСТ ТЕКСТ ТЕКСТ").left(random.bounded(16)),
             random.bounded(2) == 0 ? "1200" : "");
}

Session make(quint32 seed)
{
    QRandomGenerator random(seed);
    Session session;
    session.seed = seed;
    int number = 0;
    const bool ticksBetween = random.bounded(2) == 0; // messages come one by one, or as pieces of a stream
    QString line;
    for (int i = random.bounded(30); i >= 0; --i) {
        line += next(random, number);
        if (!ticksBetween && i > 0)
            continue;
        for (const QString &piece : Sessions::pieces(line, random)) {
            session.steps.append({piece, Text, 0});
            if (random.bounded(3) != 0)
                session.steps.append({{}, Tick, 0});
        }
        line.clear();
        session.steps.append({{}, Tick, 0});
        if (random.bounded(4) == 0)
            session.steps.append({{}, Silence, 1 + random.bounded(12)});
        if (random.bounded(10) == 0)
            session.steps.append({{}, random.bounded(2) == 0 ? Mode : Automatic, random.bounded(6)});
    }
    session.steps.append({{}, Silence, 30});
    return session;
}

QString outcome(const CksDesk &desk, const QString &buffer, int &shownLines)
{
    QStringList all{buffer, desk.sent()};
    for (const int figure : {State.tlgMode, State.PK_in, State.PK_out, State.CKS_in, State.CKS_out,
                             int(State.manualMode), State.askReceiptCountdown, State.sendReceiptCountdown})
        all << QString::number(figure);
    all << Log.lines.mid(shownLines);
    shownLines = qMax(0, Log.lines.size() - 1);
    return all.join(QLatin1Char('/'));
}

QStringList run(const Session &session, bool naive)
{
    const CksDesk desk;
    Options.waitNote = session.seed % 5 == 0 ? 1 : 0;
    Options.waitNoteTimeOut = 7;
    State.manualMode = session.seed % 3 == 0;
    NaiveReader reader;
    QStringList all;
    int shownLines = 0;
    const auto tick = [&] {
        if (naive)
            reader.tick();
        ProcessCKS.timeCheck1sec();
        ++State.secondsSinceRx;
    };
    for (const Session::Step &step : session.steps) {
        switch (Act(step.act)) {
        case Text:
            State.secondsSinceRx = 0;
            naive ? reader.take(step.text) : ProcessCKS.processReceive(step.text);
            break;
        case Tick: tick(); break;
        case Silence:
            for (int i = 0; i < step.size; ++i)
                tick();
            break;
        case Mode: State.tlgMode = step.size; break;
        case Automatic: State.manualMode = step.size % 2 == 0; break;
        }
        all << outcome(desk, naive ? reader.buffer() : QString(ProcessCKS.receiveBuffer), shownLines);
    }
    return all << Sessions::files(desk, "inp") << desk.journal();
}
} // namespace

/// Pieces of one and the same day, whose messages all differ in length, never bring a text into the place of
/// another: they show that cuts do no harm, not that what is remembered belongs to the text that is there.
/// Here each session is a day of its own, of a few short forms, so that a text as long as the one before it
/// comes often, and a buffer with room from earlier text takes it in.
void TestCksSessions::equalsANaiveReader()
{
    const QByteArray difference = Sessions::compare(Sessions::count(1500), make, run);
    QVERIFY2(difference.isEmpty(), difference.constData());
}

QTEST_GUILESS_MAIN(TestCksSessions)
#include "test_cks_sessions.moc"
