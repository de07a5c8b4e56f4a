#include "module/UtilsApp.h"

CUtilsApp::CUtilsApp() noexcept : CWinApp(nullptr) {}

CUtilsApp::~CUtilsApp() = default;

bool CUtilsApp::InitInstance()
{
    return true;
}

int CUtilsApp::ExitInstance()
{
    return CWinApp::ExitInstance();
}
