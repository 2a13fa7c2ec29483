#include "app/clock.h"
#include "procedures/process_cks.h"
#include "tests/procedures/direct_desk.h"
#include "tests/procedures/skk_desk.h"
#include "tests/support/row.h"
#include "text/utils.h"

#include <QDir>
#include <QtTest>

/// Names of files that would forge a journal line: each line that tells one shows it harmless.
class TestJournalNames : public QObject
{
    Q_OBJECT

private slots:
    void charactersBelow32AreShownAsQuestionMarks_data();
    void charactersBelow32AreShownAsQuestionMarks();
    void directSending();
    void centreSending();
    void centreRefusesToSend();
    void centreDistortion();
    void calledSending();
    void calledSendingOfAFileThatIsGone();
    void calledSendingThatIsDelivered();
    void retentionOfDirectories();
    void retentionOfJournals();
};

namespace
{
// A line feed, and behind it the mark of an error.
const QString Forged = QStringLiteral("2026\n\u0004731u001");
const QString Shown = QStringLiteral("2026??731u001");

/// The lines noted, each as it stands in the file: none ends early or has a second mark.
QStringList notedOnDisk(const Desk &desk)
{
    Log.Save();
    QStringList lines = QString::fromUtf8(desk.read("prt/20260731.prt")).split('\n');
    lines.removeAll(QString());
    for (QString &line : lines)
        line[0] = QChar('0' + line.at(0).unicode());
    return lines;
}

CTableViewModelItem_Send rowOf(const QString &name)
{
    CTableViewModelItem_Send item;
    item.fileName = name;
    return item;
}

QString sent(const char *text)
{
    return QStringLiteral("312:00:00 ") + QString::fromUtf8(text);
}
} // namespace

void TestJournalNames::charactersBelow32AreShownAsQuestionMarks_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    row("ordinary", "20260731с001.b1", "20260731с001.b1");
    row("a line feed and a mark", Forged, Shown);
    row("a carriage return and a tab", "a\r\tb", "a??b");
    row("zero and 31", QString(QChar(0)) + QChar(31), "??");
    row("32, 127 and 160", QString(" \x7F") + QChar(160), QString(" \x7F") + QChar(160));
    row("nothing", "", "");
}

void TestJournalNames::charactersBelow32AreShownAsQuestionMarks()
{
    QFETCH(QString, name);
    QTEST(shownName(name), "shown");
}

void TestJournalNames::directSending()
{
    const DirectDesk desk;
    desk.send(Forged, "А");
    QVERIFY(ProcessDirect.fileSended());
    QCOMPARE(notedOnDisk(desk),
             QStringList({sent("Отправка файла: ") + Shown,
                          sent("ПЕРЕИМЕНОВАНИЕ out/") + Shown + " В out/20260731/" + Shown}));
    QCOMPARE(desk.names("out/20260731"), QStringList(Forged)); // the name itself stays
}

void TestJournalNames::centreSending()
{
    const Desk desk;
    Log.lines = QStringList(QString());
    desk.write("out/" + Forged, "А");
    auto item = rowOf(Forged);
    ProcessCKS.checkForSendNewTlg(item);
    QVERIFY(State.fileInProgress);
    QCOMPARE(notedOnDisk(desk), QStringList(sent("Отправка файла: ") + Shown));
}

void TestJournalNames::centreRefusesToSend()
{
    const Desk desk;
    Log.lines = QStringList(QString());
    State.manualMode = true;
    State.PK_out = 1;
    auto item = rowOf(Forged);
    ProcessCKS.checkForSendNewTlg(item);
    QCOMPARE(notedOnDisk(desk), QStringList(sent("Расхождение счетчиков, отправка  ") + Shown + " отменена"));
}

void TestJournalNames::centreDistortion()
{
    const Desk desk;
    Log.lines = QStringList(QString());
    desk.write("out/" + Forged, "А");
    State.tlgMode = 3;
    State.fileInProgress = true;
    State.currentFile = Forged;
    ProcessCKS.ProcessKG(QStringLiteral("ИСКАЖЕНИЕ 7 ВАШ 12"));
    const QStringList moves = notedOnDisk(desk).filter("ПЕРЕИМЕНОВАНИЕ");
    QCOMPARE(moves.size(), 1);
    QVERIFY2(moves.first().startsWith(sent("ПЕРЕИМЕНОВАНИЕ out/") + Shown + " В out/" + Shown + ".b"),
             qPrintable(moves.first()));
}

void TestJournalNames::calledSending()
{
    const SkkDesk desk;
    auto item = desk.row(Forged);
    ProcessSKK.checkForSendNewTlg(item);
    QVERIFY(notedOnDisk(desk).contains(sent("Установка соединения для отправки файла ") + Shown));
}

void TestJournalNames::calledSendingOfAFileThatIsGone()
{
    const SkkDesk desk;
    desk.automatic(10, 1);
    State.currentFile = Forged;
    State.secondsSinceRx = 100;
    desk.autoTick();
    QCOMPARE(notedOnDisk(desk), QStringList("412:00:00 Ошибка открытия файла " + Shown));
}

void TestJournalNames::calledSendingThatIsDelivered()
{
    const SkkDesk desk;
    desk.automatic(14, 5);
    State.currentFile = Forged;
    desk.write("out/" + Forged, "А");
    ProcessSKK.compliteSKKFileSendedInAutoMode();
    QCOMPARE(notedOnDisk(desk),
             QStringList({sent("Файл ") + Shown + " отправлен",
                          sent("ПЕРЕИМЕНОВАНИЕ out/") + Shown + " В out/20260731/" + Shown + ".000"}));
}

void TestJournalNames::retentionOfDirectories()
{
    const Desk desk;
    Log.lines = QStringList(QString());
    QVERIFY(QDir().mkdir("inp/2025\n101"));
    QCOMPARE(CUtils::clearDir("inp", QDate(2026, 1, 1)), 1);
    QCOMPARE(notedOnDisk(desk), QStringList(sent("Удаление каталога inp/2025?101")));
}

void TestJournalNames::retentionOfJournals()
{
    const Desk desk;
    Log.lines = QStringList(QString());
    desk.write("prt/2025\n101.prt", "");
    CUtils::clearInDir("prt", QDate(2026, 1, 1));
    QCOMPARE(desk.names("prt", "2025*"), QStringList());
    QCOMPARE(notedOnDisk(desk), QStringList(sent("Удаление 2025?101.prt")));
}

QTEST_MAIN(TestJournalNames)
#include "test_journal_names.moc"
