#include "tools/linesim/record/record_player.h"

#include <QRandomGenerator>
#include <QtTest>

// The far end that a record was made of, without a line: the test is the workstation and the clock.
class TestLinesimPlayer : public QObject
{
    Q_OBJECT

private slots:
    void speaksAtItsTimes();
    void speaksFasterOnDemand();
    void withoutPaceItWaitsForTheWorkstationAlone();
    void waitsForTheWorkstationsLastByte();
    void paceGoesOnFromTheWorkstationsAnswer();
    void workstationMayBeAhead();
    void callsWhereTheRecordHasItCall();
    void hangsUpWhereTheRecordDoes();
    void otherByteIsADifference();
    void byteTooManyIsADifference();
    void hangingUpTooSoonIsADifference();
    void silenceIsADifferenceAfterItsTime();
    void callThatDoesNotComeIsADifference();
    void connectionTooManyIsADifference();
    void ignoredBytesAreLeftOutOnBothSides();
    void ignoredBytesOfTheFarEndMayBeMissed();
    void bytesOfAConnectionThatIsGoneDoNotReachTheNext();
    void afterADifferenceNothingIsPlayed();
    void randomSessionsPlayAsTheyWere_data();
    void randomSessionsPlayAsTheyWere();
};

namespace
{
/// A player with a line to it, that notes what the far end does.
class Line
{
public:
    explicit Line(const QByteArray &text, const RecordPlayer::Settings &settings = {})
        : player(read(text), settings)
    {
        QObject::connect(&player, &RecordPlayer::open, [this] { done << "open"; });
        QObject::connect(&player, &RecordPlayer::close, [this] { done << "close"; });
        QObject::connect(&player, &RecordPlayer::write, [this](const QByteArray &bytes) { done << bytes; });
        QObject::connect(&player, &RecordPlayer::ended,
                         [this](const QString &difference) { ends << difference; });
    }

    void at(double seconds) { player.tick(qRound64(seconds * 1e6)); }

    static LineRecord read(const QByteArray &text)
    {
        QString error;
        const auto record = LineRecord::parse(text, error);
        if (!record)
            qFatal("%s", qPrintable(error));
        return *record;
    }

    RecordPlayer player;
    QByteArrayList done;
    QStringList ends;
};

const QByteArray answered = "1.000000 1 W open\n"
                            "3.000000 1 F 41\n"
                            "3.500000 1 W 61 62\n"
                            "5.500000 1 F 42\n"
                            "6.000000 1 W close\n";

const QStringList same = {QString()};
} // namespace

void TestLinesimPlayer::speaksAtItsTimes()
{
    Line line("0.000000 1 W open\n2.000000 1 F 41\n2.500000 1 F 42 43\n");
    line.player.opened();
    line.at(1.999999);
    QCOMPARE(line.done, QByteArrayList());
    line.at(2);
    QCOMPARE(line.done, QByteArrayList{"A"});
    line.at(2.499999);
    QCOMPARE(line.done, QByteArrayList{"A"});
    line.at(2.5);
    QCOMPARE(line.done, (QByteArrayList{"A", "BC"}));
    QCOMPARE(line.ends, same);
}

void TestLinesimPlayer::speaksFasterOnDemand()
{
    RecordPlayer::Settings settings;
    settings.speed = 10;
    Line line("0.000000 1 W open\n2.000000 1 F 41\n", settings);
    line.player.opened();
    line.at(0.199999);
    QCOMPARE(line.done, QByteArrayList());
    line.at(0.2);
    QCOMPARE(line.done, QByteArrayList{"A"});
}

void TestLinesimPlayer::withoutPaceItWaitsForTheWorkstationAlone()
{
    RecordPlayer::Settings settings;
    settings.speed = 0;
    Line line(answered, settings);
    line.player.opened();
    QCOMPARE(line.done, QByteArrayList{"A"});
    line.player.take("ab");
    QCOMPARE(line.done, (QByteArrayList{"A", "B"}));
}

void TestLinesimPlayer::waitsForTheWorkstationsLastByte()
{
    Line line(answered);
    line.player.opened();
    line.at(3);
    line.player.take("a");
    line.at(30);
    QCOMPARE(line.done, QByteArrayList{"A"});
    line.player.take("b");
    line.at(31.999999);
    QCOMPARE(line.done, QByteArrayList{"A"});
    line.at(32);
    QCOMPARE(line.done, (QByteArrayList{"A", "B"}));
}

// The workstation's answer took half a second in the record and comes at once: the far end's pause of two
// seconds begins with it.
void TestLinesimPlayer::paceGoesOnFromTheWorkstationsAnswer()
{
    Line line(answered);
    line.player.opened();
    line.at(3);
    line.player.take("ab");
    line.at(4.999999);
    QCOMPARE(line.done, QByteArrayList{"A"});
    line.at(5);
    QCOMPARE(line.done, (QByteArrayList{"A", "B"}));
    line.player.closed();
    QCOMPARE(line.ends, same);
}

