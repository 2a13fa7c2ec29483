// Printers are listed and tried on their page, over a real scheduler.

#include "records/protocol.h"
#include "tests/support/cups_scheduler.h"
#include "tests/support/patience.h"
#include "tests/ui/dialogs/options/option_room.h"
#include "ui/printing/print_queue.h"
#include "ui/printing/printer_names.h"

#include <QToolButton>

class TestOptionsPrinting : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void printersAreListedOnEnteringThePage();
    void printerThatHasGoneStaysNamed();
    void listIsWaitedForByNobody();
    void testPageGoesToThePrinterOnShow();
    void testPageThatFailsIsJournalled();

private:
    CupsScheduler m_scheduler;
};

void TestOptionsPrinting::initTestCase()
{
    QVERIFY2(m_scheduler.start(), qPrintable(m_scheduler.error));
    QVERIFY2(m_scheduler.addQueue("office", "ipp://localhost:1/ipp/print"), qPrintable(m_scheduler.error));
}

void TestOptionsPrinting::printersAreListedOnEnteringThePage()
{
    OptionRoom room;
    room.open();
    QCOMPARE(room.list("PrinterName")->count(), 0);
    room.showTab("Печать");
    QTRY_VERIFY_WITH_TIMEOUT(room.list("PrinterName")->findText("office") >= 0, PatienceMs);
    QVERIFY(m_scheduler.addQueue("hall", "ipp://localhost:1/ipp/print"));
    room.showTab("Файлы");
    room.showTab("Печать");
    QTRY_VERIFY_WITH_TIMEOUT(room.list("PrinterName")->findText("hall") >= 0, PatienceMs);
    QCOMPARE(room.list("PrinterName")->currentText(), QString());
    room.apply();
    QCOMPARE(Options.PrinterName, QString());
}

void TestOptionsPrinting::printerThatHasGoneStaysNamed()
{
    OptionRoom room;
    Options.PrinterName = "gone";
    room.open();
    room.showTab("Печать");
    QTRY_VERIFY_WITH_TIMEOUT(room.list("PrinterName")->findText("office") >= 0, PatienceMs);
    QCOMPARE(room.list("PrinterName")->currentText(), "gone");
    QCOMPARE(room.reason("PrinterName"), "Такого принтера сейчас нет");
    room.list("PrinterName")->setEditText("office");
    QCOMPARE(room.reason("PrinterName"), QString());
    room.list("PrinterName")->setEditText("gone");
    room.apply();
    QCOMPARE(Options.PrinterName, "gone");
}

// A job that hangs is in front of the listing; the page opens all the same.
void TestOptionsPrinting::listIsWaitedForByNobody()
{
    OptionRoom room;
    std::atomic<bool> go{false};
    CPrintQueue::instance().post([&go](const std::atomic<bool> &) {
        while (!go)
            QThread::msleep(5);
        return QStringList();
    });
    room.open();
    QSignalSpy listed(&CPrinterNames::instance(), &CPrinterNames::listed);
    room.showTab("Печать");
    QCoreApplication::processEvents();
    QCOMPARE(listed.count(), 0);
    room.showTab("Файлы");
    room.showTab("Печать");
    go = true;
    QTRY_COMPARE_WITH_TIMEOUT(listed.count(), 1, PatienceMs);
}

void TestOptionsPrinting::testPageGoesToThePrinterOnShow()
{
    OptionRoom room;
    room.open();
    room.showTab("Печать");
    room.list("PrinterType")->setCurrentIndex(1);
    room.line("PrinterRaw")->setText(room.desk.path("printed"));
    room.list("PrinterCodePage")->setCurrentIndex(2);
    room.number("PrinterRawLFCount")->setValue(3);
    QTest::mouseClick(room.find<QToolButton>("printTestPage"), Qt::LeftButton);
    QCOMPARE(QString::fromUtf8(room.desk.readPrinted()),
             "Velda: пробная печать\nАБВГДЕЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯ\n"
             "ABCDEFGHIJKLMNOPQRSTUVWXYZ 0123456789 +-?:().,/=\n\n\n\n");
    QCOMPARE(Options.PrinterRaw, QString()); // nothing is applied yet
}

void TestOptionsPrinting::testPageThatFailsIsJournalled()
{
    OptionRoom room;
    room.open();
    Log.lines = QStringList{QString()}; // at the beginning of a line
    room.list("PrinterName")->setEditText("gone");
    QTest::mouseClick(room.find<QToolButton>("printTestPage"), Qt::LeftButton);
    QVERIFY(CPrintQueue::instance().waitForIdle(PatienceMs));
    QVERIFY2(room.desk.journal().join('/').contains("Error open printer gone"),
             qPrintable(room.desk.journal().join('/')));
}

QTEST_MAIN(TestOptionsPrinting)
#include "test_options_printing.moc"
