#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <array>

/// The keys of an Ethernet adapter's configuration, in the order of its reply.
enum NervaKey {
    NervaV,
    NervaVer,
    NervaMac,
    NervaEthSpeed,
    NervaLocalIp,
    NervaGateway,
    NervaNetmask,
    NervaLocalPort,
    NervaTlgBaud,
    NervaTlgType,
    NervaIpMode,
    NervaTcpTimeout,
    NervaSysMode,
    NervaRemoteIp,
    NervaRemotePort,
    NervaRemote2Ip,
    NervaRemote2Port,
    NervaHttpMode,
    NervaHttpPort,
    NervaHttpAccess,
    NervaSn,
    NervaKeyCount
};

/// Their names, as they stand in the texts.
extern const char *const cfg_name[NervaKeyCount];

/// One value for each key; empty is none.
using NervaValues = std::array<QString, NervaKeyCount>;

/// The values of a reply. It may begin with rest of another one, or with what the line has said.
[[nodiscard]] NervaValues nervaValuesOf(const QByteArray &reply);

/// Whether the adapter with these values has older firmware than the program carries for it.
[[nodiscard]] bool needsNervaUpgrade(const NervaValues &values);

/// A configuration on its way to the adapter, or why there is none.
struct NervaChange {
    QByteArray text;   ///< in braces; empty if it is refused
    QString refusal;   ///< for the operator; empty if it goes
    QStringList notes; ///< for the operator: what does not go with the rest
};

/// The text of what the operator has changed: the values of \a form that are neither those that were \a read
/// nor those that the form has \a shown for them, which differ where it cannot show what it was told. One
/// that cannot be so refuses all.
[[nodiscard]] NervaChange nervaChange(const NervaValues &form, const NervaValues &read,
                                      const NervaValues &shown);

/// Whether \a text is an address of four figures with dots between them.
[[nodiscard]] bool isDottedAddress(const QString &text);
/// Whether \a text is such an address, or two with "/" between them: address and mask.
[[nodiscard]] bool isAccessAddress(const QString &text);
/// Whether \a text is six bytes in hexadecimal, with ":" or "-" between them or nothing.
[[nodiscard]] bool isMac(const QString &text);
