// The module is loaded by its path, from where this library lies, so that a machine without a desktop needs none of it.
#include "Desktop.h"

#include <filesystem>
#include <string>

#include <dlfcn.h>

namespace
{
constexpr char s_szModule[] = "zevrinutils/libZevrinDesktop.so";

// The host may have a GTK of its own; two versions do not go together in one process.
bool HasAnotherGtk()
{
    using GetMajorVersion = unsigned (*)();
    const auto pfnVersion = reinterpret_cast<GetMajorVersion>(::dlsym(RTLD_DEFAULT, "gtk_get_major_version"));
    return pfnVersion ? pfnVersion() != 3 : ::dlsym(RTLD_DEFAULT, "gtk_progress_get_type") != nullptr;   // of version 2
}

// The module lies in a folder beside the one that this code is in, in the build tree as installed: it is nobody's to
// link, and so not where the loader looks for libraries.
DesktopEntry Load()
{
    Dl_info oInfo;
    if (HasAnotherGtk() || !::dladdr(reinterpret_cast<const void*>(&Load), &oInfo))
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
