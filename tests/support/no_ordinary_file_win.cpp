#include "tests/support/no_ordinary_file.h"

void specialFiles()
{
    QTest::addColumn<SpecialFile>("kind");
    row("a directory", SpecialFile::Directory);
}

void makeFifo(const QString &path)
{
    qFatal("%s: no directory holds FIFOs here", qPrintable(path));
}

void place(const Desk &desk, SpecialFile kind, const QString &name)
{
    if (kind != SpecialFile::Directory)
        return makeFifo(name);
    QVERIFY(QDir().mkpath(desk.path(name)));
}

bool stands(const Desk &desk, SpecialFile kind, const QString &name)
{
    return kind == SpecialFile::Directory && QFileInfo(desk.path(name)).isDir();
}
