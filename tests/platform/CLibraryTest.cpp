// The contract of what C's library gives, its memory, files and random numbers, the same on every target.
#include "platform/Memory.h"
#include "platform/Random.h"
#include "platform/Streams.h"
#include "support/ScratchFolder.h"

#include "Native.h"

#include <algorithm>
#include <cstring>
#include <vector>

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

TEST(Streams, AreReadInWholeItemsToTheEndOrNotOpened)
{
    const ScratchFolder oFolder;
    for (const char* pszRefused : {"missing", ".", "no\\such"})
        EXPECT_EQ(Streams().fopen((oFolder / pszRefused).c_str(), "r"), nullptr) << pszRefused;
    for (const auto& [strBytes, strText] : {std::pair<std::string, std::string>{"", ""},
                                            {"line\nline", "line\nline"},
                                            {"a\r\nb\x1a z", bWindows ? "a\nb" : "a\r\nb\x1a z"},
                                            {std::string(100000, 'x'), std::string(100000, 'x')}})
    {
        ScratchFolder::Write(oFolder / "file", strBytes);
        std::FILE* const pFile = Streams().fopen((oFolder / "file").c_str(), "r");
        ASSERT_NE(pFile, nullptr);
        std::string strRead(100001, '#');
        EXPECT_EQ(Streams().fread(strRead.data(), 2, 50000, pFile), strText.size() / 2);
        EXPECT_EQ(strRead.substr(0, strText.size() / 2 * 2), strText.substr(0, strText.size() / 2 * 2));
        EXPECT_EQ(Streams().fread(strRead.data(), 1, 1, pFile), 0u);
        EXPECT_EQ(Streams().fclose(pFile), 0);
    }
}

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
