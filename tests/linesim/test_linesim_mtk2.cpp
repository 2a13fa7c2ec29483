// The code as the far ends know it, against values worked out by hand.

#include "tests/support/row.h"
#include "tools/linesim/serial/mtk2_code.h"

#include <QTest>

class TestLinesimMtk2 : public QObject
{
    Q_OBJECT

private slots:
    void textAndCodesAgree_data();
    void textAndCodesAgree();
    void everyCodeComesBack();
    void registerIsChangedWhereTheTextNeedsIt_data();
    void registerIsChangedWhereTheTextNeedsIt();
    void onlyFiveBitsCount();
};

void TestLinesimMtk2::textAndCodesAgree_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("codes");
    QTest::addColumn<int>("after");
    row("letters", "|ЗЦЗЦ", QByteArray::fromHex("00110e110e"), int(Mtk2::Letters));
    row("figures", "#1590", QByteArray::fromHex("1b17101816"), int(Mtk2::Figures));
    row("latin", "&QTXV", QByteArray::fromHex("1f17101d1e"), int(Mtk2::Latin));
    row("line ends", "|А\r\n Б", QByteArray::fromHex("000308020419"), int(Mtk2::Letters));
    row("rare letters", "#ЮЭЩШ", QByteArray::fromHex("1b0b0d141a"), int(Mtk2::Figures));
}

void TestLinesimMtk2::textAndCodesAgree()
{
    QFETCH(const QString, text);
    QFETCH(const QByteArray, codes);
    QFETCH(const int, after);
    for (const Mtk2::Register before : {Mtk2::Latin, Mtk2::Letters, Mtk2::Figures}) {
        Mtk2::Register state = before;
        QCOMPARE(Mtk2::encoded(text, state), codes);
        QCOMPARE(int(state), after);
        state = before;
        QCOMPARE(Mtk2::decoded(codes, state), text);
        QCOMPARE(int(state), after);
    }
}

void TestLinesimMtk2::everyCodeComesBack()
{
    for (const char *first : {"\x1F", "\x1B", "\x02"}) {
        QByteArray codes(first);
        for (char code = 1; code < 0x20; ++code)
            if (code != 0x1B && code != 0x1F)
                codes += code;
        Mtk2::Register state = Mtk2::Letters;
        const QString text = Mtk2::decoded(codes, state);
        QCOMPARE(text.size(), codes.size());
        state = Mtk2::Letters;
        QCOMPARE(Mtk2::encoded(text, state), codes);
    }
}

void TestLinesimMtk2::registerIsChangedWhereTheTextNeedsIt_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("before");
    QTest::addColumn<QByteArray>("codes");
    row("to letters", "АБ", int(Mtk2::Latin), QByteArray::fromHex("000319"));
    row("to figures and back", "А1А", int(Mtk2::Letters), QByteArray::fromHex("031b170003"));
    row("none for a blank", "1 2", int(Mtk2::Figures), QByteArray::fromHex("170413"));
    row("mark twice", "||", int(Mtk2::Letters), QByteArray::fromHex("0000"));
    row("small letters", "аz", int(Mtk2::Letters), QByteArray::fromHex("031f11"));
    row("without a code", "А№!Б", int(Mtk2::Letters), QByteArray::fromHex("0319"));
    row("Ч", "Ч", int(Mtk2::Letters), QByteArray::fromHex("1b0a"));
}

void TestLinesimMtk2::registerIsChangedWhereTheTextNeedsIt()
{
    QFETCH(const QString, text);
    QFETCH(const int, before);
    QFETCH(const QByteArray, codes);
    Mtk2::Register state = Mtk2::Register(before);
    QCOMPARE(Mtk2::encoded(text, state), codes);
}

void TestLinesimMtk2::onlyFiveBitsCount()
{
    Mtk2::Register state = Mtk2::Letters;
    QCOMPARE(Mtk2::decoded(QByteArray::fromHex("8363"), state), QStringLiteral("АА"));
}

QTEST_APPLESS_MAIN(TestLinesimMtk2)
#include "test_linesim_mtk2.moc"
