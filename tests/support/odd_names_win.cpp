// Without the characters that are forbidden in names, and without blanks and dots at the end, which are taken
// off.

#include "tests/support/odd_names.h"

#include "tests/support/row.h"

void oddNames()
{
    QTest::addColumn<QString>("name");
    row("blanks", " a  b");
    row("quotes", "`a` 'b'");
    row("wild card of others", "[a]%b%");
    row("Cyrillic", "ТЕЛЕГРАММА с001");
    row("100 characters", QString(100, 'x'));
}

QStringList foreignNames()
{
    return {QStringLiteral("[];!%$()u{}^"), QStringLiteral("        u  +")};
}
