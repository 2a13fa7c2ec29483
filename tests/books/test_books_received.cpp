// Books broken on purpose where telegrams were received: each breach in a good day shows as one disagreement.

#include "book_day.h"

#include <QtTest>

class TestBooksReceived : public QObject
{
    Q_OBJECT

private slots:
    void storedFileThatHasGoneIsNamedByItsLine();
    void fileThatNeverCameIsNamed();
    void fileWithoutItsLineCountsIfTheLineHadIt();
    void changedTextIsNamed();
    void telegramThatCameAndWasNotStoredIsNamed();
    void refusedTelegramIsNamedWithTheReason();
    void gapInTheNumbersIsNamed();
    void doubledNumberIsNamed();
    void correctionByTheCentreLeavesNoGap();
    void counterThatDiffersIsNamed();
    void receiptThatDiffersIsNamed();
    void dayFiguresThatDifferAreNamed();
    void fileWrittenOverAnotherIsNamed();
    void telegramOfACallThatWasNotStoredIsNamed();
    void connectionWithoutItsFileIsNamed();
    void connectionWithoutItsLineIsNamed();
    void directTelegramThatWasNotStoredIsNamed();
    void missingJournalIsNamedOnce();
};

void TestBooksReceived::storedFileThatHasGoneIsNamedByItsLine()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.writeJournal();
    day.remove("inp/20261122/20261122u000.002");
    QCOMPARE(day.disagreements(),
             QStringList("20261122.prt:23: записан inp/20261122/20261122u000.002, а файла нет"));
    QCOMPARE(day.status, 1);
}

void TestBooksReceived::fileThatNeverCameIsNamed()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.writeJournal();
    day.write("inp/20261122/20261122u111.003", "ЗЦЗЦ 003 ПОДЛОЖЕНО\r\nНННН  ");
    QCOMPARE(day.disagreements(), QStringList("inp/20261122/20261122u111.003: файл есть, а в протоколе такой "
                                              "телеграммы нет"));
    QCOMPARE(day.status, 1);
}

void TestBooksReceived::fileWithoutItsLineCountsIfTheLineHadIt()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.dropLines("11:10:00");
    day.writeJournal();
    const QString text = day.books();
    QVERIFY(text.contains(
        "Замечания: 1\n"
        "  inp/20261122/20261122u000.002: принят с линии, но строки о записи в протоколе нет\n"));
    QCOMPARE(day.status, 0);
}

void TestBooksReceived::changedTextIsNamed()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.writeJournal();
    day.write("inp/20261122/20261122u000.002", "ЗЦЗЦ 002 П02 221100 12\r\nВХОДЯЩАЯ ТРИ\r\nНННН  ");
    QCOMPARE(day.disagreements(),
             QStringList("20261122.prt:23: текст файла inp/20261122/20261122u000.002 не тот, "
                         "что пришел с линии"));
}

void TestBooksReceived::telegramThatCameAndWasNotStoredIsNamed()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.dropLines("Выход");
    day.received("ЗЦЗЦ 003 П03 221200 12<>");
    day.received("ВХОДЯЩАЯ ТРИ<>");
    day.received("НННН  <>");
    day.info("12:00:00 Выход");
    day.writeJournal();
    QCOMPARE(day.disagreements(),
             QStringList("20261122.prt:31: телеграмма 003 пришла с линии, но не записана"));
}

void TestBooksReceived::refusedTelegramIsNamedWithTheReason()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.dropLines("Выход");
    day.received("ЗЦЗЦ 004 П03 221200 12<>");
    day.received("НННН  <>");
    day.error("11:59:00 РАСХОЖДЕНИЕ СЧЕТЧИКОВ");
    day.writeJournal();
    QCOMPARE(day.disagreements(),
             QStringList("20261122.prt:31: телеграмма 004 пришла с линии, но не записана: "
                         "расхождение счетчиков"));
}

void TestBooksReceived::gapInTheNumbersIsNamed()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.replaceInLines("ЗЦЗЦ 002 П02", "ЗЦЗЦ 004 П02");
    day.replaceInLines("20261122u000.002", "20261122u000.004");
    day.replaceInLines("НАШ 002", "НАШ 004");
    day.writeJournal();
    day.remove("inp/20261122/20261122u000.002");
    day.write("inp/20261122/20261122u000.004", "ЗЦЗЦ 004 П02 221100 12\r\nВХОДЯЩАЯ ДВА\r\nНННН  ");
    day.counters(4, 2);
    QCOMPARE(day.disagreements(),
             QStringList("20261122.prt:23: пропущены номера 002–003 перед 20261122u000.004"));
}

void TestBooksReceived::doubledNumberIsNamed()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.replaceInLines("ЗЦЗЦ 002 П02", "ЗЦЗЦ 001 П02");
    day.replaceInLines("20261122u000.002", "20261122u111.001");
    day.replaceInLines("НАШ 002", "НАШ 001");
    day.writeJournal();
    day.remove("inp/20261122/20261122u000.002");
    day.write("inp/20261122/20261122u111.001", "ЗЦЗЦ 001 П02 221100 12\r\nВХОДЯЩАЯ ДВА\r\nНННН  ");
    day.counters(1, 2);
    QCOMPARE(day.disagreements(), QStringList("20261122.prt:23: номер 001 дан второй раз или не по порядку: "
                                              "20261122u111.001"));
}

