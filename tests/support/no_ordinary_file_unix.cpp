#include "tests/support/no_ordinary_file.h"

#include <sys/stat.h>

void specialFiles()
{
    QTest::addColumn<SpecialFile>("kind");
    row("a FIFO", SpecialFile::Fifo);
    row("a link to a FIFO", SpecialFile::LinkToFifo);
    row("a link to a device", SpecialFile::LinkToDevice);
    row("a directory", SpecialFile::Directory);
}

void makeFifo(const QString &path)
{
    QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
}

void place(const Desk &desk, SpecialFile kind, const QString &name)
{
    QDir().mkpath(QFileInfo(desk.path(name)).path());
    switch (kind) {
    case SpecialFile::Fifo: return makeFifo(desk.path(name));
    case SpecialFile::LinkToFifo:
        makeFifo(desk.path(QStringLiteral("elsewhere")));
        QVERIFY(QFile::link(desk.path(QStringLiteral("elsewhere")), desk.path(name)));
        return;
    case SpecialFile::LinkToDevice:
        QVERIFY(QFile::link(QStringLiteral("/dev/zero"), desk.path(name)));
        return;
    case SpecialFile::Directory: QVERIFY(QDir().mkdir(desk.path(name))); return;
    }
}

/// Whether \a name is still what place() made of it.
bool stands(const Desk &desk, SpecialFile kind, const QString &name)
{
    struct stat status = {};
    if (lstat(QFile::encodeName(desk.path(name)).constData(), &status) != 0)
        return false;
    switch (kind) {
    case SpecialFile::Fifo: return S_ISFIFO(status.st_mode);
    case SpecialFile::LinkToFifo:
    case SpecialFile::LinkToDevice: return S_ISLNK(status.st_mode);
    case SpecialFile::Directory: return S_ISDIR(status.st_mode);
    }
    return false;
}
