// An entry of a service's table: named, typed and bound to the system's function.
#pragma once

#define PLATFORM_CALL(name) decltype(&::name) name = &::name
