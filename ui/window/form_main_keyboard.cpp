// Chapter of FormMain: the keyboard at the line. In manual mode the keys of the roll go out.

#include "app/options.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "procedures/process_skk.h"
#include "text/filters.h"
#include "text/mtk2.h"
#include "ui/form_main.h"
#include "ui/roll/protocol_widget.h"

#include <QKeyEvent>

namespace
{
constexpr Qt::KeyboardModifiers NotTyped = Qt::ControlModifier | Qt::AltModifier | Qt::KeypadModifier;

/// The key by its place on the keyboard: with the Russian layout on, the key E gives У.
int latinKey(int key)
{
    switch (key) {
    case 0x0423: return Qt::Key_E; // У
    case 0x0420: return Qt::Key_H; // Р
    case 0x0414: return Qt::Key_L; // Д
    case 0x041C: return Qt::Key_V; // М
    case 0x0417: return Qt::Key_P; // З
    default: return key;
    }
}

void toggleProtectedMode()
{
    if (TlgThread.protectedMode)
        TlgThread.stopProtectedMode();
    else
        TlgThread.startProtectedMode();
}
} // namespace

// The order is binding: typed text, commands with Ctrl, then what moves the roll.
void FormMain::ProtocolKeyPressed(QKeyEvent *event)
{
    if (State.manualMode && (sendTypedText(*event) || runControlKey(*event)))
        return;
    moveProtocol(event->key());
}

// Not from the keypad, whose digits are pressed by accident. A lone "@" goes unfiltered, so that the
// adapter's commands can be typed by hand.
bool FormMain::sendTypedText(const QKeyEvent &event)
{
    QString text = event.text();
    if (text.isEmpty() || (event.modifiers() & NotTyped) != 0)
        return false;
    if (text.startsWith(QLatin1Char('\r')))
        text += QLatin1Char('\n');
    if (text.startsWith(QLatin1Char('@'))) {
        TlgSend(QStringLiteral("@"));
        return true;
    }
    text = QStringClearNonMTK2(upperMTK2(text));
    if (text.isEmpty())
        return false;
    if (Options.nationalLanguageUse != NoNationalLanguage)
        maskNationalLanguage(text);
    TlgSend(text);
    return true;
}

bool FormMain::runControlKey(const QKeyEvent &event)
{
    if (event.modifiers() != Qt::ControlModifier)
        return false;
    const int key = latinKey(event.key());
    if (key == Qt::Key_E && Options.processMode == SKK)
        TlgSend(QStringLiteral("@E"));
    else if (key == Qt::Key_H && Options.processMode == SKK)
        ProcessSKK.immediateHangUp();
    else if (key == Qt::Key_L)
        TlgSend(QStringLiteral("@L"));
    else if (key == Qt::Key_V)
        TlgSend(QStringLiteral("@V"));
    else if (key == Qt::Key_P && Options.enableProtectedSend && Options.processMode != CKS)
        toggleProtectedMode();
    else
        return false;
    return true;
}

void FormMain::moveProtocol(int key)
{
    switch (key) {
    case Qt::Key_Escape: return cancelInProtocol();
    case Qt::Key_Home: return protocolWidget->toFirstLine();
    case Qt::Key_End: return protocolWidget->toLastLine();
    case Qt::Key_Up: return protocolWidget->move(-1);
    case Qt::Key_Down: return protocolWidget->move(1);
    case Qt::Key_PageUp: return protocolWidget->movePage(-1);
    case Qt::Key_PageDown: return protocolWidget->movePage(1);
    default: return;
    }
}

// A roll that is scrolled back comes to its end first; only there Esc cancels what has not left yet.
void FormMain::cancelInProtocol()
{
    if (!protocolWidget->isLastString())
        return protocolWidget->reset();
    if (!State.manualMode)
        return;
    (void)TlgThread.sendBuffer.mTake();
    protocolWidget->slotProtocolDataChanged();
}
