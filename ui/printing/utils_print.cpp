#include "app/options.h"
#include "text/encodings.h"
#include "text/utils.h"
#include "ui/printing/print_queue.h"
#include "ui/printing/raw_printer.h"
#include "ui/printing/system_printer.h"

namespace
{
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

CPrintQueue::Job systemJob(const QString &text)
{
    return [name = Options.PrinterName, text, font = Options.PrinterFont.toString()](
               const std::atomic<bool> &) { return printToSystem(name, text, font); };
}

CPrintQueue::Job rawJob(const QString &text)
{
    return [target = RawPrinterTarget::read(Options.PrinterRaw), bytes = printerBytes(text)](
               const std::atomic<bool> &stop) { return printRaw(target, bytes, stop); };
}
} // namespace

void CUtils::printText(QString text)
{
    CPrintQueue::instance().add(Options.PrinterType == SystemPrinter ? systemJob(text) : rawJob(text));
}

void CUtils::printClearText(QString text)
{
    printText(removeService(removeRegisters(text)));
}
