// CWinApp: the application object of a module, and the frame that runs it.
#pragma once

class CWinApp
{
public:
    // The name is borrowed; null stands for the name of the module.
    explicit CWinApp(const char* pszAppName = nullptr) noexcept;
    virtual ~CWinApp();
    CWinApp(const CWinApp&) = delete;
    CWinApp& operator=(const CWinApp&) = delete;

    // Starts an instance. False gives up the start: ExitInstance is then not called.
    virtual bool InitInstance();

    // Ends the instance and gives its exit code.
    virtual int ExitInstance();

    const char* const m_pszAppName;
};

// Runs a module's application object for as long as it lives. A module places one behind its last
// load-time object, so the application starts when all of them are there and ends before the first
// of them goes.
class CModuleRun
{
public:
    explicit CModuleRun(CWinApp& oApp);
    ~CModuleRun();
    CModuleRun(const CModuleRun&) = delete;
    CModuleRun& operator=(const CModuleRun&) = delete;

private:
    CWinApp& m_oApp;
    const bool m_bStarted;
};
