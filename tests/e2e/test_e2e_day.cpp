#include "tests/e2e/far_end.h"
#include "tests/e2e/station.h"

#include <QRegularExpression>
#include <QtTest>

// The change of day in the running program, at speed.
namespace
{
/// The lines with a stamp of the first seconds of the day as of its first: at speed a busy machine's tick is
/// late.
QStringList atMidnight(QStringList lines)
{
    return lines.replaceInStrings(QRegularExpression(QStringLiteral("^00:00:0[0-9] ")),
                                  QStringLiteral("00:00:00 "));
}
} // namespace

class TestE2eDay : public QObject
{
    Q_OBJECT

private slots:
    void midnightClosesOneDayAndOpensTheNext();
    void midnightAppliesRetention();
    void midnightComesWhileATelegramIsOnTheWay();
    void startOnALaterDayChangesTheDay();
    void clockSetBackChangesTheDay();
    void offsetMovesMidnight();
};

void TestE2eDay::midnightClosesOneDayAndOpensTheNext()
{
    FarEnd farEnd;
    Station station;
    station.callTo(farEnd.port);
    station.fakeTime(QStringLiteral("@2026-07-31 23:59:40 x4"));
    const QString evening = telegram(QStringLiteral("ВЕЧЕР\r\n"));
    const QString night = telegram(QStringLiteral("НОЧЬ\r\n"));
    station.write(QStringLiteral("out/20260731u001.260731_000000"), evening.toUtf8());
    station.write(QStringLiteral("out/20260801u001.260801_000004"), night.toUtf8());
    station.start();
    const QStringList both = {evening, night};
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.telegrams(), both, 40000);
    QTRY_VERIFY_WITH_TIMEOUT(
        station.tree(QStringLiteral("out")).contains(QStringLiteral("20260801/20260801u001.260801_000004")),
        10000);
    const QStringList oldDay = station.journalOf(QStringLiteral("20260731"));
    const QStringList newDay = station.journalOf(QStringLiteral("20260801"));
    QCOMPARE(atMidnight(oldDay.filter(QStringLiteral("Смена суток"))).last(),
             QStringLiteral("00:00:00 Смена суток"));
    QVERIFY(oldDay.filter(QStringLiteral("Отправка файла: 20260731u001")).size() == 1);
    QVERIFY(oldDay.filter(QStringLiteral("260801_000004")).isEmpty());
    QCOMPARE(atMidnight(newDay).first(), QStringLiteral("00:00:00 Протокол открыт"));
    QVERIFY(newDay.filter(QStringLiteral("Отправка файла: 20260801u001")).size() == 1);
    QVERIFY(station.names(QStringLiteral("inp")).contains(QStringLiteral("20260801")));
    QCOMPARE(station.state(QStringLiteral("YYYYMMDD")), QStringLiteral("20260801"));
    QCOMPARE(station.state(QStringLiteral("PK_out")), QStringLiteral("1"));
    QVERIFY(station.end());
}

// 240 days before 2026-08-01 is 2025-12-04: its directories go, its journal stays.
void TestE2eDay::midnightAppliesRetention()
{
    Station station;
    station.fakeTime(QStringLiteral("@2026-07-31 23:59:50 x4"));
    for (const char *name : {"inp/20251204/a", "inp/20251205/a", "inp/other/a", "out/20251204/b",
                             "out/20251205/b", "prt/20251203.prt", "prt/20251204.prt", "prt/notes.txt"})
        station.write(QString::fromLatin1(name), "x");
    station.write(QStringLiteral("velda_state.ini"), "[STATE]\nYYYYMMDD=20260731\n");
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral(" Удаление 20251203.prt")), 30000);
    QCOMPARE(station.names(QStringLiteral("inp")),
             QStringList({QStringLiteral("20251205"), QStringLiteral("20260801"), QStringLiteral("other")}));
    QCOMPARE(station.names(QStringLiteral("out")),
             QStringList({QStringLiteral("20251205"), QStringLiteral("20260801")}));
    QTRY_VERIFY(!station.names(QStringLiteral("prt")).contains(QStringLiteral("20251203.prt")));
    QVERIFY(station.names(QStringLiteral("prt")).contains(QStringLiteral("20251204.prt")));
    QVERIFY(station.names(QStringLiteral("prt")).contains(QStringLiteral("notes.txt")));
    const QStringList newDay = station.journalOf(QStringLiteral("20260801"));
    const QStringList expected = {QStringLiteral("00:00:00 Протокол открыт"),
                                  QStringLiteral("00:00:00 Удаление каталога inp/20251204"),
                                  QStringLiteral("00:00:00 Удаление каталога out/20251204"),
                                  QStringLiteral("00:00:00 Удаление 20251203.prt")};
    QCOMPARE(atMidnight(newDay.mid(0, 4)), expected);
    QVERIFY(station.leave());
}

