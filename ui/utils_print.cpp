#include "app/options.h"
#include "records/protocol.h"
#include "text/encodings.h"
#include "text/utils.h"
#include "ui/raw_printer.h"

#include <QPrinter>
#include <QTextDocument>

namespace
{
enum PrinterKind { SystemPrinter = 0 };
enum CodePage { PageCORVA = 0, PageCP1251 = 1 };
constexpr int MaximumLineFeeds = 10000; // the option is not range-checked

QByteArray printerBytes(QString text)
{
    QByteArray bytes;
    if (Options.PrinterCodePage == PageCORVA)
        CORVAFromQString(text, bytes);
    else if (Options.PrinterCodePage == PageCP1251)
        CP1251FromQString(text, bytes);
    else
        bytes = text.toUtf8();
    return bytes + QByteArray(qBound(0, Options.PrinterRawLFCount, MaximumLineFeeds), '\n');
}

/// Without any printer Qt falls back to a PDF file that has no name, which prints nothing.
bool hasDevice(const QPrinter &printer)
{
    return printer.isValid() &&
           (printer.outputFormat() == QPrinter::NativeFormat || !printer.outputFileName().isEmpty());
}

void printToSystem(const QString &text)
{
    QPrinter printer(QPrinter::ScreenResolution);
    printer.setPrinterName(Options.PrinterName);
    QTextDocument document;
    document.setDefaultFont(Options.PrinterFont);
    document.setPlainText(text);
    if (hasDevice(printer))
        document.print(&printer);
    if (!hasDevice(printer) || printer.printerState() == QPrinter::Error)
        Log.addCacheServiceString(QStringLiteral("Error open printer ") + Options.PrinterName, ProtocolError,
                                  true);
}
} // namespace

void CUtils::printText(QString text)
{
    if (Options.PrinterType == SystemPrinter)
        printToSystem(text);
    else
        CRawPrinter::instance().print(RawPrinterTarget::read(Options.PrinterRaw), printerBytes(text));
}

void CUtils::printClearText(QString text)
{
    printText(removeService(removeRegisters(text)));
}
