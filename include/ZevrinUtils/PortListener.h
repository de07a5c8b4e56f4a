/// @file
/// Request-and-reply traffic on TCP ports, with one callback for each connection.
#pragma once

#include "ZevrinUtils/Export.h"
#include "ZevrinUtils/Types.h"

#include <cstring>
#include <string>
#include <utility>
#include <vector>

/// An owned text, through which a handler gives its reply. Host and library share this declaration; nothing of
/// it is exported. A value of one thread at a time; not copied.
class ZVString
{
public:
    /// Copies the text; null leaves the object without a buffer.
    explicit ZVString(const char* pszText)
    {
        if (pszText)
        {
            const std::size_t nSize = std::strlen(pszText) + 1;
            m_pszBuffer = new char[nSize];
            std::memcpy(m_pszBuffer, pszText, nSize);
        }
    }
    virtual ~ZVString() { delete[] m_pszBuffer; }
    ZVString(const ZVString&) = delete;
    ZVString& operator=(const ZVString&) = delete;

    /// A new buffer of so many bytes, all zero; the old one is freed.
    virtual void Alloc(unsigned int nSize)
    {
        delete[] std::exchange(m_pszBuffer, nullptr);
        m_pszBuffer = new char[nSize]();
    }

    /// The buffer, for writing; null if there is none. It stays the object's.
    virtual char* GetBuffer() { return m_pszBuffer; }

    /// The buffer, for reading; null if there is none.
    virtual const char* GetString() { return m_pszBuffer; }

    /// Gives up the buffer, which the caller frees with delete[]. Not for a reply: the listener wants one.
    virtual char* Detach() { return std::exchange(m_pszBuffer, nullptr); }

    /// Takes over a buffer made with new char[]; the old one is freed, unless it is the same.
    virtual void Attach(char* pszBuffer)
    {
        if (pszBuffer != m_pszBuffer)
            delete[] std::exchange(m_pszBuffer, pszBuffer);
    }

    /// Copies a text, which must not be null; it may lie in the present buffer. That buffer is freed by Alloc,
    /// and so by the module that made the object.
    void Assign(const char* pszText)
    {
        const std::string strText(pszText);
        Alloc(static_cast<unsigned int>(strText.size() + 1));
        std::memcpy(m_pszBuffer, strText.c_str(), strText.size() + 1);
    }

private:
    char* m_pszBuffer = nullptr;
};

/// Answers one request. Called on the thread of the listener, one request of a port at a time, for several
/// ports at once; the result is ignored. An exception that leaves it ends the process. It must neither stop nor
/// destroy its own listener: that waits 20 seconds for itself, and on Windows then ends the thread that it runs on.
///
/// @param nPort       port of the listener, in host byte order
/// @param pszRequest  what was received, of each read up to its first zero byte; valid for the call
/// @param oReply      holds an empty text; what it holds up to its first zero byte afterwards is sent, and
///                    nothing at all if that is empty. Assign it, or Alloc and write to GetBuffer
/// @param pContext    the present value of CSPortListener::SetContext
typedef unsigned long (*ListenerHandler)(unsigned short nPort, const char* pszRequest, ZVString& oReply,
                                         void* pContext);

/// One listener of a CSPortListener.
struct CSListenerRecord
{
    unsigned short m_nPort;         ///< in host byte order
    unsigned int m_hSocket;         ///< the listening socket; -1 once a stop has closed it
    ListenerHandler m_pfnHandler;   ///< the host's
    HANDLE m_hThread;               ///< set after the thread has started; the thread never reads it
};

/// Opens TCP ports and answers each connection with one call of a handler: one request, one reply, close.
///
/// A request is complete with the first read that does not fill 262143 bytes; what arrives later is never
/// read. No time limit is set on a connection, and a port serves one at a time: others wait in its backlog.
/// Each request leaves its read buffer of 256 KiB behind for good.
///
/// Threads: Start and Stop of one object are kept apart by the host. UseHeader and SetContext may be called
/// at any time; they hold for all listeners of all objects, from the next request on. The first listener keeps
/// the module loaded until the process ends.
class ZEVRINUTILS_API CSPortListener
{
public:
    CSPortListener();

    /// Member by member: the copy shares the listeners, and the first of the two to be destroyed ends them.
    /// Exported for completeness; not for use.
    CSPortListener(const CSPortListener& oOther);
    CSPortListener& operator=(const CSPortListener& oOther);   ///< likewise

    /// Stops all listeners.
    virtual ~CSPortListener();

    /// Opens a port on all local addresses and starts its thread. 1, or 0 if the socket layer, the port (one
    /// in use among them), memory or the thread cannot be had; nothing is left behind then. The socket layer
    /// is started once for each object and never stopped. The handler must not be null.
    int Start(unsigned short nPort, ListenerHandler pfnHandler);

    /// Closes the listeners of a port and waits for their threads. Always 1, also if there are none.
    ///
    /// A connection under way is served to its end within 20 seconds. A thread that takes longer is ended by
    /// force on Windows. On Linux it is left behind: a handler under way runs on, none is called any more,
    /// and the thread ends when the handler or the peer lets it. Either way the port can be opened again.
    int Stop(unsigned short nPort);

    /// Closes all listeners in the same way.
    int Stop();

    /// Non-zero: replies get a fixed HTTP/1.0 header. At first they go out bare.
    void UseHeader(int bUseHeader);

    /// The value that handlers get as context; null at first.
    void SetContext(void* pContext);

protected:
    /// Starts the socket layer for this object: 1 ready, 0 failed.
    int InitWinsock();

    /// Stops one listener: 1 if its thread was waiting for a connection, 0 if it was serving one or there is
    /// no such index.
    int StopListener(int nIndex);

    /// Serves a port until its socket is closed, on the thread of a CSListenerRecord. 0 if it was idle then, 1 if it
    /// came back from a connection.
    static DWORD WINAPI ListenerThreadFunc(void* pRecord);

    /// Receives one request: 1, or 0 if there is no memory for the read buffer.
    static int ReceiveMsg(unsigned int hSocket, ZVString& oMessage);

    int m_bWinsockStarted = 0;                     ///< non-zero: InitWinsock has succeeded
    std::vector<CSListenerRecord*> m_oListeners;   ///< in order of start; owned
    static void* m_pContext;                       ///< of all objects
    static int m_bUseHeader;                       ///< of all objects

private:
    friend struct CSPortListenerPeer;   // the tests: the layout
};
