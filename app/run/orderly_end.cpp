#include "app/run/orderly_end.h"

#include "app/clock.h"
#include "app/state.h"

#include <QApplication>
#include <QEventLoop>
#include <QTimer>

namespace
{
constexpr int TickMilliseconds = 1000;

/// The tick has closed the window. With a dialog still open that was not the last one, and the event loop
/// would go on without an operator to answer.
void quitOnceClosed()
{
    if (State.closeAllowed)
        QCoreApplication::quit();
}

/// Asks again on each tick, behind the window's own tick, until the loop is left.
void watchTheClose()
{
    static QMetaObject::Connection watch;
    QObject::disconnect(watch);
    watch = QObject::connect(&Time, &CTime::signal_1sec, qApp, quitOnceClosed);
}
} // namespace

void requestOrderlyEnd()
{
    if (State.stopCountdown <= 0)
        State.closeSoon();
    watchTheClose();
}

void endWithSession()
{
    requestOrderlyEnd();
    QEventLoop untilTheEnd;
    QTimer::singleShot((CState::TicksToCloseOpen + 1) * TickMilliseconds, &untilTheEnd, &QEventLoop::quit);
    untilTheEnd.exec();
}

void installOrderlyEnd()
{
    // Else the window, which hides when it is told to close, would forbid the end of the session.
    QGuiApplication::setFallbackSessionManagementEnabled(false);
    QObject::connect(qApp, &QGuiApplication::commitDataRequest, qApp, endWithSession, Qt::DirectConnection);
    installSystemRequests();
}
