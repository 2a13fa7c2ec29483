#include "app/state.h"
#include "tests/ui/window/archive_room.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace
{
/// Three days: the incoming and the outgoing telegram of each hold its date and a word.
class SearchRoom : public ArchiveRoom
{
public:
    SearchRoom() : ArchiveRoom(CArchivePage::Found), search(*form->searchPage)
    {
        for (const char *day : {"20260729", "20260730", "20260731"}) {
            desk.write(QStringLiteral("inp/%1/in%2").arg(day, day + 6), QByteArray("ПРИНЯТО ") + day);
            desk.write(QStringLiteral("out/%1/out%2").arg(day, day + 6), QByteArray("ПЕРЕДАНО ") + day);
        }
    }
    /// What the operator types, and Enter.
    void type(const QString &text) const
    {
        search.contains->setFocus();
        search.contains->selectAll();
        press(Qt::Key_Delete);
        for (const QChar letter : text) // keyClicks() knows Latin keys alone
            QTest::sendKeyEvent(QTest::Click, search.contains, Qt::Key_unknown, QString(letter), {});
        press(Qt::Key_Return);
        awaitSearch();
    }
    void clickSearch() const
    {
        click(search.search);
        awaitSearch();
    }
    [[nodiscard]] QString count() const { return search.count->text(); }
    [[nodiscard]] QList<QDate> days() const { return {search.from->date(), search.to->date()}; }

    CSearchPage &search;
};

const QDate First(2026, 7, 29), Second(2026, 7, 30), Third(2026, 7, 31);
} // namespace

/// The tab "Поиск": what is asked, what is found, and how the two days keep together.
class TestSearchTab : public QObject
{
    Q_OBJECT

private slots:
    void beginsWithTodayAndBothDirections();
    void rangeIsListedDayByDayReceivedFirst();
    void emptyTextListsAllFilesOfTheRange();
    void onlyCheckedDirectionsAreSearched_data();
    void onlyCheckedDirectionsAreSearched();
    void textIsClearedOfWhatNoTelegramHolds();
    void buttonAndEnterSearch();
    void countOfTheResultIsShown();
    void newSearchBeginsANewList();
    void endBeforeTheStartGivesAnEmptyResult();
    void daysFollowEachOther_data();
    void daysFollowEachOther();
    void noDayIsAfterToday();
    void typedDayCountsWhenTheSearchIsStarted();
    void changedDayClearsTheResult_data();
    void changedDayClearsTheResult();
    void textOnViewStaysWhenTheResultGoes();
    void unreadableFileIsLeftOut();
};

void TestSearchTab::beginsWithTodayAndBothDirections()
{
    const SearchRoom room;
    QCOMPARE(room.days(), (QList<QDate>{Third, Third}));
    QVERIFY(room.search.received->isChecked());
    QVERIFY(room.search.sent->isChecked());
    QCOMPARE(room.search.from->displayFormat(), "dd.MM.yyyy");
    QCOMPARE(room.count(), QString());
    QCOMPARE(room.rows(), QStringList());
}

void TestSearchTab::rangeIsListedDayByDayReceivedFirst()
{
    const SearchRoom room;
    room.search.from->setDate(First);
    room.type("О 2026");
    QCOMPARE(room.rows(), (QStringList{"in29", "out29", "in30", "out30", "in31", "out31"}));
    QCOMPARE(room.page.table->model()->index(0, 0).data().toString(), "29.07.2026");
}

void TestSearchTab::emptyTextListsAllFilesOfTheRange()
{
    const SearchRoom room;
    room.search.from->setDate(First);
    room.search.to->setDate(Second);
    room.type("");
    QCOMPARE(room.rows(), (QStringList{"in29", "out29", "in30", "out30"}));
}

void TestSearchTab::onlyCheckedDirectionsAreSearched_data()
{
    QTest::addColumn<bool>("received");
    QTest::addColumn<bool>("sent");
    QTest::addColumn<QStringList>("found");
    row("both", true, true, QStringList{"in31", "out31"});
    row("received", true, false, QStringList{"in31"});
    row("sent", false, true, QStringList{"out31"});
    row("none", false, false, QStringList());
}

void TestSearchTab::onlyCheckedDirectionsAreSearched()
{
    QFETCH(bool, received);
    QFETCH(bool, sent);
    QFETCH(QStringList, found);
    const SearchRoom room;
    if (!received)
        SearchRoom::click(room.search.received);
    if (!sent)
        SearchRoom::click(room.search.sent);
    room.clickSearch();
    QCOMPARE(room.rows(), found);
}

void TestSearchTab::textIsClearedOfWhatNoTelegramHolds()
{
    const SearchRoom room;
    room.type("п~р_иня[то");
    QCOMPARE(room.search.contains->text(), "ПРИНЯТО");
    QCOMPARE(room.rows(), QStringList{"in31"});
    room.type("_~");
    QCOMPARE(room.search.contains->text(), QString());
    QCOMPARE(room.rows(), (QStringList{"in31", "out31"})); // as with an empty one
}

