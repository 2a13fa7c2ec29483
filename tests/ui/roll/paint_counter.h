#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QPaintEvent>
#include <QRegion>

/// Counts the repaints of a widget.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QObject *watched) { watched->installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            ++count;
            region += static_cast<QPaintEvent *>(event)->region();
        }
        return false;
    }
    /// The repaints since the last call, once the posted ones have run.
    int taken()
    {
        QCoreApplication::processEvents();
        const int result = count;
        count = 0;
        lastRegion = region;
        region = QRegion();
        return result;
    }

    int count = 0;
    QRegion region, lastRegion;
};
