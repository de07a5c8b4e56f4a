// The contract of C's memory, the same on every target.
#include "platform/Memory.h"

#include <cstring>

#include <gtest/gtest.h>

TEST(Memory, GrowsWithItsContentAndIsNullWhereThereIsNone)
{
    constexpr std::size_t nTooMuch = SIZE_MAX / 2;
    Malloced<char> pBlock(static_cast<char*>(Memory().malloc(6)));
    ASSERT_NE(pBlock, nullptr);
    std::memcpy(pBlock.get(), "block", 6);
    pBlock.reset(static_cast<char*>(Memory().realloc(pBlock.release(), 1 << 20)));
    ASSERT_NE(pBlock, nullptr);
    pBlock.get()[(1 << 20) - 1] = 1;
    // The presets tell the sanitizers not to end a program that asks for so much.
    EXPECT_EQ(Memory().malloc(nTooMuch), nullptr);
    EXPECT_EQ(Memory().realloc(pBlock.get(), nTooMuch), nullptr);
    EXPECT_STREQ(pBlock.get(), "block");   // as it was
}
