// An application that does nothing of its own, and the frame around it, which ends only an instance that started.
#include "framework/WinApp.h"

CWinApp::CWinApp(const char* pszAppName) noexcept : m_pszAppName(pszAppName) {}

CWinApp::~CWinApp() = default;

bool CWinApp::InitInstance()
{
    return true;
}

int CWinApp::ExitInstance()
{
    return 0;
}

CModuleRun::CModuleRun(CWinApp& oApp) : m_oApp(oApp), m_bStarted(oApp.InitInstance()) {}

CModuleRun::~CModuleRun()
{
    if (m_bStarted)
        m_oApp.ExitInstance();
}
