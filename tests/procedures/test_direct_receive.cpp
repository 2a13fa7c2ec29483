#include "app/clock.h"
#include "tests/procedures/direct_desk.h"
#include "tests/support/full_disk.h"
#include "tests/support/row.h"

#include <QDir>
#include <QElapsedTimer>
#include <QtTest>

namespace
{
const QString Telegram = "ЗЦЗЦ 1\r\nТЕКСТ\r\nНННН  ";
const QString Name = "inp/20260731/20260731_120000";
} // namespace

/// Reception over a direct link.
class TestDirectReceive : public QObject
{
    Q_OBJECT

private slots:
    void telegramIsStoredUnderDateAndTime();
    void telegramInSingleCharactersIsTheSame();
    void noiseAround_data();
    void noiseAround();
    void noiseIsCutAbove256_data();
    void noiseIsCutAbove256();
    void endMarkWithoutStartIsDroppedAsNoise();
    void marksOnOneLineAreNoTelegram();
    void marksPair_data();
    void marksPair();
    void secondTelegramWaitsForMoreText();
    void telegramBehindOneOnOneLineWaitsToo();
    void twoTelegramsOfOneSecondLeaveTheSecond();
    void confirmationFollows();
    void confirmationFollowsEvenAFailedSaving();
    void printing_data();
    void printing();
    void registersAreRemovedIfWanted();
    void counterTurnsOverAfter999();
    void missingInputDirectoryIsMade();
    void unwritableDirectoryFails();
    void fullDiskLeavesTheFormerTelegram();
    void emptyTextIsNotStored();
    void longTelegramInSmallPiecesIsQuick();
    void telegramWithoutEndIsGivenUp();
    void telegramBegunInEndlessNoiseIsWhole();
    void bufferChangedFromOutsideIsSearchedAnew();
};

void TestDirectReceive::telegramIsStoredUnderDateAndTime()
{
    const DirectDesk desk;
    ProcessDirect.processReceive(Telegram);

    QCOMPARE(desk.read(Name), Telegram.toUtf8());
    QCOMPARE(desk.names("inp/20260731"), QStringList{"20260731_120000"});
    QCOMPARE(State.PK_in, 1);
    QCOMPARE(ProcessDirect.receiveBuffer, "");
    QCOMPARE(desk.notes(), QStringList{"312:00:00 Файл сохранен:" + Name});
    QCOMPARE(desk.sent(), "");
    QVERIFY(desk.read("velda_state.ini").contains("PK_in=1"));
    QVERIFY(!QFile::exists(desk.path("printed")));
}

void TestDirectReceive::telegramInSingleCharactersIsTheSame()
{
    const DirectDesk desk;
    const QString stream = "ШУМ НННН  " + Telegram + "ШУМ";
    for (const QChar c : stream)
        ProcessDirect.processReceive(c);

    QCOMPARE(desk.read(Name), Telegram.toUtf8());
    QCOMPARE(State.PK_in, 1);
    QCOMPARE(ProcessDirect.receiveBuffer, "ШУМ");
}

void TestDirectReceive::noiseAround_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");

    row("in front", "АБВ\r\n", "");
    row("behind", "", "\r\nАБВ");
    row("start mark without its blank", "ЗЦЗЦ\r\n", "");
    row("1000 characters", QString(1000, 'X'), "");
}

void TestDirectReceive::noiseAround()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    const DirectDesk desk;
    ProcessDirect.processReceive(before + Telegram + after);
    QCOMPARE(desk.read(Name), Telegram.toUtf8());
    QCOMPARE(ProcessDirect.receiveBuffer, after);
}

void TestDirectReceive::noiseIsCutAbove256_data()
{
    QTest::addColumn<int>("received");
    QTest::addColumn<int>("left");

    row("255", 255, 255);
    row("256", 256, 256);
    row("257", 257, 200);
    row("300", 300, 200);
}

void TestDirectReceive::noiseIsCutAbove256()
{
    QFETCH(int, received);
    QFETCH(int, left);
    const DirectDesk desk;
    QString noise;
    for (int i = 0; i < received; ++i)
        noise += QChar('A' + i % 26);
    ProcessDirect.processReceive(noise);
    QCOMPARE(ProcessDirect.receiveBuffer, noise.right(left));
    QCOMPARE(desk.notes(), QStringList());
}

