#pragma once

#include "tests/support/desk.h"

#include <QDirIterator>

#include <sys/stat.h>
#include <unistd.h>

/// While it lives, a directory of a desk and its files can be read by this process but not changed, as on a
/// disk that is read-only; the rest of the desk is as before. The superuser is nobody meanwhile.
class ReadOnly
{
public:
    ReadOnly(const Desk &desk, const QString &directory, mode_t fileMode = 0444)
        : m_top(desk.path()), m_place(desk.path(directory))
    {
        allow(m_top, 0777, 0666);
        allow(m_place, 0555, fileMode);
        if (geteuid() == 0)
            m_wasRoot = seteuid(Nobody) == 0;
    }
    ~ReadOnly()
    {
        if (m_wasRoot && seteuid(0) != 0)
            qFatal("the superuser stays nobody");
        allow(m_place, 0777, 0666);
    }
    ReadOnly(const ReadOnly &) = delete;
    ReadOnly &operator=(const ReadOnly &) = delete;

private:
    static constexpr uid_t Nobody = 65534;

    static void allow(const QString &place, mode_t directoryMode, mode_t fileMode)
    {
        chmod(QFile::encodeName(place).constData(), directoryMode);
        QDirIterator files(place, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QByteArray path = QFile::encodeName(files.next());
            chmod(path.constData(), files.fileInfo().isDir() ? directoryMode : fileMode);
        }
    }

    QString m_top, m_place;
    bool m_wasRoot = false;
};
