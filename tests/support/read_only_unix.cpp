#include "tests/support/read_only.h"

#include "tests/support/desk.h"

#include <QDirIterator>
#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

struct ReadOnly::Held {
    QString place;
    bool wasRoot = false;
};

namespace
{
constexpr uid_t Nobody = 65534;

void allow(const QString &place, mode_t directoryMode, mode_t fileMode)
{
    chmod(QFile::encodeName(place).constData(), directoryMode);
    QDirIterator files(place, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QByteArray path = QFile::encodeName(files.next());
        chmod(path.constData(), files.fileInfo().isDir() ? directoryMode : fileMode);
    }
}

mode_t modeOf(ReadOnly::Reading reading)
{
    switch (reading) {
    case ReadOnly::Writable: return 0666;
    case ReadOnly::Allowed: return 0444;
    case ReadOnly::Refused: return 0;
    }
    return 0;
}
} // namespace

// The superuser, who may do everything, is nobody meanwhile.
ReadOnly::ReadOnly(const Desk &desk, const QString &directory, Reading reading)
    : m_held(std::make_unique<Held>())
{
    m_held->place = desk.path(directory);
    allow(desk.path(), 0777, 0666);
    allow(m_held->place, 0555, modeOf(reading));
    if (geteuid() == 0)
        m_held->wasRoot = seteuid(Nobody) == 0;
}

ReadOnly::~ReadOnly()
{
    if (m_held->wasRoot && seteuid(0) != 0)
        qFatal("the superuser stays nobody");
    allow(m_held->place, 0777, 0666);
}
