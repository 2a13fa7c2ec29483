#include "records/journal_lines.h"
#include "tests/support/row.h"
#include "text/scan_position.h"

#include <QtTest>

/// The list of a journal: growth at its end leaves remembered positions, nothing else does.
class TestJournalLines : public QObject
{
    Q_OBJECT

private slots:
    void growthLeavesPositions();
    void exchangeOfAnyLineEndsThem_data();
    void exchangeOfAnyLineEndsThem();
    void anotherListEndsThem();
    void listStandsInItsPlace();
    void readsLikeItsList();
};

void TestJournalLines::growthLeavesPositions()
{
    CJournalLines lines;
    CScanPosition position;
    position.reach(lines, 0);
    lines.append("A");
    lines << "B"
          << "";
    lines.extendLast('C');
    lines.extendLast(QStringLiteral("DE"));
    QVERIFY(position.holds(lines));
    QCOMPARE(lines, QStringList({"A", "B", "CDE"}));
}

void TestJournalLines::exchangeOfAnyLineEndsThem_data()
{
    QTest::addColumn<int>("line");
    row("first", 0);
    row("last", 2);
}

void TestJournalLines::exchangeOfAnyLineEndsThem()
{
    QFETCH(int, line);
    CJournalLines lines;
    lines = QStringList{"A", "B", "C"};
    CScanPosition position;
    position.reach(lines, 2);
    lines.replace(line, lines.at(line));
    QVERIFY(!position.holds(lines));
    QCOMPARE(lines, QStringList({"A", "B", "C"}));
}

void TestJournalLines::anotherListEndsThem()
{
    const QStringList list{"A", "B"};
    CJournalLines lines;
    CScanPosition position;
    lines = list;
    position.reach(lines, 1);
    lines = list;
    QVERIFY(!position.holds(lines));
    position.reach(lines, 1);
    lines.clear();
    QVERIFY(!position.holds(lines));
    QVERIFY(lines.isEmpty());
}

void TestJournalLines::listStandsInItsPlace()
{
    CJournalLines lines;
    const QStringList *place = &lines.list();
    lines = QStringList{"A"};
    lines << "B";
    lines.clear();
    QCOMPARE(&lines.list(), place);
}

void TestJournalLines::readsLikeItsList()
{
    CJournalLines lines;
    lines = QStringList{"A", "AB", "C"};
    const QStringList &plain = lines;
    QCOMPARE(plain.size(), 3);
    QCOMPARE(lines.size(), 3);
    QCOMPARE(lines.first(), QString("A"));
    QCOMPARE(lines.last(), QString("C"));
    QCOMPARE(lines.at(1), QString("AB"));
    QCOMPARE(lines[1], QString("AB"));
    QCOMPARE(lines.mid(1), QStringList({"AB", "C"}));
    QCOMPARE(lines.mid(1, 1), QStringList("AB"));
    QCOMPARE(lines.join('/'), QString("A/AB/C"));
    QCOMPARE(lines.filter("A"), QStringList({"A", "AB"}));
    QVERIFY(lines.contains("AB"));
    QVERIFY(!lines.contains("B"));
    QString all;
    for (const QString &line : lines)
        all += line;
    QCOMPARE(all, QString("AABC"));
}

QTEST_GUILESS_MAIN(TestJournalLines)
#include "test_journal_lines.moc"
