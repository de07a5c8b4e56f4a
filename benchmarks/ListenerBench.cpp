// Requests on loopback against a bare loop and against nginx: bench_listener [PORT-OF-NGINX]
#include "Loopback.h"
#include "RatioTable.h"

#include "ZevrinUtils/PortListener.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>

#include <sys/socket.h>
#include <unistd.h>

namespace
{
constexpr unsigned short nLibraryPort = 23871;
constexpr unsigned short nBarePort = 23872;
constexpr int nRounds = 11;
constexpr int nRequests = 2000;   // in each round
const char szReply[] = "<answer>a fixed text of some length, as small services give it</answer>";

unsigned long Reply(unsigned short, const char*, ZVString& oReply, void*)
{
    oReply.Assign(szReply);
    return 0;
}

// Library and peer in turn, so that both see the machine's moods; the medians are compared.
void Compare(RatioTable& oTable, const std::string& strCase, unsigned short nPeerPort, int nClients)
{
    std::vector<double> oLibrary;
    std::vector<double> oPeer;
    for (int n = 0; n < nRounds; ++n)
    {
        oLibrary.push_back(MeasureRequests(nLibraryPort, nClients, nRequests, szReply));
        oPeer.push_back(MeasureRequests(nPeerPort, nClients, nRequests, szReply));
    }
    const auto median = [&](std::vector<double>& oTimes) {
        if (std::count(oTimes.begin(), oTimes.end(), 0.0) != 0)
        {
            std::cerr << "bench_listener: " << strCase << ": a request failed\n";
            std::exit(1);
        }
        std::nth_element(oTimes.begin(), oTimes.begin() + nRounds / 2, oTimes.end());
        return oTimes[nRounds / 2];
    };
    oTable.Add(strCase, "library", median(oLibrary));
    oTable.Add(strCase, "peer", median(oPeer));
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

// The measuring side's end of the pipe; -1 if the port cannot be opened.
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

int main(int nArguments, char** ppArguments)
{
    const int nPipe = StartServers();
    if (nPipe < 0)
    {
        std::cerr << "bench_listener: port " << nLibraryPort << " cannot be opened\n";
        return 1;
    }

    RatioTable oTable;
    for (const int nClients : {1, 16})
    {
        const std::string strClients = std::to_string(nClients) + (nClients == 1 ? " client" : " clients");
        oTable.SetGoal("request, " + strClients + ", against a bare loop", "at most 1.05");
        Compare(oTable, "request, " + strClients + ", against a bare loop", nBarePort, nClients);
        if (nArguments > 1)
            Compare(oTable, "request, " + strClients + ", against nginx",
                    static_cast<unsigned short>(std::atoi(ppArguments[1])), nClients);
    }
    oTable.Print();
    close(nPipe);
}
