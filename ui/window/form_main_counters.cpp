// Chapter of FormMain: clicks on the status strip.

#include "app/journal_words.h"
#include "app/options.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "records/protocol.h"
#include "ui/dialogs/edit_counter_dialog.h"
#include "ui/form_main.h"

namespace
{
constexpr int ScanAfterClick = 2; ///< ticks

void editCounter(FormMain *form, int &counter, const QString &title, const QString &journalText)
{
    if (Options.processMode != CKS || !State.manualMode)
        return;
    CEditCounterDialog dialog(form);
    if (dialog.exec(counter, title) != QDialog::Accepted)
        return;
    const int old = counter; // may have moved while the dialog was open
    Log.addCacheServiceString(journalText + QString::number(old) + JournalWords::OperatorSetTo +
                                  QString::number(dialog.counter),
                              ProtocolInfo, false);
    counter = dialog.counter;
    State.Save();
}
} // namespace

void FormMain::clickedLabelPKin()
{
    editCounter(this, State.PK_in, QStringLiteral("Принято телеграмм"), JournalWords::OperatorSetReceived);
}

void FormMain::clickedLabelPKout()
{
    editCounter(this, State.PK_out, QStringLiteral("Передано телеграмм"), JournalWords::OperatorSetSent);
}

void FormMain::clickedLabelScanDirsTimeout()
{
    State.scanCountdown = ScanAfterClick;
}

void FormMain::clickedLabelConnectString()
{
    if (!TlgThread.linkUp())
        TlgThread.restartThread();
}
