#include "tests/support/row.h"
#include "text/telegram_index.h"

#include <QtTest>

class TestTelegramIndex : public QObject
{
    Q_OBJECT

private slots:
    void faultOfAnIndex_data()
    {
        QTest::addColumn<QString>("category");
        QTest::addColumn<QString>("index");
        QTest::addColumn<QString>("fault");
        const QString wrong = "Неверно указан индекс", missing = "Не указан индекс";
        row("none", "П", "", wrong);
        row("five figures", "П", "12345", wrong);
        row("six figures", "П", "123456", "");
        row("seven characters", "П", "1234567", "");
        row("no category", "", "123456", "");
        row("Ц alone is like the others", "Ц", "12345", wrong);
        row("Ц at the start is like the others", "ЦП", "1234567", "");
        row("none behind Ц", "ПЦ", "", missing);
        row("five behind Ц", "ПЦ", "12345", missing);
        row("six behind Ц", "ПЦ", "123456", "");
        row("seven without a sign", "ПЦ", "1234567", wrong);
        row("sign in the wrong place", "ПЦ", "12=4567", wrong);
        row("two halves", "ПЦ", "123=123", "");
    }
    void faultOfAnIndex()
    {
        QFETCH(QString, category);
        QFETCH(QString, index);
        QTEST(telegramIndexFault(category, index), "fault");
    }

    void completeIndexOfACategory_data()
    {
        QTest::addColumn<QString>("category");
        QTest::addColumn<QString>("index");
        QTest::addColumn<bool>("complete");
        const QString plain = QStringLiteral("П"), announced = QStringLiteral("ПЦ"),
                      first = QStringLiteral("Ц");
        row("plain, five", plain, QStringLiteral("12345"), false);
        row("plain, six", plain, QStringLiteral("123456"), true);
        row("plain, six characters", plain, QStringLiteral("12=45Б"), true);
        row("plain, seven", plain, QStringLiteral("1234567"), false);
        row("plain, none", plain, QString(), false);
        row("announced, five", announced, QStringLiteral("12345"), false);
        row("announced, six", announced, QStringLiteral("123456"), true);
        row("announced, a letter", announced, QStringLiteral("12345А"), false);
        row("announced, the same", announced, QStringLiteral("123=123"), true);
        row("announced, another", announced, QStringLiteral("123=124"), false);
        row("announced, no digits", announced, QStringLiteral("АБВ=АБВ"), false);
        row("announced, seven", announced, QStringLiteral("1234567"), false);
        row("announced, eight", announced, QStringLiteral("123=1234"), false);
        row("Ц first, seven", first, QStringLiteral("123=123"), true);
        row("Ц first, a letter", first, QStringLiteral("12345А"), false);
    }

    void completeIndexOfACategory()
    {
        QFETCH(QString, category);
        QFETCH(QString, index);
        QTEST(telegramIndexIsComplete(category, index), "complete");
    }
};

QTEST_GUILESS_MAIN(TestTelegramIndex)
#include "test_telegram_index.moc"
