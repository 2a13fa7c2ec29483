#pragma once

/// Removes the temporary files that killed processes have left beside the settings, the counters, the
/// editor's draft, the journals, the telegrams and the side-car records, and the records of telegrams that
/// they had filed as sent. To be called while the instance lock is held and before anything is written. A
/// file under a name that an operator or another program may have given stays.
void sweepLeftovers();
