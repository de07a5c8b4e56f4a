#include "system/Modules.h"

#include "Failure.h"

#include <dlfcn.h>
#include <link.h>

HMODULE win32::LoadLibraryA(LPCSTR pszName)
{
    // Null would name the program itself here, and nothing on Windows.
    const HMODULE hModule = pszName ? dlopen(pszName, RTLD_NOW | RTLD_LOCAL) : nullptr;
    return hModule ? hModule : Fail(ERROR_MOD_NOT_FOUND, hModule);
}

BOOL win32::FreeLibrary(HMODULE hModule)
{
    return hModule && dlclose(hModule) == 0 ? TRUE : Fail(ERROR_INVALID_HANDLE, FALSE);
}

FARPROC win32::GetProcAddress(HMODULE hModule, LPCSTR pszName)
{
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
