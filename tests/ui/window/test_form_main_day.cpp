#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "records/protocol.h"
#include "tests/ui/window/station.h"
#include "ui/form_main.h"
#include "ui/pages/archive_page.h"
#include "ui/pages/search_page.h"
#include "ui/roll/protocol_widget.h"

#include <QDateEdit>
#include <QtTest>

class TestFormMainDay : public QObject
{
    Q_OBJECT

private slots:
    void sameDayChangesNothing();
    void midnightClosesOneBookAndOpensTheNext();
    void midnightZeroesCountersAndKeepsTheFormerOnes();
    void clockSetBackADayIsAChangeToo();
    void counterOfTheNewDayIsShownInTheSameTick();
    void pickersGoToTodayAsTheirMaximum();
    void pickersFollowAClockSetBack();
    void searchPickersAreLeftAlone();
    void journalGoesToToday();
    void retentionRemovesWhatIsTooOld();
};

namespace
{
void toMidnight(Station &station)
{
    Time.setTo(QDateTime(QDate(2026, 7, 31), QTime(23, 59, 59)));
    station.tick();
}
} // namespace

void TestFormMainDay::sameDayChangesNothing()
{
    Station station(Direct);
    State.PK_in = 5;
    State.scanCountdown = 1000;
    (void)station.news();
    Time.setTo(QDateTime(QDate(2026, 7, 31), QTime(23, 59, 58)));
    station.tick();
    QCOMPARE(State.PK_in, 5);
    QVERIFY(station.news().isEmpty());
}

void TestFormMainDay::midnightClosesOneBookAndOpensTheNext()
{
    Station station(Direct);
    Log.Load();
    State.scanCountdown = 1000;
    TlgThread.stateText.mSet(QStringLiteral("Соединено"));
    station.form->slotOnTlgState(); // a line of its own in the old book
    toMidnight(station);
    QVERIFY(station.desk.read(QStringLiteral("prt/20260731.prt"))
                .endsWith(QByteArray("\n\x03"
                                     "00:00:00 Смена суток\n")));
    QCOMPARE(station.desk.journal(), (QStringList{QStringLiteral("300:00:00 Протокол открыт"), QString()}));
    QCOMPARE(Log.fileName, QDir::toNativeSeparators("prt/20260801.prt"));
    station.tick();
    QCOMPARE(station.desk.journal().size(), 2); // once
}

void TestFormMainDay::midnightZeroesCountersAndKeepsTheFormerOnes()
{
    Station station(CKS);
    State.PK_in = 1;
    State.PK_out = 2;
    State.CKS_in = 3;
    State.CKS_out = 4;
    State.EditorN = 5;
    toMidnight(station);
    QCOMPARE(State.YYYYMMDD, QStringLiteral("20260801"));
    QCOMPARE((QList<int>{State.PK_in, State.PK_out, State.CKS_in, State.CKS_out, State.EditorN}),
             (QList<int>{0, 0, 0, 0, 0}));
    QCOMPARE((QList<int>{State.prevPK_in, State.prevPK_out, State.prevCKS_in, State.prevCKS_out}),
             (QList<int>{1, 2, 3, 4}));
    QVERIFY(QDir(QStringLiteral("inp/20260801")).exists());
    QVERIFY(QDir(QStringLiteral("out/20260801")).exists());
}

void TestFormMainDay::clockSetBackADayIsAChangeToo()
{
    Station station(Direct);
    Log.Load();
    TlgThread.stateText.mSet(QStringLiteral("Соединено"));
    station.form->slotOnTlgState();
    const QByteArray today = station.desk.read(QStringLiteral("prt/20260731.prt"));
    QVERIFY(!today.isEmpty());
    State.PK_in = 9;
    Time.setTo(QDateTime(QDate(2026, 7, 30), QTime(23, 0)));
    station.tick(3);
    QCOMPARE(State.PK_in, 0);
    QCOMPARE(State.YYYYMMDD, QStringLiteral("20260730"));
    QCOMPARE(Log.fileName, QDir::toNativeSeparators("prt/20260730.prt"));
    // The former day's book got the line of the change and nothing behind it.
    QCOMPARE(station.desk.read(QStringLiteral("prt/20260731.prt")),
             today + QByteArray("\x03"
                                "23:00:01 Смена суток\n"));
}

