#include "tests/support/row.h"
#include "tests/text/code_points.h"
#include "tests/text/language.h"

#include <QThread>
#include <QtTest>

namespace
{
/// Codes of \a text and, behind them, the register in which the stream ends.
QString encoded(const QString &text, int reg)
{
    QByteArray codes("former");
    MTK2FromQString(text, codes, reg);
    return QString::fromLatin1(codes.toHex(' ')) + QStringLiteral(" >%1").arg(reg);
}

QString decoded(const QByteArray &codes, int reg)
{
    QString text = QStringLiteral("former");
    QStringFromMTK2(codes, text, reg);
    return text + QStringLiteral(" >%1").arg(reg);
}

/// The encoder in its plainest form, on the tables of the test: one search after the other.
QByteArray searched(const CodePoints::Table &table, QChar c, int &reg)
{
    ushort sought = (c.unicode() >= 0x10D0 && c.unicode() <= 0x10FA ? c : c.toUpper()).unicode();
    sought = sought == 0x0427 ? 0x34 : sought == 0x3E ? 0x0A : sought == 0x3C ? 0x0D : sought;
    const QByteArray registerCodes("\x1F\x00\x1B", 3);
    for (int mark = 0; mark < 3; ++mark) {
        if (sought == QByteArray("&|#").at(mark)) {
            reg = mark;
            return registerCodes.mid(mark, 1);
        }
    }
    for (int step = 0; step < 3; ++step) {
        const int row = (reg + step) % 3;
        for (int code = 0; code < 32; ++code) {
            if (table.rows[row][code] != sought)
                continue;
            reg = row;
            return (step == 0 ? QByteArray() : registerCodes.mid(row, 1)) + char(code);
        }
    }
    return QByteArray();
}
} // namespace

class TestMTK2 : public QObject
{
    Q_OBJECT

private slots:
    void init() { Language::select(Language::None); }

    void marksStayInDecodedText();
    void lettersFromLatinSwitchToNational();
    void cheGoesAsFigureFour();
    void receivedCheIsNoLetter();
    void characterWithoutCellWritesNothing_data();
    void characterWithoutCellWritesNothing();
    void redundantMarkKeepsItsCode();
    void markSelectsItsRegister();
    void spaceAndLineEndsNeverSwitch();
    void emptyTextLeavesTheRegister();
    void missingRegisterIsNotAddedAtTheStart();
    void searchGoesRoundFromTheCurrentRegister();
    void visibleLineEndsBecomeCodes();
    void smallLettersAreRaised();
    void fillerDecodesToItsSign();
    void codesBeyondTheLineDoNoHarm();
    void streamContinuesAcrossCalls();
    void everyStreamComesBackIdentical();
    void everyCharacterFollowsTheSearch_data();
    void everyCharacterFollowsTheSearch();

    void validIsWhatACellHolds();
    void tableMayChangeWhileThreadsConvert();
};

void TestMTK2::marksStayInDecodedText()
{
    QCOMPARE(decoded(QByteArray("\x1B\x01\x1F\x01", 4), 1), QStringLiteral("#3&E >0"));
}

void TestMTK2::lettersFromLatinSwitchToNational()
{
    QCOMPARE(encoded(QStringLiteral("АБ"), 0), QStringLiteral("00 03 19 >1"));
}

void TestMTK2::cheGoesAsFigureFour()
{
    QCOMPARE(encoded(QStringLiteral("Ч"), 1), QStringLiteral("1b 0a >2"));
    QCOMPARE(encoded(QStringLiteral("ч"), 1), QStringLiteral("1b 0a >2"));
}

void TestMTK2::receivedCheIsNoLetter()
{
    QCOMPARE(encoded(QStringLiteral("Ч"), 1), encoded(QStringLiteral("4"), 1));
    QCOMPARE(decoded(QByteArray("\x1B\x0A"), 1), QStringLiteral("#4 >2"));
}

void TestMTK2::characterWithoutCellWritesNothing_data()
{
    QTest::addColumn<QString>("text");
    row("caret, though the filler cell holds it", QStringLiteral("^"));
    row("exclamation mark", QStringLiteral("!"));
    row("Ё", QStringLiteral("Ё"));
    row("Ъ", QStringLiteral("Ъ"));
    row("zero", QString(QChar()));
    row("surrogates", QString::fromUtf8("\xF0\x9F\x98\x80"));
    row("last of the plane", QString(QChar(0xFFFF)));
}

