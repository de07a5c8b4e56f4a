// Sockets behind handles of our own: the kernel gives the number of a closed file to the next one at once, and a thread
// that is about to use the old socket would use that file instead.
#include "win32/Network.h"

#include "platform/linux/base/Descriptor.h"
#include "platform/linux/base/Handles.h"
#include "util/Translation.h"

#include <atomic>
#include <cerrno>
#include <utility>

namespace
{
// Linux has nothing to start; callers look at the version, whose low byte is the major number.
constexpr WORD nHighestVersion = 0x0202;

constexpr int InOrder(WORD nVersion) noexcept
{
    return (nVersion & 0xFF) << 8 | nVersion >> 8;
}

constexpr Translation<int, DWORD> s_aErrors[] = {
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

// Closed when its last user is done with it.
class Socket final : public HandleObject
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

HANDLE HandleOf(SOCKET hSocket)
{
    return reinterpret_cast<HANDLE>(std::uintptr_t{hSocket});
}

std::shared_ptr<Socket> FindSocket(SOCKET hSocket)
{
    return ObjectOf<Socket>(HandleOf(hSocket), WSAENOTSOCK);
}

// Makes the call on a descriptor, again when a signal interrupted it: Windows knows no such failure.
template <class Call>
auto OnDescriptor(int nDescriptor, Call call) -> decltype(call(0))
{
    for (;;)
    {
        const auto nResult = call(nDescriptor);
        if (nResult >= 0)
            return nResult;
        Require(errno == EINTR, Translate(s_aErrors, errno, WSAENETDOWN));
    }
}

template <class Call>
int OnSocket(SOCKET hSocket, Call call)
{
    return ResultOr(SOCKET_ERROR, [&] { return static_cast<int>(OnDescriptor(FindSocket(hSocket)->Get(), call)); });
}

SOCKET OpenSocket(int nDescriptor)
{
    const auto pSocket = std::make_shared<Socket>(Descriptor(nDescriptor));
    return static_cast<SOCKET>(reinterpret_cast<std::uintptr_t>(OpenHandle(pSocket)));
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

// No program that the host starts inherits a socket: it would keep the port and the connection open.
SOCKET win32::socket(int nFamily, int nType, int nProtocol)
{
    return ResultOr(INVALID_SOCKET, [&] {
        return OpenSocket(OnDescriptor(-1, [&](int) { return ::socket(nFamily, nType | SOCK_CLOEXEC, nProtocol); }));
    });
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
    return ResultOr(SOCKET_ERROR, [&] {
        const auto pSocket = FindSocket(hSocket);
        const int nResult =
            OnDescriptor(pSocket->Get(), [&](int nListening) { return ::listen(nListening, nBacklog); });
        pSocket->SetListening();
        return nResult;
    });
}

SOCKET win32::accept(SOCKET hSocket, sockaddr* pAddress, int* pnLength)
{
    return ResultOr(INVALID_SOCKET, [&] {
        RequireSupported(!pAddress && !pnLength);
        const auto acceptNext = [](int nListening) { return ::accept4(nListening, nullptr, nullptr, SOCK_CLOEXEC); };
        return OpenSocket(OnDescriptor(FindSocket(hSocket)->Get(), acceptNext));
    });
}

int win32::recv(SOCKET hSocket, char* pBuffer, int nLength, int nFlags)
{
    return OnSocket(hSocket, [&](int nDescriptor) {
        return ::recv(nDescriptor, pBuffer, static_cast<std::size_t>(nLength), nFlags);
    });
}

// Without the signal that a broken connection raises, which would end a host that knows nothing of it.
int win32::send(SOCKET hSocket, const char* pData, int nLength, int nFlags)
{
    return OnSocket(hSocket, [&](int nDescriptor) {
        return ::send(nDescriptor, pData, static_cast<std::size_t>(nLength), nFlags | MSG_NOSIGNAL);
    });
}

int win32::closesocket(SOCKET hSocket)
{
    return ResultOr(SOCKET_ERROR, [&] {
        TakeObjectOf<Socket>(HandleOf(hSocket), WSAENOTSOCK)->WakeListener();
        return 0;
    });
}
