// Loading, using and freeing the library at run time.
#include "platform/Modules.h"
#include "platform/Sockets.h"
#include "support/TraceCapture.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace
{
HMODULE Load(const char* pszName)
{
    const HMODULE hModule = Modules().LoadLibraryA((std::string(TEST_MODULE_DIR) + pszName).c_str());
    EXPECT_NE(hModule, nullptr) << pszName;
    return hModule;
}

bool Ask(HMODULE hPart, const char* pszAddress, const char* pszWanted)
{
    using AskFor = int (*)(const char*, const char*);
    const auto pAskFor = reinterpret_cast<AskFor>(reinterpret_cast<void*>(Modules().GetProcAddress(hPart, "AskFor")));
    return pAskFor && pAskFor(pszAddress, pszWanted);
}
}

TEST(Load, BuildsTheLoadTimeObjectsInOrderAndDestroysThemInReverse)
{
    const TraceCapture oCapture;
    const HMODULE hProbe = Load("load_order_probe.module");
    EXPECT_TRUE(Ask(hProbe, ":80", ":80"));   // builds the resolver, needs no thread
    ASSERT_TRUE(Modules().FreeLibrary(hProbe));
    std::vector<std::string> oSteps;
    for (const auto& oRecord : oCapture.Records())
        if (oRecord.strMethod.empty() || oRecord.strText == "Exited Method")
            oSteps.push_back(oRecord.strMethod.empty() ? oRecord.strText : oRecord.strMethod);
    EXPECT_THAT(oSteps, ElementsAre("+ string", "+ map of 10", "+ application", "+ header length",
                                    "CSDNSResolver::CSDNSResolver", "CSDNSResolver::GetDNSName", "CSDNSResolver::Stop",
                                    "CSDNSResolver::~CSDNSResolver", "- application", "- map", "- string"));
}

// Without care this hangs for ever: the unload would wait for a thread that cannot end during an unload.
TEST(Load, AModuleThatResolvedIsFreedAtOnceAndKeepsItsAnswers)
{
    WSADATA oData{};
    ASSERT_EQ(Sockets().WSAStartup(0x0101, &oData), 0);
    const HMODULE hPart = Load("host_part.module");
    ASSERT_TRUE(WaitUntil([&] { return Ask(hPart, "127.0.0.1", "localhost"); }));
    EXPECT_TRUE(Modules().FreeLibrary(hPart));

    const HMODULE hAgain = Load("host_part.module");
    EXPECT_TRUE(Ask(hAgain, "127.0.0.1:80", "localhost"));
    EXPECT_TRUE(Modules().FreeLibrary(hAgain));
}
