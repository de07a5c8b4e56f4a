// The shell: its folder browser, its items and their texts.
//
// An item list names a thing of the shell by the way to it from the desktop. It is memory of the shell's allocator.
// On Linux each folder is an item: "/", "home" and so on; the desktop itself is the empty list.
#pragma once

#include "platform/Service.h"
#include "win32/Desktop.h"

struct ShellCalls
{
    // Lets the user choose a folder and tells a callback what happens meanwhile. The chosen item, which the caller
    // frees; null if the user cancels, and where no window can be shown.
    PLATFORM_CALL(SHBrowseForFolderA);
    // An item's path, in a buffer of MAX_PATH: FALSE and an empty text for what has none.
    PLATFORM_CALL(SHGetPathFromIDListA);
    // A reference to the folder that all others lie in.
    PLATFORM_CALL(SHGetDesktopFolder);
    // A reference to the shell's allocator.
    PLATFORM_CALL(SHGetMalloc);
    // A text that the shell has given, cut to the buffer.
    PLATFORM_CALL(StrRetToBufA);
};

inline const ShellCalls& ShellService() noexcept
{
    return PlatformService<ShellCalls>::InForce();
}
