// One thread for each port serves its connections one after the other. A listener's record belongs to its object and
// its thread, and the last of the two frees it (ListenerShare.h). The words that hosts and threads
// share are plain ones in the exported layout, so Read and Write make each access atomic.
#include "ZevrinUtils/PortListener.h"

#include "framework/ModuleThread.h"
#include "network/ListenerShare.h"
#include "network/Reply.h"
#include "platform/Memory.h"
#include "platform/Sockets.h"
#include "platform/Threads.h"

#include <new>
#include <string>

void* CSPortListener::m_pContext = nullptr;
int CSPortListener::m_bUseHeader = 0;

namespace
{
constexpr WORD nWinsockVersion = 0x0101;
constexpr int nMostPending = 0x7fffffff;
constexpr DWORD nStopMilliseconds = 20000;
constexpr DWORD nForceMilliseconds = 5000;   // for a thread that was ended by force to be gone
constexpr int nReadBufferSize = 0x40000;
constexpr int nMostRead = nReadBufferSize - 1;   // leaves room for the terminator

thread_local const ListenerShare* t_pShare = nullptr;   // of the listener that runs on this thread

// True once a Stop has given up on this thread and returned: its host expects no further handler call and no reply.
bool IsLeftBehind() noexcept
{
    return t_pShare && t_pShare->IsLeftBehind();
}

// The words that hosts and stopping threads write while a listener reads them.
template <class Word>
Word Read(Word& nWord) noexcept
{
    return std::atomic_ref<Word>(nWord).load(std::memory_order_acquire);
}

template <class Word>
void Write(Word& nWord, Word nValue) noexcept
{
    std::atomic_ref<Word>(nWord).store(nValue, std::memory_order_release);
}

// A record and a place for it, so that nothing can fail once its thread runs; null if memory is short.
ListenerShare* MakeRecord(std::vector<CSListenerRecord*>& oListeners)
{
    try
    {
        oListeners.push_back(nullptr);
        oListeners.pop_back();
        return new ListenerShare;
    }
    catch (const std::bad_alloc&)
    {
        return nullptr;
    }
}

SOCKET OpenPort(unsigned short nPort)
{
    const SOCKET hSocket = Sockets().socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    if (hSocket == INVALID_SOCKET)
        return INVALID_SOCKET;

    sockaddr_in oAddress{};   // zero: all local addresses
    oAddress.sin_family = AF_INET;
    const unsigned char anPort[] = {static_cast<unsigned char>(nPort >> 8), static_cast<unsigned char>(nPort & 0xff)};
    std::memcpy(&oAddress.sin_port, anPort, sizeof anPort);   // network byte order
    if (Sockets().bind(hSocket, reinterpret_cast<const sockaddr*>(&oAddress), sizeof oAddress) == 0 &&
        Sockets().listen(hSocket, nMostPending) == 0)
        return hSocket;
    Sockets().closesocket(hSocket);
    return INVALID_SOCKET;
}
}

CSPortListener::CSPortListener() = default;

CSPortListener::CSPortListener(const CSPortListener& oOther) = default;

CSPortListener& CSPortListener::operator=(const CSPortListener& oOther) = default;

CSPortListener::~CSPortListener()
{
    CSPortListener::Stop();
}

// Never undone: the resolver uses the socket layer without starting it.
int CSPortListener::InitWinsock()
{
    if (m_bWinsockStarted)
        return 1;
    WSADATA oData{};
    if (Sockets().WSAStartup(nWinsockVersion, &oData) != 0)
        return 0;
    if (oData.wVersion != nWinsockVersion)
    {
        Sockets().WSACleanup();
        return 0;
    }
    m_bWinsockStarted = 1;
    return 1;
}

int CSPortListener::Start(unsigned short nPort, ListenerHandler pfnHandler)
{
    if (!InitWinsock())
        return 0;
    const SOCKET hSocket = OpenPort(nPort);
    if (hSocket == INVALID_SOCKET)
        return 0;

    if (auto* const pRecord = MakeRecord(m_oListeners))
    {
        pRecord->m_nPort = nPort;
        pRecord->m_hSocket = static_cast<unsigned int>(hSocket);
        pRecord->m_pfnHandler = pfnHandler;
        const auto pfnThread = [](void* pShare) WINAPI -> DWORD {
            auto* const pOwn = static_cast<ListenerShare*>(pShare);
            // ListenerThreadFunc is exported and knows the plain record alone.
            t_pShare = pOwn;
            const DWORD nExitCode = ListenerThreadFunc(static_cast<CSListenerRecord*>(pOwn));
            pOwn->LetGo(ListenerShare::eThread);
            return nExitCode;
        };
        if (const HANDLE hThread = StartModuleThread(pfnThread, pRecord))
        {
            pRecord->m_hThread = hThread;
            m_oListeners.push_back(pRecord);
            return 1;
        }
        delete pRecord;
    }
    Sockets().closesocket(hSocket);
    return 0;
}

