// The contract of the list of network adapters, the same on every target.
#include "platform/Adapters.h"
#include "platform/Errors.h"
#include "platform/Memory.h"
#include "platform/Sockets.h"

#include <string>

#include <gtest/gtest.h>

TEST(Adapters, FillABufferOfTheSizeThatTheyTellAndLeaveTheLoopbackOut)
{
    ULONG nSize = 0;
    const ULONG nError = Adapters().GetAdaptersInfo(nullptr, &nSize);
    if (nError == ERROR_NO_DATA)
        GTEST_SKIP() << "no network adapter but the loopback";
    ASSERT_EQ(nError, ULONG{ERROR_BUFFER_OVERFLOW});
    const Malloced<IP_ADAPTER_INFO> pFirst(static_cast<PIP_ADAPTER_INFO>(std::malloc(nSize)));
    ULONG nLess = nSize - 1;
    EXPECT_EQ(Adapters().GetAdaptersInfo(pFirst.get(), &nLess), ULONG{ERROR_BUFFER_OVERFLOW});
    EXPECT_EQ(nLess, nSize);
    ASSERT_EQ(Adapters().GetAdaptersInfo(pFirst.get(), &nSize), ULONG{ERROR_SUCCESS});
    for (const auto* pAdapter = pFirst.get(); pAdapter; pAdapter = pAdapter->Next)
        for (const auto* pAddress = &pAdapter->IpAddressList; pAddress; pAddress = pAddress->Next)
        {
            const std::string strText = pAddress->IpAddress.String;
            EXPECT_NE(Sockets().inet_addr(strText.c_str()), INADDR_NONE) << strText;
            EXPECT_FALSE(strText.starts_with("127.")) << strText;
        }
}
