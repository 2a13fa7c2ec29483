#include "ui/pages/shown_text.h"

#include "app/options.h"
#include "records/protocol.h"
#include "tests/support/desk.h"
#include "tests/support/no_ordinary_file.h"
#include "tests/support/row.h"
#include "text/mtk2.h"

#include <QFile>
#include <QtTest>

const QString TooLarge = QStringLiteral("Файл слишком велик, текст не показан");
const int Longest = 1048576;

namespace
{
/// The journal's lines of a read, without the empty one that waits for text.
QStringList linesOfReading(const Desk &desk, const QString &name)
{
    Log.addCacheServiceString(QStringLiteral("Запуск"), ProtocolInfo, false);
    (void)readShownText(desk.path(name));
    return desk.journal().mid(1, desk.journal().size() - 2);
}
} // namespace

class TestShownText : public QObject
{
    Q_OBJECT

private slots:
    void textIsShownUpToItsFirstZeroByte_data();
    void textIsShownUpToItsFirstZeroByte();
    void lettersOfTheNationalLanguageAreShown();
    void longestTextIsWhole_data();
    void longestTextIsWhole();
    void whatIsTooLargeShowsNothingOfIt_data();
    void whatIsTooLargeShowsNothingOfIt();
    void lineOfThaiTooLongShowsNothingOfIt();
    void missingFileIsJournalledOnce();
    void whatIsNoOrdinaryFileIsJournalledOnce_data() { specialFiles(); }
    void whatIsNoOrdinaryFileIsJournalledOnce();
    void oddNameStaysOneLineOfTheJournal();
};

void TestShownText::textIsShownUpToItsFirstZeroByte_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("text");
    row("a telegram", QByteArray("ЗЦЗЦ 1\r\nНННН"), "ЗЦЗЦ 1\r\nНННН");
    row("nothing", QByteArray(), "");
    row("a zero byte within", QByteArray("AB\0CD", 5), "AB");
    row("a zero byte first", QByteArray("\0AB", 3), "");
    row("bytes that are no UTF-8", QByteArray("A\xC0Z"), QStringLiteral("A\uFFFDZ"));
}

void TestShownText::textIsShownUpToItsFirstZeroByte()
{
    QFETCH(QByteArray, content);
    const Desk desk;
    desk.write("a", content);
    const ShownText shown = readShownText(desk.path("a"));
    QTEST(shown.text, "text");
    QCOMPARE(shown.trouble, QString());
}

void TestShownText::lettersOfTheNationalLanguageAreShown()
{
    const Desk desk;
    Options.nationalLanguageUse = 1;
    QString masked = QStringLiteral("Ә");
    maskNationalLanguage(masked);
    QVERIFY(masked != QStringLiteral("Ә"));
    desk.write("a", masked.toUtf8());
    QCOMPARE(readShownText(desk.path("a")).text, QStringLiteral("Ә"));
    Options.nationalLanguageUse = 0;
    QCOMPARE(readShownText(desk.path("a")).text, masked);
}

void TestShownText::longestTextIsWhole_data()
{
    QTest::addColumn<QString>("text");
    row("one line of three-byte characters", QString(Longest, QChar(0x2191)));
    row("one line of Thai", QString(32768, QChar(0x0e01)));
    row("lines of Thai", (QString(32767, QChar(0x0e01)) + QChar('\n')).repeated(Longest / 32768));
    row("a hundred thousand lines", QStringLiteral("А\r\n").repeated(100000));
}

void TestShownText::longestTextIsWhole()
{
    QFETCH(QString, text);
    const Desk desk;
    desk.write("a", text.toUtf8());
    const ShownText shown = readShownText(desk.path("a"));
    QVERIFY(shown.text == text);
    QCOMPARE(shown.trouble, QString());
}

void TestShownText::whatIsTooLargeShowsNothingOfIt_data()
{
    QTest::addColumn<QByteArray>("content");
    row("a character more", QString(Longest + 1, QChar(0x2191)).toUtf8());
    row("a letter more", QByteArray("AAAAAAA\n").repeated(Longest / 8) + "A");
    row("many empty lines", QByteArray(200001, '\n'));
    row("many paragraphs", QString(200001, QChar::ParagraphSeparator).toUtf8());
    row("many beginnings of frames", QString(200001, QChar(0xfdd0)).toUtf8());
    row("50 MB", QByteArray(50 << 20, 'A'));
    row("50 MB with a zero byte first", QByteArray(50 << 20, '\0'));
}

void TestShownText::whatIsTooLargeShowsNothingOfIt()
{
    QFETCH(QByteArray, content);
    const Desk desk;
    desk.write("a", content);
    const ShownText shown = readShownText(desk.path("a"));
    QCOMPARE(shown.text, QString());
    QCOMPARE(shown.trouble, TooLarge);
    QCOMPARE(desk.journal(), QStringList());
}

void TestShownText::lineOfThaiTooLongShowsNothingOfIt()
{
    const Desk desk;
    desk.write("a", QString(32769, QChar(0x0e01)).toUtf8());
    const ShownText shown = readShownText(desk.path("a"));
    QCOMPARE(shown.text, QString());
    QCOMPARE(shown.trouble, QStringLiteral("Слишком длинная строка, текст не показан"));
}

void TestShownText::missingFileIsJournalledOnce()
{
    const Desk desk;
    QCOMPARE(linesOfReading(desk, "a"),
             QStringList{QStringLiteral("412:00:00 Невозможно прочитать файл ") + desk.path("a")});
}

void TestShownText::whatIsNoOrdinaryFileIsJournalledOnce()
{
    QFETCH(SpecialFile, kind);
    const Desk desk;
    place(desk, kind, "a");
    QCOMPARE(linesOfReading(desk, "a").size(), 1);
    const ShownText shown = readShownText(desk.path("a"));
    QCOMPARE(shown.text, QString());
    QCOMPARE(shown.trouble, QStringLiteral("Невозможно прочитать файл"));
}

void TestShownText::oddNameStaysOneLineOfTheJournal()
{
    const Desk desk;
    const QStringList lines = linesOfReading(desk, "a\nb");
    QCOMPARE(lines.size(), 1);
    QVERIFY(lines.first().endsWith("/a?b"));
}

QTEST_MAIN(TestShownText)
#include "test_shown_text.moc"
