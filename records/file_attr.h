#pragma once

#include <QString>

/// The new-mark of a file: on until the operator has opened it, and kept over a restart. On Windows it is
/// the archive attribute turned off. Elsewhere an extended attribute carries the archive bit. A file that
/// nobody has marked is there not new, and so is a missing one. A mark that cannot be set is not reported.
class CFileAttr
{
public:
    explicit CFileAttr(const QString &path);

    [[nodiscard]] bool checkNew() const;
    void setNew() const;
    void clearNew() const;

private:
    QString m_path;
};
