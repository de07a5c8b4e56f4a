// The module is found by an address in it, whatever its file is called, and kept before the thread starts: later would
// be too late if somebody frees it at that moment.
#include "framework/ModuleThread.h"

#include "platform/Modules.h"

HANDLE StartModuleThread(LPTHREAD_START_ROUTINE pStart, LPVOID pArgument)
{
    HMODULE hModule = nullptr;
    if (!Modules().GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                                      reinterpret_cast<LPCSTR>(&StartModuleThread), &hModule))
        return nullptr;
    return Threads().CreateThread(nullptr, 0, pStart, pArgument, 0, nullptr);
}
