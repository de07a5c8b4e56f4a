// Plain sockets on both sides, so that the server is all that differs between two measurements: the clients are the
// same for each, and the bare server reads with a buffer of the listener's size.
#include "Loopback.h"

#include <atomic>
#include <thread>
#include <vector>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace
{
const char szRequest[] = "GET / HTTP/1.0\r\n\r\n";

sockaddr_in Address(in_addr_t nHost, unsigned short nPort)
{
    sockaddr_in oAddress{};
    oAddress.sin_family = AF_INET;
    oAddress.sin_addr.s_addr = htonl(nHost);
    oAddress.sin_port = htons(nPort);
    return oAddress;
}

void ServeForEver(int nListening, std::string strReply)
{
    std::vector<char> oBuffer(0x40000);
    for (;;)
    {
        const int nConnection = accept(nListening, nullptr, nullptr);
        if (recv(nConnection, oBuffer.data(), oBuffer.size() - 1, 0) > 0)
            send(nConnection, strReply.data(), strReply.size(), MSG_NOSIGNAL);
        close(nConnection);
    }
}

bool Request(unsigned short nPort, const std::string& strWanted)
{
    const int nSocket = socket(AF_INET, SOCK_STREAM, 0);
    const sockaddr_in oAddress = Address(INADDR_LOOPBACK, nPort);
    std::string strAnswer;
    if (connect(nSocket, reinterpret_cast<const sockaddr*>(&oAddress), sizeof oAddress) == 0 &&
        send(nSocket, szRequest, sizeof szRequest - 1, MSG_NOSIGNAL) > 0)
    {
        char achPiece[1024];
        for (ssize_t nRead; (nRead = recv(nSocket, achPiece, sizeof achPiece, 0)) > 0;)
            strAnswer.append(achPiece, static_cast<std::size_t>(nRead));
    }
    close(nSocket);
    return strAnswer.ends_with(strWanted);
}
}

void StartBareServer(unsigned short nPort, const std::string& strReply)
{
    const int nListening = socket(AF_INET, SOCK_STREAM, 0);
    const int nOn = 1;
    setsockopt(nListening, SOL_SOCKET, SO_REUSEADDR, &nOn, sizeof nOn);
    const sockaddr_in oAddress = Address(INADDR_ANY, nPort);
    if (bind(nListening, reinterpret_cast<const sockaddr*>(&oAddress), sizeof oAddress) == 0 &&
        listen(nListening, SOMAXCONN) == 0)
        std::thread(ServeForEver, nListening, strReply).detach();
}

bool MakeRequests(unsigned short nPort, int nClients, int nRequests, const std::string& strWanted)
{
    std::atomic<int> nLeft = nRequests;
    std::atomic<bool> bAllWell = true;
    std::vector<std::thread> oClients;
    for (int n = 0; n < nClients; ++n)
        oClients.emplace_back([&] {
            while (nLeft-- > 0 && bAllWell)
                if (!Request(nPort, strWanted))
                    bAllWell = false;
        });
    for (auto& oClient : oClients)
        oClient.join();
    return bAllWell;
}
