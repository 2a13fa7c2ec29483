// A workstation that is killed in the middle of an automatic send over a switched line has spent a try and
// lost nothing: the file stands in the queue, or among the sent ones once its delivery was proven.

#include "tests/e2e/station.h"
#include "tests/e2e/switch_end.h"
#include "tests/support/row.h"

#include <QtTest>

class TestE2eSkkKill : public QObject
{
    Q_OBJECT

private slots:
    void killedBeforeTheProofSendsAgain_data();
    void killedBeforeTheProofSendsAgain();
    void killedBehindTheProofSendsNoMore_data();
    void killedBehindTheProofSendsNoMore();
    void killedInTheLastTryWaitsForTheOperator();
};

namespace
{
const QString fastClock = QStringLiteral("@2026-07-31 12:00:00 x40");
const QString name = QStringLiteral("20260731u001");
const QString queued = QStringLiteral("out/") + name;
const QString sent = QStringLiteral("out/20260731/") + name + QStringLiteral(".000");
const QByteArray text =
    "ЗЦЗЦ П001\r\n" + QByteArray("СТРОКА ДЛЯ ОДНОГО АБОНЕНТА=\r\n").repeated(8) + "НННН  \r\n";

/// Its pauses are so long that it is caught within each.
class SlowStation : public Station
{
public:
    SlowStation(const SwitchEnd &network, int tries)
    {
        fakeTime(fastClock);
        callTo(network.port);
        set(QStringLiteral("CONNECT/processMode"), QStringLiteral("1"));
        set(QStringLiteral("CONNECT/TimeOut"), QStringLiteral("60"));
        set(QStringLiteral("DORAL/AO"), QStringLiteral("654321 ЗНАМЯ"));
        set(QStringLiteral("DORAL/Idle_Time_Before_HangUp_0"), QStringLiteral("80"));
        setPauses(50);
        write(queued, text);
        write(queued + QStringLiteral(".dat"), record(tries));
    }
    void setPauses(int seconds)
    {
        for (const char *key : {"Pause_Before_Ask_Who_0", "Pause_Before_Ask_Who2_0", "Wait_AA_0",
                                "Pause_Before_Send_File_0", "Pause_Before_Send_Answer_AA_0"})
            set(QStringLiteral("DORAL/") + QLatin1String(key), QString::number(seconds));
    }
    /// Another run, at a usual pace.
    void startAgain()
    {
        QVERIFY(QFile::remove(path(QStringLiteral("velda.ini"))));
        setPauses(8);
        start();
    }
    static QByteArray record(int tries)
    {
        return "112233|S|01.01.2020 00:00|u|" + QByteArray::number(tries) + "|N|";
    }
    QByteArray record() const { return read(queued + QStringLiteral(".dat")); }
};

QStringList subscriber(const QString &habits)
{
    return {QStringLiteral("--subscriber"), QStringLiteral("112233:112233 |ЗАРЯ:") + habits};
}

void addMoment(const char *state, const char *habits, const char *event, int times = 1)
{
    row(state, QString::fromUtf8(habits), QString::fromUtf8(event), times);
}

void momentColumns()
{
    QTest::addColumn<QString>("habits"); // of the first call
    QTest::addColumn<QString>("event");
    QTest::addColumn<int>("times"); // how often the event comes before the end
}
} // namespace

void TestE2eSkkKill::killedBeforeTheProofSendsAgain_data()
{
    momentColumns();
    addMoment("as the number goes out", "nothing", "text: 2 @C");
    addMoment("waiting for the result", "nothing", "result: 112233 nothing");
    addMoment("connected", "first=none", "up: to 112233");
    addMoment("first question out", "first=none", "question: 112233");
    addMoment("second question out", "first=none", "question: 112233", 2);
    addMoment("answerback received", "", "answers: 112233");
    addMoment("own answerback sent", "", "answerback: 112233");
    addMoment("text going out", "", "ЗЦЗЦ");
    addMoment("text gone", "", "НННН");
    addMoment("last question out", "last=none", "last question: 112233");
}

