#include "procedures/telegram_files.h"
#include "tests/support/no_ordinary_file.h"
#include "tests/support/row.h"

/// Which queue files are read, and how far.
class TestTelegramFiles : public QObject
{
    Q_OBJECT

private slots:
    void textUpToTheFirstZeroIsRead();
    void greatestTextIsRead_data();
    void greatestTextIsRead();
    void oneCharacterMoreIsNotRead_data();
    void oneCharacterMoreIsNotRead();
    void fileBeyondMemoryIsNotRead();
    void specialFileIsNotRead_data() { specialFiles(); }
    void specialFileIsNotRead();
};

namespace
{
constexpr int Greatest = 16777216; // characters

void letters()
{
    QTest::addColumn<QString>("letter");
    row("of one byte", QStringLiteral("A"));
    row("of two", QStringLiteral("Я"));
    row("of three", QStringLiteral("₽"));
}
} // namespace

void TestTelegramFiles::textUpToTheFirstZeroIsRead()
{
    const Desk desk;
    desk.write("a", QByteArray("ТЕКСТ\0ДАЛЬШЕ", 22));
    QCOMPARE(readTelegram("a").value_or("none"), QStringLiteral("ТЕКСТ"));
}

void TestTelegramFiles::greatestTextIsRead_data()
{
    letters();
}

void TestTelegramFiles::greatestTextIsRead()
{
    QFETCH(QString, letter);
    const Desk desk;
    desk.write("a", letter.toUtf8().repeated(Greatest));
    const auto text = readTelegram("a");
    QVERIFY(text.has_value());
    QCOMPARE(text->size(), Greatest);
    QVERIFY(text->endsWith(letter));
}

void TestTelegramFiles::oneCharacterMoreIsNotRead_data()
{
    letters();
}

void TestTelegramFiles::oneCharacterMoreIsNotRead()
{
    QFETCH(QString, letter);
    const Desk desk;
    desk.write("a", letter.toUtf8().repeated(Greatest + 1));
    QVERIFY(!readTelegram("a"));
}

void TestTelegramFiles::fileBeyondMemoryIsNotRead()
{
    const Desk desk;
    QFile file(desk.path("a"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(Q_INT64_C(1) << 40)); // of holes
    QVERIFY(!readTelegram("a"));
}

void TestTelegramFiles::specialFileIsNotRead()
{
    QFETCH(SpecialFile, kind);
    const Desk desk;
    place(desk, kind, "a");
    QVERIFY(!readTelegram("a"));
}

QTEST_GUILESS_MAIN(TestTelegramFiles)
#include "test_telegram_files.moc"
