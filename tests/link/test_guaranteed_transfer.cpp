// The frames of guaranteed transfer. Their CRCs are worked out by hand, bit by bit.

#include "link/tlg_thread.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"

#include <QtTest>

class TestGuaranteedTransfer : public QObject
{
    Q_OBJECT

private slots:
    void init() { resetGlobals(); }
    void crcOfNothingIsItsStart();
    void crcFeedsThreeLowBitsOfEachCode();
    void modeIsSwitchedOnOnce();
    void builtFrameHasHeaderLengthRegisterPayload();
    void builtFrameCarriesSequenceNumber();
    void builderGoesOnInTheRegisterOfTheLastFrame();
    void frameOfEmptyTextHasLengthZero();
    void headerOf0DMeansSequence1Crc5();
    void acceptedFrameGivesLengthRegisterPayload();
    void frameOfTwentyFiveCodesIsTheLongest();
    void readerGoesOnInTheRegisterOfTheLastFrame();
    void shortBufferNeedsMore_data();
    void shortBufferNeedsMore();
    void lengthOutOfRangeIsNoFrame_data();
    void lengthOutOfRangeIsNoFrame();
    void wrongCrcIsNoFrame_data();
    void wrongCrcIsNoFrame();
    void textBehindTheFrameSpoilsItsCrc();
    void repeatClaimsTheWholeBuffer();
    void frameOutOfTurnIsNotTaken_data();
    void frameOutOfTurnIsNotTaken();
    void sequenceWrapsAfterThree();
    void acknowledgementsAreReserved();
    void sentTextIsLoggedOnlyOutsideTheMode();
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}
} // namespace

void TestGuaranteedTransfer::crcOfNothingIsItsStart()
{
    QCOMPARE(int(CTlgThread::makeProtectedDataCRC3(QByteArray())), 7);
    QCOMPARE(int(CTlgThread::makeProtectedDataCRC5(QByteArray())), 0);
}

void TestGuaranteedTransfer::crcFeedsThreeLowBitsOfEachCode()
{
    const auto crc3 = [](std::initializer_list<char> codes) {
        return int(CTlgThread::makeProtectedDataCRC3(QByteArray(codes.begin(), int(codes.size()))));
    };
    const auto crc5 = [](std::initializer_list<char> codes) {
        return int(CTlgThread::makeProtectedDataCRC5(QByteArray(codes.begin(), int(codes.size()))));
    };
    QCOMPARE(crc3({0}), 2);                      // 7, 5, 1, 2
    QCOMPARE(crc3({1}), 6);                      // 7, 4, 3, 6
    QCOMPARE(crc3({9}), 6);                      // bit 3 is not fed
    QCOMPARE(crc3({0x02, 0x1F, 0x03, 0x19}), 3); // after each code 0, 7, 4, 3
    QCOMPARE(crc5({1}), 4);                      // 0, 1, 2, 4
    QCOMPARE(crc5({0x1F, 0x1F, 0x1F}), 8);       // 1, 3, 7, F, 1F, 0A, 15, 1E, 8
}

void TestGuaranteedTransfer::modeIsSwitchedOnOnce()
{
    CTlgThread fresh;
    QVERIFY(!fresh.protectedMode);
    QVERIFY(fresh.startProtectedMode());
    QVERIFY(!fresh.startProtectedMode());
    QVERIFY(fresh.protectedMode);
    fresh.stopProtectedMode();
    QVERIFY(!fresh.protectedMode);
    QVERIFY(fresh.startProtectedMode());
}

void TestGuaranteedTransfer::builtFrameHasHeaderLengthRegisterPayload()
{
    // Codes 03 19 in the Latin register: body 02 1F 03 19, CRC 3, header 03 with sequence 0.
    CTlgThread fresh;
    QVERIFY(fresh.makeProtectedData(qs("AB")));
    QCOMPARE(fresh.frameOut, qs("&#A\n&AB")); // code 03 is A in the Latin register, 02 is LF
    QCOMPARE(int(fresh.lastCRC), 3);
    QCOMPARE(int(fresh.txSequence), 0);
}

