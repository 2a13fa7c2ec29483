#include "tests/ui/window/archive_room.h"
#include "text/utils.h"

#include <QHeaderView>
#include <QScrollArea>

namespace
{
/// The widgets that Tab comes to, from \a first until it leaves the tab or comes round.
QStringList tabOrder(const ArchiveRoom &room, QWidget *first)
{
    QStringList names;
    first->setFocus();
    QWidget *focus = QApplication::focusWidget();
    const QWidget *tab = room.form->tabWidget->currentWidget();
    while (focus != nullptr && tab->isAncestorOf(focus) && !names.contains(focus->objectName())) {
        names << focus->objectName();
        for (int part = 0; part < 4 && QApplication::focusWidget() == focus; ++part) // a date has three
            ArchiveRoom::press(Qt::Key_Tab);
        focus = QApplication::focusWidget();
    }
    return names;
}
} // namespace

/// The tabs of telegrams with the keyboard alone, and in the fonts of the zoom.
class TestArchiveKeys : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QApplication::setFont(m_font); }

    void keyboardBeginsWhereItIsUsedFirst();
    void controlTabLeadsOnFromEveryTab();
    void allRowsAreReachedInLargeLetters_data() { everyTab(); }
    void allRowsAreReachedInLargeLetters();
    void arrowsHomeAndEndChoose_data() { everyTab(); }
    void arrowsHomeAndEndChoose();
    void firstArrowChoosesTheFirstRow_data() { everyTab(); }
    void firstArrowChoosesTheFirstRow();
    void enterLeadsIntoTheText_data();
    void enterLeadsIntoTheText();
    void tabGoesThroughTheControls_data();
    void tabGoesThroughTheControls();
    void arrowGoesOnWhereAFileHasGone();
    void typedDayCountsOnceItIsComplete();
    void escGoesToTodayAndShowsItsList_data() { everyDayTab(); }
    void escGoesToTodayAndShowsItsList();
    void todayIsTheLastDay_data() { everyDayTab(); }
    void todayIsTheLastDay();
    void newDayGoesToTodayFromAnyDay_data() { everyDayTab(); }
    void newDayGoesToTodayFromAnyDay();
    void columnsFollowTheZoom_data() { everyTab(); }
    void columnsFollowTheZoom();

private:
    const QFont m_font = QApplication::font();
};

void TestArchiveKeys::keyboardBeginsWhereItIsUsedFirst()
{
    const ArchiveRoom room(CArchivePage::Received);
    const struct {
        int tab;
        const char *focus;
    } tabs[] = {{2, "tableInput"}, {3, "tableOutput"}, {4, "searchContains"}, {2, "tableInput"}};
    for (const auto &tab : tabs) {
        room.form->tabWidget->setCurrentIndex(tab.tab);
        QCOMPARE(QApplication::focusWidget()->objectName(), QString::fromLatin1(tab.focus));
    }
}

void TestArchiveKeys::controlTabLeadsOnFromEveryTab()
{
    const ArchiveRoom room(CArchivePage::Received);
    for (const char *field : {"dateInput", "tableInput", "inputText", "dateSearchFrom", "searchContains"}) {
        auto *widget = room.find<QWidget>(field);
        QWidget *tab = widget;
        while (room.form->tabWidget->indexOf(tab) < 0)
            tab = tab->parentWidget();
        room.form->tabWidget->setCurrentWidget(tab);
        const int before = room.form->tabWidget->currentIndex();
        widget->setFocus();
        ArchiveRoom::press(Qt::Key_Tab, Qt::ControlModifier);
        QVERIFY2(room.form->tabWidget->currentIndex() == before + 1, field);
    }
}

void TestArchiveKeys::allRowsAreReachedInLargeLetters()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind, CKS, [] { Options.usePrf = Options.enableAttachFiles = true; });
    QFont large = QApplication::font();
    large.setPointSize(24);
    QApplication::setFont(large);
    room.form->resize(800, 600);
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents();
    QCOMPARE(room.form->size(), QSize(800, 600));
    auto *area = room.form->tabWidget->currentWidget()->findChild<QScrollArea *>();
    for (QWidget *control :
         {static_cast<QWidget *>(room.page.registers), static_cast<QWidget *>(room.page.table),
          static_cast<QWidget *>(room.page.text), static_cast<QWidget *>(room.page.print)}) {
        area->ensureWidgetVisible(control, 0, 0);
        QVERIFY2(control->visibleRegion().boundingRect().height() >= qMin(control->height(), 100),
                 qPrintable(control->objectName()));
        QVERIFY(control->visibleRegion().boundingRect().width() == control->width());
    }
    QVERIFY(room.page.text->width() >= 300); // the list leaves it half of the room
}

