#include "tests/e2e/far_end.h"
#include "tests/e2e/process_memory.h"
#include "tests/e2e/station.h"
#include "tests/support/row.h"

#include <QtTest>

// A far end that misbehaves: the program stays up, small and ready, and loses no whole telegram.
class TestE2eNoise : public QObject
{
    Q_OBJECT

private slots:
    void noiseIsSurvived_data();
    void noiseIsSurvived();
    void floodIsSurvived();
    void halfCommandEndsWithItsConnection();
    void closingInAnyStateIsSurvived_data();
    void closingInAnyStateIsSurvived();
};

namespace
{
constexpr int SmallKilobytes = 250000; // resident, the day's journal with 10 MB of noise included
constexpr int SanitizedKilobytes = 1500000;

const QString queued = QStringLiteral("out/20200101u001.200101_000000");

bool isSmall(const Station &station)
{
    const qint64 highest = highestResidentKilobytes(station.process.processId());
    return highest > 0 && highest < (isSanitized() ? SanitizedKilobytes : SmallKilobytes);
}

/// Both directions work on the connection that is there.
void verifyReady(Station &station, FarEnd &farEnd, const QString &out)
{
    const QString in = telegram(QStringLiteral("ПОСЛЕ ПОМЕХ\r\n"));
    farEnd.send(QStringLiteral("\r\n") + in + QStringLiteral("\r\n"));
    QTRY_VERIFY_WITH_TIMEOUT(station.received().contains(in), 60000);
    QTRY_VERIFY_WITH_TIMEOUT(farEnd.telegrams().contains(out), 60000);
    QCOMPARE(farEnd.telegrams().size(), 1);
}
} // namespace

void TestE2eNoise::noiseIsSurvived_data()
{
    QTest::addColumn<QString>("processMode");
    row("centre", "0");
    row("switched", "1");
    row("direct", "2");
}

// 10 MB, twenty blocks of half a megabyte.
void TestE2eNoise::noiseIsSurvived()
{
    QFETCH(QString, processMode);
    FarEnd farEnd({QStringLiteral("--keep-alive"), QStringLiteral("0")});
    Station station;
    station.set(QStringLiteral("CONNECT/processMode"), processMode);
    station.callTo(farEnd.port);
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(farEnd.has(QStringLiteral("keep-alive: answered")), PatienceMs);
    for (int block = 0; block < 20; ++block)
        farEnd.command(QStringLiteral("noise 500000 %1").arg(block));
    const auto taken = [&] {
        return station.read(QStringLiteral("prt/") + station.names(QStringLiteral("prt")).value(0)).size();
    };
    // Half the bytes are no characters at all; the rest are 1 or 2 bytes each in the journal.
    QTRY_VERIFY_WITH_TIMEOUT(taken() > 6000000, 120000);
    QVERIFY2(isSmall(station),
             qPrintable(QString::number(highestResidentKilobytes(station.process.processId()))));
    farEnd.command(QStringLiteral("text \\r\\nПОСЛЕ ПОМЕХ\\r\\n"));
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral("ПОСЛЕ ПОМЕХ<>")), 60000);
    // Of connections that noise makes and ends within a second the last one alone is stored.
    QVERIFY(station.leave());
}

void TestE2eNoise::floodIsSurvived()
{
    FarEnd farEnd;
    Station station;
    station.callTo(farEnd.port);
    const QString out = telegram(QStringLiteral("СКВОЗЬ ПОТОК\r\n"));
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(farEnd.has(QStringLiteral("keep-alive: answered")), PatienceMs);
    farEnd.command(QStringLiteral("flood 3000000"));
    station.write(queued, out.toUtf8());
    verifyReady(station, farEnd, out);
    QVERIFY(isSmall(station));
    QVERIFY(station.end());
}

// "@N12" would wait for the rest of the number; on the next connection text is text again.
void TestE2eNoise::halfCommandEndsWithItsConnection()
{
    FarEnd farEnd;
    Station station;
    station.callTo(farEnd.port);
    station.fakeTime(QStringLiteral("@2026-07-31 12:00:00 x4"));
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(farEnd.has(QStringLiteral("keep-alive: answered")), PatienceMs);
    farEnd.command(QStringLiteral("half-command"));
    QTest::qWait(500);
    farEnd.command(QStringLiteral("close"));
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.lines.filter(QStringLiteral("connected: ")).size(), 2, PatienceMs);
    const QString out = telegram(QStringLiteral("ДАЛЕЕ\r\n"));
    station.write(queued, out.toUtf8());
    verifyReady(station, farEnd, out);
    QVERIFY(!station.logged(QStringLiteral("@N")));
    QVERIFY(station.end());
}

void TestE2eNoise::closingInAnyStateIsSurvived_data()
{
    QTest::addColumn<QStringList>("faults");
    row("at once", QStringList{"--do", "drop"});
    row("in the first second", QStringList{"--after", "300:close"});
    row("after one byte", QStringList{"--silent", "--do", "raw 16", "--after", "20:drop"});
    row("as it begins to talk", QStringList{"--after", "550:drop"});
    row("in the middle of a command", QStringList{"--after", "700:half-command", "--after", "800:drop"});
    row("in the middle of a telegram in",
        QStringList{"--after", "700:text ЗЦЗЦ ПОЛ\\r\\n", "--after", "900:drop"});
    row("in the middle of a telegram out", QStringList{"--window-pause", "300", "--after", "3500:drop"});
    row("while a window is due", QStringList{"--no-windows", "--after", "3500:close"});
}

// The fault comes on every connection until a far end without faults takes its place.
void TestE2eNoise::closingInAnyStateIsSurvived()
{
    QFETCH(QStringList, faults);
    Station station;
    station.fakeTime(QStringLiteral("@2026-07-31 12:00:00 x10"));
    const QString out = telegram(QStringLiteral("НЕСМОТРЯ НИ НА ЧТО"), 200);
    quint16 port = 0;
    {
        FarEnd faulty(faults);
        port = faulty.port;
        station.callTo(port);
        station.write(queued, out.toUtf8());
        station.start();
        QTRY_VERIFY_WITH_TIMEOUT(!faulty.lines.filter(QStringLiteral("closed: ")).isEmpty(), 30000);
        QVERIFY(station.isRunning());
    }
    // With nobody listening a failed attempt costs a minute of back-off, six seconds here.
    FarEnd sound({QStringLiteral("--listen"), QString::number(port), QStringLiteral("--window-pause"),
                  QStringLiteral("0")});
    const QString in = telegram(QStringLiteral("СНОВА\r\n"));
    sound.send(in);
    // The half telegram of a fault has no end of its own and stands before it.
    QTRY_VERIFY_WITH_TIMEOUT(station.received().join(QString()).endsWith(in), 60000);
    QCOMPARE(station.received().size(), 1);
    QTRY_VERIFY_WITH_TIMEOUT(station.names(QStringLiteral("out"), QStringLiteral("*u*")).isEmpty(), 30000);
    QVERIFY(station.end());
}

QTEST_GUILESS_MAIN(TestE2eNoise)
#include "test_e2e_noise.moc"