void TestSearchTab::buttonAndEnterSearch()
{
    const SearchRoom room;
    room.search.contains->setText("ПЕРЕДАНО");
    room.clickSearch();
    QCOMPARE(room.rows(), QStringList{"out31"});
    room.type("ПРИНЯТО");
    QCOMPARE(room.rows(), QStringList{"in31"});
    room.search.search->setFocus();
    room.search.contains->setText("ПЕРЕДАНО");
    SearchRoom::press(Qt::Key_Space);
    room.awaitSearch();
    QCOMPARE(room.rows(), QStringList{"out31"});
}

void TestSearchTab::countOfTheResultIsShown()
{
    const SearchRoom room;
    room.search.from->setDate(First);
    room.type("ПРИНЯТО");
    QCOMPARE(room.count(), "Найдено: 3");
    QCOMPARE(room.form->searchRun->outcome(), CSearchRun::Whole);
    room.type("НИГДЕ");
    QCOMPARE(room.count(), "Найдено: 0");
    QVERIFY(QApplication::activeModalWidget() == nullptr);
}

void TestSearchTab::newSearchBeginsANewList()
{
    const SearchRoom room;
    room.type("ПРИНЯТО");
    room.type("ПЕРЕДАНО");
    QCOMPARE(room.rows(), QStringList{"out31"});
    room.type("ПЕРЕДАНО");
    QCOMPARE(room.rows(), QStringList{"out31"});
}

// "An end date before the start date gives an empty result and leaves the cleaned text in the field."
void TestSearchTab::endBeforeTheStartGivesAnEmptyResult()
{
    const SearchRoom room;
    {
        const QSignalBlocker quiet(room.search.to);
        room.search.to->setDate(First);
    }
    room.type("_принято");
    QCOMPARE(room.rows(), QStringList());
    QCOMPARE(room.search.contains->text(), "ПРИНЯТО");
    QCOMPARE(room.count(), "Найдено: 0");
}

void TestSearchTab::daysFollowEachOther_data()
{
    QTest::addColumn<QList<QDate>>("before");
    QTest::addColumn<bool>("start");
    QTest::addColumn<QDate>("day");
    QTest::addColumn<QList<QDate>>("after");
    using Days = QList<QDate>;
    row("start goes back", Days{Third, Third}, true, First, Days{First, Third});
    row("start within", Days{First, Third}, true, Second, Days{Second, Third});
    row("start past the end", Days{First, Second}, true, Third, Days{Third, Third});
    row("end goes on", Days{First, First}, false, Third, Days{First, Third});
    row("end within", Days{First, Third}, false, Second, Days{First, Second});
    row("end before the start", Days{Second, Third}, false, First, Days{First, First});
    row("start after today", Days{First, Second}, true, QDate(2026, 8, 5), Days{Third, Third});
    row("end after today", Days{First, Second}, false, QDate(2027, 1, 1), Days{First, Third});
}

void TestSearchTab::daysFollowEachOther()
{
    QFETCH(QList<QDate>, before);
    QFETCH(bool, start);
    QFETCH(QDate, day);
    QFETCH(QList<QDate>, after);
    const SearchRoom room;
    room.search.from->setDate(before.at(0));
    room.search.to->setDate(before.at(1));
    QCOMPARE(room.days(), before);
    (start ? room.search.from : room.search.to)->setDate(day);
    QCOMPARE(room.days(), after);
}

void TestSearchTab::noDayIsAfterToday()
{
    const SearchRoom room;
    for (QDateEdit *day : {room.search.from, room.search.to}) {
        day->setFocus();
        SearchRoom::press(Qt::Key_Up);
        QCOMPARE(room.days(), (QList<QDate>{Third, Third}));
    }
}

void TestSearchTab::typedDayCountsWhenTheSearchIsStarted()
{
    const SearchRoom room;
    room.search.from->setFocus();
    room.search.from->setSelectedSection(QDateTimeEdit::DaySection);
    QTest::keyClicks(room.search.from, "29");
    QCOMPARE(room.days(), (QList<QDate>{Third, Third}));
    room.clickSearch();
    QCOMPARE(room.days(), (QList<QDate>{First, Third}));
    QCOMPARE(room.rows().size(), 6);
}

void TestSearchTab::changedDayClearsTheResult_data()
{
    QTest::addColumn<bool>("start");
    row("start", true);
    row("end", false);
}

void TestSearchTab::changedDayClearsTheResult()
{
    QFETCH(bool, start);
    const SearchRoom room;
    room.search.from->setDate(First);
    room.type("");
    QCOMPARE(room.rows().size(), 6);
    (start ? room.search.from : room.search.to)->setDate(Second);
    QCOMPARE(room.rows(), QStringList());
    QCOMPARE(room.count(), QString());
}

void TestSearchTab::textOnViewStaysWhenTheResultGoes()
{
    const SearchRoom room;
    room.type("");
    room.click("in31");
    QCOMPARE(room.text(), "ПРИНЯТО 20260731");
    room.search.from->setDate(First);
    QCOMPARE(room.selected(), QString());
    QCOMPARE(room.text(), "ПРИНЯТО 20260731");
}

void TestSearchTab::unreadableFileIsLeftOut()
{
    SearchRoom room;
    QVERIFY(QFile::link("/dev/zero", room.pathOf("zero")));
    (void)room.news();
    room.type("ПРИНЯТО");
    QCOMPARE(room.rows(), QStringList{"in31"});
    QVERIFY(room.news().isEmpty());
}

QTEST_MAIN(TestSearchTab)
#include "test_search_tab.moc"
