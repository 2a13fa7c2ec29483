#include "tests/e2e/false_clock.h"

QProcessEnvironment underClock(const QString &setting)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QString front = environment.value(QStringLiteral("CLOCK_FRONT"));
    environment.insert(QStringLiteral("LD_PRELOAD"), (front.isEmpty() ? front : front + QLatin1Char(':')) +
                                                         QStringLiteral(FAKETIME_LIBRARY));
    environment.insert(QStringLiteral("FAKETIME"), setting);
    // The sanitizer's own library would have to stand first; asking it to look away is enough.
    const QString sanitizer = QStringLiteral("ASAN_OPTIONS");
    environment.insert(sanitizer, environment.value(sanitizer) + QStringLiteral(":verify_asan_link_order=0"));
    return environment;
}