void TestFormMainDay::counterOfTheNewDayIsShownInTheSameTick()
{
    Station station(CKS);
    State.PK_in = 77;
    toMidnight(station);
    QCOMPARE(station.shown("labelPKin"), QStringLiteral("000"));
    QCOMPARE(station.shown("labelClock"), QStringLiteral("00:00:00"));
}

void TestFormMainDay::pickersGoToTodayAsTheirMaximum()
{
    Station station(Direct);
    station.form->inputPage->date->setDate(QDate(2026, 7, 3));
    station.form->outputPage->date->setDate(QDate(2026, 7, 31));
    toMidnight(station);
    for (const char *name : {"dateInput", "dateOutput"}) {
        auto *picker = station.find<QDateEdit>(name);
        QCOMPARE(picker->date(), QDate(2026, 8, 1));
        QCOMPARE(picker->maximumDate(), QDate(2026, 8, 1));
        QCOMPARE(picker->displayFormat(), QStringLiteral("dd.MM.yyyy"));
    }
}

void TestFormMainDay::pickersFollowAClockSetBack()
{
    Station station(Direct);
    Time.setTo(QDateTime(QDate(2026, 7, 1), QTime(12, 0)));
    station.tick();
    QCOMPARE(station.form->inputPage->date->date(), QDate(2026, 7, 1));
    QCOMPARE(station.form->inputPage->date->maximumDate(), QDate(2026, 7, 1));
}

void TestFormMainDay::searchPickersAreLeftAlone()
{
    Station station(Direct);
    station.form->searchPage->from->setDate(QDate(2026, 7, 3));
    toMidnight(station);
    QCOMPARE(station.form->searchPage->from->date(), QDate(2026, 7, 3));
    QCOMPARE(station.form->searchPage->to->date(), QDate(2026, 7, 31));
    station.form->searchPage->to->setDate(QDate(2026, 8, 1)); // the new day can be chosen
    QCOMPARE(station.form->searchPage->to->date(), QDate(2026, 8, 1));
}

void TestFormMainDay::journalGoesToToday()
{
    Station station(Direct);
    station.form->protocolWidget->setDate(QDate(2026, 7, 30));
    toMidnight(station);
    QCOMPARE(station.form->protocolWidget->date(), QDate(2026, 8, 1));
    QVERIFY(station.form->protocolWidget->isLastString());
}

void TestFormMainDay::retentionRemovesWhatIsTooOld()
{
    // On 1 August with 10 days the limit is 22 July: its directories go, its journal stays one day longer.
    Station station(Direct, [] { Options.keepFilesDays = 10; });
    for (const char *day : {"20260721", "20260722", "20260723"}) {
        for (const char *root : {"inp/", "out/"})
            station.desk.write(QString::fromLatin1(root) + day + QStringLiteral("/a.001"), "А");
        station.desk.write(QStringLiteral("prt/") + day + QStringLiteral(".prt"), "А");
    }
    toMidnight(station);
    const QStringList kept{QStringLiteral("20260723"), QStringLiteral("20260801")};
    QCOMPARE(station.desk.names(QStringLiteral("inp")), kept);
    QCOMPARE(station.desk.names(QStringLiteral("out")), kept);
    const QStringList books = station.desk.names(QStringLiteral("prt"));
    QVERIFY(!books.contains(QStringLiteral("20260721.prt")));
    QVERIFY(books.contains(QStringLiteral("20260722.prt")));
    QVERIFY(books.contains(QStringLiteral("20260723.prt")));
}

QTEST_MAIN(TestFormMainDay)
#include "test_form_main_day.moc"
