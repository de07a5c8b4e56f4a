// The desktop module, if this machine has one and the process a display.
#pragma once

#include "DesktopCalls.h"

// Null where no window can be shown. Loads the module at the first call; it stays.
const DesktopCalls* Desktop() noexcept;
