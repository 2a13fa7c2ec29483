#include "ui/wave_check.h"

#include "app/ordinary_file.h"

#include <QFile>
#include <QtEndian>

namespace
{
constexpr int RiffHeadSize = 12; // "RIFF", size of the rest, "WAVE"
constexpr int ChunkHeadSize = 8; // name, size; each chunk begins at an even place
constexpr quint32 FormatSize = 16;
} // namespace

bool isWholeWaveFile(const QString &path)
{
    QFile file(path);
    if (!openOrdinary(file, QIODevice::ReadOnly))
        return false;
    const QByteArray riff = file.read(RiffHeadSize);
    if (riff.size() < RiffHeadSize || !riff.startsWith("RIFF") || !riff.endsWith("WAVE"))
        return false;
    bool hasFormat = false;
    for (;;) {
        const QByteArray head = file.read(ChunkHeadSize);
        if (head.size() < ChunkHeadSize)
            return false;
        const auto size = qFromLittleEndian<quint32>(head.constData() + 4);
        if (head.startsWith("data"))
            return hasFormat && size > 0 && file.size() - file.pos() >= qint64(size);
        hasFormat = hasFormat || (head.startsWith("fmt ") && size >= FormatSize);
        if (!file.seek(file.pos() + size + size % 2))
            return false;
    }
}
