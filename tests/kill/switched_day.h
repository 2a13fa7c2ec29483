#pragma once

#include "tests/e2e/switch_end.h"
#include "tests/kill/day.h"

/// A switched network: files to two subscribers, then two calls from outside with a telegram each. A caller
/// whose connection breaks before he has hung up calls again.
class SwitchedDay : public Day
{
public:
    SwitchedDay();

    void tend() override;
    [[nodiscard]] bool isOver() const override;
    [[nodiscard]] QString progress() const override;

protected:
    [[nodiscard]] int arrived(const Outgoing &telegram) const override;
    [[nodiscard]] QStringList wrongReceipts() const override;
    [[nodiscard]] QString sentName(const Outgoing &telegram) const override;
    [[nodiscard]] QString sendingWords() const override
    {
        return QStringLiteral("Установка соединения для отправки файла ");
    }

private:
    [[nodiscard]] int callsDone() const;
    [[nodiscard]] int callsEnded() const;

    SwitchEnd m_network;
    int m_calls = 0;  // that must have ended before the next
    int m_placed = 0; // in all
    QElapsedTimer m_sinceCall;
};
