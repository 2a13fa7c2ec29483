#pragma once

#include <QByteArray>
#include <QtEndian>

#include <cmath>

/// A sound file of one tone: PCM, 16 bit, mono, 22050 samples a second.
inline QByteArray waveFile(int frequency, int milliseconds)
{
    constexpr int rate = 22050;
    const int count = rate * milliseconds / 1000;
    const auto number = [](quint32 value, int bytes) {
        QByteArray text;
        for (int i = 0; i < bytes; ++i)
            text += char(value >> (8 * i) & 0xFF);
        return text;
    };
    QByteArray data;
    for (int i = 0; i < count; ++i)
        data += number(quint32(int(20000 * std::sin(2 * 3.14159265358979 * frequency * i / rate))), 2);
    return "RIFF" + number(quint32(36 + data.size()), 4) + "WAVEfmt " + number(16, 4) + number(1, 2) +
           number(1, 2) + number(rate, 4) + number(2 * rate, 4) + number(2, 2) + number(16, 2) + "data" +
           number(quint32(data.size()), 4) + data;
}