void TestBooksReceived::correctionByTheCentreLeavesNoGap()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.dropLines("Выход");
    day.received("ЗЦЗЦ ОБРАЩАЙТЕСЬ В КСС ЗА ТЛГ 003-005 НННН  <>");
    day.info("11:50:00 КОРРЕКТИРОВКА СЧЕТЧИКОВ ПРИЕМ ");
    day.received("ЗЦЗЦ 006 П03 221200 12<>");
    day.received("НННН  <>");
    day.info("11:55:00 Файл сохранен:inp/20261122/20261122u200.006");
    day.writeJournal();
    day.write("inp/20261122/20261122u200.006", "ЗЦЗЦ 006 П03 221200 12\r\nНННН  ");
    day.counters(6, 2);
    QCOMPARE(day.disagreements(), QStringList());
    QCOMPARE(day.status, 0);
}

void TestBooksReceived::counterThatDiffersIsNamed()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.writeJournal();
    day.counters(3, 2);
    QCOMPARE(day.disagreements(), QStringList("velda_state.ini: счетчик принятых 3, а по книгам 2"));
}

void TestBooksReceived::receiptThatDiffersIsNamed()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.dropLines("Выход");
    day.received("ЗЦЗЦ ВАШ 002 НАШ 003 ПОСЛЕДНИЕ СВЯЗЬ ОТКРЫТА НННН  <>");
    day.info("12:00:00 Выход");
    day.writeJournal();
    QCOMPARE(day.disagreements(),
             QStringList("20261122.prt:31: квитанция центра ВАШ 002 НАШ 003, а по книгам "
                         "передано 002, принято 002"));
}

void TestBooksReceived::dayFiguresThatDifferAreNamed()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.writeJournal();
    day.received("ЗЦЗЦ СМЕНА НУМЕРАЦИИ ПРИН 0002 ПЕР 0005 СВЯЗЬ ОТКРЫТА НННН  <>");
    day.info("00:01:00 Счетчики сброшены");
    day.writeJournal("20261123");
    day.books({"20261122"});
    QVERIFY(day.books({"20261122"})
                .contains("  20261123.prt:1: цифры центра за сутки ПРИН 2 ПЕР 5, а по книгам "
                          "передано 2, принято 2\n"));
    QCOMPARE(day.status, 1);
}

void TestBooksReceived::fileWrittenOverAnotherIsNamed()
{
    BookDay day;
    BookDay::fillDirect(day);
    day.dropLines("Выход");
    day.received("ЗЦЗЦ П003<>");
    day.received("В ТУ ЖЕ СЕКУНДУ<>");
    day.received("НННН  <>");
    day.info("11:30:30 Файл сохранен:inp/20261122/20261122_100030");
    day.info("12:00:00 Выход");
    day.writeJournal();
    day.write("inp/20261122/20261122_100030", "ЗЦЗЦ П003\r\nВ ТУ ЖЕ СЕКУНДУ\r\nНННН  ");
    day.counters(2, 1);
    QCOMPARE(day.disagreements(),
             QStringList(
                 {"20261122.prt:14: файл 20261122_100030 записан поверх прежнего, телеграммы строки 6 больше "
                  "нет",
                  "20261122.prt:3: телеграмма пришла с линии, но не записана"}));
}

void TestBooksReceived::telegramOfACallThatWasNotStoredIsNamed()
{
    BookDay day;
    BookDay::fillSwitched(day);
    day.dropLines("Cохранение телеграммы");
    day.writeJournal();
    day.remove("inp/20261122/20261122_000");
    day.counters(0, 1);
    QCOMPARE(day.disagreements(), QStringList("20261122.prt:18: телеграмма пришла с линии, но не записана"));
}

void TestBooksReceived::connectionWithoutItsFileIsNamed()
{
    BookDay day;
    BookDay::fillSwitched(day);
    day.writeJournal();
    day.remove("inp/20261122/s100100");
    QCOMPARE(day.disagreements(),
             QStringList("20261122.prt:20: соединение inp/20261122/s100100 записано, а файла нет"));
}

void TestBooksReceived::connectionWithoutItsLineIsNamed()
{
    BookDay day;
    BookDay::fillSwitched(day);
    day.dropLines("s090130");
    day.writeJournal();
    QCOMPARE(day.disagreements(),
             QStringList("out/20261122/s090130: соединение есть, а в протоколе его нет"));
}

void TestBooksReceived::directTelegramThatWasNotStoredIsNamed()
{
    BookDay day;
    BookDay::fillDirect(day);
    day.dropLines("Файл сохранен");
    day.writeJournal();
    day.remove("inp/20261122/20261122_100030");
    day.counters(0, 1);
    QCOMPARE(day.disagreements(), QStringList("20261122.prt:3: телеграмма пришла с линии, но не записана"));
}

void TestBooksReceived::missingJournalIsNamedOnce()
{
    BookDay day;
    BookDay::fillCentre(day);
    QCOMPARE(day.disagreements(), QStringList("20261122.prt: протокола нет, а файлов за день 4"));
    QCOMPARE(day.status, 1);
}

QTEST_GUILESS_MAIN(TestBooksReceived)
#include "test_books_received.moc"
