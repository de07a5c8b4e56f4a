// The C library's functions.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <ctime>

static_assert(RAND_MAX == 32767);
