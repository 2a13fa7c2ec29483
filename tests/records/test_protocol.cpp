#include "app/clock.h"
#include "records/protocol.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"

#include <QSignalSpy>
#include <QtTest>

namespace
{
// "\1" and so on are the type marks of the list.
QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QStringList list(std::initializer_list<const char *> lines)
{
    QStringList texts;
    for (const char *line : lines)
        texts << text(line);
    return texts;
}
} // namespace

/// The order of the journal's lines, without its file.
class TestProtocol : public QObject
{
    Q_OBJECT

private slots:
    void threeLettersWithReturnAndFeedMakeOneMarkedLineAndAnEmptyOne();
    void firstCharacterOfTheDayBeginsTheFirstLine();
    void feedAsFirstCharacterEndsItsLine();
    void registerMarksAreKept();
    void textComesTheSameWholeAndInPieces();
    void eachTypeMarksItsText_data();
    void eachTypeMarksItsText();
    void sentCharacterAfterReceivedTextAddsMark2();
    void unchangedTypeAddsNoMark();
    void emptyLineTakesTheMarkOfItsText();
    void controlCharacterBelow10IsTakenForAMark_data();
    void controlCharacterBelow10IsTakenForAMark();

    void limit69PutsTextCharacter71OnANewLine();
    void lineMayReachTheLimitPlusOne();
    void charactersThatAreNoTextDoNotCount_data();
    void charactersThatAreNoTextDoNotCount();
    void marks3And4Count();
    void feedOnAFreshLineDoesNotEndIt();
    void limit0NeverBreaksALine();
    void limitAppliesToALineThatIsAlreadyLonger();

    void listAlteredFromOutsideIsReadAnew_data();
    void listAlteredFromOutsideIsReadAnew();
    void listReplacedByOneOfTheSameShapeIsReadAnew();
    void millionCharactersInOneLineTakeLinearTime_data();
    void millionCharactersInOneLineTakeLinearTime();
};

void TestProtocol::threeLettersWithReturnAndFeedMakeOneMarkedLineAndAnEmptyOne()
{
    Desk desk;
    Log.add(text("АБВ\r\n"), ProtocolReceived);
    QCOMPARE(Log.lines, list({"\1АБВ<>", ""}));
}

void TestProtocol::firstCharacterOfTheDayBeginsTheFirstLine()
{
    Desk desk;
    Log.add(QChar('A'), ProtocolSent);
    QCOMPARE(Log.lines, list({"\2A"}));
}

void TestProtocol::feedAsFirstCharacterEndsItsLine()
{
    Desk desk;
    Log.add(QChar('\n'), ProtocolSent);
    QCOMPARE(Log.lines, list({"\2>", ""}));
}

void TestProtocol::registerMarksAreKept()
{
    Desk desk;
    Log.add(text("|АБ#12&CD\r"), ProtocolReceived);
    QCOMPARE(Log.lines, list({"\1|АБ#12&CD<"}));
}

void TestProtocol::textComesTheSameWholeAndInPieces()
{
    const QString whole = text("ПЕРВАЯ\r\nВТОРАЯ\n\nТРЕТЬЯ");
    Desk desk;
    for (const QChar c : whole)
        Log.add(QString(c), ProtocolReceived);
    QCOMPARE(Log.lines, list({"\1ПЕРВАЯ<>", "\1ВТОРАЯ>", "\1>", "\1ТРЕТЬЯ"}));
    Log.lines.clear();
    Log.add(whole, ProtocolReceived);
    QCOMPARE(Log.lines, list({"\1ПЕРВАЯ<>", "\1ВТОРАЯ>", "\1>", "\1ТРЕТЬЯ"}));
}

void TestProtocol::eachTypeMarksItsText_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("code");
    row("received", int(ProtocolReceived), 1);
    row("sent", int(ProtocolSent), 2);
    row("information", int(ProtocolInfo), 3);
    row("error", int(ProtocolError), 4);
    row("reserved", int(ProtocolOther), 5);
}

