// Windows, their messages, and the message box. On Linux the only windows are those of the desktop module.
#pragma once

#include "platform/Service.h"
#include "win32/Desktop.h"

struct UserInterfaceCalls
{
    // Gives a message to a window's procedure and its answer back.
    PLATFORM_CALL(SendMessageA);
    // The length of a window's caption in bytes; 0 for no window.
    PLATFORM_CALL(GetWindowTextLengthA);
    // The caption, cut to the buffer.
    PLATFORM_CALL(GetWindowTextA);

    // Replaces a window's procedure and gives the one before; 0 on failure.
    PLATFORM_CALL(SetWindowLongPtrA);
    // Calls a procedure that was replaced.
    PLATFORM_CALL(CallWindowProcA);
    // Does with a message what a window does by default.
    PLATFORM_CALL(DefWindowProcA);

    // Keeps a value with a window, under a name: non-zero on success.
    PLATFORM_CALL(SetPropA);
    // The value; null if there is none.
    PLATFORM_CALL(GetPropA);
    // Takes the value away and gives it.
    PLATFORM_CALL(RemovePropA);

    // Shows a text and waits until the user has read it. Gives the button; 0 where no window can be shown.
    PLATFORM_CALL(MessageBoxA);
};

inline const UserInterfaceCalls& UserInterface() noexcept
{
    return PlatformService<UserInterfaceCalls>::InForce();
}
