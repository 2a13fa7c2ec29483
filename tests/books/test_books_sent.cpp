// Books broken on purpose where telegrams were sent, or wait to be: each breach in a good day shows as one
// disagreement.

#include "book_day.h"

#include <QtTest>

class TestBooksSent : public QObject
{
    Q_OBJECT

private slots:
    void sentFileThatHasGoneIsNamedByItsLine();
    void sentFileWithoutItsLineIsNamed();
    void changedTextIsNamed();
    void sendingWithoutReceiptIsNamed();
    void deliveryWithoutAnswerbackIsNamed();
    void sendingThatCameToNothingIsNamed();
    void sendingThatWaitsAgainIsNone();
    void sendingRemovedByTheOperatorIsNone();
    void gapInTheNumbersIsNamed();
    void doubledNumberIsNamed();
    void numberOfARefusedTelegramLeavesNoGap();
    void telegramSentTwiceIsNamed();
    void fileThatCouldNotLeaveTheQueueIsNamed();
    void counterThatDiffersIsNamed();
    void operatorsCounterIsFollowed();
    void tornRecordIsNamed();
    void recordWithoutItsFileIsNamed();
};

void TestBooksSent::sentFileThatHasGoneIsNamedByItsLine()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.writeJournal();
    day.remove("out/20261122/20261122u001.001");
    QCOMPARE(day.disagreements(),
             QStringList("20261122.prt:17: отправлен out/20261122/20261122u001.001, а файла нет"));
    QCOMPARE(day.status, 1);
}

void TestBooksSent::sentFileWithoutItsLineIsNamed()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.writeJournal();
    day.write("out/20261122/20261122u009.003", "ПОДЛОЖЕНО");
    QCOMPARE(day.disagreements(),
             QStringList("out/20261122/20261122u009.003: файл есть, а в протоколе такой отправки нет"));
}

void TestBooksSent::changedTextIsNamed()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.writeJournal();
    day.write("out/20261122/20261122u001.001", "П123456\r\nИСХОДЯЩАЯ СЕМЬ\r\n");
    QCOMPARE(day.disagreements(),
             QStringList("20261122.prt:17: текст файла out/20261122/20261122u001.001 не тот, "
                         "что ушел на линию"));
}

void TestBooksSent::sendingWithoutReceiptIsNamed()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.replaceInLines("ВАШ 001 НАШ 001", "ВАШ 000 НАШ 001");
    day.writeJournal();
    QCOMPARE(day.disagreements(), QStringList("20261122.prt:17: 20261122u001.001 принят за отправленный без "
                                              "квитанции центра"));
}

void TestBooksSent::deliveryWithoutAnswerbackIsNamed()
{
    BookDay day;
    BookDay::fillSwitched(day);
    day.dropLines(" отправлен");
    day.writeJournal();
    QCOMPARE(day.disagreements(),
             QStringList("20261122.prt:11: 20261122u001.000 принят за отправленный без автоответа"));
}

void TestBooksSent::sendingThatCameToNothingIsNamed()
{
    BookDay day;
    BookDay::fillDirect(day);
    day.dropLines("Выход");
    day.info("11:59:00 Отправка файла: 20261122u002.261122_115900");
    day.writeJournal();
    day.counters(1, 2);
    QCOMPARE(day.disagreements(),
             QStringList("20261122.prt:11: 20261122u002.261122_115900 отправлялся, но его нет "
                         "ни среди отправленных, ни в очереди"));
}

void TestBooksSent::sendingThatWaitsAgainIsNone()
{
    BookDay day;
    BookDay::fillDirect(day);
    day.info("11:59:00 Отправка файла: 20261122u002.261122_115900");
    day.writeJournal();
    day.write("out/20261122u002.261122_115900", "ЖДЕТ");
    day.counters(1, 2);
    QCOMPARE(day.disagreements(), QStringList());
    QCOMPARE(day.status, 0);
}

void TestBooksSent::sendingRemovedByTheOperatorIsNone()
{
    BookDay day;
    BookDay::fillDirect(day);
    day.info("11:59:00 Отправка файла: 20261122u002.261122_115900");
    day.info("11:59:10 Удаление out/20261122u002.261122_115900");
    day.writeJournal();
    day.counters(1, 2);
    QCOMPARE(day.disagreements(), QStringList());
}

