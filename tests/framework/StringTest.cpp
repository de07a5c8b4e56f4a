// Strings stay inside their text, and compare and format as the framework of old did.
#include "ZevrinUtils/framework/String.h"

#include <gtest/gtest.h>

TEST(String, StaysInsideItsTextAndTakesNullAsEmpty)
{
    EXPECT_TRUE(CString(static_cast<const char*>(nullptr)).IsEmpty());
    EXPECT_EQ(CString("a\0b", 3).GetLength(), 3);
    const CString strText("http://host:80/");
    EXPECT_EQ(strText.Find(':'), 4);
    EXPECT_EQ(strText.Find(':', 5), strText.ReverseFind(':'));
    for (const int nMissing : {strText.Find("///"), strText.Find('x'), strText.Find(':', 99), strText.ReverseFind('x')})
        EXPECT_EQ(nMissing, -1);
    EXPECT_EQ(strText.Left(4) + '-' + strText.Mid(7, 4) + "-" + strText.Right(3), "http-host-80/");
    EXPECT_EQ(strText.Left(99) + strText.Right(-1) + strText.Mid(99) + strText.Left(-1), strText);
    EXPECT_EQ(CString("HoSt").CompareNoCase("hOsT"), 0);
    EXPECT_LT(CString("ab").CompareNoCase("ABC"), 0);
    EXPECT_LT(CString("Z"), "a");
    EXPECT_EQ(CString("Read.Me").CollateNoCase("rEAD.mE"), 0);
    EXPECT_LT(CString("a").CollateNoCase("B"), 0);
    EXPECT_GT(CString("read.me2").CollateNoCase("READ.ME"), 0);
    CString strMade("aBÄ");
    strMade.MakeLower();
    EXPECT_EQ(strMade, "abÄ");
    strMade.Format("%s %s (0x%lX, %d)", "a", std::string(300, 'b').c_str(), 0xFEDCBA98ul, -1);
    EXPECT_EQ(strMade, "a " + CString(std::string(300, 'b')) + " (0xFEDCBA98, -1)");
}