void TestDirectReceive::endMarkWithoutStartIsDroppedAsNoise()
{
    const DirectDesk desk;
    ProcessDirect.processReceive("ТЕКСТ\r\nНННН  ");
    QCOMPARE(ProcessDirect.receiveBuffer, "ТЕКСТ\r\nНННН  "); // it takes no part in the cut

    ProcessDirect.processReceive("ЗЦЗЦ А\r\n");
    QCOMPARE(ProcessDirect.receiveBuffer, "ЗЦЗЦ А\r\n");
    QCOMPARE(State.PK_in, 0);
}

void TestDirectReceive::marksOnOneLineAreNoTelegram()
{
    const DirectDesk desk;
    Options.SendConfirmation = true;
    Options.autoPrintMode = 3;
    ProcessDirect.processReceive("ЗЦЗЦ ТЕКСТ НННН  ДАЛЬШЕ");

    QCOMPARE(ProcessDirect.receiveBuffer, "ДАЛЬШЕ");
    QCOMPARE(desk.names("inp/20260731"), QStringList());
    QCOMPARE(desk.sent(), "");
    QVERIFY(!QFile::exists(desk.path("printed")));
    QCOMPARE(desk.notes(), QStringList());
    QCOMPARE(State.PK_in, 0);
}

void TestDirectReceive::marksPair_data()
{
    QTest::addColumn<QString>("telegram");
    QTest::addColumn<bool>("stored");

    row("Cyrillic", "ЗЦЗЦ А\r\nНННН  ", true);
    row("Latin", "ZCZC A\r\nNNNN  ", true);
    row("Latin, then Cyrillic", "ZCZC A\r\nНННН  ", true);
    row("Cyrillic, then Latin", "ЗЦЗЦ А\r\nNNNN  ", true);
    row("line feed alone", "ЗЦЗЦ А\nНННН  ", true);
    row("carriage return alone", "ЗЦЗЦ А\rНННН  ", true);
    row("end mark with one blank", "ЗЦЗЦ А\r\nНННН ", false);
    row("start mark without blank", "ЗЦЗЦА\r\nНННН  ", false);
    row("small letters", "зцзц А\r\nнннн  ", false);
}

void TestDirectReceive::marksPair()
{
    QFETCH(QString, telegram);
    QFETCH(bool, stored);
    const DirectDesk desk;
    ProcessDirect.processReceive(telegram);
    QCOMPARE(QString::fromUtf8(desk.read(Name)), stored ? telegram : QString());
    QCOMPARE(ProcessDirect.receiveBuffer, stored ? QString() : telegram);
}

void TestDirectReceive::secondTelegramWaitsForMoreText()
{
    const DirectDesk desk;
    const QString second = "ЗЦЗЦ 2\r\nНННН  ";
    ProcessDirect.processReceive(Telegram + second);
    QCOMPARE(ProcessDirect.receiveBuffer, second);
    QCOMPARE(State.PK_in, 1);

    Time.setTo(QDateTime(QDate(2026, 7, 31), QTime(12, 0, 1)));
    ProcessDirect.processReceive("\r");
    QCOMPARE(desk.read("inp/20260731/20260731_120001"), second.toUtf8());
    QCOMPARE(ProcessDirect.receiveBuffer, "\r");
    QCOMPARE(State.PK_in, 2);
}

void TestDirectReceive::telegramBehindOneOnOneLineWaitsToo()
{
    const DirectDesk desk;
    ProcessDirect.processReceive("ЗЦЗЦ НННН  " + Telegram);
    QCOMPARE(ProcessDirect.receiveBuffer, Telegram);
    ProcessDirect.processReceive("А");
    QCOMPARE(desk.read(Name), Telegram.toUtf8());
}

