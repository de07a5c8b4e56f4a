// Collects what the library traces, as a host would: through the trace service's callback.
#pragma once

#include "Fendrel/Trace.h"
#include "support/WaitUntil.h"

#include <algorithm>
#include <mutex>
#include <string>
#include <vector>

struct TraceRecord
{
    int nSeverity;
    std::string strText, strClass, strMethod, strFile;
    int nLine;

    bool operator==(const TraceRecord&) const = default;
};

class TraceCapture
{
public:
    explicit TraceCapture(CSTrace::eTraceSeverity eMost = CSTrace::eDebug)
    {
        CSTrace::instance()->SetThreshold(eMost);
        CSTrace::instance()->TraceToCallback(&Take, this);
    }
    ~TraceCapture() { CSTrace::instance()->TraceToNothing(); }
    TraceCapture(const TraceCapture&) = delete;
    TraceCapture& operator=(const TraceCapture&) = delete;

    std::vector<TraceRecord> Records() const
    {
        const std::lock_guard oHold(m_oLock);
        return m_oRecords;
    }

    // "severity text" of each record, without those of method entries and exits.
    std::vector<std::string> Messages() const
    {
        std::vector<std::string> oMessages;
        for (const auto& oRecord : Records())
            if (oRecord.strText != "Entered Method" && oRecord.strText != "Exited Method")
                oMessages.push_back(std::to_string(oRecord.nSeverity) + ' ' + oRecord.strText);
        return oMessages;
    }

    int Count(const std::string& strMessage) const
    {
        const auto oMessages = Messages();
        return static_cast<int>(std::count(oMessages.begin(), oMessages.end(), strMessage));
    }

    // Waits until the message has come so often; false when it does not.
    bool WaitFor(const std::string& strMessage, int nTimes = 1) const
    {
        return WaitUntil([&] { return Count(strMessage) >= nTimes; });
    }

private:
    static void Take(const CSTrace::Record& o, void* pCapture)
    {
        auto& oThis = *static_cast<TraceCapture*>(pCapture);
        const std::lock_guard oHold(oThis.m_oLock);
        oThis.m_oRecords.push_back({o.eSeverity, o.pszText, o.pszClass, o.pszMethod, o.pszFile, o.nLine});
    }

    mutable std::mutex m_oLock;
    std::vector<TraceRecord> m_oRecords;
};
