// The contract of loading, searching, freeing and pinning modules, the same on every target.
#include "platform/Modules.h"
#include "support/ErrorOf.h"

#include <gtest/gtest.h>

namespace
{
constexpr bool bModulesOfWindows = sizeof(wchar_t) == 2;
constexpr const char* s_pszModule = bModulesOfWindows ? "version.dll" : "libm.so.6";
constexpr const char* s_pszFunction = bModulesOfWindows ? "VerQueryValueA" : "cbrt";
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
    // The mail system, as far as the machine has one, is found where it can be loaded.
    const HMODULE hMail = Modules().LoadLibraryA("MAPI32.DLL");
    const DWORD nSize = Modules().SearchPathA(nullptr, "MAPI32.DLL", nullptr, 0, nullptr, nullptr);
    EXPECT_EQ(hMail != nullptr, nSize != 0);
    EXPECT_EQ(hMail && Modules().GetProcAddress(hMail, "MAPISendMail"), hMail != nullptr);
    EXPECT_EQ(hMail && Modules().FreeLibrary(hMail), hMail != nullptr);
}