void TestProtocol::eachTypeMarksItsText()
{
    QFETCH(int, type);
    QFETCH(int, code);
    Desk desk;
    Log.add(text("А"), ProtocolTypes(type));
    Log.addServiceString(text("Б"), ProtocolTypes(type));
    QCOMPARE(Log.lines.size(), 3);
    QCOMPARE(Log.lines.at(0), QChar(code) + text("А"));
    QCOMPARE(Log.lines.at(1), QChar(code) + text("Б"));
}

void TestProtocol::sentCharacterAfterReceivedTextAddsMark2()
{
    Desk desk;
    Log.add(text("АБ"), ProtocolReceived);
    Log.add(text("В"), ProtocolSent);
    Log.add(text("Г"), ProtocolReceived);
    QCOMPARE(Log.lines, list({"\1АБ\2В\1Г"}));
}

void TestProtocol::unchangedTypeAddsNoMark()
{
    Desk desk;
    Log.add(text("АБ"), ProtocolSent);
    Log.add(text("ВГ"), ProtocolSent);
    QCOMPARE(Log.lines, list({"\2АБВГ"}));
}

void TestProtocol::emptyLineTakesTheMarkOfItsText()
{
    Desk desk;
    Log.add(text("А\n"), ProtocolReceived);
    Log.add(text("Б\n"), ProtocolSent);
    QCOMPARE(Log.lines, list({"\1А>", "\2Б>", ""}));
}

void TestProtocol::controlCharacterBelow10IsTakenForAMark_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("line");
    row("0, under which any type differs", 0, "\1A" + QString(QChar(0)) + "\1B");
    row("9, the last that counts", 9, "\1A\x09\1B");
    row("11, the first that does not and is no line feed", 11, "\1A\x0B" + text("B"));
    row("1, the type itself", 1, "\1A\1" + text("B"));
}

void TestProtocol::controlCharacterBelow10IsTakenForAMark()
{
    QFETCH(int, code);
    QFETCH(QString, line);
    Desk desk;
    Log.add(text("A") + QChar(code) + text("B"), ProtocolReceived);
    QCOMPARE(Log.lines, QStringList{line});
}

void TestProtocol::limit69PutsTextCharacter71OnANewLine()
{
    Desk desk;
    Log.lineWidthLimit = 69;
    Log.add(QString(70, 'A'), ProtocolReceived);
    QCOMPARE(Log.lines, QStringList{QChar(1) + QString(70, 'A')});
    Log.add(QString("B"), ProtocolReceived);
    QCOMPARE(Log.lines, QStringList({QChar(1) + QString(70, 'A'), "\1B"}));
    Log.add(QString("C"), ProtocolReceived);
    QCOMPARE(Log.lines, QStringList({QChar(1) + QString(70, 'A'), "\1BC"}));
}

void TestProtocol::lineMayReachTheLimitPlusOne()
{
    Desk desk;
    Log.lineWidthLimit = 2;
    Log.add(QString("ABCDEFG"), ProtocolSent);
    QCOMPARE(Log.lines, list({"\2ABC", "\2DEF", "\2G"}));
}

void TestProtocol::charactersThatAreNoTextDoNotCount_data()
{
    QTest::addColumn<QString>("filler");
    for (const char *c : {"\"", "#", "&", "<", "|", "\r", "\1", "\2"})
        QTest::addRow("code %d", int(*c)) << QString(c);
}

void TestProtocol::charactersThatAreNoTextDoNotCount()
{
    QFETCH(QString, filler);
    Desk desk;
    Log.lineWidthLimit = 3;
    Log.add("AB" + filler.repeated(50) + "CD", ProtocolReceived);
    QCOMPARE(Log.lines.size(), 1); // four text characters, one more than the limit
    Log.add(QString("E"), ProtocolReceived);
    QCOMPARE(Log.lines.size(), 2);
    QCOMPARE(Log.lines.at(1), QString("\1E"));
}