void TestDirectReceive::twoTelegramsOfOneSecondLeaveTheSecond()
{
    const DirectDesk desk;
    ProcessDirect.processReceive(Telegram);
    ProcessDirect.processReceive("ЗЦЗЦ 2\r\nНННН  ");
    QCOMPARE(desk.read(Name), QString("ЗЦЗЦ 2\r\nНННН  ").toUtf8());
    QCOMPARE(desk.names("inp/20260731"), QStringList{"20260731_120000"});
    QCOMPARE(State.PK_in, 2);
}

void TestDirectReceive::confirmationFollows()
{
    const DirectDesk desk;
    Options.SendConfirmation = true;
    Time.setTo(QDateTime(QDate(2026, 7, 31), QTime(9, 5, 7)));
    ProcessDirect.processReceive(Telegram);
    QCOMPARE(desk.sent(), "\r\nЗЦЗЦ СООБЩЕНИЕ ПРИНЯТО НННН  0905\r\n");
    QCOMPARE(desk.notes(), QStringList{"309:05:07 Файл сохранен:inp/20260731/20260731_090507"});
}

void TestDirectReceive::confirmationFollowsEvenAFailedSaving()
{
    const DirectDesk desk;
    Options.SendConfirmation = true;
    desk.write("inp/20260731", "a file in the directory's place");
    ProcessDirect.processReceive(Telegram);
    QCOMPARE(desk.sent(), "\r\nЗЦЗЦ СООБЩЕНИЕ ПРИНЯТО НННН  1200\r\n");
    QCOMPARE(desk.notes(), QStringList{"312:00:00 Не получилось сохранить файл:" + Name});
    QCOMPARE(ProcessDirect.receiveBuffer, "");
}

void TestDirectReceive::printing_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("printed");

    row("none", 0, false);
    row("received", 1, true);
    row("sent", 2, false);
    row("both", 3, true);
    row("unknown", 5, false);
}

void TestDirectReceive::printing()
{
    QFETCH(int, mode);
    QFETCH(bool, printed);
    const DirectDesk desk;
    Options.autoPrintMode = mode;
    ProcessDirect.processReceive("ЗЦЗЦ |А@H#1\r\nНННН  ");

    QStringList notes{"312:00:00 Файл сохранен:" + Name};
    if (printed)
        notes << "312:00:00 Печать файла";
    QCOMPARE(desk.notes(), notes);
    QCOMPARE(QString::fromUtf8(desk.readPrinted()), printed ? "ЗЦЗЦ А1\r\nНННН  " : "");
}

void TestDirectReceive::registersAreRemovedIfWanted()
{
    const DirectDesk desk;
    Options.removeRegisterInInputFiles = true;
    ProcessDirect.processReceive("ЗЦЗЦ #12 |4ТО &A\r\nНННН  ");
    QCOMPARE(QString::fromUtf8(desk.read(Name)), "ЗЦЗЦ 12 ЧТО A\r\nНННН  ");
}

void TestDirectReceive::counterTurnsOverAfter999()
{
    const DirectDesk desk;
    State.PK_in = 999;
    ProcessDirect.processReceive(Telegram);
    QCOMPARE(State.PK_in, 0);
}

void TestDirectReceive::missingInputDirectoryIsMade()
{
    const DirectDesk desk;
    QVERIFY(QDir(desk.path("inp")).removeRecursively());
    QVERIFY(ProcessDirect.saveText(Telegram));
    QCOMPARE(desk.read(Name), Telegram.toUtf8());
}

void TestDirectReceive::unwritableDirectoryFails()
{
    const DirectDesk desk;
    Options.autoPrintMode = 1;
    QVERIFY(QDir(desk.path("inp")).removeRecursively());
    desk.write("inp", "a file in the directory's place");
    ProcessDirect.processReceive(Telegram + "ДАЛЬШЕ");

    QCOMPARE(desk.notes(),
             (QStringList{"312:00:00 Не получилось сохранить файл:" + Name, "312:00:00 Печать файла"}));
    QCOMPARE(desk.readPrinted(), Telegram.toUtf8());
    QCOMPARE(State.PK_in, 0);
    QCOMPARE(ProcessDirect.receiveBuffer, "ДАЛЬШЕ");
    QVERIFY(!ProcessDirect.saveText(Telegram));
}

