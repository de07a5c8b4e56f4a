// The contract of the registry, the same on every target.
#include "platform/Registry.h"
#include "platform/Threads.h"

#include "OwnRegistry.h"

#include <string>

#include <gtest/gtest.h>

namespace
{
struct RegistryTest : testing::Test
{
    LSTATUS Open(const std::string& strBelow, REGSAM nRights = KEY_READ)
    {
        return Registry().RegOpenKeyExA(HKEY_LOCAL_MACHINE, (m_oRegistry.Key() + strBelow).c_str(), 0, nRights,
                                        &m_hKey);
    }

    LSTATUS Create(const std::string& str)
    {
        return Registry().RegCreateKeyExA(HKEY_LOCAL_MACHINE, (m_oRegistry.Key() + str).c_str(), 0, nullptr, 0,
                                          KEY_ALL_ACCESS, nullptr, &m_hKey, nullptr);
    }

    LSTATUS Set(const std::string& strName, const char (&achBytes)[4])
    {
        return Registry().RegSetValueExA(m_hKey, strName.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(achBytes),
                                         4);
    }

    // "error", or "name bytes" in buffers of so many bytes.
    std::string Value(DWORD nIndex, DWORD nName = 8, DWORD nSize = 4)
    {
        BYTE aData[4];
        const LSTATUS nError =
            Registry().RegEnumValueA(m_hKey, nIndex, m_achName, &nName, nullptr, nullptr, aData, &nSize);
        return nError ? std::to_string(nError) : m_achName + (' ' + std::string(aData, aData + nSize));
    }

    std::string SubKey(DWORD nIndex, DWORD nName = 8)
    {
        const LSTATUS nError =
            Registry().RegEnumKeyExA(m_hKey, nIndex, m_achName, &nName, nullptr, nullptr, nullptr, nullptr);
        return nError ? std::to_string(nError) : std::string(m_achName, nName);
    }

    LSTATUS Query(const char* pszName, DWORD nCapacity, DWORD nExpected)
    {
        BYTE aData[4] = {'.'};
        const LSTATUS nError = Registry().RegQueryValueExA(m_hKey, pszName, nullptr, nullptr, aData, &nCapacity);
        EXPECT_EQ(nCapacity, nExpected) << pszName;
        EXPECT_EQ(aData[0] == '.', nError != 0) << pszName;
        return nError;
    }

    OwnRegistry m_oRegistry;
    HKEY m_hKey = nullptr;
    char m_achName[8] = "";
};
}

TEST_F(RegistryTest, KeepsKeysAndValuesWithoutRegardToCaseAndInOrder)
{
    EXPECT_EQ(Open("\\A\\b"), 2);
    for (const char* psz : {"\\A\\b", "\\c\\d", "\\B", "\\a\\x", "\\b", "\\a\\B\\", "\\\\A\\\\b", ""})
        EXPECT_TRUE(Create(psz) == 0 && Open(psz) == 0) << psz;
    EXPECT_EQ(Open("\\A\\c"), 2);
    EXPECT_EQ(Registry().RegOpenKeyExA(HKEY_LOCAL_MACHINE, "\\Software", 0, KEY_READ, &m_hKey), ERROR_BAD_PATHNAME);
    EXPECT_NE(Create('\\' + std::string(256, 'k')), 0);
    ASSERT_EQ(Create(""), 0);
    EXPECT_EQ(SubKey(0) + SubKey(1) + SubKey(2, 2) + SubKey(3) + SubKey(1) + SubKey(1, 1) + SubKey(2), "ABc259B234c");

    EXPECT_EQ(Set("Name", "xxx") | Set("nAME", "yyy") | Set("a2", "222") | Set("", "000") | Set("A1", "111"), 0);
    EXPECT_EQ(Set(std::string(16383, 'v'), "vvv"), 0);
    EXPECT_EQ(Set(std::string(16384, 'v'), "vvv"), ERROR_INVALID_PARAMETER);
    const std::string strAll = Value(0) + Value(1) + Value(2) + Value(3) + Value(4) + Value(5);
    EXPECT_EQ(strAll, std::string(" 000\0A1 111\0a2 222\0Name yyy\000234259", 34));
    EXPECT_EQ(Value(3, 4) + Value(3, 5, 3), "234234");
    EXPECT_EQ(Query("NAME", 4, 4) + Query(nullptr, 4, 4), 0);
    EXPECT_EQ(Query("name", 3, 4), ERROR_MORE_DATA);
    EXPECT_EQ(Registry().RegDeleteValueA(m_hKey, "NAME"), 0);
    EXPECT_EQ(Registry().RegDeleteValueA(m_hKey, "Name"), 2);
    EXPECT_EQ(Query("Name", 4, 4), 2);
}

TEST_F(RegistryTest, ChecksHandlesAndTheirRights)
{
    ASSERT_EQ(Create("\\sub") | Open(""), 0);
    EXPECT_TRUE(Set("v", "abc") == ERROR_ACCESS_DENIED &&
                Registry().RegDeleteValueA(m_hKey, "v") == ERROR_ACCESS_DENIED);
    ASSERT_EQ(Open("", KEY_SET_VALUE) | Set("v", "abc"), 0);
    EXPECT_TRUE(SubKey(0) + Value(0) == "55" && Query("v", 4, 4) == 5);
    const auto hEvent = static_cast<HKEY>(Threads().CreateEventA(nullptr, TRUE, FALSE, nullptr));
    const HKEY hClosed = m_hKey;
    EXPECT_EQ(Registry().RegCloseKey(m_hKey), 0);
    for (const HKEY hBad : {hClosed, HKEY{}, hEvent})
    {
        m_hKey = hBad;
        EXPECT_TRUE(SubKey(0) + Value(0) == "66" && Query("v", 4, 4) == 6 && Set("v", "abc") == 6);
        EXPECT_TRUE(Registry().RegDeleteValueA(hBad, "v") == 6 &&
                    Registry().RegOpenKeyExA(hBad, "x", 0, KEY_READ, &m_hKey) == 6);
    }
    EXPECT_EQ(Registry().RegCloseKey(hClosed), 6);
}
