#pragma once

#include "tests/firmware/device.h"

#include <QFile>
#include <QTemporaryDir>

/// The simulated board with an ATmega328P and its boot loader.
class Board : public Device
{
public:
    Board() : Device(BOARD_PROGRAM, {QString::fromLocal8Bit(BOOT_LOADER)}) {}

    /// All of its flash, 32768 bytes.
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
