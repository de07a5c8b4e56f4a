// A registry and a window for a test alone.
#pragma once

#include "platform/linux/desktop/Window.h"
#include "support/ScratchFolder.h"

#include <cstdlib>

class OwnRegistry
{
public:
    OwnRegistry() { setenv("ZEVRIN_REGISTRY", File().c_str(), 1); }

    std::string Key() const { return "Software\\Zevrin Test"; }
    std::string File() const { return ScratchFolder::Native(m_oFolder / "made/as needed/registry.db"); }
    std::string Folder() const { return ScratchFolder::Native(m_oFolder / ""); }

private:
    ScratchFolder m_oFolder;
};

inline HWND OpenOwnWindow()
{
    struct Unseen : Window
    {
        LRESULT OnMessage(UINT, WPARAM, LPARAM) override { return 0; }
        std::string Caption() const override { return "Caption"; }
        DesktopBrowser* Native() const override { return nullptr; }
    };
    return OpenWindow(std::make_shared<Unseen>());
}

inline void CloseOwnWindow(HWND hWindow)
{
    CloseWindow(hWindow);
}
