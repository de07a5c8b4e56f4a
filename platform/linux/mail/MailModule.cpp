// A machine has a mail system if it has xdg-email, which callers ask for in three ways: by the profile, by the path of
// the module, and by loading it.
#include "MailModule.h"

#include "Mail.h"
#include "platform/linux/base/Failure.h"
#include "win32/Kernel.h"

#include <atomic>
#include <cstring>

#include <strings.h>

namespace
{
// Its address is the module's handle.
constinit std::atomic<unsigned> s_nUses = 0;
}

bool IsMailModule(LPCSTR pszName)
{
    return pszName && strcasecmp(pszName, "MAPI32.DLL") == 0;
}

bool IsMailModule(HMODULE hModule)
{
    return hModule == &s_nUses;
}

HMODULE LoadMailModule()
{
    Require(!FindMailProgram().empty(), ERROR_MOD_NOT_FOUND);
    ++s_nUses;
    return &s_nUses;
}

void FreeMailModule()
{
    unsigned nUses = s_nUses;
    do
        Require(nUses > 0, ERROR_INVALID_HANDLE);
    while (!s_nUses.compare_exchange_weak(nUses, nUses - 1));
}

FARPROC FunctionOfMailModule(LPCSTR pszName)
{
    Require(std::strcmp(pszName, "MAPISendMail") == 0, ERROR_PROC_NOT_FOUND);
    return reinterpret_cast<FARPROC>(&win32::MAPISendMail);
}

DWORD PathSizeOfMailModule()
{
    const std::string strProgram = FindMailProgram();
    Require(!strProgram.empty(), ERROR_FILE_NOT_FOUND);
    return static_cast<DWORD>(strProgram.size() + 1);
}

UINT win32::GetProfileIntA(LPCSTR pszSection, LPCSTR pszKey, int nDefault)
{
    return ResultOr(static_cast<UINT>(nDefault), [&]() -> UINT {
        const bool bMail =
            pszSection && pszKey && strcasecmp(pszSection, "MAIL") == 0 && strcasecmp(pszKey, "MAPI") == 0;
        return bMail && !FindMailProgram().empty() ? 1 : static_cast<UINT>(nDefault);
    });
}
