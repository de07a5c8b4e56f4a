#include "win32/Modules.h"

#include "platform/linux/base/Failure.h"
#include "platform/linux/mail/Mail.h"

#include <atomic>
#include <cstring>

#include <dlfcn.h>
#include <link.h>
#include <strings.h>

namespace
{
// The module of Windows that this layer answers for by itself; its address is its handle.
struct MailModule
{
    std::atomic<unsigned> nUses = 0;
};
constinit MailModule s_oMail;

bool IsMail(LPCSTR pszName)
{
    return pszName && strcasecmp(pszName, "MAPI32.DLL") == 0;
}

HMODULE LoadMail()
{
    if (!HasMailProgram())
        return Fail(ERROR_MOD_NOT_FOUND, HMODULE{});
    ++s_oMail.nUses;
    return &s_oMail;
}

BOOL FreeMail()
{
    for (unsigned nUses = s_oMail.nUses; nUses > 0;)
        if (s_oMail.nUses.compare_exchange_weak(nUses, nUses - 1))
            return TRUE;
    return Fail(ERROR_INVALID_HANDLE, FALSE);
}

FARPROC FunctionOfMail(LPCSTR pszName)
{
    return std::strcmp(pszName, "MAPISendMail") == 0 ? reinterpret_cast<FARPROC>(&win32::MAPISendMail)
                                                     : Fail(ERROR_PROC_NOT_FOUND, FARPROC{});
}
}

HMODULE win32::LoadLibraryA(LPCSTR pszName)
{
    if (IsMail(pszName))
        return LoadMail();
    // Null would name the program itself here, and nothing on Windows.
    const HMODULE hModule = pszName ? dlopen(pszName, RTLD_NOW | RTLD_LOCAL) : nullptr;
    return hModule ? hModule : Fail(ERROR_MOD_NOT_FOUND, hModule);
}

BOOL win32::FreeLibrary(HMODULE hModule)
{
    if (hModule == &s_oMail)
        return FreeMail();
    return hModule && dlclose(hModule) == 0 ? TRUE : Fail(ERROR_INVALID_HANDLE, FALSE);
}

FARPROC win32::GetProcAddress(HMODULE hModule, LPCSTR pszName)
{
    if (hModule == &s_oMail)
        return FunctionOfMail(pszName);
    void* const pFunction = hModule ? dlsym(hModule, pszName) : nullptr;
    return pFunction ? reinterpret_cast<FARPROC>(pFunction) : Fail(ERROR_PROC_NOT_FOUND, FARPROC{});
}

BOOL win32::GetModuleHandleExA(DWORD nFlags, LPCSTR pszNameOrAddress, HMODULE* phModule)
{
    if (nFlags != (GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS))
        return Fail(ERROR_NOT_SUPPORTED, FALSE);

    Dl_info oInfo;
    link_map* pModule = nullptr;
    if (!dladdr1(pszNameOrAddress, &oInfo, reinterpret_cast<void**>(&pModule), RTLD_DL_LINKMAP) || !pModule)
        return Fail(ERROR_MOD_NOT_FOUND, FALSE);

    // The program itself has an empty name and is found by none.
    const char* pszName = *pModule->l_name ? pModule->l_name : nullptr;
    *phModule = dlopen(pszName, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
    return *phModule ? TRUE : Fail(ERROR_MOD_NOT_FOUND, FALSE);
}

DWORD win32::SearchPathA(LPCSTR pszPath, LPCSTR pszFile, LPCSTR pszExtension, DWORD nSize, LPSTR pszBuffer,
                         LPSTR* ppszFilePart)
{
    if (pszPath || pszExtension || nSize || pszBuffer || ppszFilePart || !IsMail(pszFile))
        return Fail(ERROR_NOT_SUPPORTED, DWORD{0});
    return OrOutOfMemory(DWORD{0}, [] {
        const std::string strProgram = FindMailProgram();
        return strProgram.empty() ? Fail(ERROR_FILE_NOT_FOUND, DWORD{0}) : static_cast<DWORD>(strProgram.size() + 1);
    });
}
