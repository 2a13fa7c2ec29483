#pragma once

#include "link/boot_loader.h"
#include "link/firmware/images.h"

#include <QString>
#include <QThread>

/// Loads the program's images into the adapters through their boot loaders. In spite of its base no thread is
/// started: every operation runs on the main thread to its end, behind a modal progress window, and handles
/// events while it waits. The links must be paused. What happens, failures too, goes to the journal.
class CFWUpdateThread : public QThread
{
public:
    /// Loads the image that belongs to the adapter with the serial number \a serial, by its first character.
    /// False if there is no image for it, or no port with it.
    static bool update(const QString &serial);
    /// Loads an image into the device on the port of that name; true if all of it has been taken. An image
    /// that this build does not carry is refused before the port is opened.
    static bool update(const QString &portName, const FIRMWARE_DATA *record, const unsigned char *data);
    /// Loads FW_BLINK.
    static bool testUpdate(const QString &portName);
    /// Sends the adapter \a serial, not its boot loader, the command that locks it; nothing answers. True if
    /// the port could be used.
    static bool lock(const QString &serial);
};
