// A key of the registry and a window for a test alone.
#pragma once

#include "ZevrinUtils/Types.h"

#include <random>
#include <string>

class OwnRegistry
{
public:
    OwnRegistry() = default;
    ~OwnRegistry() { RegDeleteTreeA(HKEY_LOCAL_MACHINE, m_strKey.c_str()); }
    OwnRegistry(const OwnRegistry&) = delete;
    OwnRegistry& operator=(const OwnRegistry&) = delete;

    std::string Key() const { return m_strKey; }

private:
    std::string m_strKey = "Software\\Zevrin Test " + std::to_string(std::random_device()());
};

inline HWND OpenOwnWindow()
{
    return CreateWindowExA(0, "STATIC", "Caption", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
}

inline void CloseOwnWindow(HWND hWindow)
{
    DestroyWindow(hWindow);
}
