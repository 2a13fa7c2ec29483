#include "tests/support/row.h"
#include "tests/support/thread_end.h"
#include "tests/text/language.h"
#include "text/encodings.h"

#include <QtTest>

#include <atomic>
#include <memory>

class TestEncodings : public QObject
{
    Q_OBJECT

private slots:
    void init() { Language::select(Language::None); }

    void corvaBytesOfStarAndLettersAreRead();
    void corvaLettersAreFolded();
    void corvaOfEveryCharacterWithoutLanguage();
    void corvaLowerHalfIsTheSameCode_data();
    void corvaLowerHalfIsTheSameCode();
    void corvaUpperHalf_data();
    void corvaUpperHalf();
    void corvaNationalLettersNeedALanguage();
    void corvaNationalLetters_data();
    void corvaNationalLetters();
    void corvaClearsItsOutput();
    void corvaTextComesBackInCapitals();
    void corvaLanguageMayChangeWhileALinkReads();

    void cp1251Decodes();
    void cp1251Encodes();
    void cp1251HasNoYo();
    void cp1251ClearsItsOutput();

    void byteBecomesTwoFigures();
    void alphabetOfTheCoding();
    void foreignCharacterIsNoFigure();
    void codedBytesAreStrungTogether();
    void lineEndsInsideTheCodingDoNoHarm();
    void halfByteAtTheEndIsDropped();
    void everyByteComesBack();

    void transliterationOfEveryLetter_data();
    void transliterationOfEveryLetter();
    void transliterationOfAWord();
    void transliterationLeavesTheRest();
};

namespace
{
QString fromCorva(QByteArray bytes)
{
    QString text = QStringLiteral("former");
    QStringFromCORVA(bytes, text);
    return text;
}

QByteArray toCorva(QString text)
{
    QByteArray bytes("former");
    CORVAFromQString(text, bytes);
    return bytes;
}

QString fromCp1251(QByteArray bytes)
{
    QString text = QStringLiteral("former");
    QStringFromCP1251(bytes, text);
    return text;
}

QByteArray toCp1251(QString text)
{
    QByteArray bytes("former");
    CP1251FromQString(text, bytes);
    return bytes;
}

QByteArray byteRange(int first, int last)
{
    QByteArray bytes;
    for (int byte = first; byte <= last; ++byte)
        bytes += char(byte);
    return bytes;
}

QString characterRange(int first, int last)
{
    QString text;
    for (int c = first; c <= last; ++c)
        text += QChar(c);
    return text;
}

/// The bytes of national letters, in the order of the alphabet.
const QByteArray NationalBytes =
    QByteArray::fromHex("a1a2a3a4a6a7a8a9aaabacadafe2e4e6e7e8e9eaebecedeeeff0f1f2f3f4f5f6f7f8f9fcfdfe");
} // namespace

void TestEncodings::corvaBytesOfStarAndLettersAreRead()
{
    QCOMPARE(fromCorva(QByteArray("\x05\x80\xA0")), QStringLiteral("*АА"));
}

void TestEncodings::corvaLettersAreFolded()
{
    QCOMPARE(toCorva(QStringLiteral("*аА")), QByteArray("\x05\x80\x80"));
}

void TestEncodings::corvaOfEveryCharacterWithoutLanguage()
{
    for (int c = 0; c <= 0xFFFF; ++c) {
        QByteArray expected;
        if (c == 0x2A)
            expected = QByteArray("\x05");
        else if (c > 0 && c < 0x80)
            expected = QByteArray(1, char(c));
        else if (c >= 0x0410 && c <= 0x044F)
            expected = QByteArray(1, char(0x80 + (c - 0x0410) % 32));
        if (toCorva(QString(QChar(c))) != expected)
            QFAIL(qPrintable(QStringLiteral("U+%1").arg(c, 4, 16)));
    }
}

void TestEncodings::corvaLowerHalfIsTheSameCode_data()
{
    QTest::addColumn<int>("language");
    for (const int language : {-1, 0, 1, 2, 3, 4})
        QTest::addRow("language %d", language) << language;
}

void TestEncodings::corvaLowerHalfIsTheSameCode()
{
    QFETCH(int, language);
    const Language scope(language);
    QCOMPARE(fromCorva(QByteArray(1, '\0')), QString());
    QCOMPARE(fromCorva(byteRange(0x01, 0x7F)),
             characterRange(0x01, 0x04) + u'*' + characterRange(0x06, 0x7F));
    QCOMPARE(fromCorva(byteRange(0x80, 0x9F)), characterRange(0x0410, 0x042F));
    QCOMPARE(fromCorva(byteRange(0xB0, 0xDF)), QString());
}

