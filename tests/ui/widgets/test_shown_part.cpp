#include "tests/support/row.h"
#include "ui/widgets/shown_part.h"

#include <QtTest>

class TestShownPart : public QObject
{
    Q_OBJECT

private slots:
    void textIsShownWhole_data()
    {
        QTest::addColumn<QString>("text");
        row("none", "");
        row("telegram", "ЗЦЗЦ 001\r\nПРИВЕТ\r\nНННН  ");
        row("binary", QString(QChar(0)) + QChar(0xD83D) + "\x01\r\r\n");
        row("a million characters", (QString(99, 'A') + "\n").repeated(10000));
        row("longest line", QString(2000, 'A') + "\nB");
        row("most lines", QString(20000, '\n'));
    }
    void textIsShownWhole()
    {
        QFETCH(QString, text);
        QCOMPARE(shownPart(text), text);
    }

    void longLineIsBroken()
    {
        QCOMPARE(shownPart(QString(4001, 'A')), QString(2000, 'A') + "\n" + QString(2000, 'A') + "\nA");
    }

    void tooMuchIsCut_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("shown");
        row("characters", (QString(99, 'A') + "\n").repeated(10001), 1000000);
        row("lines", QString(20001, '\n'), 20000);
        row("returns", QString(20001, '\r'), 20000);
        row("separators", QString(20001, QChar(0x2029)), 20000);
        row("lines of a telegram", QString("A\r\n").repeated(20001), 60000);
    }
    void tooMuchIsCut()
    {
        QFETCH(QString, text);
        QFETCH(int, shown);
        QCOMPARE(shownPart(text), text.left(shown) + "\n... всего знаков: " + QString::number(text.size()));
    }
};

QTEST_GUILESS_MAIN(TestShownPart)
#include "test_shown_part.moc"