int CSPortListener::Stop(unsigned short nPort)
{
    for (auto nIndex = static_cast<int>(m_oListeners.size()) - 1; nIndex >= 0; --nIndex)
        if (m_oListeners[static_cast<std::size_t>(nIndex)]->m_nPort == nPort)
            StopListener(nIndex);
    return 1;
}

int CSPortListener::Stop()
{
    for (auto nIndex = static_cast<int>(m_oListeners.size()) - 1; nIndex >= 0; --nIndex)
        StopListener(nIndex);
    return 1;
}

void CSPortListener::UseHeader(int bUseHeader)
{
    Write(m_bUseHeader, bUseHeader);
}

void CSPortListener::SetContext(void* pContext)
{
    Write(m_pContext, pContext);
}

int CSPortListener::StopListener(int nIndex)
{
    if (nIndex < 0 || static_cast<std::size_t>(nIndex) >= m_oListeners.size())
        return 0;
    auto* const pRecord = static_cast<ListenerShare*>(m_oListeners[static_cast<std::size_t>(nIndex)]);

    Sockets().closesocket(pRecord->m_hSocket);   // wakes a thread in accept
    // A thread that reads the number before this line calls accept on a closed socket, which ends it as well.
    Write(pRecord->m_hSocket, static_cast<unsigned int>(INVALID_SOCKET));

    int nResult = 1;
    if (Threads().WaitForSingleObject(pRecord->m_hThread, nStopMilliseconds) == WAIT_TIMEOUT)
    {
        nResult = 0;
        if (Threads().TerminateThread(pRecord->m_hThread, 0) &&
            Threads().WaitForSingleObject(pRecord->m_hThread, nForceMilliseconds) == WAIT_OBJECT_0)
            pRecord->LetGo(ListenerShare::eThread);   // in its place, which it can no longer do
    }
    else
    {
        // A thread woken in accept ends with 0, one that came back from a connection with 1: the first counts
        // as a clean stop, the second does not.
        DWORD nExitCode = 0;
        if (Threads().GetExitCodeThread(pRecord->m_hThread, &nExitCode))
            nResult = nExitCode == 0;
    }

    m_oListeners.erase(m_oListeners.begin() + nIndex);
    // The thread's handle stays open: a small loss, accepted. The record is still there, because the object lets
    // go of it nowhere else. NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDelete)
    pRecord->LetGo(ListenerShare::eObject);
    return nResult;
}

DWORD WINAPI CSPortListener::ListenerThreadFunc(void* pArgument)
{
    auto* const pRecord = static_cast<CSListenerRecord*>(pArgument);
    if (!pRecord)
        return 0;
    ZVString oRequest(nullptr);   // serves all connections
    for (;;)
    {
        const unsigned int hListening = Read(pRecord->m_hSocket);
        if (hListening == static_cast<unsigned int>(INVALID_SOCKET))
            return 1;
        const SOCKET hConnection = Sockets().accept(hListening, nullptr, nullptr);
        if (hConnection == INVALID_SOCKET)
            return 0;   // for any reason, and for good
        if (!ReceiveMsg(static_cast<unsigned int>(hConnection), oRequest) || IsLeftBehind())
        {
            Sockets().closesocket(hConnection);
            continue;
        }
        ZVString oReply("");
        pRecord->m_pfnHandler(pRecord->m_nPort, oRequest.GetString(), oReply, Read(m_pContext));
        if (!IsLeftBehind())
            SendReply(hConnection, oReply.GetString(), [] { return Read(m_bUseHeader) != 0; });
        Sockets().closesocket(hConnection);
    }
}

int CSPortListener::ReceiveMsg(unsigned int hSocket, ZVString& oMessage)
{
    auto* const pBuffer = static_cast<char*>(Memory().malloc(nReadBufferSize));   // never freed, for each request
    if (!pBuffer)
        return 0;
    *pBuffer = 0;
    try
    {
        std::string strText;
        int nRead;
        do
        {
            nRead = Sockets().recv(hSocket, pBuffer, nMostRead, 0);
            // A failure puts no terminator, so what the read before it left is taken once more.
            if (nRead >= 0)
                pBuffer[nRead] = 0;
            strText += pBuffer;
        } while (nRead == nMostRead);   // the one and only rule for when a request is complete
        oMessage.Assign(strText.c_str());
        return 1;
    }
    catch (const std::bad_alloc&)
    {
        return 0;
    }
}
