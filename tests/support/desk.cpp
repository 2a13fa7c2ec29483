#include "tests/support/desk.h"

#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "procedures/process_cks.h"
#include "procedures/process_direct.h"
#include "procedures/process_skk.h"
#include "records/protocol.h"
#include "text/mtk2.h"
#include "ui/printing/print_queue.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <new>

namespace
{
template <class T> void renew(T &object)
{
    object.~T();
    new (&object) T;
}
} // namespace

void resetGlobals()
{
    if (TlgThread.isRunning()) // its end could only be waited for, perhaps for ever
        qFatal("the link thread still runs");
    renew(Options);
    renew(State);
    renew(TlgThread);
    renew(Log);
    renew(ProcessCKS);
    renew(ProcessSKK);
    renew(ProcessDirect);
    initMTK2Table();
}

Desk::Desk(const QDateTime &moment) : m_formerDirectory(QDir::currentPath())
{
    QDir::setCurrent(directory.path());
    resetGlobals();
    Options.appPath = directory.path() + QDir::separator();
    Options.CheckAndMakeFolders();
    Time.setTo(moment);
    State.YYYYMMDD = Time.yyyyMMdd;
    Log.setFileDate(Time.date);
}

Desk::Desk(QTime time) : Desk(QDateTime(QDate(2026, 7, 31), time)) {}

Desk::~Desk()
{
    Log.file.close(); // no system removes a directory with an open file everywhere
    QDir::setCurrent(m_formerDirectory);
}

QString Desk::path(const QString &name) const
{
    return directory.filePath(name);
}

void Desk::write(const QString &name, const QByteArray &content) const
{
    QDir().mkpath(QFileInfo(path(name)).path());
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path(name)));
}

QByteArray Desk::read(const QString &name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray Desk::readText(const QString &name) const
{
    return read(name).replace("\r\n", "\n");
}

QStringList Desk::names(const QString &directoryName, const QString &mask) const
{
    return QDir(path(directoryName))
        .entryList({mask}, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

QStringList Desk::journal() const
{
    QStringList shown;
    for (const QString &line : Log.lines) {
        QString text;
        for (const QChar c : line)
            text += c.unicode() < 10 ? QChar('0' + c.unicode()) : c;
        shown << text.replace(QDir::separator(), QLatin1Char('/'));
    }
    return shown;
}

QString Desk::sent() const
{
    return TlgThread.sendBuffer.mTake();
}

QByteArray Desk::readPrinted(const QString &name) const
{
    if (!CPrintQueue::instance().waitForIdle(30000))
        qFatal("the printer hangs");
    return read(name);
}
