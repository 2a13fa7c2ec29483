#pragma once

#include <atomic>

/// A plain word that two threads share without a lock: each access is a relaxed load or store, so the
/// machine code is that of an ordinary variable. It orders nothing beside itself; a stale read is expected.
template <class T> class Relaxed
{
public:
    constexpr Relaxed(T value = T()) : m_value(value) {}
    Relaxed(const Relaxed &other) : m_value(other.load()) {}
    Relaxed &operator=(const Relaxed &other) { return *this = other.load(); }
    Relaxed &operator=(T value)
    {
        m_value.store(value, std::memory_order_relaxed);
        return *this;
    }

    [[nodiscard]] T load() const { return m_value.load(std::memory_order_relaxed); }
    operator T() const { return load(); }

    /// Adds \a step as one atomic step, so that no count is lost between two writers.
    void add(T step) { m_value.fetch_add(step, std::memory_order_relaxed); }
    /// Stores \a value and returns what stood there before.
    T exchange(T value) { return m_value.exchange(value, std::memory_order_relaxed); }

private:
    std::atomic<T> m_value;
};
