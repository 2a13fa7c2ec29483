#pragma once

/// The bytes by which an Ethernet adapter's configuration is asked for and changed, at 9600 baud. They stand
/// in front of and behind a text in braces; the rest of the time the port carries the line's protocol.
namespace NervaProtocol
{
constexpr char SendConfig = char(0xE0);
constexpr char EndConfig = char(0xE1);   ///< closes a written text; on its own leaves the mode
constexpr char StoreConfig = char(0xE3); ///< closes a written text, stores it and restarts the device
constexpr char TextBegin = '{';
constexpr char TextEnd = '}';
} // namespace NervaProtocol
