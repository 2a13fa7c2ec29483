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

// Not from the keypad, whose digits are pressed by accident. A lone "@" goes unfiltered, so that the
// adapter's commands can be typed by hand.
bool sendTypedText(FormMain &form, const QKeyEvent &event)
{
    QString text = event.text();
    if (text.isEmpty() || (event.modifiers() & NotTyped) != 0)
        return false;
    if (text.startsWith(QLatin1Char('\r')))
        text += QLatin1Char('\n');
    if (text.startsWith(QLatin1Char('@'))) {
        form.TlgSend(QStringLiteral("@"));
        return true;
    }
    text = QStringClearNonMTK2(upperMTK2(text));
    if (text.isEmpty())
        return false;
    if (Options.nationalLanguageUse != NoNationalLanguage)
        maskNationalLanguage(text);
    form.TlgSend(text);
    return true;
}

bool runControlKey(FormMain &form, const QKeyEvent &event)
{
    if (event.modifiers() != Qt::ControlModifier)
        return false;
    const int key = latinKey(event.key());
    if (key == Qt::Key_E && Options.processMode == SKK)
        form.TlgSend(QStringLiteral("@E"));
    else if (key == Qt::Key_H && Options.processMode == SKK)
        ProcessSKK.immediateHangUp();
    else if (key == Qt::Key_L)
        form.TlgSend(QStringLiteral("@L"));
    else if (key == Qt::Key_V)
        form.TlgSend(QStringLiteral("@V"));
    else if (key == Qt::Key_P && Options.enableProtectedSend && Options.processMode != CKS)
        toggleProtectedMode();
    else
        return false;
    return true;
}

// A roll that is scrolled back comes to its end first; only there Esc cancels what has not left yet.
void cancelInProtocol(FormMain &form)
{
    if (!form.protocolWidget->isLastString())
        return form.protocolWidget->reset();
    if (!State.manualMode)
        return;
    (void)TlgThread.sendBuffer.mTake();
    form.protocolWidget->slotProtocolDataChanged();
}

void moveProtocol(FormMain &form, int key)
{
    switch (key) {
    case Qt::Key_Escape: return cancelInProtocol(form);
    case Qt::Key_Home: return form.protocolWidget->toFirstLine();
    case Qt::Key_End: return form.protocolWidget->toLastLine();
    case Qt::Key_Up: return form.protocolWidget->move(-1);
    case Qt::Key_Down: return form.protocolWidget->move(1);
    case Qt::Key_PageUp: return form.protocolWidget->movePage(-1);
    case Qt::Key_PageDown: return form.protocolWidget->movePage(1);
    default: return;
    }
}
} // namespace

// The order is binding: typed text, commands with Ctrl, then what moves the roll.
void FormMain::ProtocolKeyPressed(QKeyEvent *event)
{
    if (State.manualMode && (sendTypedText(*this, *event) || runControlKey(*this, *event)))
        return;
    moveProtocol(*this, event->key());
}
