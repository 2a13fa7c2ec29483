#include "tests/firmware/avr_chip.h"

#include <simavr/avr_ioport.h>
#include <simavr/avr_uart.h>
#include <simavr/sim_avr.h>
#include <simavr/sim_hex.h>
#include <simavr/sim_io.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace
{
constexpr quint32 Frequency = 16000000;
constexpr quint64 TalkCycles = Frequency / 200;
constexpr quint64 CyclesPerByte = 320; // 500000 baud, whatever the loader sets: the cable has no speed

void logErrors(avr_t *, const int level, const char *format, va_list arguments)
{
    if (level <= LOG_ERROR)
        std::vfprintf(stderr, format, arguments);
}

/// The chip's first serial interface.
avr_uart_t *findUart(const avr_t *avr)
{
    for (avr_io_t *io = avr->io_port; io != nullptr; io = io->next)
        if (std::strcmp(io->kind, "uart") == 0) {
            auto *uart = reinterpret_cast<avr_uart_t *>(io); // it begins with the other
            if (uart->name == '0')
                return uart;
        }
    qFatal("no UART");
}
} // namespace

struct AvrChip::Parts {
    avr_t *avr = nullptr;
    avr_uart_t *uart = nullptr;
    bool ready = false; // the input has room
    QByteArray input;
    QByteArray output;
    quint64 lastByte = 0; // the cycle of it
    quint64 resetAt = 0;
    quint64 lastPin = 0;
    QVector<quint64> pinTimes;

    void feedWhileReady();
    static void takeByte(avr_irq_t *, uint32_t value, void *parts);
    static void takeRoom(avr_irq_t *, uint32_t, void *parts);
    static void takeNoRoom(avr_irq_t *, uint32_t, void *parts);
    static void takePin(avr_irq_t *irq, uint32_t value, void *parts);
};

void AvrChip::Parts::feedWhileReady()
{
    avr_irq_t *irq = avr_io_getirq(avr, AVR_IOCTL_UART_GETIRQ('0'), UART_IRQ_INPUT);
    while (ready && !input.isEmpty()) { // ready is changed by the call
        const quint8 byte = quint8(input.at(0));
        input.remove(0, 1);
        lastByte = avr->cycle;
        avr_raise_irq(irq, byte);
    }
}

void AvrChip::Parts::takeByte(avr_irq_t *, uint32_t value, void *parts)
{
    auto *self = static_cast<Parts *>(parts);
    self->output += char(value);
    self->lastByte = self->avr->cycle;
}

void AvrChip::Parts::takeRoom(avr_irq_t *, uint32_t, void *parts)
{
    static_cast<Parts *>(parts)->ready = true;
}

void AvrChip::Parts::takeNoRoom(avr_irq_t *, uint32_t, void *parts)
{
    static_cast<Parts *>(parts)->ready = false;
}

void AvrChip::Parts::takePin(avr_irq_t *irq, uint32_t value, void *parts)
{
    auto *self = static_cast<Parts *>(parts);
    if (irq->value != value)
        self->pinTimes << self->avr->cycle - std::exchange(self->lastPin, self->avr->cycle);
}

AvrChip::AvrChip(const QString &processor) : m(std::make_unique<Parts>())
{
    avr_global_logger_set(&logErrors);
    m->avr = avr_make_mcu_by_name(processor.toLatin1().constData());
    if (m->avr == nullptr || avr_init(m->avr) != 0)
        qFatal("no such processor");
    avr_t *avr = m->avr;
    m->uart = findUart(avr);
    avr->frequency = Frequency;
    avr->log = LOG_ERROR;
    avr->run_cycle_limit = 1000;
    uint32_t none = 0; // neither sleep nor copy to the terminal
    avr_ioctl(avr, AVR_IOCTL_UART_SET_FLAGS('0'), &none);
    const auto uart = AVR_IOCTL_UART_GETIRQ('0');
    avr_irq_register_notify(avr_io_getirq(avr, uart, UART_IRQ_OUTPUT), &Parts::takeByte, m.get());
    avr_irq_register_notify(avr_io_getirq(avr, uart, UART_IRQ_OUT_XON), &Parts::takeRoom, m.get());
    avr_irq_register_notify(avr_io_getirq(avr, uart, UART_IRQ_OUT_XOFF), &Parts::takeNoRoom, m.get());
    avr_irq_register_notify(avr_io_getirq(avr, AVR_IOCTL_IOPORT_GETIRQ('B'), IOPORT_IRQ_PIN5),
                            &Parts::takePin, m.get());
}

AvrChip::~AvrChip()
{
    avr_terminate(m->avr);
}

bool AvrChip::load(const QString &bootLoader)
{
    ihex_chunk_p chunks = nullptr;
    const int count = read_ihex_chunks(bootLoader.toLocal8Bit().constData(), &chunks);
    if (count < 1)
        return false;
    std::fill_n(m->avr->flash, m->avr->flashend + 1, quint8(0xFF));
    for (int i = 0; i < count; ++i)
        avr_loadcode(m->avr, chunks[i].data, chunks[i].size, chunks[i].baseaddr);
    m->avr->reset_pc = chunks[0].baseaddr;
    m->avr->codeend = m->avr->flashend;
    free_ihex_chunks(chunks);
    reset();
    return true;
}

void AvrChip::reset()
{
    avr_reset(m->avr);
    avr_regbit_set(m->avr, m->avr->reset_flags.extrf);
    m->input.clear();
    m->output.clear();
    m->ready = false;
    m->resetAt = m->lastByte = m->lastPin = m->avr->cycle;
    m->pinTimes.clear();
}

bool AvrChip::run(quint64 cycles)
{
    const quint64 until = m->avr->cycle + cycles;
    m->uart->cycles_per_byte = CyclesPerByte;
    while (m->avr->cycle < until) {
        m->feedWhileReady();
        const int state = avr_run(m->avr);
        if (state == cpu_Done || state == cpu_Crashed)
            return false;
    }
    return true;
}

void AvrChip::feed(const QByteArray &bytes)
{
    m->input += bytes;
}

QByteArray AvrChip::takeOutput()
{
    return std::exchange(m->output, QByteArray());
}

bool AvrChip::isTalking() const
{
    return !m->input.isEmpty() || m->avr->cycle - m->lastByte < TalkCycles;
}

quint64 AvrChip::age() const
{
    return m->avr->cycle - m->resetAt;
}

QVector<quint64> AvrChip::takePinTimes()
{
    return std::exchange(m->pinTimes, {});
}

QByteArray AvrChip::flash() const
{
    return QByteArray(reinterpret_cast<const char *>(m->avr->flash), int(m->avr->flashend + 1));
}
