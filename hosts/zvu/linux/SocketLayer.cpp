#include "../SocketLayer.h"

// Linux has nothing to start.
bool StartSocketLayer()
{
    return true;
}
