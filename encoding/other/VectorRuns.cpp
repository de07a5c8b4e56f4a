// For processors other than x86, for whose vectors nothing is written yet: the plain runs of encoding/Runs.cpp do it
// all.
#include "encoding/Runs.h"

std::span<const Runs> VectorRuns()
{
    return {};
}
