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

QTEST_GUILESS_MAIN(TestSharedStrings)
#include "test_shared_strings.moc"
