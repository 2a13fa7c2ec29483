// The code pages of files that other programs read, against their registrations.

#include "tests/support/row.h"
#include "tests/text/code_pages.h"
#include "text/file_coding.h"

#include <QtTest>

Q_DECLARE_METATYPE(FileCoding)

class TestFileCoding : public QObject
{
    Q_OBJECT

private slots:
    void everyByteOfThePage_data();
    void everyByteOfThePage();
    void everyCharacterHasItsByteOrNone_data();
    void everyCharacterHasItsByteOrNone();
    void wordsInEachCoding_data();
    void wordsInEachCoding();
    void whatIsLostIsCountedAndNamedOnce();
    void textOfAllCharactersIsCodedAtOnce();
    void characterOfTwoHalvesIsOne();
    void halfACharacterIsLost();
    void codingsHaveNames();
};

namespace
{
/// What a byte of the page means; empty if nothing.
QString meaning(FileCoding coding, int byte)
{
    if (byte < 0x80)
        return QString(QChar(byte));
    const QChar character((coding == FileCoding::CP866 ? upperCP866 : upperCP1251)[byte - 0x80]);
    return character == QChar(QChar::ReplacementCharacter) ? QString() : QString(character);
}

void pages()
{
    QTest::addColumn<FileCoding>("coding");
    row("CP866", FileCoding::CP866);
    row("CP1251", FileCoding::CP1251);
}
} // namespace

void TestFileCoding::everyByteOfThePage_data()
{
    pages();
}

void TestFileCoding::everyByteOfThePage()
{
    QFETCH(FileCoding, coding);
    for (int byte = 0; byte < 256; ++byte) {
        const QString text = meaning(coding, byte);
        if (coding == FileCoding::CP1251 && byte == 0x98) // the only one that means nothing
            continue;
        QCOMPARE(text.size(), 1);
        const CodedText coded = codedText(text, coding);
        QVERIFY2(coded.bytes == QByteArray(1, char(byte)), qPrintable(QString::number(byte, 16)));
        QCOMPARE(coded.lostCount, 0);
    }
}

void TestFileCoding::everyCharacterHasItsByteOrNone_data()
{
    pages();
}

void TestFileCoding::everyCharacterHasItsByteOrNone()
{
    QFETCH(FileCoding, coding);
    int lost = 0;
    for (int c = 0; c <= 0xFFFF; ++c) {
        const CodedText coded = codedText(QString(QChar(c)), coding);
        QCOMPARE(coded.bytes.size(), 1);
        lost += coded.lostCount;
        const QString back = coded.lostCount == 0 ? meaning(coding, uchar(coded.bytes.at(0))) : QString("?");
        if (back != (coded.lostCount == 0 ? QString(QChar(c)) : QString::fromLatin1(coded.bytes)))
            QFAIL(qPrintable(QString::number(c, 16)));
    }
    QCOMPARE(lost, 0x10000 - (coding == FileCoding::CP1251 ? 255 : 256));
}

void TestFileCoding::wordsInEachCoding_data()
{
    QTest::addColumn<FileCoding>("coding");
    QTest::addColumn<QByteArray>("bytes");
    row("UTF-8", FileCoding::UTF8, QByteArray::fromHex("d090d0b1d18fd081e284960d0a31"));
    row("CP866", FileCoding::CP866, QByteArray::fromHex("80a1eff0fc0d0a31"));
    row("CP1251", FileCoding::CP1251, QByteArray::fromHex("c0e1ffa8b90d0a31"));
}

void TestFileCoding::wordsInEachCoding()
{
    QFETCH(FileCoding, coding);
    QFETCH(QByteArray, bytes);
    const CodedText coded = codedText(QStringLiteral("АбяЁ№\r\n1"), coding);
    QCOMPARE(coded.bytes, bytes);
    QCOMPARE(coded.lostCount, 0);
    QVERIFY(coded.lost.isEmpty());
}

void TestFileCoding::whatIsLostIsCountedAndNamedOnce()
{
    const CodedText coded = codedText(QStringLiteral("Ә1ҒӘ2"), FileCoding::CP866);
    QCOMPARE(coded.bytes, QByteArray("?1??2"));
    QCOMPARE(coded.lostCount, 3);
    QCOMPARE(coded.lost, (QVector<uint>{0x04D8, 0x0492}));
}

void TestFileCoding::textOfAllCharactersIsCodedAtOnce()
{
    QString all;
    for (uint c = 0x4E00; c < 0xD800; ++c)
        all += QChar(ushort(c));
    const CodedText coded = codedText(all.repeated(28), FileCoding::CP1251); // a million characters
    QCOMPARE(coded.lostCount, 28 * 0x8A00);
    QCOMPARE(coded.lost.size(), 0x8A00);
    QCOMPARE(coded.bytes, QByteArray(28 * 0x8A00, '?'));
}

void TestFileCoding::characterOfTwoHalvesIsOne()
{
    const QString face = QString::fromUtf8("\xF0\x9F\x98\x80");
    QCOMPARE(codedText(face, FileCoding::UTF8).bytes, QByteArray("\xF0\x9F\x98\x80"));
    const CodedText coded = codedText(face + QLatin1Char('1'), FileCoding::CP1251);
    QCOMPARE(coded.bytes, QByteArray("?1"));
    QCOMPARE(coded.lost, QVector<uint>{0x1F600});
}

void TestFileCoding::halfACharacterIsLost()
{
    for (const FileCoding coding : {FileCoding::UTF8, FileCoding::CP866, FileCoding::CP1251}) {
        const CodedText coded = codedText(QString(QChar(0xD83D)) + 'a' + QChar(0xDE00), coding);
        QCOMPARE(coded.bytes, QByteArray("?a?"));
        QCOMPARE(coded.lost, (QVector<uint>{0xD83D, 0xDE00}));
    }
}

void TestFileCoding::codingsHaveNames()
{
    QCOMPARE(nameOf(FileCoding::UTF8), QStringLiteral("UTF-8"));
    QCOMPARE(nameOf(FileCoding::CP866), QStringLiteral("CP866"));
    QCOMPARE(nameOf(FileCoding::CP1251), QStringLiteral("CP1251"));
}

QTEST_GUILESS_MAIN(TestFileCoding)
#include "test_file_coding.moc"
