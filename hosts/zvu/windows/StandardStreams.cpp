#include "../StandardStreams.h"

#include <fcntl.h>
#include <io.h>

void MakeBinary(eStandardStream eStream)
{
    _setmode(eStream, _O_BINARY);
}

bool IsTerminal(eStandardStream eStream)
{
    return _isatty(eStream) != 0;
}
