#pragma once

#include "day_record.h"
#include "day_report.h"

/// Holds the day's stored connections together with the lines that tell of them.
void checkCalls(const CDayRecord &record, CDayReport &report);
