// Days whose books agree, and what is printed of them.

#include "book_day.h"

#include <QtTest>

class TestBooksDays : public QObject
{
    Q_OBJECT

private slots:
    void dayWithCentreAgreesAndPrintsItsTable();
    void dayOnSwitchedNetworkAgreesAndPrintsItsTable();
    void dayOnDirectLinkAgreesAndPrintsItsTable();
    void spreadsheetHasOneLineForTheDay();
    void rangeTakesTheDaysThatAreThere();
    void renumberingOfTheNextDayClosesTheDay();
    void telegramsRemovedByAgeAreNoDisagreement();
    void failedAndWaitingFilesAreToldWithTheirReasons();
};

void TestBooksDays::dayWithCentreAgreesAndPrintsItsTable()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.writeJournal();
    QCOMPARE(day.books(), QString("Книги за 22.11.2026 (ЦКС): сходятся\n"
                                  "                                 принято    передано\n"
                                  "Файлов телеграмм                       2           2\n"
                                  "По протоколу                           2           2\n"
                                  "Номера                           001–002     001–002\n"
                                  "С квитанцией                           –           2\n"
                                  "Счетчик рабочего места                 2           2\n"
                                  "Последняя квитанция центра             2           2\n"
                                  "Цифры центра за сутки                  –           –\n"
                                  "Режим: автоматический 240 мин, не работало 480 мин\n"
                                  "Канал: РБ 239 мин\n"
                                  "Перерывы связи: 1\n"
                                  "  10:00:00–10:01:00, 1 мин 0 с, Сброшено соединение / нет связи\n"
                                  "\n"));
    QCOMPARE(day.status, 0);
    QCOMPARE(day.errors, QString());
}

void TestBooksDays::dayOnSwitchedNetworkAgreesAndPrintsItsTable()
{
    BookDay day;
    BookDay::fillSwitched(day);
    day.writeJournal();
    QCOMPARE(day.books(), QString("Книги за 22.11.2026 (СКК): сходятся\n"
                                  "                                 принято    передано\n"
                                  "Файлов телеграмм                       1           1\n"
                                  "По протоколу                           1           1\n"
                                  "Номера                           000–000     000–000\n"
                                  "С автоответом                          –           1\n"
                                  "Соединений                             1           1\n"
                                  "Счетчик рабочего места                 1           1\n"
                                  "Режим: не работало 480 мин, неизвестно 240 мин\n"
                                  "\n"));
    QCOMPARE(day.status, 0);
}

void TestBooksDays::dayOnDirectLinkAgreesAndPrintsItsTable()
{
    BookDay day;
    BookDay::fillDirect(day);
    day.writeJournal();
    QCOMPARE(day.books(), QString("Книги за 22.11.2026 (ПС): сходятся\n"
                                  "                                 принято    передано\n"
                                  "Файлов телеграмм                       1           1\n"
                                  "По протоколу                           1           1\n"
                                  "Счетчик рабочего места                 1           1\n"
                                  "Режим: не работало 480 мин, неизвестно 240 мин\n"
                                  "\n"));
    QCOMPARE(day.status, 0);
}

void TestBooksDays::spreadsheetHasOneLineForTheDay()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.writeJournal();
    const QStringList lines = day.books({"--csv"}).split('\n');
    QCOMPARE(lines.size(), 3); // the last one is empty
    QCOMPARE(lines.at(0).count(';'), lines.at(1).count(';'));
    QCOMPARE(lines.at(1), QString("2026-11-22;ЦКС;да;2;2;1;2;0;2;2;2;1;2;2;2;2;2;;;0;0;1;60;"
                                  "автоматический 240 мин, не работало 480 мин;РБ 239 мин;"));
}

void TestBooksDays::rangeTakesTheDaysThatAreThere()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.writeJournal();
    day.info("08:00:00 Запуск ------------ ЦКС ------------ V:2026.11.1 B:Nov 1 2026");
    day.writeJournal("20261120");
    const auto headings = [&day](const QString &dates) {
        return day.books({dates}).split('\n').filter("Книги за");
    };
    QCOMPARE(headings("20261120..20261122"),
             QStringList({"Книги за 20.11.2026 (ЦКС): сходятся", "Книги за 22.11.2026 (ЦКС): сходятся"}));
    QCOMPARE(headings("2026-11-21..2026-11-30"), QStringList("Книги за 22.11.2026 (ЦКС): сходятся"));
    QCOMPARE(headings("20261120"), QStringList("Книги за 20.11.2026 (ЦКС): сходятся"));
}

void TestBooksDays::renumberingOfTheNextDayClosesTheDay()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.dropLines("Выход");
    day.writeJournal();
    day.info("00:00:00 Протокол открыт");
    day.received("ЗЦЗЦ СМЕНА НУМЕРАЦИИ ПРИН 0002 ПЕР 0002 СВЯЗЬ ОТКРЫТА НННН  <>");
    day.info("00:01:00 Счетчики сброшены");
    day.writeJournal("20261123");
    day.counters(0, 0, "20261123");
    const QString text = day.books({"20261122"});
    QVERIFY(text.contains("сходятся"));
    QVERIFY(text.contains("Цифры центра за сутки                  2           2\n"));
    QCOMPARE(day.status, 0);
}

void TestBooksDays::telegramsRemovedByAgeAreNoDisagreement()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.writeJournal();
    for (const char *name : {"inp/20261122/20261122u000.001", "inp/20261122/20261122u000.002",
                             "out/20261122/20261122u001.001", "out/20261122/20261122u002.002"})
        day.remove(name);
    QVERIFY(QDir().rmdir(day.path("inp/20261122")) && QDir().rmdir(day.path("out/20261122")));
    day.info("08:00:00 Запуск ------------ ЦКС ------------ V:2026.11.1 B:Nov 1 2026");
    day.writeJournal("20270720"); // 240 days later
    day.counters(0, 0, "20270720");
    QVERIFY(day.books({"20261122"}).contains("Телеграммы этого дня удалены по сроку хранения\n"));
    QCOMPARE(day.status, 0);
}

void TestBooksDays::failedAndWaitingFilesAreToldWithTheirReasons()
{
    BookDay day;
    BookDay::fillSwitched(day);
    day.writeJournal();
    day.write("out/20261122u005", "ЖДЕТ");
    day.write("out/20261122u005.dat", "112233|S|22.11.2026 13:00|u|2|N|Абонент занят");
    day.write("out/20261122u006", "НЕ ОТПРАВЛЕН");
    day.write("out/20261122u006.dat", "112244|S|22.11.2026 13:00|u|0|N|Нет ответа");
    day.write("out/.dat", "112233|S|22.11.2026 13:00|u|2|N|");
    QVERIFY(day.books().endsWith("Ждут отправки: 1\n"
                                 "  20261122u005 (Абонент занят)\n"
                                 "Не отправлены: 1\n"
                                 "  20261122u006: Нет ответа\n"
                                 "\n"));
    QCOMPARE(day.status, 0);
}

QTEST_GUILESS_MAIN(TestBooksDays)
#include "test_books_days.moc"
