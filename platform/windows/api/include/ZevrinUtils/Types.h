// The system's types, as the exported headers use them.
#pragma once

// Before <windows.h>, which would bring the older socket header that hosts cannot use beside this one.
#include <winsock2.h>

#include <windows.h>
