#include "../UserInterface.h"

#include <windows.h>

#include <ole2.h>

bool StartUserInterface()
{
    return SUCCEEDED(OleInitialize(nullptr));
}
