#pragma once

// What every test program is compiled with (see tests/CMakeLists.txt): its waits for sockets, ports, threads
// and windows look every few milliseconds and give up late, so that tests are quick on an idle machine and
// steady on a busy one.

#include <QtTest>

constexpr int PatienceMs = 30000; ///< for what must happen; nothing of the program takes nearly as long

/// Waits for \a condition with the event loop running; false if it does not come true.
template <class Condition> [[nodiscard]] bool comesTrue(Condition condition)
{
    return QTest::qWaitFor(condition, PatienceMs);
}

#undef QTRY_VERIFY
#define QTRY_VERIFY(expr)                                                                                    \
    do {                                                                                                     \
        (void)comesTrue([&] { return bool(expr); });                                                         \
        QVERIFY(expr);                                                                                       \
    } while (false)

#undef QTRY_VERIFY2
#define QTRY_VERIFY2(expr, message)                                                                          \
    do {                                                                                                     \
        (void)comesTrue([&] { return bool(expr); });                                                         \
        QVERIFY2(expr, message);                                                                             \
    } while (false)

#undef QTRY_COMPARE
#define QTRY_COMPARE(expr, expected)                                                                         \
    do {                                                                                                     \
        (void)comesTrue([&] { return (expr) == (expected); });                                               \
        QCOMPARE(expr, expected);                                                                            \
    } while (false)
