#pragma once

#include "tests/ui/roll/seat.h"

#include <QMenu>
#include <QTimer>

/// The visible entries of the roll's context menu at this moment; \a pressed is then pressed, if it is there.
inline QStringList rollMenuEntries(const Seat &seat, const QString &pressed = QString())
{
    QStringList entries;
    QTimer::singleShot(0, seat.window.get(), [&] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (menu == nullptr)
            return;
        QAction *chosen = nullptr;
        for (QAction *action : menu->actions()) {
            if (!action->isVisible())
                continue;
            entries << action->text();
            if (action->text() == pressed)
                chosen = action;
        }
        menu->close();
        if (chosen != nullptr)
            chosen->trigger();
    });
    QContextMenuEvent event(QContextMenuEvent::Mouse, seat.view()->textArea().center());
    QApplication::sendEvent(seat.view(), &event);
    return entries;
}
