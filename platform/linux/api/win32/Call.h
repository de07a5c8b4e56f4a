// An entry of a service's table: named, typed and bound to our function of that name. Ours stand in
// a namespace, because some of them (gethostbyaddr, send, recv) share their name with a
// function of the C library that promises less. None is noexcept: a replacement has to fit both targets.
#pragma once

#define PLATFORM_CALL(name) decltype(&win32::name) name = &win32::name