void TestDirectReceive::fullDiskLeavesTheFormerTelegram()
{
    const DirectDesk desk;
    ProcessDirect.processReceive(Telegram);
    {
        const FullDisk full;
        ProcessDirect.processReceive("ЗЦЗЦ 2\r\nНННН  ");
    }
    QCOMPARE(desk.read(Name), Telegram.toUtf8());
    QCOMPARE(desk.names("inp/20260731"), QStringList{"20260731_120000"});
    QCOMPARE(State.PK_in, 1);
    QCOMPARE(desk.notes(), (QStringList{"312:00:00 Файл сохранен:" + Name,
                                        "312:00:00 Не получилось сохранить файл:" + Name}));

    ProcessDirect.processReceive("ЗЦЗЦ 3\r\nНННН  ");
    QCOMPARE(desk.read(Name), QString("ЗЦЗЦ 3\r\nНННН  ").toUtf8());
    QCOMPARE(State.PK_in, 2);
}

void TestDirectReceive::emptyTextIsNotStored()
{
    const DirectDesk desk;
    QVERIFY(!ProcessDirect.saveText(""));
    QVERIFY(!QFile::exists(desk.path(Name)));
    QCOMPARE(State.PK_in, 0);
}

void TestDirectReceive::longTelegramInSmallPiecesIsQuick()
{
    const DirectDesk desk;
    const int pieces = 300000;
    const QString piece = "ЛИНИЯ\r\n";
    QElapsedTimer timer;
    timer.start();
    ProcessDirect.processReceive("ЗЦЗЦ ");
    for (int i = 0; i < pieces; ++i)
        ProcessDirect.processReceive(piece);
    ProcessDirect.processReceive("НННН");
    ProcessDirect.processReceive("  ");

    QCOMPARE(desk.read(Name).size(), 5 + 4 + pieces * 12 + 8 + 2);
    QVERIFY2(timer.elapsed() < 30000, "each piece searches the whole buffer"); // that takes many minutes
}

void TestDirectReceive::telegramWithoutEndIsGivenUp()
{
    const DirectDesk desk;
    ProcessDirect.processReceive("ЗЦЗЦ А\r\n");
    const QString piece(1024 * 1024, 'X');
    for (int i = 0; i < 15; ++i)
        ProcessDirect.processReceive(piece);
    QCOMPARE(ProcessDirect.receiveBuffer.size(), 15 * 1024 * 1024 + 8);
    ProcessDirect.processReceive(piece);
    QCOMPARE(ProcessDirect.receiveBuffer.size(), 200);
    QCOMPARE(desk.notes(), QStringList{"412:00:00 Телеграмма без конца отброшена"});

    ProcessDirect.processReceive(Telegram);
    QCOMPARE(desk.read(Name), Telegram.toUtf8());
}

void TestDirectReceive::telegramBegunInEndlessNoiseIsWhole()
{
    const DirectDesk desk;
    ProcessDirect.processReceive("ЗЦЗЦ А\r\n" + QString(10 * 1024 * 1024, 'X'));
    ProcessDirect.processReceive(Telegram.left(10));
    ProcessDirect.processReceive(QString(7 * 1024 * 1024, 'Y'));
    QCOMPARE(ProcessDirect.receiveBuffer.left(12), Telegram.left(10) + "YY");
    ProcessDirect.processReceive("НННН  ");
    QCOMPARE(desk.read(Name), (Telegram.left(10) + QString(7 * 1024 * 1024, 'Y') + "НННН  ").toUtf8());
}

void TestDirectReceive::bufferChangedFromOutsideIsSearchedAnew()
{
    const DirectDesk desk;
    ProcessDirect.processReceive("ЗЦЗЦ А\r\nБ");
    ProcessDirect.receiveBuffer = "ШУМ" + Telegram;
    ProcessDirect.processReceive("В");
    QCOMPARE(desk.read(Name), Telegram.toUtf8());
    QCOMPARE(ProcessDirect.receiveBuffer, "В");
}

QTEST_GUILESS_MAIN(TestDirectReceive)
#include "test_direct_receive.moc"
