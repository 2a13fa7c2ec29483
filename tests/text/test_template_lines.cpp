#include "text/utils.h"

#include <QtTest>

/// Templates of the lines that a centre really sends.
class TestTemplateLines : public QObject
{
    Q_OBJECT

private slots:
    void headerWithSixDigits();
    void receiptOfTheCentre();
    void renumbering();
    void journalLine();
};

void TestTemplateLines::headerWithSixDigits()
{
    QString category, time;
    int day = -1, words = -1;
    QCOMPARE(CUtils::testTemplate("%.3A%2d %6D %d", "П31 311045 28=", &category, &day, &time, &words), 4);
    QCOMPARE(category, QStringLiteral("П"));
    QCOMPARE(day, 31);
    QCOMPARE(time, QStringLiteral("311045"));
    QCOMPARE(words, 28);
}

void TestTemplateLines::receiptOfTheCentre()
{
    const QString format = QStringLiteral("ВАШ %3d НАШ %3d ПОСЛЕДНИЕ %s %s %s");
    int yours = -1, ours = -1;
    QString w1, w2, w3;
    QCOMPARE(CUtils::testTemplate(format, "ВАШ 005 НАШ 003", &yours, &ours, &w1, &w2, &w3), 2);
    QCOMPARE(yours, 5);
    QCOMPARE(ours, 3);
    QCOMPARE(
        CUtils::testTemplate(format, "ВАШ 012 НАШ 034 ПОСЛЕДНИЕ СВЯЗЬ ОТКРЫТА", &yours, &ours, &w1, &w2, &w3),
        4);
    QCOMPARE(yours, 12);
    QCOMPARE(ours, 34);
    QCOMPARE(w1 + u'|' + w2 + u'|' + w3, QStringLiteral("СВЯЗЬ|ОТКРЫТА|"));
    QString first, second, third;
    QCOMPARE(CUtils::testTemplate(format, "ВАШ 012 НАШ 034 ПОСЛЕДНИЕ ЗАКРЫТО ПО АБВ1234", &yours, &ours,
                                  &first, &second, &third),
             5);
    QCOMPARE(third, QStringLiteral("АБВ1234"));
}

void TestTemplateLines::renumbering()
{
    int taken = -1, sent = -1;
    QString w1, w2;
    QCOMPARE(CUtils::testTemplate("СМЕНА НУМЕРАЦИИ ПРИН %04d ПЕР %04d %s %s",
                                  "СМЕНА НУМЕРАЦИИ ПРИН 0012 ПЕР 0040 ОТКРОЙТЕ СВЯЗЬ", &taken, &sent, &w1,
                                  &w2),
             4);
    QCOMPARE(taken, 12);
    QCOMPARE(sent, 40);
    QCOMPARE(w1 + u'|' + w2, QStringLiteral("ОТКРОЙТЕ|СВЯЗЬ"));
}

void TestTemplateLines::journalLine()
{
    QString letters, time;
    int left = -1, right = -1, day = -1, words = -1;
    const QString format = QStringLiteral("%.3A%3d=%3d %2d %6D %d");
    QCOMPARE(CUtils::testTemplate(format, "АБВ012=012   31 311045  28", &letters, &left, &right, &day, &time,
                                  &words),
             6);
    QCOMPARE(letters, QStringLiteral("АБВ"));
    QCOMPARE(left, 12);
    QCOMPARE(right, 12);
    QCOMPARE(day, 31);
    QCOMPARE(time, QStringLiteral("311045"));
    QCOMPARE(words, 28);
    letters.clear();
    time.clear();
    QCOMPARE(
        CUtils::testTemplate(format, "А012=013 31 311045=", &letters, &left, &right, &day, &time, &words), 5);
    QCOMPARE(letters, QStringLiteral("А"));
    QCOMPARE(right, 13);
}

QTEST_GUILESS_MAIN(TestTemplateLines)
#include "test_template_lines.moc"
