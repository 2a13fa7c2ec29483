#include "link/shared_strings.h"

#include <QtTest>

class TestSharedStrings : public QObject
{
    Q_OBJECT

private slots:
    void storedTextOwnsItsData();
    void headIsTakenAndRemoved();
    void wholeLengthHandsOverEverything();
    void moreThanThereIsTakesAll();
    void nothingAskedTakesNothing();
    void takingLeavesAnEmptyText();
    void heldHeadStaysUntilItIsDropped();
    void withdrawnHeadIsNotDroppedAgain();
    void rowOfHoldsMovesThroughTheText();
    void assignedTextIsAProceduresAndNotHeld();
};

void TestSharedStrings::storedTextOwnsItsData()
{
    const QString given = QStringLiteral("АБВ") + QString::number(1);
    CMutexString shared;
    shared.mSet(given);
    QCOMPARE(shared.mGet(), given);
    QVERIFY(shared.text.constData() != given.constData());
}

void TestSharedStrings::headIsTakenAndRemoved()
{
    CTlgString buffer;
    buffer.mAppend(QStringLiteral("АБВ"));
    buffer.mAppend(QStringLiteral("ГД"));
    QCOMPARE(buffer.getDataAndClear(2), QStringLiteral("АБ"));
    QCOMPARE(buffer.text, QStringLiteral("ВГД"));
}

void TestSharedStrings::wholeLengthHandsOverEverything()
{
    CTlgString buffer;
    buffer.text = QStringLiteral("АБВ");
    QCOMPARE(buffer.getDataAndClear(3), QStringLiteral("АБВ"));
    QVERIFY(buffer.text.isEmpty());
}

void TestSharedStrings::moreThanThereIsTakesAll()
{
    CTlgString buffer;
    buffer.text = QStringLiteral("АБВ");
    QCOMPARE(buffer.getDataAndClear(100), QStringLiteral("АБВ"));
    QVERIFY(buffer.mIsEmpty());
}

void TestSharedStrings::nothingAskedTakesNothing()
{
    CTlgString buffer;
    buffer.text = QStringLiteral("АБВ");
    QVERIFY(buffer.getDataAndClear(0).isEmpty());
    QVERIFY(buffer.getDataAndClear(-5).isEmpty());
    QCOMPARE(buffer.mGet(), QStringLiteral("АБВ"));
}

void TestSharedStrings::takingLeavesAnEmptyText()
{
    CMutexString shared;
    shared.mAppend(QStringLiteral("А"));
    shared.mAppend(QStringLiteral("Б"));
    QVERIFY(!shared.mIsEmpty());
    QCOMPARE(shared.mTake(), QStringLiteral("АБ"));
    QVERIFY(shared.mIsEmpty());
    QVERIFY(shared.mTake().isEmpty());
}

void TestSharedStrings::heldHeadStaysUntilItIsDropped()
{
    CTlgString buffer;
    buffer.text = QStringLiteral("АБВГ");
    QCOMPARE(buffer.holdHead(2).text, QStringLiteral("АБ"));
    QCOMPARE(buffer.holdHead(3).text, QStringLiteral("АБВ"));
    buffer.mAppend(QStringLiteral("Д"));
    QCOMPARE(buffer.mGet(), QStringLiteral("АБВГД"));
    buffer.dropHeld();
    QCOMPARE(buffer.mGet(), QStringLiteral("ГД"));
    buffer.dropHeld();
    QCOMPARE(buffer.mGet(), QStringLiteral("ГД"));
}

// Whatever came into the text after the withdrawal was never held, even if it reads the same.
void TestSharedStrings::withdrawnHeadIsNotDroppedAgain()
{
    CTlgString buffer;
    buffer.text = QStringLiteral("АБВГ");
    QCOMPARE(buffer.holdHead(2).text, QStringLiteral("АБ"));
    QCOMPARE(buffer.mTake(), QStringLiteral("АБВГ"));
    buffer.mAppend(QStringLiteral("АБ"));
    buffer.dropHeld();
    QCOMPARE(buffer.mGet(), QStringLiteral("АБ"));

    QCOMPARE(buffer.holdHead(2).text, QStringLiteral("АБ"));
    QCOMPARE(buffer.getDataAndClear(1), QStringLiteral("А"));
    buffer.mAppend(QStringLiteral("В"));
    buffer.dropHeld();
    QCOMPARE(buffer.mGet(), QStringLiteral("В"));
}

void TestSharedStrings::rowOfHoldsMovesThroughTheText()
{
    CTlgString buffer;
    buffer.text = QStringLiteral("АБВГД");
    QString gone;
    while (!buffer.mIsEmpty()) {
        gone += buffer.holdHead(2).text;
        buffer.dropHeld();
    }
    QCOMPARE(gone, QStringLiteral("АБВГД"));
    QCOMPARE(buffer.holdHead(2).text, QString());
    QCOMPARE(buffer.holdHead(-1).text, QString());
}

void TestSharedStrings::assignedTextIsAProceduresAndNotHeld()
{
    CTlgString buffer;
    buffer.mAppendOperators(QStringLiteral("<>А"));
    QCOMPARE(buffer.holdHead(3).withLineEnds(), QStringLiteral("\r\nА"));
    buffer.mSet(QStringLiteral("<>БВ"));
    buffer.dropHeld();
    QCOMPARE(buffer.mGet(), QStringLiteral("<>БВ"));
    QCOMPARE(buffer.takeChunk(4).withLineEnds(), QStringLiteral("<>БВ"));
}

QTEST_GUILESS_MAIN(TestSharedStrings)
#include "test_shared_strings.moc"
