#pragma once

#include <cstdio>
