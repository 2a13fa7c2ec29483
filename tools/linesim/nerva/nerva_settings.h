#pragma once

#include <QString>
#include <QVector>

/// How a simulated Ethernet adapter fails when it is asked for its configuration.
enum class NervaFault {
    None,
    Silent,    ///< no reply
    Torn,      ///< half of the next one; those behind it are whole
    NoEnd,     ///< without its last brace
    Mac16,     ///< the card's address has 16 characters
    Eth7,      ///< a speed of the network beyond the known ones
    WrongKind, ///< words for numbers, numbers for words
    Megabyte,  ///< a text of that length
    Unplug     ///< half a reply, and the adapter is gone
};

/// How a simulated Ethernet adapter is to behave beside the line.
struct NervaSettings {
    struct Value {
        QString key, value;
    };
    QVector<Value> values; ///< of its configuration, which differ from those of the factory
    NervaFault fault = NervaFault::None;
    int startMs = 1500; ///< behind the opening of its port, in which it takes no configuration
};
