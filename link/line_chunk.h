#pragma once

#include "link/operator_parts.h"

#include <QString>

/// A piece of the send buffer on its way to the line, as the roll and the journal show it, and whose text it
/// is. The operator's line ends stand in it as "<" and ">"; a procedure means these characters themselves.
struct LineChunk {
    QString text;
    COperatorParts operatorParts;

    /// The text for a line that knows CR and LF only as themselves.
    [[nodiscard]] QString withLineEnds() const { return operatorParts.withLineEnds(text); }
};
