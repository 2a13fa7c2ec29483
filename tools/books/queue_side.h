#pragma once

#include "day_record.h"
#include "day_report.h"

/// Tells what waits in the queue and what failed, with the reason; a record that is torn or has no file is a
/// disagreement.
void checkQueue(const CDayRecord &record, CDayReport &report);
