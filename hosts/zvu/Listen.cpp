// zvu listen: serves a port with a reply from the command line, until Ctrl-C or a number of requests ends it.
#include "Command.h"
#include "support/Interrupt.h"

#include "ZevrinUtils/PortListener.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <iostream>
#include <mutex>
#include <thread>

namespace
{
constexpr auto nPollPause = std::chrono::milliseconds(20);

struct ListenOptions
{
    unsigned short nPort = 0;
    bool bHeader = false;
    bool bEcho = false;
    std::string strReply;
    int nCount = 0;   // requests to serve; 0 for no limit
};

// The state on which the handler works.
struct Service
{
    const ListenOptions oOptions;
    std::mutex oLock{};
    std::atomic<int> nServed = 0;
    std::atomic<bool> bOutputGone = false;

    // Takes no lock, as a handler may hang in the output.
    bool IsDone() const { return bOutputGone || (oOptions.nCount != 0 && nServed >= oOptions.nCount); }
};

unsigned long Serve(unsigned short, const char* pszRequest, ZVString& oReply, void* pContext)
{
    auto& oService = *static_cast<Service*>(pContext);
    const std::lock_guard oHold(oService.oLock);
    if (oService.IsDone())
        return 0;   // without a reply
    oReply.Assign(oService.oOptions.bEcho ? pszRequest : oService.oOptions.strReply.c_str());
    if (!(std::cout << std::strlen(pszRequest) << std::endl))
        oService.bOutputGone = true;
    ++oService.nServed;
    return 0;
}

int Listen(const ListenOptions& oOptions)
{
    // Not on the stack: a handler that hangs in the output may outlive this call.
    static Service oService{oOptions};
    CSPortListener oListener;
    oListener.SetContext(&oService);
    oListener.UseHeader(oOptions.bHeader);
    if (!oListener.Start(oOptions.nPort, &Serve))
        return Fail("port " + std::to_string(oOptions.nPort) + " cannot be opened");

    WatchForInterrupt(SIGINT);
    WatchForInterrupt(SIGTERM);
    std::cerr << "zvu: listening on port " << oOptions.nPort << "; Ctrl-C stops" << std::endl;
    while (!IsInterrupted() && !oService.IsDone())
        std::this_thread::sleep_for(nPollPause);
    oListener.Stop();   // the reply under way still goes out
    return eSucceeded;
}

void DefineListen(CLI::App& oCommand, Action& action)
{
    auto& oOptions = Runs(oCommand, action, &Listen);
    AddArgument(oCommand, "PORT", oOptions.nPort, "Port to open on all local addresses, 1 to 65535")
        ->check(CLI::Range(1, 65535).description(""));
    oCommand.add_flag("--header", oOptions.bHeader, "Put the HTTP/1.0 header before each reply");
    auto* const pReply = oCommand.add_option("--reply", oOptions.strReply, "Text to reply with; none by default");
    oCommand.add_flag("--echo", oOptions.bEcho, "Reply with the request")->excludes(pReply);
    oCommand.add_option("--count", oOptions.nCount, "Requests to serve before it ends")->check(CLI::PositiveNumber);
}
const Command s_oListenCommand("listen", "Serve a TCP port and print the size of each request",
                               "listen 8080 --header --reply '<ok/>'", &DefineListen);
}
