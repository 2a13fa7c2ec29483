#include "app/options.h"
#include "records/protocol.h"
#include "tests/support/cups_scheduler.h"
#include "tests/support/desk.h"
#include "tests/support/ipp_printer.h"
#include "tests/support/patience.h"
#include "text/utils.h"
#include "ui/dialogs/print_txt_dialog.h"
#include "ui/form_main.h"
#include "ui/printing/print_queue.h"
#include "ui/printing/system_printer.h"

#include <QPrinter>
#include <QProcess>
#include <QPushButton>
#include <QTextEdit>
#include <QtTest>

namespace
{
const QString Queue = "velda_test";

/// A desk that prints to the printer \a name of the system, its journal at the beginning of a line.
class PrinterDesk : public Desk
{
public:
    explicit PrinterDesk(const QString &name = Queue)
    {
        Options.PrinterType = 0;
        Options.PrinterName = name;
        Options.PrinterFont = QFont("DejaVu Sans Mono", 11);
        Log.lines = QStringList{QString()};
    }
};

/// What a program prints about the PDF file \a content, as words parted by one blank.
QString aboutPdf(const Desk &desk, const QString &program, const QByteArray &content)
{
    desk.write("job.pdf", content);
    QProcess process;
    QStringList arguments{desk.path("job.pdf")};
    if (program == "pdftotext")
        arguments << "-";
    process.start(program, arguments);
    if (!process.waitForFinished(20000))
        return program + " (package poppler-utils) does not run";
    return QString::fromUtf8(process.readAll()).simplified();
}
} // namespace

/// Printing to printers of the operating system: here a real scheduler with a queue that ends at a real
/// network printer, and PDF files.
class TestPrintPrinter : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void textReachesThePrinterInItsFont();
    void longTextTakesSeveralPages();
    void clearTextIsPrinted();
    void unknownPrinterIsJournalled();
    void emptyNameIsTheDefaultPrinter();
    void pdfFileHoldsTheText();
    void fileThatCannotBeMadeFails();
    void dialogPrintsTheTextAsEdited();
    void dialogOfTheWindowReachesThePrinter();
    void dialogClosesWithoutPrinting();
    void dialogTakesItsFormerPlace();
    void stoppedSchedulerIsJournalled();

private:
    [[nodiscard]] QByteArray job() const;

    CupsScheduler m_scheduler;
    IppPrinter m_printer;
};

/// The next job that reaches the printer.
QByteArray TestPrintPrinter::job() const
{
    QList<QByteArray> jobs;
    if (!comesTrue([&] { return !(jobs = m_printer.takeJobs()).isEmpty(); }))
        return "no job";
    return jobs.size() == 1 ? jobs.first() : "several jobs";
}

void TestPrintPrinter::initTestCase()
{
    QVERIFY2(m_printer.start(), qPrintable(m_printer.error));
    QVERIFY2(m_scheduler.start(), qPrintable(m_scheduler.error));
    QVERIFY2(m_scheduler.addQueue(Queue, m_printer.device()), qPrintable(m_scheduler.error));
}

void TestPrintPrinter::textReachesThePrinterInItsFont()
{
    const PrinterDesk desk;
    CUtils::printText("ЗЦЗЦ 001\nПРИВЕТ | СО СТАНЦИИ\nНННН");
    const QByteArray pdf = job();
    QVERIFY2(pdf.startsWith("%PDF"), pdf.left(50).constData());
    QVERIFY(aboutPdf(desk, "pdftotext", pdf).startsWith("ЗЦЗЦ 001 ПРИВЕТ | СО СТАНЦИИ НННН"));
    const QString fonts = aboutPdf(desk, "pdffonts", pdf);
    QVERIFY2(fonts.contains("DejaVuSansMono"), qPrintable(fonts));
    QVERIFY(CPrintQueue::instance().waitForIdle(10000));
    QCOMPARE(desk.journal(), QStringList{QString()});
}

void TestPrintPrinter::longTextTakesSeveralPages()
{
    const PrinterDesk desk;
    QString text;
    for (int line = 1; line <= 300; ++line)
        text += QString("СТРОКА %1\n").arg(line);
    CUtils::printText(text);
    const QByteArray pdf = job();
    const QString found = aboutPdf(desk, "pdftotext", pdf);
    QVERIFY(found.contains("СТРОКА 1 "));
    QVERIFY(found.contains("СТРОКА 300"));
    const QString pages = aboutPdf(desk, "pdfinfo", pdf).section("Pages: ", 1).section(' ', 0, 0);
    QVERIFY2(pages.toInt() > 1, qPrintable(pages));
}

