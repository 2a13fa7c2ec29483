#pragma once

#include <QProcessEnvironment>

/// The environment of a program under a clock of libfaketime: "@2026-07-31 23:59:50 x10" is a start and a
/// speed. A library that the environment's CLOCK_FRONT names stands in front of it.
[[nodiscard]] QProcessEnvironment underClock(const QString &setting);
