#include "app/state.h"
#include "tests/ui/window/archive_room.h"
#include "text/utils.h"

#include <QAbstractButton>
#include <QAbstractItemDelegate>
#include <QHeaderView>
#include <QLabel>

namespace
{
QStringList textsOn(const QWidget &tab)
{
    QStringList texts;
    for (const QAbstractButton *button : tab.findChildren<QAbstractButton *>())
        if (!button->text().isEmpty())
            texts << button->text();
    for (const QLabel *label : tab.findChildren<QLabel *>())
        if (!label->text().isEmpty())
            texts << label->text();
    texts.sort();
    return texts;
}

QStringList sorted(QStringList texts)
{
    texts.sort();
    return texts;
}
} // namespace

/// The lists of the tabs "Входящие", "Исходящие" and "Поиск" as they are shown, loaded and reloaded.
class TestArchiveLists : public QObject
{
    Q_OBJECT

private slots:
    void controlsBearTheirTexts_data();
    void controlsBearTheirTexts();
    void controlsOfOptionsAreShownWithThem();
    void columnsHaveTheirTitlesAndWidths_data() { everyTab(); }
    void columnsHaveTheirTitlesAndWidths();
    void usualNamesAndTimesAreShownWhole_data() { everyTab(); }
    void usualNamesAndTimesAreShownWhole();
    void filesAreListedByName_data() { everyTab(); }
    void filesAreListedByName();
    void dayWithoutDirectoryYieldsAnEmptyTable_data() { everyDayTab(); }
    void dayWithoutDirectoryYieldsAnEmptyTable();
    void directoryThatAppearsIsListedAtTheNextScan_data() { everyDayTab(); }
    void directoryThatAppearsIsListedAtTheNextScan();
    void directoryThatGoesEmptiesTheTable_data() { everyDayTab(); }
    void directoryThatGoesEmptiesTheTable();
    void fileRemovedFromOutsideGoesAtTheNextReload_data() { everyDayTab(); }
    void fileRemovedFromOutsideGoesAtTheNextReload();
    void tickReloadsTheListOfToday_data() { everyDayTab(); }
    void tickReloadsTheListOfToday();
    void scanLeavesTheListOfAnotherDayAlone_data() { everyDayTab(); }
    void scanLeavesTheListOfAnotherDayAlone();
    void openMenuOfTheQueueHoldsUpNoReload_data() { everyDayTab(); }
    void openMenuOfTheQueueHoldsUpNoReload();
    void transcriptsAreHiddenOnRequest_data();
    void transcriptsAreHiddenOnRequest();
};

void TestArchiveLists::controlsBearTheirTexts_data()
{
    QTest::addColumn<QString>("tab");
    QTest::addColumn<QStringList>("texts");
    row("incoming", "tabInput",
        QStringList{"Только телеграммы", "Показать регистры", "В редактор", "На печать", "Сохранить",
                    "Вывести на перфоратор", "Сохранить вложение", "Переслать"});
    row("outgoing", "tabOutput",
        QStringList{"Только телеграммы", "Показать регистры", "В редактор", "На печать"});
    row("search", "tabSearch",
        QStringList{"Прием", "Передача", "Дата", "Содержит", "Поиск", "Показать регистры", "В редактор",
                    "На печать"});
}

void TestArchiveLists::controlsBearTheirTexts()
{
    QFETCH(QString, tab);
    QFETCH(QStringList, texts);
    const Station station(SKK);
    QCOMPARE(textsOn(*station.find<QWidget>(tab.toLatin1().constData())), sorted(texts));
}

void TestArchiveLists::controlsOfOptionsAreShownWithThem()
{
    const ArchiveRoom room(CArchivePage::Received);
    for (const bool punch : {true, false})
        for (const bool attachments : {true, false}) {
            Options.usePrf = punch;
            Options.enableAttachFiles = attachments;
            room.form->setPrfInterface();
            QCOMPARE(room.page.toPerforator->isVisible(), punch);
            QCOMPARE(room.page.saveAttach->isVisible(), attachments);
        }
    const Station station(CKS, [] { Options.enableAttachFiles = true; });
    QVERIFY(!station.form->inputPage->saveAttach->isHidden());
}

void TestArchiveLists::columnsHaveTheirTitlesAndWidths()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    const QStringList titles = kind == CArchivePage::Found ? QStringList{"Дата", "Время", "", "Файл"}
                                                           : QStringList{"Время", "Файл", ""};
    const QList<int> widths = kind == CArchivePage::Found ? QList<int>{10, 8, 6, 16} : QList<int>{8, 16, 10};
    const CArchiveTable &table = *room.page.table;
    const QHeaderView &header = *room.page.table->horizontalHeader();
    QCOMPARE(header.count(), titles.size());
    for (int column = 0; column < titles.size(); ++column) {
        QCOMPARE(header.model()->headerData(column, Qt::Horizontal).toString(), titles.at(column));
        // In characters, and less than two for what stands beside the text.
        QVERIFY(header.sectionSize(column) > CUtils::txtGUIWidth(widths.at(column), table.font()));
        QVERIFY(header.sectionSize(column) < CUtils::txtGUIWidth(widths.at(column) + 2, table.font()));
    }
    QVERIFY(room.page.table->verticalHeader()->isHidden());
}