// The far end gives no window until the new day: the text begins in the old journal's day and the telegram
// is whole, moved into the new day's directory.
void TestE2eDay::midnightComesWhileATelegramIsOnTheWay()
{
    FarEnd farEnd({QStringLiteral("--no-windows")});
    Station station;
    station.callTo(farEnd.port);
    station.fakeTime(QStringLiteral("@2026-07-31 23:59:40 x4"));
    const QString text = telegram(QStringLiteral("ЧЕРЕЗ ПОЛНОЧЬ"), 300);
    station.write(QStringLiteral("out/20260731u001.260731_000000"), text.toUtf8());
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral("Отправка файла: ")), PatienceMs);
    farEnd.command(QStringLiteral("grant 30"));
    QTRY_VERIFY_WITH_TIMEOUT(!farEnd.lines.filter(QStringLiteral("text: 30 ")).isEmpty(), PatienceMs);
    QTRY_VERIFY_WITH_TIMEOUT(!station.read(QStringLiteral("prt/20260801.prt")).isEmpty(), PatienceMs);
    farEnd.command(QStringLiteral("windows on"));
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.telegrams(), QStringList(text), PatienceMs);
    QTRY_COMPARE_WITH_TIMEOUT(station.tree(QStringLiteral("out")),
                              QStringList(QStringLiteral("20260801/20260731u001.260731_000000")), PatienceMs);
    QVERIFY(station.end());
}

void TestE2eDay::startOnALaterDayChangesTheDay()
{
    Station station;
    station.fakeTime(QStringLiteral("@2026-07-31 12:00:00"));
    station.write(QStringLiteral("velda_state.ini"),
                  "[STATE]\nYYYYMMDD=20260729\nPK_in=5\nPK_out=7\nEditorN=3\n");
    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(station.state(QStringLiteral("YYYYMMDD")), QStringLiteral("20260731"),
                              PatienceMs);
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral("Протокол открыт")), PatienceMs);
    QCOMPARE(station.state(QStringLiteral("PK_in")), QStringLiteral("0"));
    QCOMPARE(station.state(QStringLiteral("PK_out")), QStringLiteral("0"));
    QCOMPARE(station.state(QStringLiteral("EditorN")), QStringLiteral("0"));
    QCOMPARE(station.names(QStringLiteral("inp")), QStringList(QStringLiteral("20260731")));
    QCOMPARE(station.names(QStringLiteral("out")), QStringList(QStringLiteral("20260731")));
    QVERIFY(station.end());
}

// A day stored that lies ahead of the clock is a change like any other.
void TestE2eDay::clockSetBackChangesTheDay()
{
    Station station;
    station.fakeTime(QStringLiteral("@2026-07-30 12:00:00"));
    station.write(QStringLiteral("velda_state.ini"), "[STATE]\nYYYYMMDD=20260731\nPK_out=7\n");
    station.write(QStringLiteral("prt/20260731.prt"), "\x03"
                                                      "12:00:00 Старое\n");
    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(station.state(QStringLiteral("YYYYMMDD")), QStringLiteral("20260730"),
                              PatienceMs);
    QVERIFY(station.end());
    QCOMPARE(station.state(QStringLiteral("PK_out")), QStringLiteral("0"));
    QCOMPARE(station.read(QStringLiteral("prt/20260731.prt")), QByteArray("\x03"
                                                                          "12:00:00 Старое\n"));
    QVERIFY(station.journalOf(QStringLiteral("20260730"))
                .join(QLatin1Char('\n'))
                .contains(QStringLiteral("Выход")));
}

// With an offset of 3 hours the day changes at 03:00 of the local clock.
void TestE2eDay::offsetMovesMidnight()
{
    Station station;
    station.set(QStringLiteral("OTHER/TZ"), QStringLiteral("3"));
    station.fakeTime(QStringLiteral("@2026-08-01 02:59:50 x4"));
    station.write(QStringLiteral("velda_state.ini"), "[STATE]\nYYYYMMDD=20260731\n");
    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(
        atMidnight(station.journalOf(QStringLiteral("20260731")).filter(QStringLiteral("Смена суток"))),
        QStringList(QStringLiteral("00:00:00 Смена суток")), PatienceMs);
    QVERIFY(station.journalOf(QStringLiteral("20260731")).first().startsWith(QStringLiteral("23:59:5")));
    QVERIFY(station.end());
}

QTEST_GUILESS_MAIN(TestE2eDay)
#include "test_e2e_day.moc"
