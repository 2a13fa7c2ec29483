#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <memory>

/// A processor at 16 MHz in simulation, with a boot loader in its flash where the fuses make it start.
class AvrChip
{
public:
    /// By its name, as "atmega328p".
    explicit AvrChip(const QString &processor);
    ~AvrChip();
    AvrChip(const AvrChip &) = delete;
    AvrChip &operator=(const AvrChip &) = delete;

    /// Puts the boot loader, an Intel HEX file, into erased flash and makes its address the one of a reset.
    [[nodiscard]] bool load(const QString &bootLoader);
    /// As the reset pin does: the flash stays.
    void reset();
    /// Runs for about so many cycles; false once the processor has crashed.
    [[nodiscard]] bool run(quint64 cycles);

    void feed(const QByteArray &bytes);    ///< to its serial input, at the pace that it takes them
    [[nodiscard]] QByteArray takeOutput(); ///< what has come from its serial output since the last call
    /// Whether bytes wait for the input, or a byte has passed in the last 5 ms of the chip's time.
    [[nodiscard]] bool isTalking() const;
    [[nodiscard]] quint64 age() const; ///< cycles since the reset
    /// The changes of pin PB5 since the last call, each in cycles after the former one or the reset.
    [[nodiscard]] QVector<quint64> takePinTimes();
    [[nodiscard]] QByteArray flash() const;

private:
    struct Parts;
    std::unique_ptr<Parts> m;
};
