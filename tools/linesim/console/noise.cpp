#include "tools/linesim/console/noise.h"

QByteArray Noise::bytes(int count)
{
    QByteArray drawn(qMax(0, count), Qt::Uninitialized);
    for (char &byteOfAll : drawn)
        byteOfAll = char(byte());
    return drawn;
}

QByteArray noiseOf(const QString &countAndSeed)
{
    return Noise(countAndSeed.section(QLatin1Char(' '), 1).toUInt())
        .bytes(countAndSeed.section(QLatin1Char(' '), 0, 0).toInt());
}