void TestArchiveKeys::arrowsHomeAndEndChoose()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.putAndShow({"a", "b", "c", "d"});
    room.click("b");
    const struct {
        Qt::Key key;
        const char *file;
    } steps[] = {{Qt::Key_Down, "c"}, {Qt::Key_End, "d"},  {Qt::Key_Down, "d"},    {Qt::Key_Up, "c"},
                 {Qt::Key_Home, "a"}, {Qt::Key_Up, "a"},   {Qt::Key_Right, "a"},   {Qt::Key_End, "d"},
                 {Qt::Key_Left, "d"}, {Qt::Key_Home, "a"}, {Qt::Key_PageDown, "d"}};
    for (const auto &step : steps) {
        ArchiveRoom::press(step.key);
        QCOMPARE(room.selected(), QString::fromLatin1(step.file));
        QCOMPARE(room.text(), QStringLiteral("ТЕКСТ ") + step.file);
    }
}

void TestArchiveKeys::firstArrowChoosesTheFirstRow()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.putAndShow({"a", "b"});
    room.page.registers->setFocus();
    ArchiveRoom::press(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), room.page.table);
    QCOMPARE(room.selected(), QString()); // to pass through chooses nothing
    ArchiveRoom::press(Qt::Key_Down);
    QCOMPARE(room.selected(), "a");
}

void TestArchiveKeys::enterLeadsIntoTheText_data()
{
    QTest::addColumn<int>("key");
    row("Return", int(Qt::Key_Return));
    row("Enter", int(Qt::Key_Enter));
}

void TestArchiveKeys::enterLeadsIntoTheText()
{
    QFETCH(int, key);
    for (const auto kind : {CArchivePage::Received, CArchivePage::Sent, CArchivePage::Found}) {
        const ArchiveRoom room(kind);
        room.put("a", QByteArray("СТРОКА\r\n").repeated(100));
        room.refresh();
        room.click("a");
        ArchiveRoom::press(Qt::Key(key));
        QCOMPARE(QApplication::focusWidget(), room.page.text);
        ArchiveRoom::press(Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(room.page.text->textCursor().selectedText().size(), 700);
        ArchiveRoom::press(Qt::Key_Space); // what is read cannot be overwritten
        QVERIFY(room.text().startsWith("СТРОКА\n"));
        ArchiveRoom::press(Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(QApplication::focusWidget(), room.page.table);
    }
}

void TestArchiveKeys::tabGoesThroughTheControls_data()
{
    QTest::addColumn<CArchivePage::Kind>("kind");
    QTest::addColumn<QStringList>("names");
    row("incoming", CArchivePage::Received,
        QStringList{"dateInput", "inputOnlyTelegrams", "inputRegisters", "tableInput", "inputText",
                    "inputToEditorButton", "inputPrintButton", "inputSaveButton", "inputToPerforatorButton",
                    "inputSaveAttachButton", "inputForwardButton"});
    row("outgoing", CArchivePage::Sent,
        QStringList{"dateOutput", "outputOnlyTelegrams", "outputRegisters", "tableOutput", "outputText",
                    "outputToEditorButton", "outputPrintButton"});
    row("search", CArchivePage::Found,
        QStringList{"searchReceived", "searchSent", "dateSearchFrom", "dateSearchTo", "searchContains",
                    "searchButton", "searchRegisters", "tableSearch", "searchText", "searchToEditorButton",
                    "searchPrintButton"});
}

void TestArchiveKeys::tabGoesThroughTheControls()
{
    QFETCH(CArchivePage::Kind, kind);
    QFETCH(QStringList, names);
    const ArchiveRoom room(kind, CKS, [] { Options.usePrf = Options.enableAttachFiles = true; });
    room.put("a", "-&FILE#-### ###-&FILE#-");
    room.refresh();
    room.click("a");
    QCOMPARE(tabOrder(room, room.find<QWidget>(names.first().toLatin1().constData())), names);
}

void TestArchiveKeys::arrowGoesOnWhereAFileHasGone()
{
    const ArchiveRoom room(CArchivePage::Received);
    room.putAndShow({"a", "b", "c"});
    room.click("b");
    QVERIFY(QFile::remove(room.pathOf("b")));
    room.refresh();
    QCOMPARE(room.selected(), QString());
    ArchiveRoom::press(Qt::Key_Down);
    QCOMPARE(room.selected(), "c"); // which took its place
}

void TestArchiveKeys::typedDayCountsOnceItIsComplete()
{
    const ArchiveRoom room(CArchivePage::Received);
    room.put("a", "А", "20260712");
    room.page.date->setFocus();
    room.page.date->setSelectedSection(QDateTimeEdit::DaySection);
    QSignalSpy changed(room.page.date, &QDateEdit::dateChanged);
    QTest::keyClicks(room.page.date, "12");
    QCOMPARE(changed.count(), 0);
    QTest::keyClick(room.page.date, Qt::Key_Return);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(room.rows(), QStringList{"a"});
}

void TestArchiveKeys::escGoesToTodayAndShowsItsList()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.putAndShow({"a"});
    room.page.date->setDate(QDate(2026, 7, 1));
    QCOMPARE(room.rows(), QStringList());
    room.page.table->setFocus();
    ArchiveRoom::press(Qt::Key_Escape);
    QCOMPARE(room.page.date->date(), QDate(2026, 7, 31));
    QCOMPARE(room.rows(), QStringList{"a"});
}

void TestArchiveKeys::todayIsTheLastDay()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.page.date->setFocus();
    ArchiveRoom::press(Qt::Key_Up);
    QCOMPARE(room.page.date->date(), QDate(2026, 7, 31));
    ArchiveRoom::press(Qt::Key_Down);
    QCOMPARE(room.page.date->date(), QDate(2026, 7, 30));
    room.page.date->setDate(QDate(2026, 8, 1));
    QVERIFY(room.page.date->date() <= QDate(2026, 7, 31));
}

