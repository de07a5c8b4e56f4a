// Waits for what another thread will do.
#pragma once

#include <chrono>
#include <thread>

// True as soon as the condition holds; false if it does not within a minute, which also a slow machine makes.
template <class Condition>
bool WaitUntil(Condition holds)
{
    const auto nEnd = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!holds())
    {
        if (std::chrono::steady_clock::now() > nEnd)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}