void TestGuaranteedTransfer::builtFrameCarriesSequenceNumber()
{
    CTlgThread fresh;
    fresh.txSequence = 1;
    QVERIFY(fresh.makeProtectedData(qs("AB")));
    QCOMPARE(fresh.frameOut, qs("&#J\n&AB")); // header 0B is J
}

void TestGuaranteedTransfer::builderGoesOnInTheRegisterOfTheLastFrame()
{
    CTlgThread fresh;
    QVERIFY(fresh.makeProtectedData(qs("Б"))); // codes 00 19: the register changes inside
    QCOMPARE(fresh.protectedRegister, 1);
    // Body 02 1F 00 19: after the codes 0, 7, 2, then 1,0,0 from 2: 5, 1, 2. Header 02 is LF.
    QCOMPARE(int(fresh.lastCRC), 2);
    QCOMPARE(fresh.frameOut, qs("&#\n\n&|Б"));
    // Body 01 00 03 from register 1: 6; 0,0,0: 7, 5, 1; 1,1,0: 3, 7, 5. Header 05 is С.
    QVERIFY(fresh.makeProtectedData(qs("А")));
    QCOMPARE(int(fresh.lastCRC), 5);
    QCOMPARE(fresh.frameOut, qs("&#СЕ|А"));
}

void TestGuaranteedTransfer::frameOfEmptyTextHasLengthZero()
{
    CTlgThread fresh;
    QVERIFY(fresh.makeProtectedData(QString()));
    // Body 00 1F: 2, then 1,1,1: 5, 0, 1. Header 01 is E; the length 00 is the mark "|".
    QCOMPARE(int(fresh.lastCRC), 1);
    QCOMPARE(fresh.frameOut, qs("&#E|&"));
}

void TestGuaranteedTransfer::headerOf0DMeansSequence1Crc5()
{
    // 1F 1B | 0D | 01 | 1F | 01. Body 01 1F 01: 6, 6, then 1,0,0 from 6: 6, 7, 5. In the figures register
    // that the mark selects, 0D is Э and 01 is 3.
    CTlgThread fresh;
    QCOMPARE(fresh.checkProtectedData(qs("&#Э3&E")), 6);
}

void TestGuaranteedTransfer::acceptedFrameGivesLengthRegisterPayload()
{
    CTlgThread fresh;
    QCOMPARE(fresh.checkProtectedData(qs("&#Ю\n&AB")), 7); // header 0B
    QCOMPARE(fresh.framePayload, qs("\n&AB"));
    QCOMPARE(int(fresh.rxSequence), 0); // advancing it falls to the sender of frames
}

void TestGuaranteedTransfer::frameOfTwentyFiveCodesIsTheLongest()
{
    // 19 and 1F leave 6; each E goes 6, 5, 0, 4, 3, 1, 7 and round: after 25 of them 3. Header 0B.
    CTlgThread fresh;
    const QString payload(25, QLatin1Char('E'));
    QCOMPARE(fresh.checkProtectedData(qs("&#Ю?&") + payload), 30);
    QCOMPARE(fresh.framePayload, qs("B&") + payload); // the length, code 19, is B in the Latin register
}

void TestGuaranteedTransfer::readerGoesOnInTheRegisterOfTheLastFrame()
{
    CTlgThread fresh;
    fresh.protectedRegister = 2;
    QCOMPARE(fresh.checkProtectedData(qs("&#Э3&E")), 6);
    QCOMPARE(fresh.framePayload, qs("3&E")); // the length, code 01, is 3 in figures
    QCOMPARE(fresh.protectedRegister, 0);
    fresh.framePayload.clear();
    QCOMPARE(fresh.checkProtectedData(qs("&#Э3&E")), 6);
    QCOMPARE(fresh.framePayload, qs("E&E"));
}

void TestGuaranteedTransfer::shortBufferNeedsMore_data()
{
    QTest::addColumn<QString>("buffer");
    row("marks", qs("&#"));
    row("header", qs("&#Э"));
    row("length", qs("&#Э3"));
    row("register", qs("&#Э3&"));
    row("one code short of 25", qs("&#Э?&") + QString(24, QLatin1Char('E')));
}

void TestGuaranteedTransfer::shortBufferNeedsMore()
{
    QFETCH(QString, buffer);
    CTlgThread fresh;
    QCOMPARE(fresh.checkProtectedData(buffer), 0);
    QVERIFY(fresh.framePayload.isEmpty());
}

