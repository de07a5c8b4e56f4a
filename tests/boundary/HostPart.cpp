// A part of a host that asks through a function of the library, loaded and unloaded with it.
#include "ZevrinUtils/DNSResolver.h"

// Asks the resolver; non-zero if the answer is the wanted one.
extern "C" EXPORTED int AskFor(const char* pszAddress, const char* pszWanted)
{
    return CSDNSResolver::Instance()->GetDNSName(pszAddress) == pszWanted;
}
