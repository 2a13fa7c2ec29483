#include "text/utils.h"

#include <QFont>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QScreen>
#include <QStyle>
#include <QWidget>

namespace
{
/// The present screen that shows most of \a geometry, or the primary one if none shows any of it.
QRect screenFor(const QRect &geometry)
{
    QRect best = QGuiApplication::primaryScreen()->availableGeometry();
    qint64 bestShown = 0;
    for (const QScreen *screen : QGuiApplication::screens()) {
        const QRect shown = screen->availableGeometry() & geometry;
        const qint64 area = shown.isEmpty() ? 0 : qint64(shown.width()) * shown.height();
        if (area > bestShown) {
            bestShown = area;
            best = screen->availableGeometry();
        }
    }
    return best;
}

/// The bar that the desktop puts above a window, by which the operator moves it.
int titleHeight(const QWidget *widget)
{
    return widget->isWindow() ? widget->style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, widget) : 0;
}

/// Start of a stretch of \a length, wished at \a start, inside \a from .. \a from + \a room - 1.
int inside(int start, int length, int from, int room)
{
    return qMax(from, qMin(start, from + room - length));
}
} // namespace

int CUtils::txtGUIWidth(int characters, const QFont &font)
{
    return QFontMetrics(font).horizontalAdvance(QLatin1Char('0')) * characters;
}

void CUtils::makeGeometry(QWidget *widget, const QRect &geometry)
{
    if (geometry.isEmpty() || !QGuiApplication::primaryScreen())
        return;
    const QRect screen = screenFor(geometry).adjusted(0, titleHeight(widget), 0, 0);
    // The rectangle may come from a damaged file: its size need not fit into an int.
    const int width = int(qMin(qint64(geometry.right()) - geometry.left() + 1, qint64(screen.width())));
    const int height = int(qMin(qint64(geometry.bottom()) - geometry.top() + 1, qint64(screen.height())));
    widget->setGeometry(inside(geometry.x(), width, screen.x(), screen.width()),
                        inside(geometry.y(), height, screen.y(), screen.height()), width, height);
}