void TestEncodings::corvaUpperHalf_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("fromA0");
    QTest::addColumn<QString>("fromE0");
    QTest::addColumn<QString>("fromF0");
    const QString ap = characterRange(0x0410, 0x041F), rya = characterRange(0x0420, 0x042F);
    row("none", 0, ap, rya, QString(16, u' '));
    row("Tatar", 1, ap, rya, characterRange(0x0430, 0x043F));
    // Byte by byte; a dot stands for the space of a byte without a letter.
    row("Georgian", 2, QString::fromUtf8(".აბგდ.ევზთიკლმ.ნ").replace(u'.', u' '),
        QString::fromUtf8("..ო.პ.ჟრსტუფქღყშ").replace(u'.', u' '),
        QString::fromUtf8("ჩცძწჭხჯჰ........").replace(u'.', u' '));
    row("Armenian", 4, QString::fromUtf8(".ԱԲԳԴ.ԵԶԷԸԹԺԻԼ.Խ").replace(u'.', u' '),
        QString::fromUtf8("..Ծ.Կ.ՀՁՂՃՄՅՆՇՈՉ").replace(u'.', u' '),
        QString::fromUtf8("ՊՋՌՍՎՏՐՑՒՓ..ՔՕՖ.").replace(u'.', u' '));
    row("not offered 3", 3, QString(), QString(), QString());
    row("behind the last", 5, QString(), QString(), QString());
    row("below the first", -1, QString(), QString(), QString());
}

void TestEncodings::corvaUpperHalf()
{
    QFETCH(int, language);
    QFETCH(QString, fromA0);
    QFETCH(QString, fromE0);
    QFETCH(QString, fromF0);
    const Language scope(language);
    QCOMPARE(fromCorva(byteRange(0xA0, 0xAF)), fromA0);
    QCOMPARE(fromCorva(byteRange(0xE0, 0xEF)), fromE0);
    QCOMPARE(fromCorva(byteRange(0xF0, 0xFF)), fromF0);
}

void TestEncodings::corvaNationalLettersNeedALanguage()
{
    QCOMPARE(toCorva(QString(QChar(0x10D0))), QByteArray());
    const Language language(Language::Tatar); // any language opens all alphabets
    QCOMPARE(toCorva(QString(QChar(0x10D0))), QByteArray("\xA1"));
    QCOMPARE(toCorva(QString(QChar(0x0531))), QByteArray("\xA1"));
}

void TestEncodings::corvaNationalLetters_data()
{
    QTest::addColumn<int>("language");
    for (const int language : {-1, 1, 2, 3, 4})
        QTest::addRow("language %d", language) << language;
}

void TestEncodings::corvaNationalLetters()
{
    QFETCH(int, language);
    const Language scope(language);
    QCOMPARE(NationalBytes.size(), 38);
    QCOMPARE(toCorva(characterRange(0x10D0, 0x10F0)), NationalBytes.left(33));
    QCOMPARE(toCorva(characterRange(0x0531, 0x0556)), NationalBytes);
    QCOMPARE(toCorva(characterRange(0x0561, 0x0586)), NationalBytes); // small letters fold
    for (const int outside :
         {0x10CF, 0x10F1, 0x0530, 0x0557, 0x0560, 0x0587, 0x040F, 0x0450, 0x80, 0xFF, 0x04D8})
        QCOMPARE(toCorva(QString(QChar(outside))), QByteArray());
}

void TestEncodings::corvaClearsItsOutput()
{
    QCOMPARE(fromCorva(QByteArray()), QString());
    QCOMPARE(toCorva(QString()), QByteArray());
}

void TestEncodings::corvaTextComesBackInCapitals()
{
    QCOMPARE(fromCorva(toCorva(QStringLiteral("ЗЦЗЦ 001 *Ёяz\r\n"))), QStringLiteral("ЗЦЗЦ 001 *Яz\r\n"));
}

// Each text is read in one language or in the other.
void TestEncodings::corvaLanguageMayChangeWhileALinkReads()
{
    std::atomic<bool> end = false;
    std::atomic<int> wrong = 0;
    const std::unique_ptr<QThread> link(QThread::create([&] {
        while (!end) {
            QByteArray bytes("\xA1\xA1");
            QString text;
            QStringFromCORVA(bytes, text);
            if (text != QStringLiteral("ББ") && text != QString(2, QChar(0x10D0)))
                ++wrong;
        }
    }));
    ThreadEnd linkEnd(*link);
    link->start();
    for (int i = 0; i < 20000; ++i)
        Options.nationalLanguageUse = i % 2 ? Language::Georgian : Language::None;
    end = true;
    linkEnd.join();
    QCOMPARE(wrong.load(), 0);
}

void TestEncodings::cp1251Decodes()
{
    QCOMPARE(fromCp1251(byteRange(0x00, 0x7F)), characterRange(0x00, 0x7F)); // a zero byte is a character
    QCOMPARE(fromCp1251(byteRange(0x80, 0xBF)), QString());
    QCOMPARE(fromCp1251(byteRange(0xC0, 0xDF)), characterRange(0x0410, 0x042F));
    QCOMPARE(fromCp1251(byteRange(0xE0, 0xFF)), characterRange(0x0410, 0x042F));
}

