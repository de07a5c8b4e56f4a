// Waits for what another thread will do.
#pragma once

#include <chrono>
#include <thread>

// True as soon as the condition holds; false if it does not within ten seconds.
template <class Condition>
bool WaitUntil(Condition holds)
{
    for (int n = 0; n < 2000; ++n)
    {
        if (holds())
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return false;
}
