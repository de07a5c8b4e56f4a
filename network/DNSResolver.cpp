// One thread looks the addresses up. A caller holds the results' lock and takes the queue's inside it; the thread takes
// each alone, and none over a lookup, for which callers would then wait. The stop event ends it between two lookups;
// the queue's event is set and cleared under the queue's lock.
#include "ZevrinUtils/DNSResolver.h"

#include "framework/Hold.h"
#include "framework/MethodTrace.h"
#include "framework/ModuleThread.h"
#include "platform/Handles.h"
#include "platform/Sockets.h"
#include "platform/Threads.h"

#include <algorithm>
#include <cstring>
#include <new>

// The name of this file in trace records, as log readers know it, whatever the build calls it.
#define TRACE_METHOD(method) CSMethodTrace oTrace(".\\DNSResolver", __LINE__, "CSDNSResolver", "CSDNSResolver::" method)
#define TRACE oTrace.SetLine(__LINE__)

namespace
{
alignas(CSDNSResolver) unsigned char s_aInstance[sizeof(CSDNSResolver)];
bool s_bBuilt = false;

CSDNSResolver* Built() noexcept
{
    return std::launder(reinterpret_cast<CSDNSResolver*>(s_aInstance));
}

// Its destruction, registered with the module's exit list like that of any static, is the resolver's.
struct Destruction
{
    ~Destruction() { Built()->~CSDNSResolver(); }
};

bool IsSet(HANDLE hEvent)
{
    return Threads().WaitForSingleObject(hEvent, 0) == WAIT_OBJECT_0;
}
}

// A plain flag: hosts make the first call before they have a second thread. The destruction is registered
// here and not at load, so that it comes before that of the load-time objects.
CSDNSResolver* CSDNSResolver::Instance()
{
    if (!s_bBuilt)
    {
        s_bBuilt = true;
        try
        {
            ::new (s_aInstance) CSDNSResolver;
        }
        catch (...)
        {
            s_bBuilt = false;
            throw;
        }
        static const Destruction s_oDestruction;
    }
    return Built();
}

CSDNSResolver::CSDNSResolver()
{
    TRACE_METHOD("CSDNSResolver");
    m_hQueueEvent = Threads().CreateEventA(nullptr, TRUE, FALSE, nullptr);
    m_hStopEvent = Threads().CreateEventA(nullptr, TRUE, FALSE, nullptr);
    m_hThread = nullptr;
}

CSDNSResolver::CSDNSResolver(const CSDNSResolver& oOther) = default;

CSDNSResolver& CSDNSResolver::operator=(const CSDNSResolver& oOther) = default;

CSDNSResolver::~CSDNSResolver()
{
    TRACE_METHOD("~CSDNSResolver");
    Stop();
    Handles().CloseHandle(m_hQueueEvent);
    Handles().CloseHandle(m_hStopEvent);
}

// The queue is left as it is: what waits in it goes unanswered with the list.
void CSDNSResolver::Stop()
{
    TRACE_METHOD("Stop");
    Threads().SetEvent(m_hStopEvent);
    // The queue's lock is not taken: the thread takes it on its way, and nobody asks any more by now.
    Threads().WaitForSingleObject(m_hThread, INFINITE);   // fails at once where no thread was needed
    if (m_hThread)
    {
        Handles().CloseHandle(m_hThread);
        m_hThread = nullptr;
    }
    Threads().ResetEvent(m_hStopEvent);

    const CSHold oHold(m_oResultsLock);
    m_oResultsMap.clear();
}

std::string CSDNSResolver::GetDNSName(const char* pszAddress)
{
    TRACE_METHOD("GetDNSName");
    if (!pszAddress)
        return {};

    const std::string strKey(pszAddress, std::strcspn(pszAddress, ":"));
    if (strKey.empty())
        return pszAddress;

    const CSHold oHold(m_oResultsLock);
    const auto it = m_oResultsMap.find(strKey);
    if (it != m_oResultsMap.end())
        return it->second;
    QueueForResolution(strKey);
    return pszAddress;   // with its port
}

void CSDNSResolver::ResetResultsMap()
{
    const CSHold oHold(m_oResultsLock);
    m_oResultsMap.clear();
}

