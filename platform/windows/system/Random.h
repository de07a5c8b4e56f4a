#pragma once

#include <cstdlib>
#include <ctime>

static_assert(RAND_MAX == 32767);
