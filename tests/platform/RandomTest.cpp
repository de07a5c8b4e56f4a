// The contract of the C library's random numbers, the same on every target.
#include "platform/Random.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

TEST(RandomNumbers, AreOf15BitsAndTheSameForTheSameSeed)
{
    const auto sequence = [](unsigned nSeed) {
        Random().srand(nSeed);
        std::vector<int> anNumbers(10000);
        std::generate(anNumbers.begin(), anNumbers.end(), Random().rand);
        return anNumbers;
    };
    const auto anNumbers = sequence(4711);
    EXPECT_EQ(sequence(4711), anNumbers);
    EXPECT_NE(sequence(4712), anNumbers);
    const auto [itLeast, itMost] = std::minmax_element(anNumbers.begin(), anNumbers.end());
    EXPECT_TRUE(*itLeast >= 0 && *itLeast < 768 && *itMost <= 32767 && *itMost > 32000) << *itLeast << ' ' << *itMost;
}
