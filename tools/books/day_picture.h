#pragma once

#include "day_report.h"

class QXmlStreamWriter;

/// Draws the day as SVG: for each hour what was received and sent, and below it the times without the link.
void drawDay(QXmlStreamWriter &page, const CDayReport &report);
