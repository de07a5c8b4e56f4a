// A mail system for tests: writes each message down and answers as it is told.
#include "MessageText.h"

#include <cstdlib>
#include <fstream>

extern "C" __declspec(dllexport) MAPISENDMAIL MAPISendMail;

ULONG WINAPI MAPISendMail(LHANDLE hSession, ULONG_PTR hParent, lpMapiMessage pMessage, FLAGS nFlags, ULONG nReserved)
{
    std::ofstream(std::getenv("ZEVRIN_TEST_LOG"), std::ios::binary)
        << TextOf(hSession, hParent, *pMessage, nFlags, nReserved);
    return static_cast<ULONG>(std::atoi(std::getenv("ZEVRIN_TEST_RESULT")));
}
