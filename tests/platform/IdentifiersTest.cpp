// The contract of unique identifiers, the same on every target.
#include "platform/Identifiers.h"

#include <set>
#include <string>

#include <gtest/gtest.h>

namespace
{
std::string TextOf(UUID oId)
{
    RPC_CSTR pszText = nullptr;
    EXPECT_EQ(Identifiers().UuidToStringA(&oId, &pszText), RPC_S_OK);
    const std::string strText = reinterpret_cast<const char*>(pszText);
    EXPECT_EQ(Identifiers().RpcStringFreeA(&pszText), RPC_S_OK);
    return strText;
}
}

TEST(Identifiers, AreNewAndHaveATextOfTheirFieldsInOrder)
{
    EXPECT_EQ(TextOf({0xA1B2C3D4, 0x0506, 0x0708, {9, 10, 11, 12, 13, 14, 15, 16}}),
              "a1b2c3d4-0506-0708-090a-0b0c0d0e0f10");
    std::set<std::string> oTexts;
    for (int n = 0; n < 100; ++n)
    {
        UUID oId{};
        const RPC_STATUS nStatus = Identifiers().UuidCreate(&oId);
        EXPECT_TRUE(nStatus == RPC_S_OK || nStatus == RPC_S_UUID_LOCAL_ONLY) << nStatus;
        oTexts.insert(TextOf(oId));
    }
    EXPECT_EQ(oTexts.size(), 100u);
}
