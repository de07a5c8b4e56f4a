#include "ZevrinUtils/DNSResolver.h"

#include <cstring>

#if defined(_WIN32)
#define PART_API extern "C" __declspec(dllexport)
#else
#define PART_API extern "C" __attribute__((visibility("default")))
#endif

// Asks the resolver; true if the answer is the wanted name.
PART_API int AskFor(const char* pszAddress, const char* pszWanted)
{
    return CSDNSResolver::Instance()->GetDNSName(pszAddress) == pszWanted;
}
