#include "win32/Sockets.h"

#include "platform/linux/base/Descriptor.h"
#include "platform/linux/base/Failure.h"
#include "util/Immortal.h"
#include "util/Table.h"

#include <atomic>
#include <cerrno>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

namespace
{
// Linux has nothing to start; callers look at the version, whose low byte is the major number.
constexpr WORD nHighestVersion = 0x0202;

constexpr int InOrder(WORD nVersion) noexcept
{
    return (nVersion & 0xFF) << 8 | nVersion >> 8;
}

constexpr Row<int, DWORD> s_aErrors[] = {
    {EACCES, WSAEACCES},
    {EADDRINUSE, WSAEADDRINUSE},
    {EADDRNOTAVAIL, WSAEADDRNOTAVAIL},
    {EBADF, WSAENOTSOCK},
    {ECONNABORTED, WSAECONNABORTED},
    {ECONNRESET, WSAECONNRESET},
    {EFAULT, WSAEFAULT},
    {EINVAL, WSAEINVAL},
    {EMFILE, WSAEMFILE},
    {ENFILE, WSAEMFILE},
    {ENOBUFS, WSAENOBUFS},
    {ENOMEM, WSAENOBUFS},
    {ENOTCONN, WSAENOTCONN},
    {ENOTSOCK, WSAENOTSOCK},
    {EPIPE, WSAECONNABORTED},
};

template <class Result>
Result FailBySocketErrno(Result failure) noexcept
{
    return Fail(ValueOf(s_aErrors, errno, WSAENETDOWN), failure);
}

// Closed when its last user is done with it. The kernel would give its number to the next file at once, and a
// thread that is about to use the old socket would use that file instead.
class Socket
{
public:
    explicit Socket(Descriptor oOpen) noexcept : m_oDescriptor(std::move(oOpen)) {}

    int Get() const noexcept { return m_oDescriptor.Get(); }

    void SetListening() noexcept { m_bListening = true; }

    // Wakes a thread that waits in accept; a close alone would not.
    void WakeListener() const noexcept
    {
        if (m_bListening)
            ::shutdown(Get(), SHUT_RDWR);
    }

private:
    const Descriptor m_oDescriptor;
    std::atomic<bool> m_bListening = false;
};

// The sockets by the numbers that callers know, which go round through all 32 bits before one comes again.
class SocketTable
{
public:
    SOCKET Open(std::shared_ptr<Socket> pSocket)
    {
        const std::lock_guard oHold(m_oLock);
        while (m_nNext == 0 || m_nNext == INVALID_SOCKET || m_oSockets.contains(m_nNext))
            ++m_nNext;
        m_oSockets.emplace(m_nNext, std::move(pSocket));
        return m_nNext++;
    }

    std::shared_ptr<Socket> Find(SOCKET hSocket)
    {
        const std::lock_guard oHold(m_oLock);
        const auto it = m_oSockets.find(hSocket);
        return it == m_oSockets.end() ? nullptr : it->second;
    }

    std::shared_ptr<Socket> Remove(SOCKET hSocket)
    {
        const std::lock_guard oHold(m_oLock);
        const auto oNode = m_oSockets.extract(hSocket);
        return oNode ? oNode.mapped() : nullptr;
    }

private:
    std::mutex m_oLock;
    std::map<SOCKET, std::shared_ptr<Socket>> m_oSockets;
    SOCKET m_nNext = 1;
};

SocketTable& OpenSockets()
{
    static Immortal<SocketTable> s_oTable;
    return *s_oTable;
}

// Makes the call on the socket's descriptor, again when a signal interrupted it: Windows knows no such failure.
template <class Call>
auto OnSocket(SOCKET hSocket, Call call) -> decltype(call(0))
{
    const auto pSocket = OpenSockets().Find(hSocket);
    if (!pSocket)
        return Fail(WSAENOTSOCK, static_cast<decltype(call(0))>(-1));
    for (;;)
    {
        const auto nResult = call(pSocket->Get());
        if (nResult >= 0)
            return nResult;
        if (errno != EINTR)
            return FailBySocketErrno(nResult);
    }
}

SOCKET OpenSocket(Descriptor oOpen)
{
    return OrOutOfMemory(INVALID_SOCKET,
                         [&] { return OpenSockets().Open(std::make_shared<Socket>(std::move(oOpen))); });
}
}

int win32::WSAStartup(WORD nVersion, LPWSADATA pData)
{
    if (!pData)
        return WSAEFAULT;
    pData->wHighVersion = nHighestVersion;
    pData->wVersion = InOrder(nVersion) < InOrder(nHighestVersion) ? nVersion : nHighestVersion;
    return 0;
}

int win32::WSACleanup()
{
    return 0;
}

SOCKET win32::socket(int nFamily, int nType, int nProtocol)
{
    Descriptor oOpen(::socket(nFamily, nType | SOCK_CLOEXEC, nProtocol));
    return oOpen ? OpenSocket(std::move(oOpen)) : FailBySocketErrno(INVALID_SOCKET);
}

// Windows lets a port be opened again while connections of the listener before it linger; Linux has to be told.
int win32::bind(SOCKET hSocket, const sockaddr* pAddress, int nLength)
{
    return OnSocket(hSocket, [&](int nDescriptor) {
        const int nOn = 1;
        setsockopt(nDescriptor, SOL_SOCKET, SO_REUSEADDR, &nOn, sizeof nOn);
        return ::bind(nDescriptor, pAddress, static_cast<socklen_t>(nLength));
    });
}

int win32::listen(SOCKET hSocket, int nBacklog)
{
    const int nResult = OnSocket(hSocket, [&](int nDescriptor) { return ::listen(nDescriptor, nBacklog); });
    if (const auto pSocket = OpenSockets().Find(hSocket); pSocket && nResult == 0)
        pSocket->SetListening();
    return nResult;
}

SOCKET win32::accept(SOCKET hSocket, sockaddr* pAddress, int* pnLength)
{
    if (pAddress || pnLength)
        return Fail(ERROR_NOT_SUPPORTED, INVALID_SOCKET);
    Descriptor oOpen(
        OnSocket(hSocket, [](int nListening) { return ::accept4(nListening, nullptr, nullptr, SOCK_CLOEXEC); }));
    return oOpen ? OpenSocket(std::move(oOpen)) : INVALID_SOCKET;
}

int win32::recv(SOCKET hSocket, char* pBuffer, int nLength, int nFlags)
{
    return static_cast<int>(OnSocket(hSocket, [&](int nDescriptor) {
        return ::recv(nDescriptor, pBuffer, static_cast<std::size_t>(nLength), nFlags);
    }));
}

// Without the signal that a broken connection raises, which would end a host that knows nothing of it.
int win32::send(SOCKET hSocket, const char* pData, int nLength, int nFlags)
{
    return static_cast<int>(OnSocket(hSocket, [&](int nDescriptor) {
        return ::send(nDescriptor, pData, static_cast<std::size_t>(nLength), nFlags | MSG_NOSIGNAL);
    }));
}

int win32::closesocket(SOCKET hSocket)
{
    const auto pSocket = OpenSockets().Remove(hSocket);
    if (!pSocket)
        return Fail(WSAENOTSOCK, SOCKET_ERROR);
    pSocket->WakeListener();
    return 0;
}
