#pragma once

#include <cstdlib>
