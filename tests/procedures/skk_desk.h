#pragma once

#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "procedures/process_skk.h"
#include "records/protocol.h"
#include "records/send_model.h"
#include "tests/support/desk.h"
#include "ui/printing/print_queue.h"

#include <QStringList>

/// A desk of dialled connections at 12:00:00 of 31.07.2026, its own answerback "777777 ДЕСК", its journal at
/// the beginning of a line. What it prints goes, as UTF-8 and without line feeds behind it, to the file
/// "printed". Every figure of the timing is another one, so that no two can be confused.
class SkkDesk : public Desk
{
public:
    SkkDesk()
    {
        Options.processMode = 1;
        Options.TcpMode = false;
        Options.AO = QStringLiteral("777777 ДЕСК");
        Options.PrinterType = 1;
        Options.PrinterRaw = path("printed");
        Options.PrinterCodePage = 2;
        Options.PrinterRawLFCount = 0;
        Options.SKK_noSendCKSAOAfterSendFile = false;
        Options.SKKTiming[0] = {61, 62, 3, 7, 12, 0, 4, 6, 5, 30};
        Options.SKKTiming[1] = {71, 72, 13, 17, 22, 19, 14, 16, 15, 40};
        Log.lines = QStringList(QString());
    }

    /// The service lines since the start; the empty line that follows the last one is left out.
    [[nodiscard]] QStringList noted() const
    {
        QStringList lines = journal();
        if (!lines.isEmpty() && lines.last().isEmpty())
            lines.removeLast();
        return lines;
    }

    /// A connection exists, and nothing of how it came to be is left on the line or in the journal.
    void connect(int direction) const
    {
        ProcessSKK.setCallDirection(direction);
        (void)sent();
    }

    static void receive(const QString &text) { ProcessSKK.processReceive(text); }

    /// \a count seconds of the procedure.
    static void tick(int count = 1)
    {
        for (int i = 0; i < count; ++i)
            ProcessSKK.timeCheck1sec();
    }

    /// \a count ticks of the automatic send, its line free.
    static void autoTick(int count = 1)
    {
        for (int i = 0; i < count; ++i)
            if (State.AutoModeWaitTimer != 0)
                ProcessSKK.processAutoMode();
    }

    /// Makes a queue file and its row.
    [[nodiscard]] CTableViewModelItem_Send row(const QString &name, const QByteArray &content = "ТЕКСТ\r\n",
                                               bool toCKS = false, int trys = 3) const
    {
        write("out/" + name, content);
        CTableViewModelItem_Send item;
        item.fileName = name;
        item.number = QStringLiteral("12345678");
        item.toCKS = toCKS;
        item.trys = trys;
        item.sendTime = Time.dateTime.addSecs(-60);
        return item;
    }

    /// The automatic send of "a" has come to \a state, its timer at \a timer; the line and the journal hold
    /// nothing of the way there.
    void automatic(int state, int timer, bool toCKS = false, const QByteArray &content = "ТЕКСТ\r\n") const
    {
        CTableViewModelItem_Send item = row(QStringLiteral("a"), content, toCKS);
        ProcessSKK.checkForSendNewTlg(item);
        if (state > AutoCalling)
            ProcessSKK.proccessCallSuccess();
        State.AutoModeState = state;
        State.AutoModeWaitTimer = timer;
        TlgThread.allSent = true;
        Log.lines = QStringList(QString());
        (void)sent();
    }

    /// Everything printed so far.
    [[nodiscard]] QString printed() const
    {
        constexpr int LongestJobMs = 10000;
        return CPrintQueue::instance().waitForIdle(LongestJobMs)
                   ? QString::fromUtf8(read(QStringLiteral("printed")))
                   : QStringLiteral("does not end");
    }

    /// The record of the queue file \a name.
    [[nodiscard]] QString record(const QString &name = QStringLiteral("a")) const
    {
        return QString::fromUtf8(read("out/" + name + ".dat"));
    }
};