void TestEncodings::cp1251Encodes()
{
    for (int c = 0; c <= 0xFFFF; ++c) {
        QByteArray expected;
        if (c > 0 && c < 0x80)
            expected = QByteArray(1, char(c));
        else if (c >= 0x0410 && c <= 0x044F)
            expected = QByteArray(1, char(0xC0 + (c - 0x0410) % 32));
        if (toCp1251(QString(QChar(c))) != expected)
            QFAIL(qPrintable(QStringLiteral("U+%1").arg(c, 4, 16)));
    }
}

void TestEncodings::cp1251HasNoYo()
{
    QCOMPARE(toCp1251(QStringLiteral("Ёё")), QByteArray());
    QCOMPARE(fromCp1251(QByteArray("\xA8\xB8")), QString());
}

void TestEncodings::cp1251ClearsItsOutput()
{
    QCOMPARE(fromCp1251(QByteArray()), QString());
    QCOMPARE(toCp1251(QString()), QByteArray());
}

void TestEncodings::byteBecomesTwoFigures()
{
    QCOMPARE(ByteToMTKCoding(0xAF), QStringLiteral(":,"));
    QCOMPARE(ByteToMTKCoding(0x00), QStringLiteral("00"));
}

void TestEncodings::alphabetOfTheCoding()
{
    const ushort alphabet[] = {0x30, 0x31, 0x32, 0x33, 0x34, 0x35, 0x36, 0x37,
                               0x38, 0x39, 0x3A, 0x2D, 0x2B, 0x3D, 0x2E, 0x2C};
    for (int value = 0; value < 16; ++value) {
        QCOMPARE(ByteFromMTKCoding(QChar(alphabet[value])), value);
        QCOMPARE(ByteToMTKCoding(uchar(value)), QStringLiteral("0") + QChar(alphabet[value]));
        QVERIFY(findMTK(QChar(alphabet[value]), 2) != 33); // a run of it needs one register only
    }
}

void TestEncodings::foreignCharacterIsNoFigure()
{
    QCOMPARE(ByteFromMTKCoding(u'A'), 16);
    QCOMPARE(ByteFromMTKCoding(QChar()), 16);
    QCOMPARE(ByteFromMTKCoding(QChar(0x0130)), 16); // its low byte is that of "0"
    QCOMPARE(ByteFromMTKCoding(QChar(0xFF10)), 16); // a wide digit
}

void TestEncodings::codedBytesAreStrungTogether()
{
    QCOMPARE(ByteArrayToMTKCoding(QByteArray()), QString());
    QCOMPARE(ByteArrayToMTKCoding(QByteArray::fromHex("00AFBCDE41")), QStringLiteral("00:,-+=.41"));
}

void TestEncodings::lineEndsInsideTheCodingDoNoHarm()
{
    QCOMPARE(ByteArrayFromMTKCoding(QStringLiteral("4\r\n1")), QByteArray("A"));
    QCOMPARE(ByteArrayFromMTKCoding(QStringLiteral("#4|&Я 1")), QByteArray("A"));
    QCOMPARE(ByteArrayFromMTKCoding(QStringLiteral("4") + QChar(0x0130) + u'1'), QByteArray("A"));
}

void TestEncodings::halfByteAtTheEndIsDropped()
{
    QCOMPARE(ByteArrayFromMTKCoding(QStringLiteral("414")), QByteArray("A"));
    QCOMPARE(ByteArrayFromMTKCoding(QStringLiteral("4")), QByteArray());
    QCOMPARE(ByteArrayFromMTKCoding(QString()), QByteArray());
}

void TestEncodings::everyByteComesBack()
{
    const QByteArray all = byteRange(0x00, 0xFF);
    QCOMPARE(ByteArrayFromMTKCoding(ByteArrayToMTKCoding(all)), all);
}

void TestEncodings::transliterationOfEveryLetter_data()
{
    QTest::addColumn<QString>("latin");
    const QStringList rows =
        QStringLiteral("A B V G D E J Z I I K L M N O P R S T U F H C CH SH SC ' Y ' E IU IA").split(u' ');
    QCOMPARE(rows.size(), 32);
    for (int i = 0; i < 32; ++i)
        QTest::addRow("%04X", 0x0410 + i) << rows.at(i);
}

void TestEncodings::transliterationOfEveryLetter()
{
    QFETCH(QString, latin);
    const int capital = QByteArray(QTest::currentDataTag()).toInt(nullptr, 16);
    QCOMPARE(QStringTransliterate(QString(QChar(capital))), latin);
    QCOMPARE(QStringTransliterate(QString(QChar(capital + 32))), latin);
}

void TestEncodings::transliterationOfAWord()
{
    QCOMPARE(QStringTransliterate(QStringLiteral("щука")), QStringLiteral("SCUKA"));
}

void TestEncodings::transliterationLeavesTheRest()
{
    const QString rest = QStringLiteral("Ёё az AZ 09\r\n|#&") + QChar(0x040F) + QChar(0x0450) + QChar(0x10D0);
    QCOMPARE(QStringTransliterate(rest), rest);
    QCOMPARE(QStringTransliterate(QString()), QString());
}

QTEST_GUILESS_MAIN(TestEncodings)
#include "test_encodings.moc"
