// Modules are the dynamic loader's, but for the one that stands for the mail system.
#include "win32/Kernel.h"

#include "platform/linux/base/Failure.h"
#include "platform/linux/mail/MailModule.h"

#include <dlfcn.h>
#include <link.h>

HMODULE win32::LoadLibraryA(LPCSTR pszName)
{
    return ResultOr(HMODULE{}, [&] {
        if (IsMailModule(pszName))
            return LoadMailModule();
        // Null would name the program itself here, and nothing on Windows.
        const HMODULE hModule = pszName ? dlopen(pszName, RTLD_NOW | RTLD_LOCAL) : nullptr;
        Require(hModule, ERROR_MOD_NOT_FOUND);
        return hModule;
    });
}

BOOL win32::FreeLibrary(HMODULE hModule)
{
    return Succeeds([&] {
        if (IsMailModule(hModule))
            FreeMailModule();
        else
            Require(hModule && dlclose(hModule) == 0, ERROR_INVALID_HANDLE);
    });
}

FARPROC win32::GetProcAddress(HMODULE hModule, LPCSTR pszName)
{
    return ResultOr(FARPROC{}, [&] {
        if (IsMailModule(hModule))
            return FunctionOfMailModule(pszName);
        void* const pFunction = hModule ? dlsym(hModule, pszName) : nullptr;
        Require(pFunction, ERROR_PROC_NOT_FOUND);
        return reinterpret_cast<FARPROC>(pFunction);
    });
}

BOOL win32::GetModuleHandleExA(DWORD nFlags, LPCSTR pszNameOrAddress, HMODULE* phModule)
{
    return Succeeds([&] {
        RequireSupported(nFlags == (GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS));
        Dl_info oInfo;
        link_map* pModule = nullptr;
        const int nFound = dladdr1(pszNameOrAddress, &oInfo, reinterpret_cast<void**>(&pModule), RTLD_DL_LINKMAP);
        Require(nFound != 0 && pModule, ERROR_MOD_NOT_FOUND);

        // The program itself has an empty name and is found by none.
        const char* const pszName = *pModule->l_name ? pModule->l_name : nullptr;
        // The loader keeps to this for good, whoever closes the module how often.
        *phModule = dlopen(pszName, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
        Require(*phModule, ERROR_MOD_NOT_FOUND);
    });
}

DWORD win32::SearchPathA(LPCSTR pszPath, LPCSTR pszFile, LPCSTR pszExtension, DWORD nSize, LPSTR pszBuffer,
                         LPSTR* ppszFilePart)
{
    return ResultOr(DWORD{0}, [&] {
        RequireSupported(!pszPath && !pszExtension && !nSize && !pszBuffer && !ppszFilePart && IsMailModule(pszFile));
        return PathSizeOfMailModule();
    });
}
