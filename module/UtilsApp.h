// The library as a module of the framework.
#pragma once

#include "framework/WinApp.h"

// Does nothing of its own: the start of the module cannot fail through the library's code, and every
// service waits passively for its first call.
class CUtilsApp : public CWinApp
{
public:
    CUtilsApp() noexcept;
    ~CUtilsApp() override;

    bool InitInstance() override;
    int ExitInstance() override;
};
