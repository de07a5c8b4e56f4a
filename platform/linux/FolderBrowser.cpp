// The shell's browser, by the desktop module's window.
#include "system/Shell.h"

#include "Desktop.h"
#include "Failure.h"
#include "Paths.h"
#include "ShellItems.h"
#include "Wide.h"
#include "Window.h"
#include "platform/Memory.h"
#include "platform/OrEmpty.h"
#include "system/Files.h"

namespace
{
// Where the desktop module offers no window, there is none.
class BrowserWindow final : public Window
{
public:
    BrowserWindow(const DesktopCalls& oDesktop, DesktopBrowser* pBrowser) : m_oDesktop(oDesktop), m_pBrowser(pBrowser)
    {
    }

    LRESULT OnMessage(UINT nMessage, WPARAM wParam, LPARAM lParam) override
    {
        if (nMessage == BFFM_ENABLEOK)
            m_oDesktop.pfnEnableOk(m_pBrowser, lParam != 0);
        if (nMessage == BFFM_SETOKTEXT && lParam)
            m_oDesktop.pfnSetOkText(m_pBrowser, Narrowed(reinterpret_cast<LPCWSTR>(lParam)).c_str());
        if (nMessage == BFFM_SETSELECTIONA && lParam)
            m_oDesktop.pfnSelect(m_pBrowser, wParam ? NativePath(reinterpret_cast<LPCSTR>(lParam))
                                                    : PathOf(*reinterpret_cast<const ITEMIDLIST*>(lParam)).c_str());
        return 0;
    }
    std::string Caption() const override { return m_oDesktop.pfnCaption(m_pBrowser); }
    DesktopBrowser* Native() const override { return m_pBrowser; }

private:
    const DesktopCalls& m_oDesktop;
    DesktopBrowser* m_pBrowser;
};

// One run of the browser, and what it tells the caller meanwhile.
class Browse
{
public:
    Browse(const DesktopCalls& oDesktop, const BROWSEINFOA& oInfo) : m_oDesktop(oDesktop), m_oInfo(oInfo) {}

    Malloced<char> Run()
    {
        const std::string strRoot = m_oInfo.pidlRoot ? PathOf(*m_oInfo.pidlRoot) : std::string();
        const DesktopBrowse oRequest{OrEmpty(m_oInfo.lpszTitle),
                                     strRoot.c_str(),
                                     (m_oInfo.ulFlags & BIF_EDITBOX) != 0,
                                     (m_oInfo.ulFlags & BIF_VALIDATE) != 0,
                                     (m_oInfo.ulFlags & BIF_RETURNONLYFSDIRS) != 0,
                                     this,
                                     &Opened,
                                     &Selected,
                                     &Refused,
                                     &Closing};
        return Malloced<char>(m_oDesktop.pfnBrowse(&oRequest));
    }

private:
    static void Opened(void* pThis, DesktopBrowser* pBrowser)
    {
        auto& oThis = *static_cast<Browse*>(pThis);
        oThis.m_hWindow = OpenWindow(std::make_shared<BrowserWindow>(oThis.m_oDesktop, pBrowser));
        oThis.Tell(BFFM_INITIALIZED, 0);
    }
    static void Selected(void* pThis, const char* pszPath)
    {
        if (const Malloced<ITEMIDLIST> pItems{ItemsOf(pszPath)})
            static_cast<Browse*>(pThis)->Tell(BFFM_SELCHANGED, reinterpret_cast<LPARAM>(pItems.get()));
    }
    static int Refused(void* pThis, const char* pszTyped)
    {
        return static_cast<Browse*>(pThis)->Tell(BFFM_VALIDATEFAILEDA, reinterpret_cast<LPARAM>(pszTyped));
    }
    static void Closing(void* pThis) { CloseWindow(static_cast<Browse*>(pThis)->m_hWindow); }

    int Tell(UINT nMessage, LPARAM nValue) const
    {
        return m_oInfo.lpfn ? m_oInfo.lpfn(m_hWindow, nMessage, nValue, m_oInfo.lParam) : 0;
    }

    const DesktopCalls& m_oDesktop;
    const BROWSEINFOA& m_oInfo;
    HWND m_hWindow = nullptr;
};
}

ITEMIDLIST* win32::SHBrowseForFolderA(BROWSEINFOA* pInfo)
{
    const DesktopCalls* const pDesktop = Desktop();
    if (!pDesktop)
        return Fail(ERROR_CANCELLED, static_cast<ITEMIDLIST*>(nullptr));
    return OrOutOfMemory(static_cast<ITEMIDLIST*>(nullptr), [&]() -> ITEMIDLIST* {
        const Malloced<char> pszChosen = Browse(*pDesktop, *pInfo).Run();
        if (!pszChosen)
            return Fail(ERROR_CANCELLED, static_cast<ITEMIDLIST*>(nullptr));
        if (pInfo->pszDisplayName)
            pInfo->pszDisplayName[ShownName(pszChosen.get()).copy(pInfo->pszDisplayName, MAX_PATH - 1)] = 0;
        return ItemsOf(pszChosen.get());
    });
}
