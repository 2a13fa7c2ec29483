#pragma once

#include <QtGlobal>

/// What is known of an image: the contents of a device's flash.
struct FIRMWARE_DATA {
    quint32 size;         ///< bytes
    quint32 startAddress; ///< byte address of the first byte in the flash
    quint32 blockSize;    ///< bytes programmed at once
    quint32 version;      ///< release as the decimal number YYMMDD
};

// The sizes stand in link/firmware/CMakeLists.txt too, which makes the data.

/// A USB variant of the line adapter; no operation selects it.
inline constexpr FIRMWARE_DATA FW_TRELOU = {28358, 0, 256, 260521};
/// The Ethernet adapter, serial numbers "3...".
inline constexpr FIRMWARE_DATA FW_TRELOE = {56536, 0, 256, 260601};
/// The perforator adapter, serial numbers "2...".
inline constexpr FIRMWARE_DATA FW_SOREL = {5938, 0, 128, 231218};
/// The line adapter, serial numbers "1...".
inline constexpr FIRMWARE_DATA FW_TRELO = {7244, 0, 128, 250124};
/// A small program of our own that shows whether the way through a boot loader works, see blink/blink.c.
inline constexpr FIRMWARE_DATA FW_BLINK = {1070, 0, 128, 0};

extern const unsigned char FW_TRELOU_DATA[FW_TRELOU.size];
extern const unsigned char FW_TRELOE_DATA[FW_TRELOE.size];
extern const unsigned char FW_SOREL_DATA[FW_SOREL.size];
extern const unsigned char FW_TRELO_DATA[FW_TRELO.size];
extern const unsigned char FW_BLINK_DATA[FW_BLINK.size];

/// Whether the build was given the images of the four devices. Without them their data are erased flash.
extern const bool firmwareSupplied;

/// Whether \a data may be loaded: false for the data of a device whose image this build does not carry.
[[nodiscard]] bool carriesImage(const unsigned char *data);
