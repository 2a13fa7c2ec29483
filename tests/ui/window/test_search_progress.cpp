#include "app/state.h"
#include "records/protocol.h"
#include "tests/ui/window/archive_room.h"
#include "ui/dialogs/search_progress_dialog.h"
#include "ui/window/search_run.h"

#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>

namespace
{
constexpr qint64 Endless = qint64(1) << 40; ///< bytes of a file without content: no test is as long

/// Something is found at once, and what comes behind it takes long.
class LongSearch : public ArchiveRoom
{
public:
    LongSearch() : ArchiveRoom(CArchivePage::Found), run(*form->searchRun)
    {
        put("a", "ТЕКСТ");
        put("b", "ТЕКСТ");
        put("c", "");
        put("d", "ТЕКСТ");
        QVERIFY(QFile::resize(pathOf("c"), Endless));
        form->searchPage->from->setDate(QDate(2026, 7, 1));
        form->searchPage->contains->setText("ТЕКСТ");
        click(form->searchPage->search);
        QTRY_COMPARE(rows(), Found); // and still going on
        QCOMPARE(run.outcome(), CSearchRun::Running);
    }
    /// The box, once it is there.
    [[nodiscard]] CSearchProgressDialog *box() const
    {
        CSearchProgressDialog *box = nullptr;
        (void)comesTrue([&box] {
            box = qobject_cast<CSearchProgressDialog *>(QApplication::activeModalWidget());
            return box != nullptr;
        });
        return box;
    }
    [[nodiscard]] bool hasBox() const { return form->findChild<CSearchProgressDialog *>() != nullptr; }
    [[nodiscard]] QString count() const { return form->searchPage->count->text(); }

    CSearchRun &run;
    const QStringList Found{"a", "b"};
};
} // namespace

/// A search that takes its time: the window goes on, and the operator can end it.
class TestSearchProgress : public QObject
{
    Q_OBJECT

private slots:
    void boxTellsHowFarItIs();
    void cancelKeepsWhatWasFound_data();
    void cancelKeepsWhatWasFound();
    void tickLineAndJournalGoOn();
    void anotherSearchTakesItsPlace();
    void changedDayEndsIt();
    void newDayLeavesItAlone();
    void textOfAHitCanBeReadMeanwhile();
    void closeOfTheProgramEndsIt();
    void windowGoesInItsMidst();
    void manyShortFilesAreFoundToTheLast();
};

void TestSearchProgress::boxTellsHowFarItIs()
{
    const LongSearch room;
    CSearchProgressDialog *box = room.box();
    QVERIFY(box != nullptr);
    QVERIFY(box->windowModality() == Qt::WindowModal);
    const auto *days = box->findChild<QProgressBar *>("days");
    QCOMPARE(days->maximum(), 31);
    QCOMPARE(days->value(), 30);
    QCOMPARE(box->findChild<QLabel *>("found")->text(), "Найдено: 2");
    QCOMPARE(box->findChild<QPushButton *>("cancel")->text(), "Отменить");
    QCOMPARE(room.count(), "Найдено: 2, идёт поиск");
}

void TestSearchProgress::cancelKeepsWhatWasFound_data()
{
    QTest::addColumn<int>("way");
    row("button", 0);
    row("Esc", 1);
    row("cross", 2);
}

void TestSearchProgress::cancelKeepsWhatWasFound()
{
    QFETCH(int, way);
    const LongSearch room;
    CSearchProgressDialog *box = room.box();
    QVERIFY(box != nullptr);
    if (way == 0)
        QTest::mouseClick(box->findChild<QPushButton *>("cancel"), Qt::LeftButton);
    else if (way == 1)
        QTest::keyClick(box, Qt::Key_Escape);
    else
        box->close();
    QCOMPARE(room.run.outcome(), CSearchRun::Cancelled);
    QCOMPARE(room.rows(), room.Found);
    QCOMPARE(room.count(), "Найдено: 2, поиск прерван");
    QTRY_VERIFY(!room.hasBox());
    room.click("b");
    QCOMPARE(room.text(), "ТЕКСТ");
}

