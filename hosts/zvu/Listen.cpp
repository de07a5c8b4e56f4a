// zvu listen: a port served from the command line.
#include "Command.h"

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

volatile std::sig_atomic_t s_bInterrupted = 0;

struct Options
{
    unsigned short nPort = 0;
    bool bHeader = false;
    bool bEcho = false;
    std::string strReply;
    int nCount = 0;   // requests to serve; 0 for no limit
};

// What the handler works on.
struct Service
{
    const Options& oOptions;
    std::mutex oOutput;
    std::atomic<int> nServed = 0;
};

unsigned long Serve(unsigned short, const char* pszRequest, ZVString& oReply, void* pContext)
{
    auto& oService = *static_cast<Service*>(pContext);
    oReply.Assign(oService.oOptions.bEcho ? pszRequest : oService.oOptions.strReply.c_str());
    const std::lock_guard oHold(oService.oOutput);
    std::cout << std::strlen(pszRequest) << std::endl;
    ++oService.nServed;
    return 0;
}

int Listen(const Options& oOptions)
{
    // Not on the stack: a handler that hangs in the output may outlive this call.
    static Service oService{oOptions, {}};
    CSPortListener oListener;
    oListener.SetContext(&oService);
    oListener.UseHeader(oOptions.bHeader);
    if (!oListener.Start(oOptions.nPort, &Serve))
    {
        std::cerr << "zvu: port " << oOptions.nPort << " cannot be opened\n";
        return eFailed;
    }

    std::signal(SIGINT, [](int) { s_bInterrupted = 1; });
    std::signal(SIGTERM, [](int) { s_bInterrupted = 1; });
    std::cerr << "zvu: listening on port " << oOptions.nPort << "; Ctrl-C stops" << std::endl;
    while (!s_bInterrupted && (oOptions.nCount == 0 || oService.nServed < oOptions.nCount))
        std::this_thread::sleep_for(nPollPause);
    oListener.Stop();   // the reply under way still goes out
    return eSucceeded;
}
}

void AddListen(CLI::App& oApp, Action& action)
{
    const auto pOptions = std::make_shared<Options>();
    auto* const pCommand = oApp.add_subcommand("listen", "Serve a TCP port and print the size of each request");
    pCommand->add_option("PORT", pOptions->nPort, "Port to open on all local addresses")
        ->required()
        ->check(CLI::Range(1, 65535));
    pCommand->add_flag("--header", pOptions->bHeader, "Put the HTTP/1.0 header before each reply");
    auto* const pReply = pCommand->add_option("--reply", pOptions->strReply, "Text to reply with; none by default");
    pCommand->add_flag("--echo", pOptions->bEcho, "Reply with the request")->excludes(pReply);
    pCommand->add_option("--count", pOptions->nCount, "Requests to serve before it ends")->check(CLI::PositiveNumber);
    pCommand->footer("Example: zvu listen 8080 --header --reply '<ok/>'");
    pCommand->callback([pOptions, &action] { action = [pOptions] { return Listen(*pOptions); }; });
}
