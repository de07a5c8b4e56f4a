// The shell's browser, by the desktop module's window.
#include "win32/Desktop.h"

#include "Desktop.h"
#include "ShellItems.h"
#include "Window.h"
#include "platform/linux/base/Buffers.h"
#include "platform/linux/base/Paths.h"
#include "platform/linux/base/Unicode.h"
#include "util/OrEmpty.h"
#include "win32/Kernel.h"

#include <exception>

namespace
{
// The folder browser as a window of its caller's, whose handle is good from its opening to its end.
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

// One run of the browser, of which the caller hears meanwhile.
class Browse
{
public:
    Browse(const DesktopCalls& oDesktop, const BROWSEINFOA& oInfo) : m_oDesktop(oDesktop), m_oInfo(oInfo) {}
    ~Browse() { ForgetWindow(m_hWindow); }
    Browse(const Browse&) = delete;
    Browse& operator=(const Browse&) = delete;

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

    // Behind the run, as nothing may be thrown through the window's own code, which is C.
    void ThrowWhatAHookThrew() const
    {
        if (m_pThrown)
            std::rethrow_exception(m_pThrown);
    }

private:
    // Ends the browse when the body throws; afterwards no hook is called.
    template <class Body>
    void Guarded(Body body) noexcept
    {
        if (m_pThrown)
            return;
        try
        {
            body();
        }
        catch (...)
        {
            m_pThrown = m_pThrown ? m_pThrown : std::current_exception();   // a hook within a hook may have thrown
            m_oDesktop.pfnCancel(m_pBrowser);
        }
    }

    static void Opened(void* pThis, DesktopBrowser* pBrowser)
    {
        auto& oThis = *static_cast<Browse*>(pThis);
        oThis.m_pBrowser = pBrowser;
        oThis.Guarded([&] {
            oThis.m_hWindow = OpenWindow(std::make_shared<BrowserWindow>(oThis.m_oDesktop, pBrowser));
            oThis.Tell(BFFM_INITIALIZED, 0);
        });
    }
    static void Selected(void* pThis, const char* pszPath)
    {
        auto& oThis = *static_cast<Browse*>(pThis);
        oThis.Guarded([&] {
            Malloced<ITEMIDLIST> pItems;
            if (ErrorOf([&] { pItems = ItemsOf(pszPath); }) == ERROR_SUCCESS)
                oThis.Tell(BFFM_SELCHANGED, reinterpret_cast<LPARAM>(pItems.get()));
        });
    }
    static int Refused(void* pThis, const char* pszTyped)
    {
        auto& oThis = *static_cast<Browse*>(pThis);
        int nStayOpen = 0;
        oThis.Guarded([&] { nStayOpen = oThis.Tell(BFFM_VALIDATEFAILEDA, reinterpret_cast<LPARAM>(pszTyped)); });
        return nStayOpen;
    }
    static void Closing(void* pThis)
    {
        auto& oThis = *static_cast<Browse*>(pThis);
        oThis.Guarded([&] { CloseWindow(oThis.m_hWindow); });
    }

    int Tell(UINT nMessage, LPARAM nValue) const
    {
        return m_oInfo.lpfn ? m_oInfo.lpfn(m_hWindow, nMessage, nValue, m_oInfo.lParam) : 0;
    }

    const DesktopCalls& m_oDesktop;
    const BROWSEINFOA& m_oInfo;
    DesktopBrowser* m_pBrowser = nullptr;
    HWND m_hWindow = nullptr;
    std::exception_ptr m_pThrown;
};
}

ITEMIDLIST* win32::SHBrowseForFolderA(BROWSEINFOA* pInfo)
{
    const DesktopCalls* const pDesktop = Desktop();
    if (!pDesktop)
        return ResultOr<ITEMIDLIST*>(nullptr, []() -> ITEMIDLIST* { throw Failure{ERROR_CANCELLED}; });
    Browse oBrowse(*pDesktop, *pInfo);
    Malloced<ITEMIDLIST> pItems(ResultOr<ITEMIDLIST*>(nullptr, [&] {
        const Malloced<char> pszChosen = oBrowse.Run();
        Require(pszChosen != nullptr, ERROR_CANCELLED);
        if (pInfo->pszDisplayName)
            CopyCut(ShownName(pszChosen.get()), pInfo->pszDisplayName, MAX_PATH);
        return ItemsOf(pszChosen.get()).release();
    }));
    oBrowse.ThrowWhatAHookThrew();
    return pItems.release();
}
