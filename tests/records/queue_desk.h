#pragma once

#include "app/options.h"
#include "records/send_model.h"
#include "tests/support/desk.h"

inline QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// File names of a list, in its order.
inline QStringList names(const QList<CTableViewModelItem_Send> &items)
{
    QStringList found;
    for (const CTableViewModelItem_Send &item : items)
        found << item.fileName;
    return found;
}

inline QStringList names(const CTableViewModel_Send &model)
{
    QStringList found;
    for (int row = 0; row < model.rowCount(); ++row)
        found << model.index(row, 0).data().toString();
    return found;
}

/// Positions in the scan, in the order of a list.
inline QStringList numbers(const QList<CTableViewModelItem_Send> &items)
{
    QStringList found;
    for (const CTableViewModelItem_Send &item : items)
        found << item.N;
    return found;
}

/// A desk of one line procedure, with queue files.
struct Queue : Desk {
    explicit Queue(int mode, const QStringList &files = {})
    {
        Options.processMode = mode;
        for (const QString &name : files)
            write("out/" + name, "TEXT");
    }
    int scan() { return applySendQueue(scanSendQueue(), good, bad); }

    CTableViewModel_Send good;
    CTableViewModel_SendBad bad;
};
