#pragma once

#include "tests/support/patience.h"

#include <QSerialPort>

/// Opens \a port for both directions, the event loop running if it has to wait; false if it does not open at
/// all. A closed pseudo-terminal's name is given to the next one at once, a moment before the program that
/// had it lets go of the toolkit's lock on that name.
[[nodiscard]] inline bool opens(QSerialPort &port)
{
    return comesTrue([&port] { return port.isOpen() || port.open(QIODevice::ReadWrite); });
}