// An address whose lookup is under way stands nowhere, so it is queued and looked up again.
void CSDNSResolver::QueueForResolution(const std::string& strAddress)
{
    TRACE_METHOD("QueueForResolution");
    if (IsSet(m_hStopEvent))
    {
        TRACE << "QueueForResolution returning due to a stop request." << END_DEBUG_MESSAGE;
        return;
    }

    {
        const CSHold oHold(m_oQueueLock);
        if (!m_hThread)
        {
            // Takes the loader's lock, which comes behind both of ours in the order.
            m_hThread = StartModuleThread(&CSDNSResolver::ResolutionThreadFunc, this);
            if (!m_hThread)
            {
                TRACE << "Can't create Resolution Thread" << END_ERROR_MESSAGE;
                return;   // not queued: the next ask tries to start the thread again
            }
        }

        const auto it = std::find(m_oResolutionQueue.begin(), m_oResolutionQueue.end(), strAddress);
        if (it == m_oResolutionQueue.end())
        {
            m_oResolutionQueue.push_back(strAddress);
            Threads().SetEvent(m_hQueueEvent);
            return;
        }
    }
    TRACE << "QueueForResolution: found IP " << strAddress << " in the queue. not adding it again" << END_DEBUG_MESSAGE;
}

DWORD WINAPI CSDNSResolver::ResolutionThreadFunc(void* pResolver)
{
    TRACE_METHOD("ResolutionThreadFunc");
    if (Threads().CoInitialize(nullptr) != S_OK)   // a success code other than zero counts as refused
        TRACE << "::CoInitialize(NULL) failed" << END_ERROR_MESSAGE;
    const DWORD nResult = static_cast<CSDNSResolver*>(pResolver)->ResolutionThreadFunc();
    Threads().CoUninitialize();   // also after a refused start
    return nResult;
}

DWORD CSDNSResolver::ResolutionThreadFunc()
{
    TRACE_METHOD("ResolutionThreadFunc");
    // The lowest index wins when both are set, so a stop comes before waiting work.
    const HANDLE ahEvents[] = {m_hStopEvent, m_hQueueEvent};
    for (;;)
    {
        const DWORD nWait = Threads().WaitForMultipleObjects(2, ahEvents, FALSE, INFINITE);
        if (nWait == WAIT_FAILED)
        {
            TRACE << "Resolution Thread stopping due to wait error." << END_ERROR_MESSAGE;
            return 0;
        }
        if (nWait == WAIT_OBJECT_0)
        {
            TRACE << "Resolution Thread stopping due to stop request." << END_INFO_MESSAGE;
            return 0;
        }

        std::string strAddress;
        {
            const CSHold oHold(m_oQueueLock);
            if (m_oResolutionQueue.empty())
            {
                // Under the lock that the producer sets it under, so no wake-up is lost.
                Threads().ResetEvent(m_hQueueEvent);
                continue;
            }
            strAddress = std::move(m_oResolutionQueue.front());
            m_oResolutionQueue.pop_front();
        }

        std::string strName = ResolveDNS(strAddress);   // with no lock held, however long it takes

        const CSHold oHold(m_oResultsLock);
        m_oResultsMap[strAddress] = std::move(strName);
    }
}

std::string CSDNSResolver::ResolveDNS(std::string& strAddress)
{
    TRACE_METHOD("ResolveDNS");
    if (IsSet(m_hStopEvent))
    {
        // The text names the other method; log readers look for it as it is.
        TRACE << "QueueForResolution returning due to a stop request." << END_INFO_MESSAGE;
        return strAddress;
    }
    if (strAddress.empty())
        return {};

    TRACE << "Resolving DNS for " << strAddress << END_DEBUG_MESSAGE;

    const auto nAddress = Sockets().inet_addr(strAddress.c_str());
    if (nAddress == INADDR_NONE)
    {
        TRACE << "Can't resolve DNS for " << strAddress << END_WARNING_MESSAGE;
        return strAddress;
    }

    const auto* const pHost =
        Sockets().gethostbyaddr(reinterpret_cast<const char*>(&nAddress), sizeof nAddress, AF_INET);
    if (!pHost || !pHost->h_name)
    {
        TRACE << "Can't resolve DNS for " << strAddress << END_WARNING_MESSAGE;
        return strAddress;
    }

    std::string strName(pHost->h_name);
    TRACE << "ResolveDNS - IP: " << strAddress << " DNS: " << strName << END_INFO_MESSAGE;
    return strName;
}
