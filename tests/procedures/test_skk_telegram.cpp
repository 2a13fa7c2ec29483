// Telegrams that come inside a connection.

#include "records/file_attr.h"
#include "tests/procedures/skk_desk.h"
#include "tests/support/full_disk.h"
#include "tests/support/row.h"

#include <QDir>
#include <QFile>
#include <QtTest>

class TestSkkTelegram : public QObject
{
    Q_OBJECT

private slots:
    void storedAsItCame();
    void cutAnywhere();
    void waitsForItsEndMark();
    void latinMarksAreText();
    void twoTelegramsInOnePiece();
    void startMarkInsideBelongsToTheTelegram();
    void outsideAConnectionItIsNoise();
    void questionInsideIsTakenOutWhileItComes();
    void registersAreRemovedOnRequest();
    void counterIsNeitherSavedNorWrapped();
    void counterLeftBehindByAKillTakesNoPlace();
    void newMark_data();
    void newMark();
    void fileThatCannotBeWritten();
    void fullDisk();
    void dayDirectoryFollowsTheClock();
    void turnsTheAnswerOnAgain();
    void isPartOfTheTranscriptToo();
    void rejectionEndsTheConnection_data();
    void rejectionEndsTheConnection();
    void otherWordsAreATelegram_data();
    void otherWordsAreATelegram();
};

namespace
{
const QString Name = QStringLiteral("inp/20260731/20260731_000");
const QString Telegram = QStringLiteral("ЗЦЗЦ |ТЕКСТ #12\r\nНННН  ");
} // namespace

void TestSkkTelegram::storedAsItCame()
{
    const SkkDesk desk;
    desk.connect(Incoming);
    desk.receive("ШУМ" + Telegram + "ДАЛЬШЕ");
    QCOMPARE(desk.names("inp/20260731"), QStringList("20260731_000"));
    QCOMPARE(QString::fromUtf8(desk.read(Name)), Telegram);
    QCOMPARE(State.PK_in, 1);
    QCOMPARE(ProcessSKK.receiveBuffer, "ДАЛЬШЕ");
    QCOMPARE(desk.noted(), QStringList({"312:00:00 Обнаружена телеграмма",
                                        "312:00:00 Cохранение телеграммы в файл: " + Name}));
    QCOMPARE(desk.sent(), "");
    QCOMPARE(State.callDirection, 1);
}

void TestSkkTelegram::cutAnywhere()
{
    const QString line = "ШУМ" + Telegram + "К";
    for (int cut = 0; cut <= line.size(); ++cut) {
        const SkkDesk desk;
        desk.connect(Outgoing);
        desk.receive(line.left(cut));
        desk.receive(line.mid(cut));
        QCOMPARE(QString::fromUtf8(desk.read(Name)), Telegram);
        QCOMPARE(ProcessSKK.receiveBuffer, "К");
        QCOMPARE(State.PK_in, 1);
    }
}

void TestSkkTelegram::waitsForItsEndMark()
{
    const SkkDesk desk;
    desk.connect(Outgoing);
    const QString begin = QStringLiteral("ЗЦЗЦ ") + QString(1000, QChar(0x0410));
    desk.receive(begin);
    for (const QChar c : QStringLiteral(" НННН "))
        desk.receive(c);
    QCOMPARE(ProcessSKK.receiveBuffer, begin + " НННН ");
    QCOMPARE(State.PK_in, 0);
    desk.receive(" ");
    QCOMPARE(QString::fromUtf8(desk.read(Name)), begin + " НННН  ");
    QCOMPARE(ProcessSKK.receiveBuffer, "");
}

void TestSkkTelegram::latinMarksAreText()
{
    const SkkDesk desk;
    desk.connect(Outgoing);
    desk.receive("ZCZC TEXT NNNN  ЗЦЗЦТЕКСТ НННН  ЗЦЗЦ ТЕКСТ NNNN  ");
    QCOMPARE(State.PK_in, 0);
    QCOMPARE(ProcessSKK.receiveBuffer, "ZCZC TEXT NNNN  ЗЦЗЦТЕКСТ НННН  ЗЦЗЦ ТЕКСТ NNNN  ");
}

void TestSkkTelegram::twoTelegramsInOnePiece()
{
    const SkkDesk desk;
    desk.connect(Outgoing);
    desk.receive("ЗЦЗЦ А НННН  ЗЦЗЦ Б НННН  ");
    QCOMPARE(QString::fromUtf8(desk.read("inp/20260731/20260731_000")), "ЗЦЗЦ А НННН  ");
    QCOMPARE(QString::fromUtf8(desk.read("inp/20260731/20260731_001")), "ЗЦЗЦ Б НННН  ");
    QCOMPARE(State.PK_in, 2);
}