void TestSearchProgress::tickLineAndJournalGoOn()
{
    LongSearch room;
    QTimer second;
    int seconds = 0;
    connect(&second, &QTimer::timeout, [&] {
        room.tick();
        room.receive(QStringLiteral("|ПРИВЕТ %1<>").arg(++seconds));
    });
    second.start(1);
    QVERIFY(room.box() != nullptr);
    QTRY_VERIFY(seconds >= 20);
    second.stop();
    QCOMPARE(room.run.outcome(), CSearchRun::Running);
    QVERIFY(!room.desk.journal().filter("ПРИВЕТ 20").isEmpty());
    QCOMPARE(room.shown("labelClock"), Time.hh_mm_ss);
}

void TestSearchProgress::anotherSearchTakesItsPlace()
{
    const LongSearch room;
    QVERIFY(QFile::remove(room.pathOf("c")));
    room.put("e", "ДРУГОЙ");
    room.form->searchPage->contains->setText("ДРУГОЙ");
    room.form->searchSearch();
    QTRY_COMPARE(room.run.outcome(), CSearchRun::Whole);
    QCOMPARE(room.rows(), QStringList{"e"});
    QCOMPARE(room.count(), "Найдено: 1");
}

void TestSearchProgress::changedDayEndsIt()
{
    const LongSearch room;
    room.form->searchPage->from->setDate(QDate(2026, 7, 2));
    QCOMPARE(room.run.outcome(), CSearchRun::Cancelled);
    QCOMPARE(room.rows(), QStringList());
    QCOMPARE(room.count(), QString());
    QTest::qWait(0);
    QCOMPARE(room.rows(), QStringList());
}

void TestSearchProgress::newDayLeavesItAlone()
{
    LongSearch room;
    Time.setTo(QDateTime(QDate(2026, 7, 31), QTime(23, 59, 59)));
    room.tick();
    QCOMPARE(State.YYYYMMDD, "20260801");
    QCOMPARE(room.run.outcome(), CSearchRun::Running);
    QCOMPARE(room.rows(), room.Found);
    QCOMPARE(room.form->searchPage->to->date(), QDate(2026, 7, 31));
}

void TestSearchProgress::textOfAHitCanBeReadMeanwhile()
{
    const LongSearch room;
    room.click("a");
    QCOMPARE(room.text(), "ТЕКСТ");
    QVERIFY(room.box() != nullptr);
    QCOMPARE(room.selected(), "a");
}

void TestSearchProgress::closeOfTheProgramEndsIt()
{
    const LongSearch room;
    QVERIFY(room.box() != nullptr);
    State.closeAllowed = true;
    room.form->close();
    QCOMPARE(room.run.outcome(), CSearchRun::Cancelled);
    QVERIFY(QApplication::activeModalWidget() == nullptr);
}

void TestSearchProgress::windowGoesInItsMidst()
{
    LongSearch room;
    QVERIFY(room.box() != nullptr);
    room.form.reset();
    QTest::qWait(0);
}

void TestSearchProgress::manyShortFilesAreFoundToTheLast()
{
    const ArchiveRoom room(CArchivePage::Found);
    QStringList names;
    for (int i = 1000; i < 3000; ++i) {
        names << QString::number(i);
        room.put(names.last(), "ТЕКСТ");
    }
    room.form->searchPage->contains->setText("ТЕКСТ");
    ArchiveRoom::click(room.form->searchPage->search);
    QTRY_COMPARE(room.form->searchRun->outcome(), CSearchRun::Whole);
    QCOMPARE(room.rows(), names);
    QCOMPARE(room.form->searchPage->count->text(), "Найдено: 2000");
}

QTEST_MAIN(TestSearchProgress)
#include "test_search_progress.moc"
