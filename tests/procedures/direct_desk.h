#pragma once

#include "app/options.h"
#include "app/state.h"
#include "procedures/process_direct.h"
#include "records/file_attr.h"
#include "records/protocol.h"
#include "records/send_model.h"
#include "tests/support/desk.h"

/// A desk on a direct link at 12:00:00 of 31.07.2026, its journal at the beginning of a line. What it
/// prints goes, as UTF-8 and without line feeds behind it, to the file "printed".
class DirectDesk : public Desk
{
public:
    DirectDesk()
    {
        Options.processMode = 2;
        Options.PrinterType = 1;
        Options.PrinterRaw = path("printed");
        Options.PrinterCodePage = 2;
        Options.PrinterRawLFCount = 0;
        Log.lines = QStringList{QString()};
    }

    ~DirectDesk() { (void)readPrinted(); } // a job must not outlive its desk

    /// The journal without the empty line that waits for the next text.
    [[nodiscard]] QStringList notes() const
    {
        QStringList lines = journal();
        if (!lines.isEmpty() && lines.last().isEmpty())
            lines.removeLast();
        return lines;
    }

    /// Puts a file into the outgoing directory and hands its row to the procedure.
    void send(const QString &name, const QByteArray &content) const
    {
        write("out/" + name, content);
        dispatch(name);
    }

    /// Hands a row to the procedure, whether or not there is such a file.
    static void dispatch(const QString &name)
    {
        CTableViewModelItem_Send item;
        item.fileName = name;
        ProcessDirect.checkForSendNewTlg(item);
    }
};
