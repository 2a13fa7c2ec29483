#include "text/utils.h"

QString CUtils::StringNNN(int n)
{
    return QStringLiteral("%1").arg(n % 1000, 3, 10, QLatin1Char('0'));
}
