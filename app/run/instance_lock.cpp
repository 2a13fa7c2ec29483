#include "app/ask.h"
#include "app/options.h"
#include "app/startup.h"

#include <QFile>
#include <QFileInfo>
#include <QThread>

const QString lockFileName = QStringLiteral("velda.lck");
const QString unlockFileName = QStringLiteral("velda.unlck");

std::function<void(unsigned long)> sleepSeconds = [](unsigned long seconds) { QThread::sleep(seconds); };

namespace
{
constexpr int LockMilliseconds = 1000;
constexpr int StopLooks = 9;
constexpr unsigned long SecondsBetweenLooks = 2;

bool operatorWantsStop()
{
    return ask(nullptr, QStringLiteral("Velda"),
               QStringLiteral("Приложение уже запущено. Остановить предыдущий экземпляр?")) ==
           QMessageBox::Yes;
}

bool leaveStopRequest()
{
    return QFile(unlockFileName).open(QIODevice::WriteOnly);
}

/// Waits up to 18 seconds for the running instance to take the request away.
bool requestTaken()
{
    for (int look = 0; look < StopLooks && QFile::exists(unlockFileName); ++look)
        sleepSeconds(SecondsBetweenLooks);
    return !QFile::exists(unlockFileName);
}

/// Repeats the question until the other instance is gone or the operator refuses. The lock is not tried
/// again: the other one takes the request away before it lets go of the lock, and a try that comes too early
/// would refuse the start that the operator has asked for. So the program runs on without the lock, and a
/// further start finds it free.
bool stopOtherInstance()
{
    for (;;) {
        QFile::remove(unlockFileName);
        if (!operatorWantsStop())
            return false;
        // A request that could not be left is not there either, but nobody has taken it.
        if (leaveStopRequest() && requestTaken())
            return true;
    }
}
} // namespace

QString lockRefusal(QLockFile::LockError error)
{
    switch (error) {
    case QLockFile::LockFailedError:
        return QStringLiteral("Приложение Velda уже запущено.\n"
                              "Разрешено запускать только один экземпляр приложения.");
    case QLockFile::NoError: return QStringLiteral("Блокировка файла velda.lck произведена\n");
    case QLockFile::PermissionError:
        return QStringLiteral("Нет прав записи в каталог %1.\n").arg(Options.appPath);
    case QLockFile::UnknownError: break;
    }
    return QStringLiteral("Ошибка создания файла velda.lck\n");
}

bool takeInstanceLock(QLockFile &lock)
{
    const QFileInfo present(lockFileName);
    if (present.exists() && !present.isFile()) { // a lock is read, and a FIFO would keep the reader
        warn(lockRefusal(QLockFile::UnknownError));
        return false;
    }
    if (lock.tryLock(LockMilliseconds))
        return true;
    if (lock.error() == QLockFile::LockFailedError && Options.checkStopFile)
        return stopOtherInstance();
    warn(lockRefusal(lock.error()));
    return false;
}