void TestMTK2::characterWithoutCellWritesNothing()
{
    QFETCH(QString, text);
    for (int reg = 0; reg < 3; ++reg)
        QCOMPARE(encoded(text, reg), QStringLiteral(" >%1").arg(reg));
    QCOMPARE(encoded(QStringLiteral("А") + text + QStringLiteral("Б"), 1), QStringLiteral("03 19 >1"));
}

void TestMTK2::redundantMarkKeepsItsCode()
{
    QCOMPARE(encoded(QStringLiteral("|||"), 1), QStringLiteral("00 00 00 >1"));
    QCOMPARE(encoded(QStringLiteral("##"), 2), QStringLiteral("1b 1b >2"));
    QCOMPARE(encoded(QStringLiteral("&&"), 0), QStringLiteral("1f 1f >0"));
}

void TestMTK2::markSelectsItsRegister()
{
    for (int reg = 0; reg < 3; ++reg) {
        QCOMPARE(encoded(QStringLiteral("|"), reg), QStringLiteral("00 >1"));
        QCOMPARE(encoded(QStringLiteral("#"), reg), QStringLiteral("1b >2"));
        QCOMPARE(encoded(QStringLiteral("&"), reg), QStringLiteral("1f >0"));
    }
}

void TestMTK2::spaceAndLineEndsNeverSwitch()
{
    QCOMPARE(encoded(QStringLiteral(" "), 2), QStringLiteral("04 >2"));
    for (int reg = 0; reg < 3; ++reg)
        QCOMPARE(encoded(QStringLiteral(" \r\n"), reg), QStringLiteral("04 08 02 >%1").arg(reg));
}

void TestMTK2::emptyTextLeavesTheRegister()
{
    for (int reg = 0; reg < 3; ++reg) {
        QCOMPARE(encoded(QString(), reg), QStringLiteral(" >%1").arg(reg));
        QCOMPARE(decoded(QByteArray(), reg), QStringLiteral(" >%1").arg(reg));
    }
}

void TestMTK2::missingRegisterIsNotAddedAtTheStart()
{
    QCOMPARE(encoded(QStringLiteral("А"), 1), QStringLiteral("03 >1"));
    QCOMPARE(encoded(QStringLiteral("A"), 0), QStringLiteral("03 >0")); // Latin
    QCOMPARE(encoded(QStringLiteral("-"), 2), QStringLiteral("03 >2"));
}

void TestMTK2::searchGoesRoundFromTheCurrentRegister()
{
    QCOMPARE(encoded(QStringLiteral("А"), 0), QStringLiteral("00 03 >1")); // one step
    QCOMPARE(encoded(QStringLiteral("-"), 0), QStringLiteral("1b 03 >2")); // two steps
    QCOMPARE(encoded(QStringLiteral("-"), 1), QStringLiteral("1b 03 >2"));
    QCOMPARE(encoded(QStringLiteral("A"), 1), QStringLiteral("1f 03 >0"));
    QCOMPARE(encoded(QStringLiteral("A"), 2), QStringLiteral("1f 03 >0"));
    QCOMPARE(encoded(QStringLiteral("А"), 2), QStringLiteral("00 03 >1"));
}

void TestMTK2::visibleLineEndsBecomeCodes()
{
    QCOMPARE(encoded(QStringLiteral("<>"), 2), QStringLiteral("08 02 >2"));
}

void TestMTK2::smallLettersAreRaised()
{
    QCOMPARE(encoded(QStringLiteral("аbюя"), 1), QStringLiteral("03 1f 19 1b 0b 00 17 >1"));
}

void TestMTK2::fillerDecodesToItsSign()
{
    for (int reg = 0; reg < 3; ++reg)
        QCOMPARE(decoded(QByteArray(1, 32), reg), QStringLiteral("^ >%1").arg(reg));
}

