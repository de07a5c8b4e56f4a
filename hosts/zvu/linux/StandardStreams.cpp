#include "../StandardStreams.h"

#include <unistd.h>

// Nothing is translated on Linux.
void MakeBinary(eStandardStream) {}

bool IsTerminal(eStandardStream eStream)
{
    return isatty(eStream) != 0;
}
