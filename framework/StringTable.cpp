#include "framework/StringTable.h"

#include <algorithm>
#include <iterator>

namespace
{
struct Entry
{
    unsigned nId;
    const char* pszText;
};
constexpr Entry s_aEntries[] = {
    {eMailLoadFailed, "The mail system of this machine could not be loaded."},
    {eMailEntryMissing, "The mail system of this machine is not valid: it cannot send a message."},
};
}

const char* FrameworkText(unsigned nId) noexcept
{
    const auto* const pEntry = std::find_if(std::begin(s_aEntries), std::end(s_aEntries),
                                            [nId](const Entry& oEntry) { return oEntry.nId == nId; });
    return pEntry == std::end(s_aEntries) ? "" : pEntry->pszText;
}
