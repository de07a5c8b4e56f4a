#include "framework/String.h"
#include "framework/StringMap.h"

#include <gtest/gtest.h>

TEST(String, CountsItsBytesAndTakesNullAsEmpty)
{
    CString strText(static_cast<const char*>(nullptr));
    EXPECT_TRUE(strText.IsEmpty());
    strText = "ab";
    strText += 'c';
    EXPECT_STREQ(strText + "d" + CString("e"), "abcde");
    EXPECT_EQ(CString("a\0b", 3).GetLength(), 3);
    strText.Empty();
    EXPECT_EQ(strText, "");
}

TEST(String, PartsAndPlacesStayInsideTheText)
{
    const CString strText("http://host:80/");
    EXPECT_EQ(strText.Find(':'), 4);
    EXPECT_EQ(strText.Find(':', 5), 11);
    EXPECT_EQ(strText.ReverseFind(':'), 11);
    EXPECT_EQ(strText.Find("//"), 5);
    for (const int nMissing : {strText.Find("///"), strText.Find('x'), strText.Find(':', 99), strText.ReverseFind('x')})
        EXPECT_EQ(nMissing, -1);
    EXPECT_EQ(strText.Left(4), "http");
    EXPECT_EQ(strText.Mid(7, 4), "host");
    EXPECT_EQ(strText.Right(3), "80/");
    EXPECT_EQ(strText.Left(99), strText);
    EXPECT_EQ(strText.Right(-1) + strText.Mid(99) + strText.Left(-1), "");
}

TEST(String, ComparesWithAndWithoutCase)
{
    EXPECT_LT(CString("Z").Compare("a"), 0);
    EXPECT_GT(CString("Z").CompareNoCase("a"), 0);
    EXPECT_EQ(CString("HoSt").CompareNoCase("hOsT"), 0);
    EXPECT_LT(CString("ab").CompareNoCase("ABC"), 0);
    EXPECT_LT(CString("a"), "b");
    EXPECT_NE(CString("a"), CString("A"));
}

TEST(StringMap, HoldsOneValueForEachExactKey)
{
    CMapStringToString oMap(10);
    oMap["Host"] = "one";
    oMap.SetAt("host", "two");
    oMap.SetAt("host", "three");
    CString strValue("untouched");
    EXPECT_FALSE(oMap.Lookup("HOST", strValue));
    EXPECT_EQ(strValue, "untouched");
    EXPECT_TRUE(oMap.Lookup("host", strValue));
    EXPECT_EQ(strValue, "three");
    EXPECT_EQ(oMap.GetCount(), 2);
    EXPECT_TRUE(oMap.RemoveKey("host"));
    EXPECT_FALSE(oMap.RemoveKey("host"));
    oMap.RemoveAll();
    EXPECT_TRUE(oMap.IsEmpty());
}
