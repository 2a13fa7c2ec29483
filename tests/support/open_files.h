#pragma once

/// How many files this process has open; on Windows all that it holds of the system.
[[nodiscard]] int openFiles();
