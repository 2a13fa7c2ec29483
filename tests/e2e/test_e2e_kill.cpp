#include "tests/e2e/far_end.h"
#include "tests/e2e/station.h"

#include <QtTest>

// A process that is killed leaves whole files behind, and the next one goes on from them.
class TestE2eKill : public QObject
{
    Q_OBJECT

private slots:
    void killedWhileSendingSendsTheFileAgain();
    void killedWhileReceivingKeepsWhatWasStored();
};

namespace
{
const QString queued = QStringLiteral("20200101u001.200101_000000");

/// The journal of one day grows by what comes; what stands in its file stays as it is.
void verifyGrown(const QByteArray &before, const QByteArray &after)
{
    QVERIFY(before.count('\n') > 5);
    QVERIFY(after.size() > before.size());
    QCOMPARE(after.left(before.size()), before);
}

QString journalName(const Station &station)
{
    return QStringLiteral("prt/") + station.names(QStringLiteral("prt")).value(0);
}
} // namespace

void TestE2eKill::killedWhileSendingSendsTheFileAgain()
{
    FarEnd farEnd({QStringLiteral("--window-pause"), QStringLiteral("150")});
    Station station;
    station.callTo(farEnd.port);
    const QString text = telegram(QStringLiteral("ПРЕРВАННАЯ"), 600);
    station.write(QStringLiteral("out/") + queued, text.toUtf8());
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(farEnd.text().contains(QStringLiteral("СТРОКА 0003")), 30000);
    QVERIFY(farEnd.telegrams().isEmpty());
    station.kill();
    QCOMPARE(station.state(QStringLiteral("PK_out")), QStringLiteral("1"));
    QCOMPARE(station.names(QStringLiteral("out"), QStringLiteral("*u*")), QStringList(queued));
    QCOMPARE(station.read(QStringLiteral("out/") + queued), text.toUtf8());
    const QByteArray journal = station.read(journalName(station));

    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.telegrams(), QStringList(text), 40000);
    QTRY_COMPARE_WITH_TIMEOUT(station.names(QStringLiteral("out"), QStringLiteral("*u*")), QStringList(),
                              10000);
    QVERIFY(station.end());
    QCOMPARE(station.state(QStringLiteral("PK_out")), QStringLiteral("2"));
    verifyGrown(journal, station.read(journalName(station)));
    QCOMPARE(station.count(QStringLiteral(" Запуск ")), 2);
    QCOMPARE(station.count(QStringLiteral(" Выход")), 1);
    QCOMPARE(farEnd.violations(), QStringList());
}

void TestE2eKill::killedWhileReceivingKeepsWhatWasStored()
{
    FarEnd farEnd({QStringLiteral("--speed"), QStringLiteral("300")});
    Station station;
    station.callTo(farEnd.port);
    const QString first = telegram(QStringLiteral("ЦЕЛАЯ\r\n"));
    const QString second = telegram(QStringLiteral("ПРЕРВАННАЯ"), 900);
    farEnd.send(first);
    farEnd.send(second);
    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(station.received(), QStringList(first), 30000);
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral("СТРОКА 0004")), 30000);
    station.kill();
    QCOMPARE(station.received(), QStringList(first));
    QCOMPARE(station.state(QStringLiteral("PK_in")), QStringLiteral("1"));
    const QByteArray journal = station.read(journalName(station));

    station.start();
    const QStringList both = {first, second};
    QTRY_COMPARE_WITH_TIMEOUT(station.received(), both, 40000);
    QVERIFY(station.end());
    QCOMPARE(station.state(QStringLiteral("PK_in")), QStringLiteral("2"));
    verifyGrown(journal, station.read(journalName(station)));
}

QTEST_GUILESS_MAIN(TestE2eKill)
#include "test_e2e_kill.moc"
