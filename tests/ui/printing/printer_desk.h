#pragma once

#include "app/options.h"
#include "records/protocol.h"
#include "tests/support/desk.h"
#include "tests/support/patience.h"
#include "ui/printing/print_queue.h"

/// A desk that prints raw, as UTF-8 without line feeds, its journal at the beginning of a line.
class PrinterDesk : public Desk
{
public:
    explicit PrinterDesk(const QString &printer = QString())
    {
        Options.PrinterType = 1;
        Options.PrinterRaw = printer.isEmpty() ? path("printed") : printer;
        Options.PrinterCodePage = 2;
        Options.PrinterRawLFCount = 0;
        Log.lines = QStringList{QString()};
    }
    [[nodiscard]] QByteArray printed() const
    {
        return CPrintQueue::instance().waitForIdle(PatienceMs) ? read("printed") : "the printer hangs";
    }
};
