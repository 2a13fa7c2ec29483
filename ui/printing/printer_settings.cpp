#include "ui/printing/printer_settings.h"

#include "app/options.h"
#include "text/encodings.h"
#include "ui/printing/raw_printer.h"
#include "ui/printing/system_printer.h"

namespace
{
constexpr int MaximumLineFeeds = 10000; // the option is not range-checked

QByteArray printerBytes(const PrinterSettings &settings, QString text)
{
    QByteArray bytes;
    if (settings.codePage == PageCORVA)
        CORVAFromQString(text, bytes);
    else if (settings.codePage == PageCP1251)
        CP1251FromQString(text, bytes);
    else
        bytes = text.toUtf8();
    return bytes + QByteArray(qBound(0, settings.lineFeeds, MaximumLineFeeds), '\n');
}
} // namespace

PrinterSettings PrinterSettings::inForce()
{
    return {Options.PrinterType, Options.PrinterName,     Options.PrinterFont,
            Options.PrinterRaw,  Options.PrinterCodePage, Options.PrinterRawLFCount};
}

CPrintQueue::Job PrinterSettings::job(const QString &text) const
{
    if (way == SystemPrinter)
        return [printer = name, text, style = font.toString()](const std::atomic<bool> &) {
            return printToSystem(printer, text, style);
        };
    return [target = RawPrinterTarget::read(raw), bytes = printerBytes(*this, text)](
               const std::atomic<bool> &stop) { return printRaw(target, bytes, stop); };
}
