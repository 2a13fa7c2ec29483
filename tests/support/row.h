#pragma once

#include <QtTest>

/// One row of a test's table: its name, then a value for each column, in their order. A literal of characters
/// is a QString.
template <class... Values> void row(const char *name, const Values &...values)
{
    (QTest::newRow(name) << ... << values);
}