void TestArchiveKeys::newDayGoesToTodayFromAnyDay()
{
    QFETCH(CArchivePage::Kind, kind);
    for (const QDate &shown : {QDate(2026, 7, 31), QDate(2026, 7, 12)}) {
        ArchiveRoom room(kind);
        room.put("a", "А", shown.toString("yyyyMMdd"));
        room.page.date->setDate(shown);
        room.refresh();
        room.click("a");
        Time.setTo(QDateTime(QDate(2026, 7, 31), QTime(23, 59, 59)));
        room.put("b", "Б", "20260801");
        room.tick();
        QCOMPARE(room.page.date->date(), QDate(2026, 8, 1));
        QCOMPARE(room.rows(), QStringList{"b"});
        QCOMPARE(room.text(), "А"); // who reads at midnight reads on
    }
}

void TestArchiveKeys::columnsFollowTheZoom()
{
    QFETCH(CArchivePage::Kind, kind);
    QFont font = QApplication::font();
    font.setPointSize(9);
    QApplication::setFont(font);
    const ArchiveRoom room(kind);
    const int drawn = 2 * room.page.table->columnWidth(1);
    room.page.table->setColumnWidth(1, drawn); // by the operator
    const auto width = [&room](int characters) {
        const int margin = room.page.table->style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1;
        const QFont &now = room.page.table->font();
        return CUtils::txtGUIWidth(characters, now) + CUtils::txtGUIWidth(1, now) / 2 + 2 * margin + 1;
    };
    QFont large = font;
    large.setPointSize(18);
    QApplication::setFont(large);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    const int first = kind == CArchivePage::Found ? 10 : 8;
    QCOMPARE(room.page.table->columnWidth(0), width(first));
    const int second = kind == CArchivePage::Found ? 8 : 16;
    QVERIFY(qAbs(room.page.table->columnWidth(1) - 2 * width(second)) <= second);
    QApplication::setFont(font);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    QVERIFY(qAbs(room.page.table->columnWidth(1) - drawn) <= second);
    QCOMPARE(room.page.table->columnWidth(0), width(first));
}

QTEST_MAIN(TestArchiveKeys)
#include "test_archive_keys.moc"
