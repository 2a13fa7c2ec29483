// The new-mark is the archive attribute, turned off. The narrow calls take the path in Latin-1: telegrams lie
// below the current directory under names of figures and Latin letters. In a configured directory with other
// letters the path names no file: it is not new and cannot be marked.

#include "records/file_attr.h"

#include <qt_windows.h>

CFileAttr::CFileAttr(const QString &path) : m_path(path) {}

bool CFileAttr::checkNew() const
{
    // A missing file gives all bits set, and so is not new.
    return (GetFileAttributesA(m_path.toLatin1().constData()) & FILE_ATTRIBUTE_ARCHIVE) == 0;
}

void CFileAttr::setNew() const
{
    SetFileAttributesA(m_path.toLatin1().constData(), FILE_ATTRIBUTE_NORMAL);
}

void CFileAttr::clearNew() const
{
    SetFileAttributesA(m_path.toLatin1().constData(), FILE_ATTRIBUTE_ARCHIVE);
}
