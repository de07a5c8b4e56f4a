// What several services share.
#pragma once

#include "ZevrinUtils/Types.h"

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;

struct SECURITY_ATTRIBUTES;   // never passed: null only
using LPSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES*;
