#pragma once

#include "tests/firmware/device.h"

#include <QFile>
#include <QTemporaryDir>

/// A simulated board with its boot loader: with an ATmega328P, or with an ATmega1280, which has room for the
/// image of the Ethernet adapter.
class Board : public Device
{
public:
    enum Size { Small, Large };
    explicit Board(Size size = Small)
        : Device(BOARD_PROGRAM, {QString::fromLocal8Bit(size == Small ? BOOT_LOADER : LARGE_BOOT_LOADER),
                                 size == Small ? QStringLiteral("atmega328p") : QStringLiteral("atmega1280")})
    {
    }

    /// All of its flash, 32768 or 131072 bytes.
    [[nodiscard]] QByteArray flash()
    {
        const QString path = m_directory.filePath(QString::number(++m_dumps));
        tell(QStringLiteral("dump ") + path);
        if (!QTest::qWaitFor([&] { return details("dumped").contains(path); }, PatienceMs))
            qFatal("the board does not answer");
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// How often its port has been opened.
    [[nodiscard]] int openings() const { return lines.count(QStringLiteral("opened:")); }

private:
    QTemporaryDir m_directory;
    int m_dumps = 0;
};
