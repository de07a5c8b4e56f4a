// The contract of modules, and of the profile, which tells of one of them, the same on every target.
#include "platform/Modules.h"
#include "platform/Profile.h"
#include "support/ErrorOf.h"

#include "Native.h"

#include <gtest/gtest.h>

namespace
{
constexpr const char* s_pszModule = bWindows ? "version.dll" : "libm.so.6";
constexpr const char* s_pszFunction = bWindows ? "VerQueryValueA" : "cbrt";
constexpr DWORD nPinFromAddress = GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS;

DWORD Pin(const void* pAddress)
{
    HMODULE hModule = nullptr;
    return ErrorOf(Modules().GetModuleHandleExA(nPinFromAddress, static_cast<LPCSTR>(pAddress), &hModule) && hModule);
}
}

TEST(Modules, CountTheirUsesAndStayOnceTheyArePinned)
{
    const HMODULE hModule = Modules().LoadLibraryA(s_pszModule);
    ASSERT_NE(hModule, nullptr);
    EXPECT_EQ(Modules().LoadLibraryA(s_pszModule), hModule);
    const FARPROC pFunction = Modules().GetProcAddress(hModule, s_pszFunction);
    ASSERT_NE(pFunction, nullptr);
    EXPECT_TRUE(Modules().FreeLibrary(hModule));
    EXPECT_EQ(Modules().GetProcAddress(hModule, s_pszFunction), pFunction);   // one use is left
    EXPECT_EQ(ErrorOf(Modules().GetProcAddress(hModule, "NoSuchFunction")), DWORD{ERROR_PROC_NOT_FOUND});
    EXPECT_EQ(Pin(reinterpret_cast<const void*>(pFunction)), 0u);
    EXPECT_EQ(Pin(reinterpret_cast<const void*>(&Pin)), 0u);   // the program itself
    EXPECT_TRUE(Modules().FreeLibrary(hModule));
    EXPECT_EQ(Modules().GetProcAddress(hModule, s_pszFunction), pFunction);
    const int nOnTheStack = 0;
    EXPECT_NE(Pin(&nOnTheStack), 0u);
}

TEST(Modules, SayWhyTheyAreNotThere)
{
    EXPECT_EQ(ErrorOf(Modules().LoadLibraryA("no such module")), DWORD{ERROR_MOD_NOT_FOUND});
    EXPECT_EQ(ErrorOf(Modules().FreeLibrary(nullptr)), DWORD{ERROR_INVALID_HANDLE});
}

TEST(Profile, TellsOfTheMailSystemThatIsFoundAndCanBeLoadedIfThereIsOne)
{
    const HMODULE hMail = Modules().LoadLibraryA("MAPI32.DLL");
    const bool bThere = hMail != nullptr;
    EXPECT_EQ(Modules().SearchPathA(nullptr, "MAPI32.DLL", nullptr, 0, nullptr, nullptr) != 0, bThere);
    EXPECT_EQ(Profile().GetProfileIntA("MAIL", "MAPI", 0) != 0, bThere);
    EXPECT_EQ(bThere && Modules().GetProcAddress(hMail, "MAPISendMail"), bThere);
    EXPECT_EQ(bThere && Modules().FreeLibrary(hMail), bThere);
    for (const auto& [pszSection, pszKey] : {std::pair{"MAIL", "no such entry"}, {"no such section", "MAPI"}})
        EXPECT_EQ(Profile().GetProfileIntA(pszSection, pszKey, 7), 7u);
}
