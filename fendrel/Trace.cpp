// The service behind Fendrel/Trace.h. A record that nobody wants costs one comparison and no lock. One that is wanted
// holds on to its sink while it is written, so that a host may change sinks at any moment.
#include "Fendrel/Trace.h"

#include "fendrel/Lock.h"
#include "fendrel/Sink.h"
#include "util/Immortal.h"
#include "util/OrEmpty.h"

#include <atomic>
#include <mutex>

namespace
{
// The most severe number that still passes. Kept apart from the rest so that a record that nobody wants
// costs one comparison; eNothing while there is no sink. Relaxed: a record at the time of a change may go by the old
// threshold.
constinit std::atomic<int> s_nPassing{CSTrace::eNothing};

// The choice of the host.
class Settings
{
public:
    // Never destroyed: records come until the very end of the process, later than anything of ours could be
    // destroyed.
    static Settings& Instance()
    {
        static Immortal<Settings> s_oSettings;
        return *s_oSettings;
    }

    std::shared_ptr<Sink> GetSink()
    {
        const std::lock_guard oHold(m_oLock);
        return m_pSink;
    }

    void SetSink(std::shared_ptr<Sink> pSink)
    {
        const std::lock_guard oHold(m_oLock);
        m_pSink.swap(pSink);   // the old one goes once its last record is written, and behind the lock
        UpdatePassing();
    }

    CSTrace::eTraceSeverity GetThreshold()
    {
        const std::lock_guard oHold(m_oLock);
        return m_eThreshold;
    }

    void SetThreshold(CSTrace::eTraceSeverity eMost)
    {
        const std::lock_guard oHold(m_oLock);
        m_eThreshold = eMost;
        UpdatePassing();
    }

private:
    void UpdatePassing() noexcept
    {
        s_nPassing.store(m_pSink ? m_eThreshold : CSTrace::eNothing, std::memory_order_relaxed);
    }

    Lock m_oLock;
    std::shared_ptr<Sink> m_pSink;
    CSTrace::eTraceSeverity m_eThreshold = CSTrace::eWarning;
};

// Puts a new sink in force. Null from its maker and an exception both mean that there is no such sink.
template <class Maker, class... Arguments>
bool TraceTo(Maker makeSink, Arguments... arguments) noexcept
{
    try
    {
        auto pSink = makeSink(arguments...);
        if (!pSink)
            return false;
        Settings::Instance().SetSink(std::move(pSink));
        return true;
    }
    catch (...)
    {
        return false;
    }
}
}

CSTrace* CSTrace::instance() noexcept
{
    static constinit CSTrace s_oTrace;
    return &s_oTrace;
}

void CSTrace::Trace(eTraceSeverity eSeverity, const char* pszText, const char* pszClass, const char* pszMethod,
                    const char* pszFile, int nLine) noexcept
{
    if (eSeverity > s_nPassing.load(std::memory_order_relaxed))
        return;
    try
    {
        if (const auto pSink = Settings::Instance().GetSink())
            pSink->Write({eSeverity, OrEmpty(pszText), OrEmpty(pszClass), OrEmpty(pszMethod), OrEmpty(pszFile), nLine});
    }
    catch (...)
    {
        // A record that cannot be written must not stop the program that is traced.
    }
}

void CSTrace::SetThreshold(eTraceSeverity eMost) noexcept
{
    Settings::Instance().SetThreshold(eMost);
}

CSTrace::eTraceSeverity CSTrace::GetThreshold() const noexcept
{
    return Settings::Instance().GetThreshold();
}

void CSTrace::TraceToNothing() noexcept
{
    Settings::Instance().SetSink(nullptr);
}

bool CSTrace::TraceToStandardError() noexcept
{
    return TraceTo(MakeStandardErrorSink);
}

bool CSTrace::TraceToFile(const char* pszPath) noexcept
{
    return TraceTo(MakeFileSink, pszPath);
}

bool CSTrace::TraceToDebugger() noexcept
{
    return TraceTo(MakeDebuggerSink);
}

bool CSTrace::TraceToCallback(Callback pCallback, void* pContext) noexcept
{
    return TraceTo(MakeCallbackSink, pCallback, pContext);
}
