// zvu ip and zvu resolve: tests on IPv4 addresses, and their host names. The resolver answers at once with what it
// knows and looks up the rest behind the scenes, so zvu asks again until it knows.
#include "Command.h"
#include "System.h"
#include "support/Texts.h"

#include "ZevrinUtils/DNSResolver.h"
#include "ZevrinUtils/IPServices.h"

#include <algorithm>
#include <chrono>
#include <iomanip>
#include <iostream>
#include <thread>

namespace
{
int Valid(const std::string& strText)
{
    return PrintAnswer(CSIPServices::IsValidIP(strText.c_str()));
}

int Local(const std::string& strText)
{
    bool bIsLocal = false;
    if (CSIPServices::IsLocalIP(strText.c_str(), bIsLocal))
        return PrintAnswer(bIsLocal);
    return Fail("the network adapters cannot be read");
}

using Clock = std::chrono::steady_clock;

// Between two rounds of questions. The rounds become rarer, because an address that is asked for during its lookup is
// looked up once more.
constexpr auto nFirstPause = std::chrono::milliseconds(5);
constexpr auto nLongestPause = std::chrono::milliseconds(500);

// One ask of the resolver.
struct Answer
{
    std::string strText;
    Clock::duration nTook{};
};

struct Question
{
    std::string strAddress;   // as the user wrote it
    Answer oFirst;
    Answer oLast;
    bool bKnown = false;
};

struct ResolveOptions
{
    std::vector<std::string> oAddresses;
    double nWaitSeconds = 10;
    bool bTimings = false;
};

Answer Ask(const std::string& strAddress)
{
    const auto nStart = Clock::now();
    std::string strText = CSDNSResolver::Instance()->GetDNSName(strAddress.c_str());
    return {std::move(strText), Clock::now() - nStart};
}

std::string WithoutPort(const std::string& strAddress)
{
    return strAddress.substr(0, strAddress.find(':'));
}

// A failed lookup shows only by the port that is gone from the answer, so the question always has one.
bool IsKnown(const std::string& strAddress)
{
    const std::string strAsked = WithoutPort(strAddress) + ":0";
    return Ask(strAsked).strText != strAsked;
}

bool HasName(const Question& oQuestion)
{
    return oQuestion.bKnown && oQuestion.oLast.strText != WithoutPort(oQuestion.strAddress);
}

bool AllKnown(std::vector<Question>& oQuestions)
{
    bool bAll = true;
    for (auto& oQuestion : oQuestions)
    {
        oQuestion.bKnown = oQuestion.bKnown || IsKnown(oQuestion.strAddress);
        bAll = bAll && oQuestion.bKnown;
    }
    return bAll;
}

std::vector<Question> AskForAll(const ResolveOptions& oOptions)
{
    std::vector<Question> oQuestions;
    for (const auto& strAddress : oOptions.oAddresses)
        oQuestions.push_back({strAddress, Ask(strAddress), {}, false});

    const auto nEnd = Clock::now() + std::chrono::duration<double>(oOptions.nWaitSeconds);
    for (auto nPause = nFirstPause; !AllKnown(oQuestions) && Clock::now() < nEnd;
         nPause = std::min(nPause * 2, nLongestPause))
        std::this_thread::sleep_for(nPause);

    for (auto& oQuestion : oQuestions)
        oQuestion.oLast = Ask(oQuestion.strAddress);
    return oQuestions;
}

void PrintTimings(const std::vector<Question>& oQuestions)
{
    std::size_t nWidth = 12;
    for (const auto& oQuestion : oQuestions)
        nWidth = std::max({nWidth, oQuestion.strAddress.size(), oQuestion.oLast.strText.size()});

    const auto printRow = [&](const std::string& strAddress, const std::string& strFirst, const std::string& strTook,
                              const std::string& strLater, const std::string& strTookLater) {
        const auto column = std::setw(static_cast<int>(nWidth) + 2);
        std::cout << std::left << column << strAddress << column << strFirst << std::right << std::setw(10) << strTook
                  << "  " << std::left << column << strLater << std::right << std::setw(10) << strTookLater << '\n';
    };
    printRow("address", "first answer", "in", "later answer", "in");
    for (const auto& [strAddress, oFirst, oLast, bKnown] : oQuestions)
        printRow(strAddress, oFirst.strText, TimeText(oFirst.nTook), oLast.strText, TimeText(oLast.nTook));
}

int Resolve(const ResolveOptions& oOptions)
{
    if (!StartSocketLayer())
        return Fail("the socket layer does not start");

    const auto oQuestions = AskForAll(oOptions);
    if (oOptions.bTimings)
        PrintTimings(oQuestions);
    else
        for (const auto& oQuestion : oQuestions)
            std::cout << oQuestion.strAddress << '\t' << oQuestion.oLast.strText << '\n';
    std::cout.flush();

    int nStatus = eSucceeded;
    for (const auto& oQuestion : oQuestions)
    {
        if (HasName(oQuestion))
            continue;
        nStatus = Fail(oQuestion.strAddress + (oQuestion.bKnown ? ": no name found" : ": no answer in the time given"));
    }
    return nStatus;
}

std::string CheckAddress(const std::string& strText)
{
    return WithoutPort(strText).empty() ? "no address in '" + strText + "'" : "";
}

void DefineIp(CLI::App& oGroup, Action& action)
{
    oGroup.require_subcommand(1);
    auto& oValid = AddCommand(oGroup, "valid", "Tell whether a text has the form of an address", "ip valid 192.0.2.1",
                              "How many numbers it has is not looked at.");
    AddArgument(oValid, "TEXT", Runs(oValid, action, &Valid), "Numbers from 0 to 255 with dots between");
    auto& oLocal =
        AddCommand(oGroup, "local", "Tell whether an address is one of this machine's", "ip local 192.0.2.1");
    AddArgument(oLocal, "TEXT", Runs(oLocal, action, &Local), "IPv4 address as four numbers with dots between");
}
const Command s_oIpCommand("ip", "Test IPv4 addresses", "ip valid 192.0.2.1", &DefineIp);

void DefineResolve(CLI::App& oCommand, Action& action)
{
    auto& oOptions = Runs(oCommand, action, &Resolve);
    AddArgument(oCommand, "ADDRESS", oOptions.oAddresses, "Address, with or without a colon and port behind it")
        ->check(CheckAddress, "");
    oCommand.add_option("--wait", oOptions.nWaitSeconds, "Seconds to wait for the names")
        ->capture_default_str()
        ->check(CLI::NonNegativeNumber);
    oCommand.add_flag("--timings", oOptions.bTimings,
                      "Show the first and the last answer side by side, with the time that each call took");
}
const Command s_oResolveCommand("resolve", "Print the host names of IPv4 addresses",
                                "resolve 127.0.0.1 192.0.2.1:8080 --wait 5", &DefineResolve);
}
