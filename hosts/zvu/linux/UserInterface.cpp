#include "../UserInterface.h"

// Linux has nothing to start.
bool StartUserInterface()
{
    return true;
}