void TestLinesimPlayer::workstationMayBeAhead()
{
    Line line(answered);
    line.player.opened();
    line.player.take("ab");
    line.at(2);
    line.at(3.9);
    QCOMPARE(line.done, QByteArrayList{"A"});
    line.at(6);
    line.player.closed();
    QCOMPARE(line.done, (QByteArrayList{"A", "B"}));
    QCOMPARE(line.ends, same);
}

void TestLinesimPlayer::callsWhereTheRecordHasItCall()
{
    Line line("1.000000 1 F open\n2.000000 1 F 41\n3.000000 1 F close\n4.000000 2 F open\n");
    line.at(0.999999);
    QCOMPARE(line.done, QByteArrayList());
    line.at(1);
    line.at(1.5);
    QCOMPARE(line.done, QByteArrayList{"open"});
    line.player.opened();
    line.at(2.5);
    line.at(3.5);
    QCOMPARE(line.done, (QByteArrayList{"open", "A", "close"}));
    line.at(4.5);
    line.player.opened();
    QCOMPARE(line.done, (QByteArrayList{"open", "A", "close", "open"}));
    QCOMPARE(line.ends, same);
}

void TestLinesimPlayer::hangsUpWhereTheRecordDoes()
{
    Line line("0.000000 1 W open\n1.000000 1 F close\n2.000000 2 W open\n3.000000 2 F 41\n");
    line.player.opened();
    line.at(1);
    QCOMPARE(line.done, QByteArrayList{"close"});
    line.player.closed();
    line.player.opened();
    line.at(2);
    QCOMPARE(line.done, (QByteArrayList{"close", "A"}));
    QCOMPARE(line.ends, same);
}

void TestLinesimPlayer::otherByteIsADifference()
{
    Line line(answered);
    line.player.opened();
    line.at(3);
    line.player.take("ac");
    QCOMPARE(line.ends, QStringList(QStringLiteral(
                            "3.500000, connection 1: the workstation's byte 2 is 63, in the record 62")));
}

void TestLinesimPlayer::byteTooManyIsADifference()
{
    Line line(answered);
    line.player.opened();
    line.at(3);
    line.player.take("abc");
    QCOMPARE(line.ends,
             QStringList(QStringLiteral(
                 "3.500000, connection 1: the workstation's byte 3 is 63, and the record has no more")));
}

void TestLinesimPlayer::hangingUpTooSoonIsADifference()
{
    Line line(answered);
    line.player.opened();
    line.at(3);
    line.player.take("a");
    line.player.closed();
    QCOMPARE(line.ends, QStringList(QStringLiteral("3.500000, connection 1: the workstation hung up")));

    Line spoken(answered);
    spoken.player.opened();
    spoken.at(3);
    spoken.player.take("ab");
    spoken.player.closed();
    spoken.at(9);
    QCOMPARE(spoken.ends, QStringList(QStringLiteral("5.500000, connection 1: the workstation hung up")));
}

// It took half a second in the record, and a minute is the patience.
void TestLinesimPlayer::silenceIsADifferenceAfterItsTime()
{
    Line line(answered);
    line.player.opened();
    line.at(3);
    line.at(63.5);
    QCOMPARE(line.ends, QStringList());
    line.at(63.500001);
    QCOMPARE(line.ends, QStringList(QStringLiteral("3.500000, connection 1: the workstation is silent")));
}

void TestLinesimPlayer::callThatDoesNotComeIsADifference()
{
    Line line(answered);
    line.at(61);
    QCOMPARE(line.ends, QStringList());
    line.at(61.000001);
    QCOMPARE(line.ends,
             QStringList(QStringLiteral("1.000000, connection 1: the workstation does not connect")));
    Line staying("0.000000 1 W open\n1.000000 1 W close\n");
    staying.player.opened();
    staying.at(61.000001);
    QCOMPARE(staying.ends,
             QStringList(QStringLiteral("1.000000, connection 1: the workstation does not hang up")));
}

void TestLinesimPlayer::connectionTooManyIsADifference()
{
    Line line("0.000000 1 W open\n5.000000 1 F 41\n6.000000 1 W close\n");
    line.player.opened();
    line.player.closed();
    line.player.opened();
    QCOMPARE(line.ends,
             QStringList(QStringLiteral("5.000000, connection 1: a connection that the record has not")));
}

void TestLinesimPlayer::ignoredBytesAreLeftOutOnBothSides()
{
    RecordPlayer::Settings settings;
    settings.ignored = {'\x16', '\xBF'};
    Line line("0.000000 1 W open\n1.000000 1 W 16 61 BF 62\n2.000000 1 W 16\n3.000000 1 F 41\n", settings);
    line.player.opened();
    line.player.take("a\xBF\xBF\xBF");
    line.player.take("b");
    line.at(1);
    line.at(3);
    QCOMPARE(line.done, QByteArrayList{"A"});
    QCOMPARE(line.ends, same);
}

