// A listener's record as its two users share it: the object that started it and its thread.
#pragma once

#include "ZevrinUtils/PortListener.h"

#include <atomic>

// The object frees the record when it has stopped the listener, but a thread that could not be ended may still
// come back to it. So the last of the two frees it.
struct ListenerShare : CSListenerRecord
{
    enum eUser
    {
        eObject = 1,
        eThread = 2
    };

    ListenerShare() noexcept : CSListenerRecord{} {}

    // Letting go twice is harmless, so a Stop that has ended the thread by force can let go in its place.
    void LetGo(eUser eWho) noexcept
    {
        const int nBefore = m_nGone.fetch_or(eWho);
        if (nBefore != (eObject | eThread) && (nBefore | eWho) == (eObject | eThread))
            delete this;
    }

    bool IsLeftBehind() const noexcept { return (m_nGone.load() & eObject) != 0; }

private:
    std::atomic<int> m_nGone{0};
};