void TestSkkTelegram::startMarkInsideBelongsToTheTelegram()
{
    const SkkDesk desk;
    desk.connect(Outgoing);
    desk.receive("ЗЦЗЦ А ЗЦЗЦ Б НННН  НННН  ");
    QCOMPARE(QString::fromUtf8(desk.read(Name)), "ЗЦЗЦ А ЗЦЗЦ Б НННН  ");
    QCOMPARE(ProcessSKK.receiveBuffer, "НННН  ");
}

void TestSkkTelegram::outsideAConnectionItIsNoise()
{
    for (const int callState : {0, 1, 2, 4, 5, 6}) {
        const SkkDesk desk;
        State.callState = callState;
        State.connectionActive = true;
        desk.receive(Telegram);
        QCOMPARE(State.PK_in, 0);
        QCOMPARE(desk.names("inp"), QStringList());
        QCOMPARE(ProcessSKK.receiveBuffer, Telegram);
    }
}

void TestSkkTelegram::questionInsideIsTakenOutWhileItComes()
{
    const SkkDesk desk;
    desk.connect(Incoming);
    desk.receive("ЗЦЗЦ А#*Б");
    QCOMPARE(desk.sent(), "#\r\n777777 ДЕСК");
    QCOMPARE(ProcessSKK.receiveBuffer, "Б"); // and what stood in front of it
    desk.receive("ЗЦЗЦ А#*Б НННН  ");
    QCOMPARE(desk.sent(), ""); // the whole telegram goes before what is in it
    QCOMPARE(QString::fromUtf8(desk.read(Name)), "ЗЦЗЦ А#*Б НННН  ");
}

void TestSkkTelegram::registersAreRemovedOnRequest()
{
    const SkkDesk desk;
    Options.removeRegisterInInputFiles = true;
    desk.connect(Incoming);
    desk.receive("ЗЦЗЦ |4ТО #12&A\r\nНННН  ");
    QCOMPARE(QString::fromUtf8(desk.read(Name)), "ЗЦЗЦ ЧТО 12A\r\nНННН  ");
}

void TestSkkTelegram::counterIsNeitherSavedNorWrapped()
{
    const SkkDesk desk;
    State.PK_in = 999;
    desk.connect(Incoming);
    desk.receive(Telegram);
    QCOMPARE(desk.names("inp/20260731"), QStringList("20260731_999"));
    QCOMPARE(State.PK_in, 1000);
    QVERIFY(!QFile::exists(desk.path("velda_state.ini")));
    desk.receive(Telegram);
    QCOMPARE(desk.names("inp/20260731"), QStringList({"20260731_000", "20260731_999"}));
    QCOMPARE(State.PK_in, 1001);
}

// The counter reaches the disk with some later Save: one that a killed process has left is behind its
// telegrams.
void TestSkkTelegram::counterLeftBehindByAKillTakesNoPlace()
{
    const SkkDesk desk;
    desk.connect(Incoming);
    desk.receive(Telegram);
    State.PK_in = 0;
    desk.receive("ЗЦЗЦ ВТОРАЯ\r\nНННН  ");
    QCOMPARE(desk.names("inp/20260731"), QStringList({"20260731_000", "20260731_001"}));
    QCOMPARE(QString::fromUtf8(desk.read(Name)), Telegram);
    QCOMPARE(State.PK_in, 2);
}

void TestSkkTelegram::newMark_data()
{
    QTest::addColumn<bool>("marked");
    row("marked", true);
    row("not marked", false);
}

void TestSkkTelegram::newMark()
{
    QFETCH(bool, marked);
    const SkkDesk desk;
    Options.markNewFilesInInp = marked;
    desk.connect(Incoming);
    desk.receive(Telegram);
    QCOMPARE(CFileAttr(Name).checkNew(), marked);
}

void TestSkkTelegram::fileThatCannotBeWritten()
{
    const SkkDesk desk;
    desk.write("inp/20260731", "a file in the directory's place");
    desk.connect(Incoming);
    State.ignoreAO = true;
    desk.receive(Telegram + "К");
    QCOMPARE(desk.noted(), QStringList({"312:00:00 Обнаружена телеграмма",
                                        "412:00:00 Ошибка сохранения телеграммы в файл: " + Name}));
    QCOMPARE(State.PK_in, 0);
    QCOMPARE(ProcessSKK.receiveBuffer, "К");
    QVERIFY(!State.ignoreAO);
}