void TestArchiveLists::usualNamesAndTimesAreShownWhole()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.putAndShow({"20260731uC1A.001"});
    const CArchiveTable &table = *room.page.table;
    for (int column = 0; column < table.model()->columnCount(); ++column) {
        const QModelIndex index = table.model()->index(0, column);
        QVERIFY2(table.itemDelegate()->sizeHint({}, index).width() < table.columnWidth(column),
                 qPrintable(index.data().toString()));
    }
}

void TestArchiveLists::filesAreListedByName()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.putAndShow({"20260731u1b.002", "20260731u1a.001", "20260731_120000"});
    QCOMPARE(room.rows(), (QStringList{"20260731_120000", "20260731u1a.001", "20260731u1b.002"}));
    QCOMPARE(room.selected(), QString());
    QCOMPARE(room.text(), QString());
}

void TestArchiveLists::dayWithoutDirectoryYieldsAnEmptyTable()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.put("a", "А", "20260730");
    room.page.date->setDate(QDate(2026, 7, 30));
    QCOMPARE(room.rows(), QStringList{"a"});
    room.page.date->setDate(QDate(2026, 7, 29));
    QCOMPARE(room.rows(), QStringList());
    room.page.date->setDate(QDate(2026, 7, 30));
    QCOMPARE(room.rows(), QStringList{"a"});
}

void TestArchiveLists::directoryThatAppearsIsListedAtTheNextScan()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    QDir(room.pathOf(QString())).removeRecursively();
    room.refresh();
    QCOMPARE(room.rows(), QStringList());
    room.put("a", "А");
    room.refresh();
    QCOMPARE(room.rows(), QStringList{"a"});
}

void TestArchiveLists::directoryThatGoesEmptiesTheTable()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.putAndShow({"a", "b"});
    room.click("a");
    QVERIFY(QDir(room.pathOf(QString())).removeRecursively());
    room.refresh();
    QCOMPARE(room.rows(), QStringList());
    QCOMPARE(room.selected(), QString());
    QCOMPARE(room.text(), "ТЕКСТ a"); // the operator may be reading it
}

void TestArchiveLists::fileRemovedFromOutsideGoesAtTheNextReload()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.putAndShow({"a", "b", "c"});
    QVERIFY(QFile::remove(room.pathOf("b")));
    QCOMPARE(room.rows(), (QStringList{"a", "b", "c"}));
    room.refresh();
    QCOMPARE(room.rows(), (QStringList{"a", "c"}));
}

void TestArchiveLists::tickReloadsTheListOfToday()
{
    QFETCH(CArchivePage::Kind, kind);
    ArchiveRoom room(kind);
    room.put("a", "А");
    State.scanCountdown = 1;
    room.tick();
    QCOMPARE(room.rows(), QStringList());
    room.tick();
    QCOMPARE(room.rows(), QStringList{"a"});
}

void TestArchiveLists::scanLeavesTheListOfAnotherDayAlone()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.put("a", "А", "20260730");
    room.page.date->setDate(QDate(2026, 7, 30));
    room.put("b", "Б", "20260730");
    room.refresh();
    QCOMPARE(room.rows(), QStringList{"a"});
}

void TestArchiveLists::openMenuOfTheQueueHoldsUpNoReload()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.form->sendMenuOpen = true;
    room.desk.write("out/20260731u001", "А");
    room.put("a", "А");
    room.refresh();
    QCOMPARE(room.form->modelSend.rowCount(), 0);
    QCOMPARE(room.rows(), QStringList{"a"});
}

void TestArchiveLists::transcriptsAreHiddenOnRequest_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<CArchivePage::Kind>("kind");
    QTest::addColumn<QStringList>("left");
    const QStringList all{"20260731u1a.001", "s0731_120000", "Sample", "с0731"}; // the last one is Cyrillic
    const QStringList telegrams{"20260731u1a.001", "Sample", "с0731"};
    row("centre, incoming", int(CKS), CArchivePage::Received, all);
    row("centre, outgoing", int(CKS), CArchivePage::Sent, all);
    row("switched, incoming", int(SKK), CArchivePage::Received, telegrams);
    row("switched, outgoing", int(SKK), CArchivePage::Sent, telegrams);
    row("direct, incoming", int(Direct), CArchivePage::Received, telegrams);
    row("direct, outgoing", int(Direct), CArchivePage::Sent, telegrams);
}

void TestArchiveLists::transcriptsAreHiddenOnRequest()
{
    QFETCH(int, mode);
    QFETCH(CArchivePage::Kind, kind);
    QFETCH(QStringList, left);
    const ArchiveRoom room(kind, mode);
    room.putAndShow({"20260731u1a.001", "s0731_120000", "Sample", "с0731"});
    QCOMPARE(room.rows().size(), 4);
    ArchiveRoom::click(room.page.onlyTelegrams);
    QCOMPARE(sorted(room.rows()), sorted(left));
    room.refresh(); // and so it stays
    QCOMPARE(sorted(room.rows()), sorted(left));
    ArchiveRoom::click(room.page.onlyTelegrams);
    QCOMPARE(room.rows().size(), 4);
}

QTEST_MAIN(TestArchiveLists)
#include "test_archive_lists.moc"
