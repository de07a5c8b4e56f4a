// The contract of the machine's profile and its one entry of use, the same on every target.
#include "platform/Profile.h"
#include "platform/Modules.h"

#include <gtest/gtest.h>

TEST(Profile, GivesTheNumberOfAnEntryOrTheGivenOne)
{
    for (const auto& [pszSection, pszKey] : {std::pair{"MAIL", "no such entry"}, {"no such section", "MAPI"}})
        for (const int nDefault : {0, 7})
            EXPECT_EQ(Profile().GetProfileIntA(pszSection, pszKey, nDefault), static_cast<UINT>(nDefault));
    // The machine's own mail system, if it has one: what tells of it and what finds it agree.
    const bool bFound = Modules().SearchPathA(nullptr, "MAPI32.DLL", nullptr, 0, nullptr, nullptr) != 0;
    EXPECT_EQ(Profile().GetProfileIntA("MAIL", "MAPI", 0) != 0, bFound);
}