void TestSkkTelegram::fullDisk()
{
    const SkkDesk desk;
    desk.connect(Incoming);
    {
        const FullDisk full;
        desk.receive(Telegram);
    }
    QCOMPARE(desk.noted(), QStringList({"312:00:00 Обнаружена телеграмма",
                                        "412:00:00 Ошибка сохранения телеграммы в файл: " + Name}));
    QCOMPARE(desk.names("inp/20260731"), QStringList());
    QCOMPARE(State.PK_in, 0);
}

void TestSkkTelegram::dayDirectoryFollowsTheClock()
{
    const SkkDesk desk;
    desk.connect(Incoming);
    Time.setTo(QDateTime(QDate(2026, 8, 1), QTime(0, 0)));
    desk.receive(Telegram);
    QCOMPARE(desk.names("inp/20260801"), QStringList("20260801_000"));
}

void TestSkkTelegram::turnsTheAnswerOnAgain()
{
    const SkkDesk desk;
    desk.connect(Incoming);
    State.ignoreAO = true;
    desk.receive(Telegram + "#*");
    QVERIFY(!State.ignoreAO);
    QCOMPARE(desk.sent(), "\r\n|АО ВКЛ#\r\n777777 ДЕСК");
    QCOMPARE(State.PK_in, 1);
}

/// The transcript is the window's to fill; the telegram is taken from the buffer alone.
void TestSkkTelegram::isPartOfTheTranscriptToo()
{
    const SkkDesk desk;
    desk.connect(Incoming);
    State.connectionText += Telegram;
    desk.receive(Telegram);
    QCOMPARE(State.connectionText, Telegram);
    desk.receive("@H");
    QCOMPARE(desk.names("inp/20260731"), QStringList({"20260731_000", "s120000"}));
    QCOMPARE(QString::fromUtf8(desk.read("inp/20260731/s120000")), Telegram);
}

void TestSkkTelegram::rejectionEndsTheConnection_data()
{
    QTest::addColumn<QString>("text");
    row("plain", "ЗЦЗЦ ПРОВЕРЬТЕ СВОЙ АВТООТВЕТ НННН  ");
    row("with register marks", "ЗЦЗЦ |ПРОВЕРЬТЕ#| СВОЙ &|АВТООТВЕТ| НННН  ");
    row("with line marks", "ЗЦЗЦ ПРОВЕРЬТЕ<> СВОЙ АВТООТВЕТ НННН  ");
}

void TestSkkTelegram::rejectionEndsTheConnection()
{
    QFETCH(QString, text);
    for (int cut = 0; cut < text.size(); ++cut) {
        const SkkDesk desk;
        desk.connect(Outgoing);
        ProcessSKK.SendTlgText("НЕ УШЛО");
        desk.receive("ШУМ" + text.left(cut));
        QCOMPARE(State.callDirection, 2);
        desk.receive(text.mid(cut) + "К");
        QCOMPARE(State.callDirection, 0);
        QVERIFY(!State.connectionActive);
        QCOMPARE(desk.sent(), "@H");
        QCOMPARE(State.PK_in, 0);
        QCOMPARE(ProcessSKK.receiveBuffer, text.mid(6) + "К"); // the rest is scanned on
        QCOMPARE(desk.noted(), QStringList("312:00:00 Соединение сохранено out/20260731/s120000"));
    }
}

void TestSkkTelegram::otherWordsAreATelegram_data()
{
    QTest::addColumn<QString>("text");
    row("a word more", "ЗЦЗЦ ПРОВЕРЬТЕ СВОЙ АВТООТВЕТ ДА НННН  ");
    row("a blank more", "ЗЦЗЦ ПРОВЕРЬТЕ СВОЙ  АВТООТВЕТ НННН  ");
    row("a blank less", "ЗЦЗЦ ПРОВЕРЬТЕ СВОЙ АВТООТВЕТНННН  ");
    row("line end inside", "ЗЦЗЦ ПРОВЕРЬТЕ СВОЙ АВТООТВЕТ\r\n НННН  ");
}

void TestSkkTelegram::otherWordsAreATelegram()
{
    QFETCH(QString, text);
    const SkkDesk desk;
    desk.connect(Outgoing);
    desk.receive(text);
    QCOMPARE(State.callDirection, 2);
    QCOMPARE(QString::fromUtf8(desk.read(Name)), text);
}

QTEST_GUILESS_MAIN(TestSkkTelegram)
#include "test_skk_telegram.moc"
