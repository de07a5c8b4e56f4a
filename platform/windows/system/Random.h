#pragma once

#include <cstdlib>
#include <ctime>