void TestE2eSkkKill::killedBeforeTheProofSendsAgain()
{
    QFETCH(QString, habits);
    QFETCH(QString, event);
    QFETCH(int, times);
    SwitchEnd network(fastClock, subscriber(habits + QLatin1Char('/')));
    SlowStation station(network, 3);
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(network.count(event) >= times, 60000);
    station.kill();
    QCOMPARE(station.read(queued), text);
    QCOMPARE(station.record(), SlowStation::record(2));
    QCOMPARE(station.tree(QStringLiteral("out")), QStringList({name, name + QStringLiteral(".dat")}));

    station.startAgain();
    QTRY_COMPARE_WITH_TIMEOUT(station.read(sent), text, 60000);
    // The record goes behind the file.
    QTRY_VERIFY_WITH_TIMEOUT(!QFile::exists(station.path(queued + QStringLiteral(".dat"))), PatienceMs);
    QVERIFY(!QFile::exists(station.path(queued)));
    QTRY_VERIFY_WITH_TIMEOUT(network.count(QStringLiteral("got: 112233 ЗЦЗЦ П001")) >= 1, PatienceMs);
    QVERIFY(station.end());
    QVERIFY2(network.quit(), qPrintable(network.violations().join(QLatin1Char('\n'))));
}

void TestE2eSkkKill::killedBehindTheProofSendsNoMore_data()
{
    momentColumns();
    addMoment("delivery proven", "", "Файл отправлен");
    addMoment("own answerback sent", "", "answerback: 112233", 2);
}

void TestE2eSkkKill::killedBehindTheProofSendsNoMore()
{
    QFETCH(QString, event);
    QFETCH(int, times);
    SwitchEnd network(fastClock, subscriber(QString()));
    SlowStation station(network, 3);
    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(station.read(sent), text, 60000);
    QTRY_COMPARE_WITH_TIMEOUT(station.tree(QStringLiteral("out")),
                              QStringList(QStringLiteral("20260731/") + name + QStringLiteral(".000")),
                              PatienceMs);
    if (times > 1)
        QTRY_VERIFY_WITH_TIMEOUT(network.count(event) >= times, 60000);
    station.kill();
    QCOMPARE(station.read(sent), text);
    QCOMPARE(station.tree(QStringLiteral("out")),
             QStringList(QStringLiteral("20260731/") + name + QStringLiteral(".000")));

    station.startAgain();
    QTRY_COMPARE_WITH_TIMEOUT(network.count(QStringLiteral("ready:")), 2, 60000);
    network.command(QStringLiteral("call 112233"));
    QTRY_COMPARE_WITH_TIMEOUT(network.count(QStringLiteral("up: from 112233")), 1, 60000);
    QTRY_COMPARE_WITH_TIMEOUT(network.count(QStringLiteral("down: 112233 by the network")), 1, 60000);
    // The counter of sent telegrams reaches the disk at an orderly end alone, and the books miss the one.
    QVERIFY(station.leave());
    QCOMPARE(network.count(QStringLiteral("dialled: ")), 1);
    QCOMPARE(station.read(sent), text);
    QVERIFY2(network.quit(), qPrintable(network.violations().join(QLatin1Char('\n'))));
}

void TestE2eSkkKill::killedInTheLastTryWaitsForTheOperator()
{
    SwitchEnd network(fastClock, subscriber(QStringLiteral("first=none")));
    SlowStation station(network, 1);
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(network.count(QStringLiteral("question: ")) > 0, 60000);
    station.kill();
    QCOMPARE(station.record(), SlowStation::record(0));
    QCOMPARE(station.read(queued), text);

    station.startAgain();
    QTRY_COMPARE_WITH_TIMEOUT(network.count(QStringLiteral("ready:")), 2, 60000);
    network.command(QStringLiteral("call 112233"));
    QTRY_COMPARE_WITH_TIMEOUT(network.count(QStringLiteral("down: 112233 by the network")), 1, 60000);
    QVERIFY(station.end());
    QCOMPARE(network.count(QStringLiteral("dialled: ")), 1);
    QCOMPARE(station.record(), SlowStation::record(0));
    QCOMPARE(station.read(queued), text);
    QVERIFY2(network.quit(), qPrintable(network.violations().join(QLatin1Char('\n'))));
}

QTEST_GUILESS_MAIN(TestE2eSkkKill)
#include "test_e2e_skk_kill.moc"
