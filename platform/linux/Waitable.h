// Objects that a thread can wait for: set or not set.
#pragma once

#include "Handles.h"

#include <condition_variable>
#include <span>
#include <vector>

class Waitable : public KernelObject
{
public:
    explicit Waitable(bool bSet) noexcept : m_bSet(bSet) {}

    void Set();
    void Clear();

    // Waits until one of the objects is set and gives the lowest index that is; objects.size() when
    // the time is up.
    static std::size_t WaitForAny(std::span<const std::shared_ptr<Waitable>> objects, DWORD nMilliseconds);

private:
    static std::size_t LowestSet(std::span<const std::shared_ptr<Waitable>> objects) noexcept;

    // Both are guarded by the one lock of all waits. A wait for several objects looks at them all
    // under that lock, so it never reports a higher index while a lower one is set.
    bool m_bSet;
    std::vector<std::condition_variable*> m_oWaiting;
};