void TestPrintPrinter::clearTextIsPrinted()
{
    const PrinterDesk desk;
    CUtils::printClearText("|ТЕКСТ#12<>@H&");
    QVERIFY(aboutPdf(desk, "pdftotext", job()).startsWith("ТЕКСТ12"));
}

void TestPrintPrinter::unknownPrinterIsJournalled()
{
    const PrinterDesk desk("no such printer");
    CUtils::printText("А");
    QVERIFY(CPrintQueue::instance().waitForIdle(20000));
    QCOMPARE(desk.journal(), (QStringList{"412:00:00 Error open printer no such printer", QString()}));
    QVERIFY(m_printer.takeJobs().isEmpty());
}

void TestPrintPrinter::emptyNameIsTheDefaultPrinter()
{
    const PrinterDesk desk("");
    CUtils::printText("УМОЛЧАНИЕ");
    QVERIFY(aboutPdf(desk, "pdftotext", job()).startsWith("УМОЛЧАНИЕ"));
}

void TestPrintPrinter::pdfFileHoldsTheText()
{
    const PrinterDesk desk;
    QPrinter printer(QPrinter::ScreenResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(desk.path("out.pdf"));
    QVERIFY(printDocument(printer, "ТЕКСТ В ФАЙЛЕ", Options.PrinterFont.toString()));
    QVERIFY(aboutPdf(desk, "pdftotext", desk.read("out.pdf")).startsWith("ТЕКСТ В ФАЙЛЕ"));
}

void TestPrintPrinter::fileThatCannotBeMadeFails()
{
    const PrinterDesk desk;
    QPrinter nameless(QPrinter::ScreenResolution);
    nameless.setOutputFormat(QPrinter::PdfFormat);
    QVERIFY(!printDocument(nameless, "А", QString()));
}

void TestPrintPrinter::dialogPrintsTheTextAsEdited()
{
    const PrinterDesk desk;
    CPrintTxtDialog dialog("ИСХОДНЫЙ");
    QCOMPARE(dialog.windowTitle(), "Печать текста");
    auto *const text = dialog.findChild<QTextEdit *>("text");
    auto *const print = dialog.findChild<QPushButton *>("print");
    QCOMPARE(print->text(), "Распечатать");
    QCOMPARE(text->toPlainText(), "ИСХОДНЫЙ");
    QVERIFY(!text->isReadOnly());
    dialog.show();
    dialog.setGeometry(30, 40, 500, 300);
    QTest::keyClicks(text, "NEW ");
    QTest::mouseClick(print, Qt::LeftButton);

    QVERIFY(!dialog.isVisible());
    QCOMPARE(Options.geometryPrintTxt, QRect(30, 40, 500, 300));
    QVERIFY(aboutPdf(desk, "pdftotext", job()).startsWith("NEW ИСХОДНЫЙ"));
}

void TestPrintPrinter::dialogOfTheWindowReachesThePrinter()
{
    const PrinterDesk desk;
    FormMain window;
    QTimer::singleShot(0, &window, [&window] {
        QTest::mouseClick(window.findChild<QPushButton *>("print"), Qt::LeftButton);
    });
    window.printTextDialog("ЗЦЗЦ 001\r\nПРИВЕТ\r\nНННН");
    QVERIFY(aboutPdf(desk, "pdftotext", job()).startsWith("ЗЦЗЦ 001 ПРИВЕТ НННН"));
}

void TestPrintPrinter::dialogClosesWithoutPrinting()
{
    const PrinterDesk desk;
    CPrintTxtDialog dialog("А");
    auto *const leave = dialog.findChild<QPushButton *>("close");
    QCOMPARE(leave->text(), "Закрыть");
    dialog.show();
    dialog.setGeometry(50, 60, 400, 200);
    QTest::mouseClick(leave, Qt::LeftButton);

    QVERIFY(!dialog.isVisible());
    QCOMPARE(Options.geometryPrintTxt, QRect(50, 60, 400, 200));
    QVERIFY(CPrintQueue::instance().waitForIdle(0));
}

void TestPrintPrinter::dialogTakesItsFormerPlace()
{
    const PrinterDesk desk;
    Options.geometryPrintTxt = QRect(70, 80, 410, 210);
    const CPrintTxtDialog dialog("А");
    QCOMPARE(dialog.geometry(), QRect(70, 80, 410, 210));
}

/// Stays the last: no printer is left.
void TestPrintPrinter::stoppedSchedulerIsJournalled()
{
    const PrinterDesk desk;
    m_scheduler.stop();
    CUtils::printText("А");
    QVERIFY(CPrintQueue::instance().waitForIdle(30000));
    QCOMPARE(desk.journal(), (QStringList{"412:00:00 Error open printer " + Queue, QString()}));
}

QTEST_MAIN(TestPrintPrinter)
#include "test_print_printer.moc"
