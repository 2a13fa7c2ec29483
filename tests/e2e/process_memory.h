#pragma once

#include <QtGlobal>

/// Resident memory of the process \a pid in kilobytes, now and at its highest; 0 if it is gone.
[[nodiscard]] qint64 residentKilobytes(qint64 pid);
[[nodiscard]] qint64 highestResidentKilobytes(qint64 pid);

/// Processor time that the process \a pid has used, in seconds.
[[nodiscard]] double processorSeconds(qint64 pid);

/// How many bytes a test may demand of a process; sanitizers take their own several times over.
[[nodiscard]] bool isSanitized();
