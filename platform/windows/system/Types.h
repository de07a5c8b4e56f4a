// The system's types, as the exported headers and the platform services use them.
#pragma once

#include <windows.h>
