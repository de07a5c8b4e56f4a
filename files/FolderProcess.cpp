// The operations of CSFolder that run a process.
#include "ZevrinUtils/Folder.h"

#include "platform/Handles.h"
#include "platform/Processes.h"

namespace
{
constexpr DWORD nCreationFlags = CREATE_NO_WINDOW | CREATE_SEPARATE_WOW_VDM | NORMAL_PRIORITY_CLASS;
constexpr DWORD nPollMilliseconds = 10;

bool Start(const char* pszApplication, const char* pszCommandLine, const char* pszWorkingFolder,
           PROCESS_INFORMATION& oProcess)
{
    STARTUPINFOA oStartup{};
    oStartup.cb = sizeof oStartup;
    std::string strCommandLine(pszCommandLine ? pszCommandLine : "");   // which the system may write to
    return Processes().CreateProcessA(pszApplication, pszCommandLine ? strCommandLine.data() : nullptr, nullptr,
                                      nullptr, TRUE, nCreationFlags, nullptr, pszWorkingFolder, &oStartup,
                                      &oProcess) != FALSE;
}

// One at most, so that the caller's windows stay alive; what it brings about may call back into the caller.
void DispatchAMessage()
{
    MSG oMessage{};
    if (Processes().PeekMessageA(&oMessage, nullptr, 0, 0, PM_REMOVE))
    {
        Processes().TranslateMessage(&oMessage);
        Processes().DispatchMessageA(&oMessage);
    }
}
}

void CSFolder::CreateProcessAndWait(const char* pszApplication, const char* pszCommandLine,
                                    const char* pszWorkingFolder)
{
    PROCESS_INFORMATION oProcess{};
    if (!Start(pszApplication, pszCommandLine, pszWorkingFolder, oProcess))
        return;
    // Asked for again and again instead of waited for, because messages are to be dispatched meanwhile.
    DWORD nExitCode = 0;
    do
    {
        if (!Processes().GetExitCodeProcess(oProcess.hProcess, &nExitCode))
            break;
        DispatchAMessage();
        Processes().Sleep(nPollMilliseconds);
    } while (nExitCode == STILL_ACTIVE);   // which a process may also end with: that one is waited for for ever
    Handles().CloseHandle(oProcess.hProcess);
    Handles().CloseHandle(oProcess.hThread);
}

bool CSFolder::XCopyFolder(const char* pszSource, const char* pszDestination, std::string&)
{
    if (!pszSource || !pszDestination)
        return false;
    CString strCommandLine;
    strCommandLine.Format(R"(xcopy "%s" "%s" /ISOQ)", pszSource, pszDestination);
    CreateProcessAndWait(nullptr, strCommandLine, nullptr);
    return true;   // however it went
}
