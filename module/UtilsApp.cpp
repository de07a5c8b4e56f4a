// Empty on purpose: the object has its place in the order of load, and a start that did something could fail.
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
