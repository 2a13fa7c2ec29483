#pragma once

/// Kinds of journal text; the values stand in the file as type marks.
enum ProtocolTypes {
    ProtocolNone = 0,     ///< nothing
    ProtocolReceived = 1, ///< text from the line
    ProtocolSent = 2,     ///< text to the line
    ProtocolInfo = 3,     ///< event
    ProtocolError = 4,    ///< failure
    ProtocolOther = 5     ///< reserved by the view
};