// They come as often as a call is long, and this one may be shorter than the one on record.
void TestLinesimPlayer::ignoredBytesOfTheFarEndMayBeMissed()
{
    RecordPlayer::Settings settings;
    settings.ignored = {'?', 'i'};
    const QByteArray statuses = "0.000000 1 W open\n1.000000 1 F 3F\n1.000001 1 W 69\n2.000000 1 F 3F 3F\n"
                                "2.500000 1 W close\n";
    Line line(statuses, settings);
    line.player.opened();
    line.at(1);
    line.player.closed();
    line.at(1.999998); // less than what lay between this step and the one before
    QCOMPARE(line.ends, QStringList());
    line.at(2);
    QCOMPARE(line.ends, same);
    QCOMPARE(line.done, QByteArrayList{"?"}); // nothing into a line that is gone

    Line answered(QByteArray(statuses).replace("3F 3F", "3F 41"), settings);
    answered.player.opened();
    answered.at(1);
    answered.player.closed();
    answered.at(2);
    QCOMPARE(answered.ends, QStringList(QStringLiteral("2.000000, connection 1: the workstation hung up")));
}

void TestLinesimPlayer::bytesOfAConnectionThatIsGoneDoNotReachTheNext()
{
    Line line("0.000000 1 W open\n1.000000 1 F 41\n2.000000 1 W close\n3.000000 2 W open\n3.500000 2 F 42\n");
    line.player.opened();
    line.player.closed();
    line.player.opened();
    line.at(9);
    QCOMPARE(line.done, QByteArrayList());
    QCOMPARE(line.ends, QStringList(QStringLiteral("1.000000, connection 1: the workstation hung up")));
}

void TestLinesimPlayer::afterADifferenceNothingIsPlayed()
{
    Line line(answered);
    line.player.opened();
    line.at(3);
    line.player.take("x");
    line.player.take("ab");
    line.player.closed();
    line.at(100);
    QCOMPARE(line.done, QByteArrayList{"A"});
    QCOMPARE(line.ends.size(), 1);
}

void TestLinesimPlayer::randomSessionsPlayAsTheyWere_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 200; ++seed)
        QTest::addRow("%u", seed) << seed;
}

namespace
{
/// A session of a few connections, as events in order.
QVector<LineRecord::Event> session(QRandomGenerator &random)
{
    QVector<LineRecord::Event> events;
    qint64 us = 0;
    const auto add = [&](int connection, LineRecord::Side side, LineRecord::Kind kind) {
        QByteArray bytes;
        for (int i = kind == LineRecord::Bytes ? random.bounded(1, 6) : 0; i > 0; --i)
            bytes += char(random.bounded(256));
        us += random.bounded(3000000);
        events.append({us, connection, side, kind, bytes});
    };
    const auto anySide = [&] { return LineRecord::Side(random.bounded(2)); };
    for (int connection = 1; connection <= 3; ++connection) {
        add(connection, anySide(), LineRecord::Open);
        for (int i = random.bounded(12); i > 0; --i)
            add(connection, anySide(), LineRecord::Bytes);
        add(connection, anySide(), LineRecord::Close);
    }
    return events;
}

/// A workstation that does its side of \a events, late or early by chance and byte by byte; without \a wrong
/// as it was, otherwise with one bit changed in its byte of that number, counted from 0.
void work(Line &line, const QVector<LineRecord::Event> &events, QRandomGenerator &random, int wrong = -1)
{
    qint64 us = 0;
    for (const LineRecord::Event &event : events) {
        us += 3000000 + random.bounded(1000000);
        line.player.tick(us);
        if (event.kind == LineRecord::Open)
            line.player.opened();
        else if (event.kind == LineRecord::Close)
            line.player.closed();
        else if (event.side == LineRecord::Workstation)
            for (const char byte : event.bytes)
                line.player.take(QByteArray(1, wrong-- == 0 ? char(byte ^ 1) : byte));
    }
    line.player.tick(us + 3000000);
}
} // namespace

void TestLinesimPlayer::randomSessionsPlayAsTheyWere()
{
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    const QVector<LineRecord::Event> events = session(random);
    QByteArray text;
    QByteArrayList expected;
    int said = 0;
    for (const LineRecord::Event &event : events) {
        text += recordLine(event) + '\n';
        if (event.side == LineRecord::FarEnd)
            expected << (event.kind == LineRecord::Open    ? QByteArray("open")
                         : event.kind == LineRecord::Close ? QByteArray("close")
                                                           : event.bytes);
        else
            said += event.bytes.size();
    }
    Line line(text);
    work(line, events, random);
    QCOMPARE(line.done, expected);
    QCOMPARE(line.ends, same);
    if (said == 0)
        return;
    Line other(text);
    work(other, events, random, random.bounded(said));
    QCOMPARE(other.ends.size(), 1);
    QVERIFY2(other.ends.first().contains(QStringLiteral(": the workstation's byte ")),
             qPrintable(other.ends.first()));
}

QTEST_GUILESS_MAIN(TestLinesimPlayer)
#include "test_linesim_player.moc"
