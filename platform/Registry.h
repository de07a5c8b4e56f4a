// The registry. Its calls give their error as the result, and the last error means nothing.
//
// On Linux it is a database of our own (platform/linux/registry/RegistryStore.h): names are bytes, compared without
// regard to case as UTF-8, and the only root is HKEY_LOCAL_MACHINE. What a call has reported as written is seen by
// every process, and stays when the process is killed.
#pragma once

#include "platform/Service.h"
#include "win32/Registry.h"

struct RegistryCalls
{
    // Opens an existing key with a given access; never creates one.
    PLATFORM_CALL(RegOpenKeyExA);
    // Opens a key with a given access, creating it and its parents if need be.
    PLATFORM_CALL(RegCreateKeyExA);
    // Gives a key back; fails for one that is not open.
    PLATFORM_CALL(RegCloseKey);

    // A value's type and bytes. Without a buffer only the count; ERROR_MORE_DATA, the buffer untouched and the
    // count set, if they do not fit.
    PLATFORM_CALL(RegQueryValueExA);
    // Writes a value of any type.
    PLATFORM_CALL(RegSetValueExA);
    PLATFORM_CALL(RegDeleteValueA);

    // The name of subkey number N: ERROR_NO_MORE_ITEMS behind the last, ERROR_MORE_DATA if name and terminator
    // do not fit.
    PLATFORM_CALL(RegEnumKeyExA);
    // Value number N, likewise: name, type and bytes.
    PLATFORM_CALL(RegEnumValueA);
};

inline const RegistryCalls& Registry() noexcept
{
    return PlatformService<RegistryCalls>::InForce();
}
