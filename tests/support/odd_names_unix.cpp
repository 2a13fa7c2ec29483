#include "tests/support/odd_names.h"

#include "tests/support/row.h"

void oddNames()
{
    QTest::addColumn<QString>("name");
    row("blanks", " a  b ");
    row("quotes", "\"a\" 'b'");
    row("line feed", "a\nb");
    row("wild card", "*?[a]");
    row("Cyrillic", "ТЕЛЕГРАММА с001");
    row("200 characters", QString(200, 'x'));
}

QStringList foreignNames()
{
    return {QStringLiteral("[]*?\\$()u{}^"), QStringLiteral("        u   ")};
}
