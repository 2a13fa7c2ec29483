#include "tests/support/row.h"
#include "tests/text/language.h"

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
} // namespace

/// Tables with a national row of their own, and the letters that travel as masks.
class TestMTK2National : public QObject
{
    Q_OBJECT

private slots:
    void init() { Language::select(Language::None); }

    void georgianFigureSwitchesToFigures();
    void georgianLettersStayWhenRaised();
    void georgianTableDropsCyrillic();
    void raisingTextKeepsGeorgianLetters();
    void armenianNeedsItsOwnNumber();

    void maskedLettersAreValidWithTatarOnly();

    void tatarLetterTravelsAsThreeFigures();
    void tatarLetterIsDroppedWithoutMasks();
    void everyMaskGoesBothWays_data();
    void everyMaskGoesBothWays();
    void masksIgnoreSmallLetters();
    void masksAreReadFromTheLeftInTableOrder();
};

void TestMTK2National::georgianFigureSwitchesToFigures()
{
    const Language language(Language::Georgian);
    QCOMPARE(encoded(QString(QChar(0x10ED)), 1), QStringLiteral("1b 05 >2"));
}

void TestMTK2National::georgianLettersStayWhenRaised()
{
    for (ushort c = 0x10D0; c <= 0x10FA; ++c)
        QCOMPARE(upperMTK2(QChar(c)), QChar(c));
    QCOMPARE(upperMTK2(QChar(u'ж')), QChar(u'Ж'));
    const Language language(Language::Georgian);
    QCOMPARE(encoded(QString(QChar(0x10D0)), 1), QStringLiteral("03 >1"));
}

void TestMTK2National::georgianTableDropsCyrillic()
{
    const Language language(Language::Georgian);
    QCOMPARE(encoded(QStringLiteral("Я(Ю)"), 1), QStringLiteral(" >1"));
    QVERIFY(!QCharIsValidForMTK2(u'Я'));
    QVERIFY(QCharIsValidForMTK2(u'Ч')); // it goes as a figure everywhere
}

void TestMTK2National::raisingTextKeepsGeorgianLetters()
{
    const QChar an(0x10D0), hoe(0x10F5);
    QCOMPARE(upperMTK2(QString()), QString());
    QCOMPARE(upperMTK2(QStringLiteral("жизнь, ёлка; life")), QStringLiteral("ЖИЗНЬ, ЁЛКА; LIFE"));
    QCOMPARE(upperMTK2(QString(an) + hoe), QString(an) + hoe);
    QCOMPARE(upperMTK2(QStringLiteral("аб") + an + QStringLiteral("вг") + hoe + QStringLiteral("дё")),
             QStringLiteral("АБ") + an + QStringLiteral("ВГ") + hoe + QStringLiteral("ДЁ"));
}

void TestMTK2National::armenianNeedsItsOwnNumber()
{
    const Language language(Language::Armenian);
    QCOMPARE(encoded(QString(QChar(0x0561)), 1), QStringLiteral("03 >1")); // a small letter
    Language::select(Language::NotOffered);
    QCOMPARE(encoded(QString(QChar(0x0531)), 1), QStringLiteral(" >1"));
}

void TestMTK2National::maskedLettersAreValidWithTatarOnly()
{
    for (const int language : {-1, 0, 1, 2, 3, 4}) {
        const Language scope(language);
        for (const int c : {0x04D8, 0x04E8, 0x04AE, 0x0496, 0x04A2, 0x04BA})
            QCOMPARE(QCharIsValidForMTK2(QChar(c)), language == 1);
        QVERIFY(!QCharIsValidForMTK2(QChar(0x04D9))); // a small one
    }
}

void TestMTK2National::tatarLetterTravelsAsThreeFigures()
{
    const Language language(Language::Tatar);
    QString text = QStringLiteral("Ә");
    maskNationalLanguage(text);
    QCOMPARE(text, QStringLiteral("???"));
    QCOMPARE(encoded(text, 2), QStringLiteral("19 19 19 >2"));
    QCOMPARE(encoded(text, 1), QStringLiteral("1b 19 19 19 >2"));
}

void TestMTK2National::tatarLetterIsDroppedWithoutMasks()
{
    for (const int language : {-1, 0, 2, 3, 4}) {
        const Language scope(language);
        QString text = QStringLiteral("Ә???");
        maskNationalLanguage(text);
        QCOMPARE(text, QStringLiteral("Ә???"));
        unmaskNationalLanguage(text);
        QCOMPARE(text, QStringLiteral("Ә???"));
        QCOMPARE(encoded(QStringLiteral("Ә"), 1), QStringLiteral(" >1"));
    }
    const Language tatarLanguage(Language::Tatar);
    QCOMPARE(encoded(QStringLiteral("Ә"), 1), QStringLiteral(" >1")); // masks come before the encoder
}

void TestMTK2National::everyMaskGoesBothWays_data()
{
    QTest::addColumn<ushort>("letter");
    QTest::addColumn<QString>("mask");
    row("04D8", ushort(0x04D8), QStringLiteral("???"));
    row("04E8", ushort(0x04E8), QStringLiteral("((("));
    row("04AE", ushort(0x04AE), QStringLiteral(")))"));
    row("0496", ushort(0x0496), QStringLiteral("///"));
    row("04A2", ushort(0x04A2), QStringLiteral(":::"));
    row("04BA", ushort(0x04BA), QStringLiteral("'''"));
}

void TestMTK2National::everyMaskGoesBothWays()
{
    QFETCH(ushort, letter);
    QFETCH(QString, mask);
    const Language language(Language::Tatar);
    const QString plain = QStringLiteral("А%1Б%1%1").arg(QChar(letter));
    const QString masked = QStringLiteral("А%1Б%1%1").arg(mask);
    QString text = plain;
    maskNationalLanguage(text);
    QCOMPARE(text, masked);
    unmaskNationalLanguage(text);
    QCOMPARE(text, plain);
}

void TestMTK2National::masksIgnoreSmallLetters()
{
    const Language language(Language::Tatar);
    QString text = QStringLiteral("әөүҗңһ");
    maskNationalLanguage(text);
    QCOMPARE(text, QStringLiteral("әөүҗңһ"));
}

void TestMTK2National::masksAreReadFromTheLeftInTableOrder()
{
    const Language language(Language::Tatar);
    QString text = QStringLiteral("????") + QStringLiteral("((((?");
    unmaskNationalLanguage(text);
    QCOMPARE(text, QStringLiteral("Ә?Ө(?"));
}

QTEST_GUILESS_MAIN(TestMTK2National)
#include "test_mtk2_national.moc"
