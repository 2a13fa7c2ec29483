// Chapter of FormMain: the options dialog, and what a confirmed one sets off.

#include "app/options.h"
#include "app/state.h"
#include "link/prf_thread.h"
#include "link/tlg_thread.h"
#include "records/protocol.h"
#include "ui/dialogs/options/access_option_dialog.h"
#include "ui/dialogs/options/options_dialog.h"
#include "ui/form_main.h"
#include "ui/pages/archive_page.h"
#include "ui/pages/editor_page.h"
#include "ui/pages/search_page.h"
#include "ui/pages/send_page.h"
#include "ui/roll/protocol_widget.h"
#include "ui/widgets/telegram_view.h"

#include <QApplication>
#include <QCheckBox>
#include <QPlainTextEdit>
#include <QSignalBlocker>

#include <optional>

namespace
{
/// Whether all pages may be seen; nothing without the right to see any.
std::optional<bool> askAccess(QWidget *parent)
{
    if (Options.accessCodeUser.isEmpty() && Options.accessCodeAdmin.isEmpty())
        return true;
    CAccessOptionDialog dialog(parent);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    const QString code = dialog.code();
    if (code == Options.accessCodeAdmin)
        return true;
    if (code == Options.accessCodeUser)
        return false;
    Log.addCacheServiceString(QStringLiteral("Введен неверный код доступа к настройкам"), ProtocolInfo, true);
    return {};
}

void restartLine()
{
    if (Options.TcpMode)
        TlgThread.setTcp(Options.Host, Options.Port, Options.AsTspSrv);
    else
        TlgThread.setTrelo(Options.TRELO_SN, Options.tlgBaud, false);
    TlgThread.restartThread();
}

void restartPerforator()
{
    if (!Options.usePrf)
        return PrfThread.stopThread();
    PrfThread.setSorel(Options.SOREL_SN, Options.prfBaudIndex, Options.autodetectPortSorel);
    if (PrfThread.isRunning())
        PrfThread.restartThread();
    else
        PrfThread.start(QThread::InheritPriority);
}

/// The letters of the program without a correction; another one takes effect with the titles.
void dropFontCorrection()
{
    QFont font = QApplication::font();
    font.setPointSize(State.basePointSize);
    QApplication::setFont(font);
}
} // namespace

void FormMain::openOptions()
{
    const std::optional<bool> fullAccess = askAccess(this);
    if (!fullAccess)
        return;
    const int formerCorrection = Options.fontSizeCorrect;
    COptionsDialog dialog(*fullAccess, this);
    if (dialog.exec() == QDialog::Accepted) {
        takeOptions(dialog);
        if (Options.fontSizeCorrect == 0 && formerCorrection != 0)
            dropFontCorrection();
    }
    updateTitles();
}

void FormMain::takeOptions(const COptionsDialog &changed)
{
    TlgThread.refreshOptions();
    Options.CheckAndMakeFolders(); // a telegram that comes now has none but these to go to
    if (changed.lineChanged)
        restartLine();
    if (changed.perforatorChanged)
        restartPerforator();
    refreshInterface();
    Options.Save();
    if (changed.restartNeeded) {
        State.closeAllowed = true;
        State.restartAfterExit = true;
        close();
    }
    protocolWidget->initFont();
    protocolWidget->slotProtocolOptionsChanged();
}

void FormMain::refreshInterface()
{
    setPrfInterface();
    slotSetTlgModeInterface();
    checkEditorInterfaceMode();
    editorPage->setCategories(Options.CategoryList.split(QLatin1Char(',')));
    Log.lineWidthLimit = Options.limitProtocolStringWidth ? Options.protocolStringWidth : 0;
    // A text that is stored without register marks cannot bring a cipher back.
    editorPage->cryptoMode->setEnabled(!Options.removeRegisterInInputFiles);
    if (Options.removeRegisterInInputFiles) {
        const QSignalBlocker quiet(editorPage->cryptoMode);
        editorPage->cryptoMode->setChecked(false);
        setEditorCryptoMode();
    }
    checkOperatorList();
    protocolWidget->initPallette();
    for (QPlainTextEdit *text : QList<QPlainTextEdit *>{sendPage->text, inputPage->text, outputPage->text,
                                                        searchPage->found->text, editorPage->text})
        text->setFont(Options.tlgFont);
}
