#pragma once

#include "app/options.h"
#include "records/file_attr.h"
#include "records/io_model.h"
#include "records/protocol.h"
#include "tests/support/desk.h"

#include <QPersistentModelIndex>

inline QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

inline QStringList names(const CTableViewModel_IO &model)
{
    QStringList found;
    for (int row = 0; row < model.rowCount(); ++row)
        found << model.at(row).fileName;
    return found;
}

/// Whether row \a row is shown as new.
inline bool isYellow(const CTableViewModel_IO &model, int row)
{
    const QVariant background = model.index(row, 1).data(Qt::BackgroundRole);
    return background.isValid() && background.value<QColor>() == QColor(Qt::yellow);
}

/// A desk with the list of a day's incoming files.
struct Day : Desk {
    explicit Day(int mode = 0, const QStringList &files = {})
    {
        Options.processMode = mode;
        Log.lines = QStringList{QString()}; // begun: events need not wait
        model.dirPath = path(QStringLiteral("inp/20260731"));
        for (const QString &name : files)
            add(name);
        model.reloadFromDir();
    }
    static QString place(const QString &name) { return QStringLiteral("inp/20260731/") + name; }
    void add(const QString &name, const QByteArray &content = "TEXT") const { write(place(name), content); }
    void addNew(const QString &name) const
    {
        add(name);
        CFileAttr(path(place(name))).setNew();
    }
    [[nodiscard]] bool isNew(const QString &name) const { return CFileAttr(path(place(name))).checkNew(); }
    void remove(const QString &name) const { QFile::remove(path(place(name))); }
    /// Row of the file \a name, or -1.
    [[nodiscard]] int rowOf(const QString &name) const { return ::names(model).indexOf(name); }
    [[nodiscard]] QPersistentModelIndex select(const QString &name) const
    {
        return model.index(rowOf(name), 1);
    }

    CTableViewModel_IO model;
};
