#include "tests/e2e/process_memory.h"

#include <QFile>
#include <QList>

#include <unistd.h>

namespace
{
QByteArray procFile(qint64 pid, const char *name)
{
    QFile file(QStringLiteral("/proc/%1/%2").arg(pid).arg(QLatin1String(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The number of a line such as "VmRSS:	   1234 kB".
qint64 statusLine(qint64 pid, const char *name)
{
    for (const QByteArray &line : procFile(pid, "status").split('\n'))
        if (line.startsWith(name))
            return line.mid(int(qstrlen(name))).trimmed().split(' ').first().toLongLong();
    return 0;
}
} // namespace

qint64 residentKilobytes(qint64 pid)
{
    return statusLine(pid, "VmRSS:");
}

qint64 highestResidentKilobytes(qint64 pid)
{
    return statusLine(pid, "VmHWM:");
}

double processorSeconds(qint64 pid)
{
    const QByteArray content = procFile(pid, "stat");
    // Behind the name in brackets, which may hold blanks: fields 14 and 15 of all, 11 and 12 from there.
    const QList<QByteArray> fields = content.mid(content.lastIndexOf(')') + 2).split(' ');
    if (fields.size() < 13)
        return 0;
    return double(fields[11].toLongLong() + fields[12].toLongLong()) / double(sysconf(_SC_CLK_TCK));
}

bool isSanitized()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return true;
#else
    return false;
#endif
}
