// Requests on loopback against a bare loop and against nginx: bench_listener [PORT-OF-NGINX]
#include "Bench.h"
#include "Loopback.h"

#include "ZevrinUtils/PortListener.h"

#include <cstdlib>

#include <sys/socket.h>
#include <unistd.h>

namespace
{
constexpr unsigned short nLibraryPort = 23871;
constexpr unsigned short nBarePort = 23872;
constexpr int nRounds = 10;
constexpr int nRequests = 2000;   // in each round
const char szReply[] = "<answer>a fixed text of some length, as small services give it</answer>";

unsigned long Reply(unsigned short, const char*, ZVString& oReply, void*)
{
    oReply.Assign(szReply);
    return 0;
}

RatioTable::Case AgainstPort(unsigned short nPeerPort, int nClients, const std::string& strPeer,
                             const std::string& strGoal)
{
    const std::string strName =
        "request, " + std::to_string(nClients) + (nClients == 1 ? " client" : " clients") + ", against " + strPeer;
    const auto requests = [=](unsigned short nPort) {
        Require(MakeRequests(nPort, nClients, nRequests, szReply), strName + ": a request failed");
    };
    return {strName, strGoal, [=] { requests(nLibraryPort); }, [=] { requests(nPeerPort); }, nRequests};
}

// Both servers, in a process of their own as real ones are: in that of the clients they would share one address
// space with them. Ends when the pipe's other end is closed.
[[noreturn]] void ServeUntilClosed(int nPipe)
{
    CSPortListener oListener;
    const char chStarted = oListener.Start(nLibraryPort, &Reply) ? 'y' : 'n';
    StartBareServer(nBarePort, szReply);
    char chEnd = 0;
    if (write(nPipe, &chStarted, 1) == 1)
        static_cast<void>(read(nPipe, &chEnd, 1));
    _exit(0);
}

// The measuring side's end of the pipe, which closes with the process; -1 if the port cannot be opened.
int StartServers()
{
    int anPipe[2];
    if (socketpair(AF_UNIX, SOCK_STREAM, 0, anPipe) != 0)
        return -1;
    if (fork() == 0)
    {
        close(anPipe[0]);
        ServeUntilClosed(anPipe[1]);
    }
    close(anPipe[1]);
    char chStarted = 0;
    return read(anPipe[0], &chStarted, 1) == 1 && chStarted == 'y' ? anPipe[0] : -1;
}
}

void Measure(RatioTable& oTable, const std::vector<std::string>& oArguments)
{
    Require(StartServers() >= 0, "port " + std::to_string(nLibraryPort) + " cannot be opened");
    for (const int nClients : {1, 16})
    {
        oTable.Compare({AgainstPort(nBarePort, nClients, "a bare loop", "at most 1.05")}, nRounds);
        if (!oArguments.empty())
            oTable.Compare(
                {AgainstPort(static_cast<unsigned short>(std::atoi(oArguments[0].c_str())), nClients, "nginx", "")},
                nRounds);
    }
}
