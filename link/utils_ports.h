#pragma once

#include <QList>
#include <QString>

/// A serial port as the adapters' search sees it.
struct SerialPort {
    QString serial; ///< USB serial number, uncut
    QString name;   ///< what QSerialPort opens
};

/// The ports of the operating system, then those of the environment variable VELDA_PORTS: entries
/// "serial=device", parted by ";", for adapters behind a converter that has no serial number.
[[nodiscard]] QList<SerialPort> serialPorts();
/// The entries of a list in the form of VELDA_PORTS; what is no entry is left out.
[[nodiscard]] QList<SerialPort> serialPortsFromList(const QString &list);
/// The serial number as it is compared, cut to 8 characters.
[[nodiscard]] QString shortSerial(const QString &serial);
/// Whether the adapter is an Ethernet one: 8 characters that begin with "3".
[[nodiscard]] bool isEthernetAdapter(const QString &serial);
