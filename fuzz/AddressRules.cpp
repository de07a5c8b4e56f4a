// Cuts the text at its dots and judges each group by itself, where the library goes once through the characters.
#include "Rules.h"

#include "ZevrinUtils/IPServices.h"

#include <climits>
#include <cstdlib>
#include <sstream>

std::string FaultInAddress(const unsigned char* pText, std::size_t nSize)
{
    const std::string strText(pText, pText + nSize);
    std::istringstream oGroups(strText.c_str() + std::string("."));
    bool bAreNumbers = true;
    bool bAreInRange = true;
    bool bFitInt = true;   // of one that does not, nothing is promised
    for (std::string strGroup; std::getline(oGroups, strGroup, '.');)
    {
        bAreNumbers &= !strGroup.empty() && strGroup.find_first_not_of("0123456789") == std::string::npos;
        const long long nGroup = std::strtoll(strGroup.c_str(), nullptr, 10);
        bFitInt &= nGroup <= INT_MAX;
        bAreInRange &= nGroup <= 255 || nGroup > INT_MAX;
    }
    const bool bIsValid = CSIPServices::IsValidIP(strText.c_str());
    return bIsValid && !(bAreNumbers && bAreInRange)            ? "it is no address"
           : !bIsValid && bAreNumbers && bAreInRange && bFitInt ? "it is an address"
                                                                : "";
}
