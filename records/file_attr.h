#pragma once

#include <QString>

/// The new-mark of a file: on until the operator has opened it. On Windows it is the archive attribute
/// turned off. Elsewhere an extended attribute carries the archive bit; a file that nobody has marked
/// counts as not new.
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
