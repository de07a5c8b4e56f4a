// The contract of C's memory, the same on every target.
#include "platform/Memory.h"
#include "ZevrinUtils/Export.h"

#include <cstring>

#include <gtest/gtest.h>

// Sanitizers would end what asks for more than there is. NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" ZEVRINUTILS_API const char* __asan_default_options()
{
    return "allocator_may_return_null=1";
}
extern "C" ZEVRINUTILS_API const char* __tsan_default_options()
{
    return __asan_default_options();
}
// NOLINTEND(bugprone-reserved-identifier)

TEST(Memory, GrowsWithItsContentAndIsNullWhereThereIsNone)
{
    constexpr std::size_t nTooMuch = SIZE_MAX / 2;
    Malloced<char> pBlock(static_cast<char*>(Memory().malloc(6)));
    ASSERT_NE(pBlock, nullptr);
    std::memcpy(pBlock.get(), "block", 6);
    pBlock.reset(static_cast<char*>(Memory().realloc(pBlock.release(), 1 << 20)));
    ASSERT_NE(pBlock, nullptr);
    pBlock.get()[(1 << 20) - 1] = 1;
    EXPECT_EQ(Memory().malloc(nTooMuch), nullptr);
    EXPECT_EQ(Memory().realloc(pBlock.get(), nTooMuch), nullptr);
    EXPECT_STREQ(pBlock.get(), "block");   // as it was
}
