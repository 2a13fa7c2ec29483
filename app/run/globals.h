#pragma once

#include <QString>

class QSharedMemory;

/// Both are made with the program and used by nobody: the lock file alone guards the instance.
extern QSharedMemory sharedMemory;
extern const QString MemKey; ///< "VELDA_SharedMemory"
