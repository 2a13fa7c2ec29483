#pragma once

#include "day_record.h"
#include "day_report.h"

class CReceivedSide;
class CSentSide;

/// Compares the figures that the centre told with what the books hold: the day's last receipt, and the
/// renumbering that the next day begins with.
void checkCentreFigures(const CDayRecord &record, const CReceivedSide &received, const CSentSide &sent,
                        CDayReport &report);
