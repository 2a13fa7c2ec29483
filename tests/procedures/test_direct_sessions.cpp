// The reader of a direct link remembers how far it has looked. Beside it stands a naive one, which takes the
// buffer from its start with each piece, and random sessions that compare them.

#include "app/clock.h"
#include "app/options.h"
#include "tests/procedures/direct_desk.h"
#include "tests/support/sessions.h"

#include <QtTest>

class TestDirectSessions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Sessions::workInMemory(); }
    void equalsANaiveReader();
};

namespace
{
enum Act { Text = 0, Later, FullFolder };

/// The rules of reception in their plain order, on a buffer of its own.
class NaiveReader
{
public:
    QString buffer;

    void take(const QString &text)
    {
        buffer += text;
        const int start = first("ЗЦЗЦ ", "ZCZC ");
        if (start < 0) {
            if (buffer.size() > 256)
                buffer = buffer.right(200);
            return;
        }
        buffer = buffer.mid(start);
        const int end = first("НННН  ", "NNNN  ");
        if (end < 0)
            return;
        const QString telegram = buffer.left(end + 6);
        buffer = buffer.mid(end + 6);
        if (telegram.contains('\r') || telegram.contains('\n'))
            act(telegram);
    }

private:
    [[nodiscard]] int first(const char *cyrillic, const char *latin) const
    {
        const int at = buffer.indexOf(QString::fromUtf8(cyrillic));
        const int other = buffer.indexOf(QLatin1String(latin));
        return at < 0 || other < 0 ? qMax(at, other) : qMin(at, other);
    }

    static void act(const QString &telegram)
    {
        ProcessDirect.saveText(telegram);
        if (Options.SendConfirmation)
            ProcessDirect.SendTlgText("\r\nЗЦЗЦ СООБЩЕНИЕ ПРИНЯТО НННН  " + Time.hhmm + "\r\n");
    }
};

const QStringList Forms = {"ЗЦЗЦ ",
                           "НННН  ",
                           "\r\n",
                           "ТЕКСТ ",
                           "ЗЦЗЦ А\r\nНННН  ",
                           "А",
                           "НННН",
                           "ЗЦЗЦ А НННН  ",
                           "НН",
                           " ",
                           "ZCZC ",
                           "NNNN  ",
                           "ЗЦЗ",
                           "|#&<>",
                           QString(90, QChar(u'Ш')),
                           "ZCZC 003 THIRD\r\nNNNN  "};

Session make(quint32 seed)
{
    QRandomGenerator random(seed);
    Session session;
    session.seed = seed;
    for (int day = random.bounded(8); day >= 0; --day) {
        QString line;
        for (int i = random.bounded(12); i >= 0; --i)
            line += Sessions::anyOf(Forms, random);
        for (const QString &piece : Sessions::pieces(line, random))
            session.steps.append({piece, Text, 0});
        session.steps.append({{}, random.bounded(8) == 0 ? FullFolder : Later, random.bounded(3)});
    }
    for (int i = 0; i < 3; ++i)
        session.steps.append({{}, Text, 0}); // a piece for each telegram that waits
    return session;
}

QStringList run(const Session &session, bool naive)
{
    const DirectDesk desk;
    Options.SendConfirmation = session.seed % 2 == 0;
    Options.removeRegisterInInputFiles = session.seed % 3 == 0;
    NaiveReader reader;
    QStringList all;
    int shownLines = 0;
    for (const Session::Step &step : session.steps) {
        switch (Act(step.act)) {
        case Text: naive ? reader.take(step.text) : ProcessDirect.processReceive(step.text); break;
        case Later: Time.setTo(Time.dateTime.addSecs(step.size)); break;
        case FullFolder: QDir().mkpath(desk.path("inp/20260731/" + Time.yyyyMMdd + '_' + Time.hhmmss)); break;
        }
        const QStringList seen{naive ? reader.buffer : QString(ProcessDirect.receiveBuffer), desk.sent(),
                               QString::number(State.PK_in), Log.lines.mid(shownLines).join('\n')};
        shownLines = qMax(0, Log.lines.size() - 1);
        all << seen.join('/');
    }
    return all << Sessions::files(desk, "inp") << desk.journal();
}
} // namespace

void TestDirectSessions::equalsANaiveReader()
{
    const QByteArray difference = Sessions::compare(Sessions::count(2000), make, run);
    QVERIFY2(difference.isEmpty(), difference.constData());
}

QTEST_GUILESS_MAIN(TestDirectSessions)
#include "test_direct_sessions.moc"