void TestBooksSent::gapInTheNumbersIsNamed()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.replaceInLines("ЗЦЗЦ #002", "ЗЦЗЦ #003");
    day.replaceInLines("20261122u002.002", "20261122u002.003");
    day.replaceInLines("ВАШ 002", "ВАШ 003");
    day.writeJournal();
    QVERIFY(
        QFile::rename(day.path("out/20261122/20261122u002.002"), day.path("out/20261122/20261122u002.003")));
    day.counters(2, 3);
    QCOMPARE(day.disagreements(), QStringList("20261122.prt:24: пропущен номер 002 перед 20261122u002"));
}

void TestBooksSent::doubledNumberIsNamed()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.replaceInLines("ЗЦЗЦ #002", "ЗЦЗЦ #001");
    day.replaceInLines("20261122u002.002", "20261122u002.001");
    day.replaceInLines("ВАШ 002", "ВАШ 001");
    day.writeJournal();
    QVERIFY(
        QFile::rename(day.path("out/20261122/20261122u002.002"), day.path("out/20261122/20261122u002.001")));
    day.counters(2, 1);
    QCOMPARE(day.disagreements(),
             QStringList("20261122.prt:24: номер 001 дан второй раз или не по порядку: 20261122u002"));
}

void TestBooksSent::numberOfARefusedTelegramLeavesNoGap()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.replaceInLines("20261122u002 В out/20261122/20261122u002.002",
                       "20261122u002 В out/20261122u002.b002");
    day.replaceInLines("ВАШ 002", "ВАШ 001");
    day.dropLines("Выход");
    day.info("11:30:00 Оператор изменил количество переданых телеграмм 2 на 1");
    day.received("ЗЦЗЦ ВАШ 001 НАШ 002 ПОСЛЕДНИЕ СВЯЗЬ ОТКРЫТА НННН  <>");
    day.writeJournal();
    QVERIFY(QFile::rename(day.path("out/20261122/20261122u002.002"), day.path("out/20261122u002.b002")));
    day.counters(2, 1);
    QVERIFY(
        day.books().contains("Не отправлены: 1\n  20261122u002.b002: центр не принял, 20261122.prt:30\n"));
    QCOMPARE(day.status, 0);
}

void TestBooksSent::telegramSentTwiceIsNamed()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.replaceInLines("20261122u002", "20261122u001");
    day.replaceInLines("ИСХОДЯЩАЯ ДВА", "ИСХОДЯЩАЯ ОДИН");
    day.writeJournal();
    day.remove("out/20261122/20261122u002.002");
    day.write("out/20261122/20261122u001.002", "П123456\r\nИСХОДЯЩАЯ ОДИН\r\n");
    QCOMPARE(day.disagreements(),
             QStringList("out/20261122/20261122u001.002: телеграмма отправлена второй раз, "
                         "прежде как 20261122u001.001"));
}

void TestBooksSent::fileThatCouldNotLeaveTheQueueIsNamed()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.dropLines("Выход");
    day.error("11:21:00 Ошибка переименования");
    day.writeJournal();
    QVERIFY(QFile::rename(day.path("out/20261122/20261122u002.002"), day.path("out/20261122u002")));
    QCOMPARE(day.disagreements(),
             QStringList("20261122.prt:30: отправленный 20261122u002 не убран из очереди"));
}

void TestBooksSent::counterThatDiffersIsNamed()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.writeJournal();
    day.counters(2, 1);
    QCOMPARE(day.disagreements(), QStringList("velda_state.ini: счетчик переданных 1, а по книгам 2"));
}

void TestBooksSent::operatorsCounterIsFollowed()
{
    BookDay day;
    BookDay::fillCentre(day);
    day.dropLines("Выход");
    day.info("11:50:00 Оператор изменил количество переданых телеграмм 2 на 7");
    day.writeJournal();
    day.counters(2, 7);
    QCOMPARE(day.disagreements(), QStringList());
}

void TestBooksSent::tornRecordIsNamed()
{
    BookDay day;
    BookDay::fillSwitched(day);
    day.writeJournal();
    day.write("out/20261122u005", "ЖДЕТ");
    day.write("out/20261122u005.dat", "112233|S|22.11.20");
    QCOMPARE(day.disagreements(), QStringList("out/20261122u005.dat: запись о файле повреждена"));
}

void TestBooksSent::recordWithoutItsFileIsNamed()
{
    BookDay day;
    BookDay::fillSwitched(day);
    day.writeJournal();
    day.write("out/20261122u005.dat", "112233|S|22.11.2026 13:00|u|2|N|");
    QCOMPARE(day.disagreements(),
             QStringList("out/20261122u005.dat: запись о файле, которого в очереди нет"));
}

QTEST_GUILESS_MAIN(TestBooksSent)
#include "test_books_sent.moc"
