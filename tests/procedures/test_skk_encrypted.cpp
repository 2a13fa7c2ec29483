// Encrypted text inside a connection, whose "#*" is no question.

#include "tests/procedures/skk_desk.h"
#include "tests/support/row.h"

#include <QtTest>

class TestSkkEncrypted : public QObject
{
    Q_OBJECT

private slots:
    void encryptedTextCutAnywhere();
    void encryptedTextBeginsWithBothSigns_data();
    void encryptedTextBeginsWithBothSigns();
    void encryptedTextIsToldOfAgain();
    void endMarkTurnsTheAnswerOnAgain();
    void endMarkAloneIsTextOtherwise();
    void encryptedTextOutsideAConnectionIsNoise();
};

namespace
{
const QString OwnAO = QStringLiteral("#\r\n777777 ДЕСК");
const QString Off = QStringLiteral("\r\n|АО ВЫКЛ");
const QString On = QStringLiteral("\r\n|АО ВКЛ");
} // namespace

void TestSkkEncrypted::encryptedTextCutAnywhere()
{
    const QString line = QStringLiteral("А#*Б КРПТ КРПТ КРПТ ЮЮЮЮЮЮЮЮЮ ТЕКСТ#*ТЕКСТ НННН  В#*Г");
    for (int cut = 0; cut <= line.size(); ++cut) {
        const SkkDesk desk;
        desk.connect(Incoming);
        desk.receive(line.left(cut));
        desk.receive(line.mid(cut));
        QCOMPARE(desk.sent(), OwnAO + Off + On + OwnAO);
        QCOMPARE(ProcessSKK.receiveBuffer, "Г");
        QVERIFY(!State.ignoreAO);
    }
}

void TestSkkEncrypted::encryptedTextBeginsWithBothSigns_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("begins");
    QTest::addColumn<QString>("left");
    const QString mark = QStringLiteral(" КРПТ КРПТ КРПТ ");
    const QString signs(9, QChar(0x042E));
    row("mark alone", mark, false, mark);
    row("eight signs", mark + signs.left(8), false, mark + signs.left(8));
    row("signs in front", signs + mark, false, signs + mark);
    row("no blank in front", mark.mid(1) + signs, false, mark.mid(1) + signs);
    row("together", mark + signs, true, "");
    row("signs later", mark + "12345" + signs, true, signs.left(5));
    row("ten signs", mark + signs + signs.left(1), true, signs.left(1));
    row("noise in front", "ШУМ" + mark + signs + "К", true, "К");
}

void TestSkkEncrypted::encryptedTextBeginsWithBothSigns()
{
    QFETCH(QString, text);
    QFETCH(bool, begins);
    QFETCH(QString, left);
    const SkkDesk desk;
    desk.connect(Outgoing);
    desk.receive(text);
    QCOMPARE(State.ignoreAO, begins);
    QCOMPARE(desk.sent(), begins ? Off : "");
    QCOMPARE(ProcessSKK.receiveBuffer, left);
}

void TestSkkEncrypted::encryptedTextIsToldOfAgain()
{
    const SkkDesk desk;
    desk.connect(Outgoing);
    desk.receive(" КРПТ КРПТ КРПТ ЮЮЮЮЮЮЮЮЮ КРПТ КРПТ КРПТ ЮЮЮЮЮЮЮЮЮ");
    QCOMPARE(desk.sent(), Off + Off);
    QVERIFY(State.ignoreAO);
}

void TestSkkEncrypted::endMarkTurnsTheAnswerOnAgain()
{
    for (int cut = 0; cut < 6; ++cut) {
        const SkkDesk desk;
        desk.connect(Outgoing);
        State.ignoreAO = true;
        const QString mark = QStringLiteral("НННН  ");
        desk.receive("ТЕКСТ" + mark.left(cut));
        QVERIFY(State.ignoreAO);
        desk.receive(mark.mid(cut) + "НННН  ");
        QVERIFY(!State.ignoreAO);
        QCOMPARE(desk.sent(), On);
        QCOMPARE(ProcessSKK.receiveBuffer, "НННН  "); // the second is text
    }
}

void TestSkkEncrypted::endMarkAloneIsTextOtherwise()
{
    const SkkDesk desk;
    desk.connect(Outgoing);
    desk.receive("ТЕКСТ НННН  NNNN  ");
    QCOMPARE(desk.sent(), "");
    QCOMPARE(ProcessSKK.receiveBuffer, "ТЕКСТ НННН  NNNN  ");
}

void TestSkkEncrypted::encryptedTextOutsideAConnectionIsNoise()
{
    const SkkDesk desk;
    const QString text = QStringLiteral(" КРПТ КРПТ КРПТ ЮЮЮЮЮЮЮЮЮ НННН  ");
    desk.receive(text);
    QVERIFY(!State.ignoreAO);
    State.ignoreAO = true;
    desk.receive("К");
    QVERIFY(State.ignoreAO);
    QCOMPARE(ProcessSKK.receiveBuffer, text + "К");
}

QTEST_GUILESS_MAIN(TestSkkEncrypted)
#include "test_skk_encrypted.moc"
