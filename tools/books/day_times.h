#pragma once

#include "day_record.h"
#include "day_report.h"

/// Reckons the outages of the link and how long each mode lasted.
void reckonTimes(const CDayRecord &record, CDayReport &report);
