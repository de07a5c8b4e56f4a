#include "win32/Profile.h"

#include "Mail.h"

#include <strings.h>

UINT win32::GetProfileIntA(LPCSTR pszSection, LPCSTR pszKey, int nDefault)
{
    const bool bMail = pszSection && pszKey && strcasecmp(pszSection, "MAIL") == 0 && strcasecmp(pszKey, "MAPI") == 0;
    return bMail && HasMailProgram() ? 1 : static_cast<UINT>(nDefault);
}
