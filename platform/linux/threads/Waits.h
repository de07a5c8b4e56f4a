// Objects that a thread can wait for: set or not set.
#pragma once

#include "platform/linux/base/Handles.h"

#include <span>

class Waitable : public KernelObject
{
public:
    explicit Waitable(bool bSet) noexcept : m_bSet(bSet) {}

    void Set();
    void Clear();

    // Waits until one of the objects is set and gives the lowest index that is; objects.size() when the time
    // is up.
    static std::size_t WaitForAny(std::span<const std::shared_ptr<Waitable>> objects, DWORD nMilliseconds);

private:
    bool m_bSet;   // guarded by the one lock of all waits
};
