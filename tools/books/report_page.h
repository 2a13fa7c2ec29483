#pragma once

#include "day_report.h"

/// The days as one page of HTML that needs no other file: a table and a picture for each day. It prints on
/// A4, a day to a sheet.
[[nodiscard]] QByteArray pageOf(const QVector<CDayReport> &reports);
