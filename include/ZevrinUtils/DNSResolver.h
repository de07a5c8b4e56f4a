/// @file
/// Names of addresses, without waiting for them.
#pragma once

#include "ZevrinUtils/CritSection.h"
#include "ZevrinUtils/Export.h"
#include "ZevrinUtils/Types.h"

#include <list>
#include <map>
#include <string>

/// Turns IPv4 address text into host names and never makes its caller wait for the network. An address
/// that is not known yet is put into a queue; one background thread looks the addresses up, one after the
/// other, through the system's resolver. There is no notification: the caller simply asks again.
///
///     CSDNSResolver::Instance()->GetDNSName("10.1.2.3:8080")
///
/// gives "10.1.2.3:8080" while the answer is not there, then the host name, or "10.1.2.3" (without the
/// port: the only sign of a failure) if there is none. Answers, failures among them, are kept without a
/// limit until ResetResultsMap.
///
/// On Windows the host starts the socket layer (WSAStartup) and keeps it running; without it every lookup
/// fails and is kept as failed. Linux has nothing to start.
///
/// The thread starts with the first address that needs a lookup. From then on the module stays loaded until
/// the process ends, and freeing it is harmless. A process that ends waits for the lookup under way on Linux
/// and cuts it off on Windows. Nobody may ask any more by then: a host ends its own threads first, and a child
/// that it forked leaves by _exit.
class ZEVRINUTILS_API CSDNSResolver
{
public:
    /// The one resolver of the process, built by the first call and destroyed with the module; never
    /// delete it. The first call must be over before a second thread makes one; all others may come from
    /// any thread.
    static CSDNSResolver* Instance();

    /// The known name of an address, with or without a colon and port behind it; the text itself while
    /// the name is not known; an empty string for null. A text without an address (empty, or beginning
    /// with a colon) comes back unchanged and is not looked up; any other text is not examined, and one
    /// that is no address fails like any other lookup. From any thread; takes one lookup in a map and, for
    /// an unknown address, one walk of the queue.
    std::string GetDNSName(const char* pszAddress);

    /// Forgets all answers. Addresses in the queue stay there; the answer of a lookup under way is still
    /// filed. From any thread.
    void ResetResultsMap();

    /// Waits for the thread, and so for a lookup under way, without a limit.
    ~CSDNSResolver();

    /// Member by member: the copy shares the events and the thread with its source, and the first of the
    /// two to be destroyed ends them. Exported for completeness; not for use.
    CSDNSResolver(const CSDNSResolver& oOther);
    CSDNSResolver& operator=(const CSDNSResolver& oOther);   ///< likewise

private:
    CSDNSResolver();

    void Stop();
    void QueueForResolution(const std::string& strAddress);
    static DWORD WINAPI ResolutionThreadFunc(void* pResolver);
    DWORD ResolutionThreadFunc();
    std::string ResolveDNS(std::string& strAddress);

    friend struct CSDNSResolverPeer;   // the tests: the layout, and a resolver that goes before the process

    HANDLE m_hQueueEvent;   // set while the queue may hold work
    HANDLE m_hStopEvent;
    HANDLE m_hThread;                                   // null until it is needed
    CSCritSection m_oResultsLock;                       // guards m_oResultsMap; entered before m_oQueueLock
    CSCritSection m_oQueueLock;                         // guards m_oResolutionQueue and the start of the thread
    std::map<std::string, std::string> m_oResultsMap;   // an address without a name is its own
    std::list<std::string> m_oResolutionQueue;
};
