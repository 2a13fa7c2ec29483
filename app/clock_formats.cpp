#include "app/clock.h"

const QString CTime::formatDD_MM_YYYY = QStringLiteral("dd.MM.yyyy");
const QString CTime::formatDD_MM_YYYY_HH_MM = QStringLiteral("dd.MM.yyyy hh:mm");
