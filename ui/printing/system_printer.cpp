#include "ui/printing/system_printer.h"

#include <QFont>
#include <QPrinter>
#include <QTextDocument>

namespace
{
/// Without any printer Qt falls back to a PDF file that has no name, which prints nothing.
bool hasDevice(const QPrinter &printer)
{
    return printer.isValid() &&
           (printer.outputFormat() == QPrinter::NativeFormat || !printer.outputFileName().isEmpty());
}
} // namespace

bool printDocument(QPrinter &printer, const QString &text, const QString &font)
{
    if (!hasDevice(printer))
        return false;
    QFont ownFont; // of this thread alone
    ownFont.fromString(font);
    QTextDocument document;
    document.setDefaultFont(ownFont);
    document.setPlainText(text);
    document.print(&printer);
    return printer.printerState() != QPrinter::Error;
}

QStringList printToSystem(const QString &name, const QString &text, const QString &font)
{
    QPrinter printer(QPrinter::ScreenResolution);
    if (!name.isEmpty())
        printer.setPrinterName(name);
    if ((name.isEmpty() || printer.printerName() == name) && printDocument(printer, text, font))
        return {};
    return {QStringLiteral("Error open printer ") + name};
}
