#include "encoding/Runs.h"

// Nothing is written for the vectors of this processor yet.
std::span<const Runs> VectorRuns()
{
    return {};
}
