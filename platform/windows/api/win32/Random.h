#pragma once

#include <cstdlib>

static_assert(RAND_MAX == 32767);
