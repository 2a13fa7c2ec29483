#pragma once

#include "ui/printing/print_queue.h"

#include <QFont>
#include <QString>

/// A printer, and how it prints.
struct PrinterSettings {
    int way = 0; ///< a PrinterWay
    QString name;
    QFont font;
    QString raw;
    int codePage = 0; ///< a PrinterPage
    int lineFeeds = 0;

    /// As the options have them.
    [[nodiscard]] static PrinterSettings inForce();
    /// What prints \a text there.
    [[nodiscard]] CPrintQueue::Job job(const QString &text) const;
};