void TestProtocol::marks3And4Count()
{
    Desk desk;
    Log.lineWidthLimit = 3;
    Log.add(QString("A"), ProtocolInfo);  // two: the mark 3 and the letter
    Log.add(QString("B"), ProtocolError); // four: the mark 4 and the letter
    QCOMPARE(Log.lines, list({"\3A\4B"}));
    Log.add(QString("C"), ProtocolError);
    QCOMPARE(Log.lines, list({"\3A\4B", "\4C"}));
}

void TestProtocol::feedOnAFreshLineDoesNotEndIt()
{
    Desk desk;
    Log.lineWidthLimit = 2;
    Log.add(text("ABC\nD"), ProtocolReceived);
    QCOMPARE(Log.lines, list({"\1ABC", "\1>D"}));
}

void TestProtocol::limit0NeverBreaksALine()
{
    Desk desk;
    Log.add(QString(5000, 'A'), ProtocolReceived);
    QCOMPARE(Log.lines.size(), 1);
}

void TestProtocol::limitAppliesToALineThatIsAlreadyLonger()
{
    Desk desk;
    Log.add(QString(100, 'A'), ProtocolReceived);
    Log.lineWidthLimit = 69;
    Log.add(QString("B"), ProtocolReceived);
    QCOMPARE(Log.lines, QStringList({QChar(1) + QString(100, 'A'), "\1B"}));
}

void TestProtocol::listAlteredFromOutsideIsReadAnew_data()
{
    QTest::addColumn<QStringList>("outside");
    QTest::addColumn<QStringList>("expected");
    row("cleared", QStringList(), list({"\1X"}));
    row("last line of the same length and another type", list({"\2AB"}), list({"\2AB\1X"}));
    row("last line longer", list({"\2ABCD"}), list({"\2ABCD\1X"}));
    row("more lines", list({"\2AB", "\1A"}), list({"\2AB", "\1AX"}));
    row("line without a mark", list({"ABC"}), list({"ABC\1X"}));
    row("line as wide as the limit allows", list({"\1ABCDEF"}), list({"\1ABCDEF", "\1X"}));
}

void TestProtocol::listAlteredFromOutsideIsReadAnew()
{
    QFETCH(QStringList, outside);
    QFETCH(QStringList, expected);
    Desk desk;
    Log.lineWidthLimit = 5;
    Log.add(QString("AB"), ProtocolReceived);
    Log.lines = outside;
    Log.add(QString("X"), ProtocolReceived);
    QCOMPARE(Log.lines, expected);
}

void TestProtocol::listReplacedByOneOfTheSameShapeIsReadAnew()
{
    Desk desk;
    Log.add(QString("AB"), ProtocolReceived);
    Log.lines.clear();
    Log.lines << QString("\2") + "AB"; // its text may stand where the former one stood
    Log.add(QString("X"), ProtocolReceived);
    QCOMPARE(Log.lines, list({"\2AB\1X"}));
    Log.lines.replace(0, "\2AB\2X");
    Log.add(QString("Y"), ProtocolReceived);
    QCOMPARE(Log.lines, list({"\2AB\2X\1Y"}));
}

void TestProtocol::millionCharactersInOneLineTakeLinearTime_data()
{
    QTest::addColumn<int>("limit");
    QTest::addColumn<char>("character");
    row("without a limit", 0, 'A');
    row("characters that never reach the limit", 69, '|');
}

void TestProtocol::millionCharactersInOneLineTakeLinearTime()
{
    QFETCH(int, limit);
    QFETCH(char, character);
    Desk desk;
    Log.lineWidthLimit = limit;
    for (int n = 0; n < 1000000; ++n)
        Log.add(QChar(character), ProtocolReceived);
    QCOMPARE(Log.lines.size(), 1);
    QCOMPARE(Log.lines.first(), QChar(1) + QString(1000000, QChar(character)));
}

QTEST_GUILESS_MAIN(TestProtocol)
#include "test_protocol.moc"