void TestMTK2::codesBeyondTheLineDoNoHarm()
{
    for (int code = 33; code < 256; ++code) {
        int reg = 1;
        QCOMPARE(QCharFromMTK2(uchar(code), reg), QChar(u'^'));
        QCOMPARE(findQChar(uchar(code), reg), QChar(u'^'));
        QCOMPARE(reg, 1);
    }
    const QByteArray noisy = QByteArray(10, 3) + '\x80' + '\x1B' + QByteArray(10, 3) + '\xFF';
    QCOMPARE(decoded(noisy, 1), QStringLiteral("АААААААААА^#----------^ >2"));
}

void TestMTK2::streamContinuesAcrossCalls()
{
    const QString text = QStringLiteral("П 12 ABC-Ю,ЧАС\r\n");
    const QString whole = encoded(text, 0);
    int reg = 0;
    QByteArray pieces;
    for (const QChar c : text) {
        QByteArray codes;
        MTK2FromQString(QString(c), codes, reg);
        pieces += codes;
    }
    QCOMPARE(QString::fromLatin1(pieces.toHex(' ')) + QStringLiteral(" >%1").arg(reg), whole);
}

void TestMTK2::everyStreamComesBackIdentical()
{
    // Each code in front of each other, so that all changes of register occur, redundant ones included.
    QByteArray stream;
    for (int first = 0; first < 32; ++first)
        for (int second = 0; second < 32; ++second)
            stream.append(char(first)).append(char(second));
    for (const int language : {0, 2, 4}) {
        const Language scope(language);
        for (int begin = 0; begin < 3; ++begin) {
            int reg = begin;
            QString text;
            QStringFromMTK2(stream, text, reg);
            QCOMPARE(text.size(), stream.size());
            reg = begin;
            QByteArray codes;
            MTK2FromQString(text, codes, reg);
            QCOMPARE(codes, stream);
        }
    }
}

void TestMTK2::everyCharacterFollowsTheSearch_data()
{
    QTest::addColumn<int>("table");
    row("Russian", 0);
    row("Georgian", 2);
    row("Armenian", 4);
}

void TestMTK2::everyCharacterFollowsTheSearch()
{
    QFETCH(int, table);
    const Language language(CodePoints::Tables[table].language);
    for (int begin = 0; begin < 3; ++begin) {
        for (int c = 0; c <= 0xFFFF; ++c) {
            int expectedReg = begin;
            const QByteArray expected = searched(CodePoints::Tables[table], QChar(c), expectedReg);
            int reg = begin;
            QByteArray codes;
            MTK2FromQString(QString(QChar(c)), codes, reg);
            if (codes != expected || reg != expectedReg)
                QFAIL(qPrintable(QStringLiteral("U+%1 in register %2").arg(c, 4, 16).arg(begin)));
        }
    }
}

void TestMTK2::validIsWhatACellHolds()
{
    for (const QChar c : QStringLiteral("ABCXYZАБВЮЯЭЩШЧ0123456789-'*,:(+)?./= \r\n|#&"))
        QVERIFY2(QCharIsValidForMTK2(c), qPrintable(QString(c)));
    for (const QChar c : QStringLiteral("abzабяч^!ЁЪ<>\"%;@_№[]{}$\t"))
        QVERIFY2(!QCharIsValidForMTK2(c), qPrintable(QString(c)));
    QVERIFY(!QCharIsValidForMTK2(QChar()));
}

void TestMTK2::tableMayChangeWhileThreadsConvert()
{
    std::atomic<int> mixed{0};
    const auto convert = [&mixed] {
        for (int i = 0; i < 2000; ++i) {
            int reg = 1;
            QString text;
            QStringFromMTK2(QByteArray(64, 3), text, reg);
            if (text.at(0) != QChar(0x0410) && text.at(0) != QChar(0x10D0))
                ++mixed;
            if (text.count(text.at(0)) != 64)
                ++mixed;
        }
    };
    QScopedPointer<QThread> first(QThread::create(convert)), second(QThread::create(convert));
    first->start();
    second->start();
    for (int i = 0; !first->isFinished() || !second->isFinished(); ++i)
        fromMTKcode = i % 2 == 0 ? fromMTKcode_GEORGIAN : fromMTKcode_RUSSIAN;
    QVERIFY(first->wait() && second->wait());
    QCOMPARE(mixed.load(), 0);
}

QTEST_GUILESS_MAIN(TestMTK2)
#include "test_mtk2.moc"