void TestGuaranteedTransfer::lengthOutOfRangeIsNoFrame_data()
{
    QTest::addColumn<QString>("buffer");
    row("0", qs("&#Э|"));
    row("26", qs("&#ЭШ"));
    row("27", qs("&#Э#"));
    row("30", qs("&#Э="));
    row("31", qs("&#Э&"));
}

void TestGuaranteedTransfer::lengthOutOfRangeIsNoFrame()
{
    QFETCH(QString, buffer);
    CTlgThread fresh;
    QCOMPARE(fresh.checkProtectedData(buffer), -1);
}

void TestGuaranteedTransfer::wrongCrcIsNoFrame_data()
{
    QTest::addColumn<QString>("buffer");
    row("header 0C", qs("&#,3&E"));
    row("other payload", qs("&#Э3&A"));
    row("other register", qs("&#Э3|Е"));
    row("whole frame of 25", qs("&#Э?&") + QString(25, QLatin1Char('E')));
}

void TestGuaranteedTransfer::wrongCrcIsNoFrame()
{
    QFETCH(QString, buffer);
    CTlgThread fresh;
    QCOMPARE(fresh.checkProtectedData(buffer), -1);
    QVERIFY(fresh.framePayload.isEmpty());
}

void TestGuaranteedTransfer::textBehindTheFrameSpoilsItsCrc()
{
    // The check goes to the end of the buffer: one more code A (1,1,0 from 5) makes 0, 1, 2.
    CTlgThread fresh;
    QCOMPARE(fresh.checkProtectedData(qs("&#Э3&EA")), -1);
}

void TestGuaranteedTransfer::repeatClaimsTheWholeBuffer()
{
    CTlgThread fresh;
    QCOMPARE(fresh.checkProtectedData(qs("&#'3&E")), 6); // header 05: sequence 0, CRC 5
    QVERIFY(fresh.framePayload.isEmpty());
    // One character that the code does not hold more: it counts in the length of the buffer.
    QCOMPARE(fresh.checkProtectedData(qs("&#'3&E!")), 7);
}

void TestGuaranteedTransfer::frameOutOfTurnIsNotTaken_data()
{
    QTest::addColumn<QString>("buffer");
    row("sequence 2", qs("&#63&E"));
    row("sequence 3", qs("&#/3&E"));
}

void TestGuaranteedTransfer::frameOutOfTurnIsNotTaken()
{
    QFETCH(QString, buffer);
    CTlgThread fresh;
    QCOMPARE(fresh.checkProtectedData(buffer), 0);
    QVERIFY(fresh.framePayload.isEmpty());
}

void TestGuaranteedTransfer::sequenceWrapsAfterThree()
{
    CTlgThread fresh;
    fresh.rxSequence = 3;
    QCOMPARE(fresh.checkProtectedData(qs("&#/3&E")), 6); // sequence 3 again
    QVERIFY(fresh.framePayload.isEmpty());
    QCOMPARE(fresh.checkProtectedData(qs("&#'3&E")), 6); // sequence 0 follows 3
    QCOMPARE(fresh.framePayload, qs("E&E"));
}

void TestGuaranteedTransfer::acknowledgementsAreReserved()
{
    CTlgThread fresh;
    for (const char *text : {"", "A", "&|ABC"}) {
        QCOMPARE(fresh.makeProtectedAck(qs(text)), 0);
        QCOMPARE(fresh.checkProtectedAck(qs(text)), 0);
    }
    QVERIFY(fresh.ackOut.isEmpty());
}

void TestGuaranteedTransfer::sentTextIsLoggedOnlyOutsideTheMode()
{
    CTlgThread fresh;
    fresh.dataSendedToLine(qs("АБ"));
    QCOMPARE(fresh.sentLog.mTake(), qs("АБ"));
    QCOMPARE(fresh.sentEvents.load(), 1);
    fresh.startProtectedMode();
    fresh.dataSendedToLine(qs("ВГ"));
    QVERIFY(fresh.sentLog.mIsEmpty());
    QCOMPARE(fresh.sentEvents.load(), 2);
}

QTEST_GUILESS_MAIN(TestGuaranteedTransfer)
#include "test_guaranteed_transfer.moc"
