// Addresses are tested by the form of their groups, and against all adapters of the machine.
#include "ZevrinUtils/IPServices.h"

#include "platform/Adapters.h"
#include "platform/Errors.h"
#include "platform/Memory.h"
#include "support/FaultSweep.h"

#include <cstring>

#include <gtest/gtest.h>

TEST(IPServices, TestTheFormOfEachGroup)
{
    for (const char* pszGood :
         {"1.2.3.4", "1", "1.2", "1.2.3.4.5", "255.255.255.255", "001.002.003.004", "0", "0000255"})
        EXPECT_TRUE(CSIPServices::IsValidIP(pszGood)) << pszGood;
    for (const char* pszBad : {"", ".", "256.1.1.1", "1.1.1.256", ".1.2.3", "1.2.3.", "1..2", "1.2.3.4 ", " 1",
                               "-1.2.3.4", "+1", "1.2.3.a", "1.a2", "1.\xb2", "1.2:80"})
        EXPECT_FALSE(CSIPServices::IsValidIP(pszBad)) << pszBad;
    EXPECT_FALSE(CSIPServices::IsValidIP(nullptr));
}

namespace
{
// 1 local, 0 foreign, -1 no answer.
int Ask(const char* pszText)
{
    bool bIsLocal = true;
    const bool bAnswered = CSIPServices::IsLocalIP(pszText, bIsLocal);
    EXPECT_TRUE(bAnswered || !bIsLocal);
    return bAnswered ? bIsLocal : -1;
}
}

TEST(IPServices, WalkAllAdaptersAndFailWhenAskedInVain)
{
    const auto listThree = [](PIP_ADAPTER_INFO p, ULONG* pnSize) WINAPI -> ULONG {
        if (!p)
            return *pnSize = 2 * sizeof *p + sizeof(IP_ADDR_STRING),
                   FaultSweep::Strikes("size") ? ERROR_NO_DATA : ERROR_BUFFER_OVERFLOW;
        auto* const pMore = reinterpret_cast<PIP_ADDR_STRING>(p + 2);
        p->Next = p + 1;
        p[1].IpAddressList.Next = pMore;
        std::strcpy(p[0].IpAddressList.IpAddress.String, "10.0.0.1");
        std::strcpy(p[1].IpAddressList.IpAddress.String, "10.0.0.2");
        std::strcpy(pMore->IpAddress.String, "10.0.0.3");
        return FaultSweep::Strikes("list") ? ERROR_NOT_ENOUGH_MEMORY : ERROR_SUCCESS;
    };
    const Substitution oAdapters(&AdapterCalls::GetAdaptersInfo, listThree);
    for (const char* pszLocal : {"10.0.0.1", "10.0.0.2", "10.0.0.3"})
        EXPECT_EQ(Ask(pszLocal), 1) << pszLocal;
    EXPECT_EQ(Ask("10.0.0.4"), 0);
    FaultSweep::Over([] { EXPECT_EQ(Ask("10.0.0.1"), FaultSweep::s_nFirst ? -1 : 1); });
    const Substitution oNone(&MemoryCalls::malloc, [](std::size_t) -> void* { return nullptr; });
    EXPECT_EQ(Ask("10.0.0.1"), -1);
}
