#include "Desktop.h"

#include <filesystem>
#include <string>

#include <dlfcn.h>

namespace
{
constexpr char s_szModule[] = "zevrinutils/libZevrinDesktop.so";

// The module lies in a folder beside the one that this code is in, in the build tree as installed: it is nobody's to
// link, and so not where the loader looks for libraries.
DesktopEntry Load()
{
    Dl_info oInfo;
    if (!::dladdr(reinterpret_cast<const void*>(&Load), &oInfo))
        return nullptr;
    const auto oPath = std::filesystem::path(oInfo.dli_fname).parent_path() / s_szModule;
    void* const pModule = ::dlopen(oPath.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    return pModule ? reinterpret_cast<DesktopEntry>(::dlsym(pModule, s_szDesktopEntry)) : nullptr;
}
}

const DesktopCalls* Desktop() noexcept
{
    try
    {
        static const DesktopEntry s_pfnEntry = Load();
        return s_pfnEntry ? s_pfnEntry() : nullptr;
    }
    catch (const std::exception&)   // no memory for the path
    {
        return nullptr;
    }
}
