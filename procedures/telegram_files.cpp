#include "procedures/telegram_files.h"

#include "app/state.h"
#include "text/utils.h"

#include <QDir>
#include <QFile>

QString queuePath(const QString &name)
{
    return State.pathOut() + QDir::separator() + name;
}

std::optional<QString> readTelegram(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return QString::fromUtf8(file.readAll().constData());
}

bool printsReceived(int autoPrintMode)
{
    return autoPrintMode == 1 || autoPrintMode == 3;
}

bool printsSent(int autoPrintMode)
{
    return autoPrintMode == 2 || autoPrintMode == 3;
}

void printTelegram(const QString &text)
{
    noteEvent(QStringLiteral("Печать файла"));
    CUtils::printClearText(text);
}

void noteEvent(const QString &text, ProtocolTypes type)
{
    Log.addCacheServiceString(text, type, true);
}
