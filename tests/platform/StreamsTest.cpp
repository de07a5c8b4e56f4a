// The contract of C's files, the same on every target.
#include "platform/Streams.h"
#include "support/ScratchFolder.h"

#include "Native.h"

#include <gtest/gtest.h>

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
