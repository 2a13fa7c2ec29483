#include "app/ordinary_file.h"

std::optional<QByteArray> readOrdinary(const QString &path, qint64 limit)
{
    QFile file(path);
    if (!openOrdinary(file, QIODevice::ReadOnly) || file.size() > limit)
        return std::nullopt;
    QByteArray content = file.readAll(); // may have grown meanwhile
    if (file.error() != QFileDevice::NoError || content.size() > limit)
        return std::nullopt;
    return content;
}
