// The contract of the registry, the same on every target.
#include "platform/Registry.h"
#include "platform/Threads.h"

#include "Own.h"

#include <string>

#include <gtest/gtest.h>

namespace
{
struct RegistryKeys : testing::Test
{
    // Creates the key below the test's own, or another, with all access, or opens it for less.
    LSTATUS Open(const std::string& strBelow, REGSAM nRights = KEY_ALL_ACCESS, HKEY hRoot = HKEY_LOCAL_MACHINE)
    {
        const std::string strPath = (hRoot == HKEY_LOCAL_MACHINE ? m_oRegistry.Key() : "") + strBelow;
        if (nRights != KEY_ALL_ACCESS)
            return Registry().RegOpenKeyExA(hRoot, strPath.c_str(), 0, nRights, &m_hKey);
        return Registry().RegCreateKeyExA(hRoot, strPath.c_str(), 0, nullptr, 0, nRights, nullptr, &m_hKey, nullptr);
    }

    LSTATUS Set(const std::string& strName, const char* psz)
    {
        return Registry().RegSetValueExA(m_hKey, strName.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(psz), 4);
    }

    LSTATUS Query(const char* pszName, DWORD nSize = 4)
    {
        BYTE aData[4];
        return Registry().RegQueryValueExA(m_hKey, pszName, nullptr, nullptr, aData, &nSize);
    }

    // The number of an error, or what is in the buffers, which are of so many bytes.
    std::string Value(DWORD nIndex, DWORD nName = 8, DWORD nSize = 4)
    {
        char achName[8];
        BYTE aData[4];
        const auto nError = Registry().RegEnumValueA(m_hKey, nIndex, achName, &nName, nullptr, nullptr, aData, &nSize);
        return nError ? std::to_string(nError) : achName + std::string(aData, aData + nSize - 1);
    }

    std::string SubKey(DWORD nIndex, DWORD nName = 8)
    {
        char ach[8];
        const auto nError = Registry().RegEnumKeyExA(m_hKey, nIndex, ach, &nName, nullptr, nullptr, nullptr, nullptr);
        return nError ? std::to_string(nError) : std::string(ach, nName);
    }

    OwnRegistry m_oRegistry;
    HKEY m_hKey = nullptr;
};
}

TEST_F(RegistryKeys, KeepsKeysAndValuesWithoutRegardToCaseAndInOrder)
{
    EXPECT_EQ(Open("\\A\\b", KEY_READ), 2);
    for (const char* psz : {"\\A\\b", "\\c\\d", "\\B", "\\a\\x", "\\b", "\\a\\B\\", "\\\\A\\\\b", ""})
        EXPECT_EQ(Open(psz) + Open(psz, KEY_READ), 0) << psz;
    EXPECT_EQ(Open("\\A\\c", KEY_READ), 2);
    EXPECT_EQ(Registry().RegOpenKeyExA(HKEY_LOCAL_MACHINE, "\\Software", 0, KEY_READ, &m_hKey), ERROR_BAD_PATHNAME);
    EXPECT_NE(Open('\\' + std::string(256, 'k')), 0);
    ASSERT_EQ(Open("\\c"), 0);
    const HKEY hAbove = m_hKey;
    EXPECT_EQ(Open("e\\F", KEY_ALL_ACCESS, hAbove) + Open("E\\f", KEY_READ, hAbove) + Open("\\c\\e\\f", KEY_READ), 0);
    ASSERT_EQ(Open(""), 0);
    EXPECT_EQ(SubKey(0) + SubKey(1) + SubKey(2, 2) + SubKey(3) + SubKey(1) + SubKey(1, 1) + SubKey(2), "ABc259B234c");

    EXPECT_EQ(Set("Name", "xxx") + Set("nAME", "yyy") + Set("a2", "222") + Set("", "000") + Set("A1", "111"), 0);
    EXPECT_EQ(Set(std::string(16383, 'v'), "vvv") + Set(std::string(16384, 'v'), "vvv"), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(Value(0) + Value(1) + Value(2) + Value(3) + Value(4) + Value(5), "000A1111a2222Nameyyy234259");
    EXPECT_EQ(Value(3, 4) + Value(3, 5, 3), "234234");
    EXPECT_EQ(Query("NAME") + Query(nullptr) + Registry().RegDeleteValueA(m_hKey, "NAME"), 0);
    EXPECT_EQ(Query("A1", 3), ERROR_MORE_DATA);
    EXPECT_EQ(Query("Name") + Registry().RegDeleteValueA(m_hKey, "Name"), 2 + 2);
}

TEST_F(RegistryKeys, ChecksHandlesAndTheirRights)
{
    ASSERT_EQ(Open("\\sub") + Open("", KEY_READ), 0);
    EXPECT_EQ(Set("v", "abc") + Registry().RegDeleteValueA(m_hKey, "v"), 5 + 5);
    ASSERT_EQ(Open("", KEY_SET_VALUE) + Set("v", "abc"), 0);
    EXPECT_EQ(SubKey(0) + Value(0) + std::to_string(Query("v")), "555");
    const auto hEvent = static_cast<HKEY>(Threads().CreateEventA(nullptr, TRUE, FALSE, nullptr));
    EXPECT_EQ(Registry().RegCloseKey(m_hKey), 0);
    EXPECT_EQ(Registry().RegCloseKey(m_hKey) + Registry().RegCloseKey(HKEY{}), 6 + 6);
    for (const HKEY hBad : {m_hKey, HKEY{}, hEvent})
    {
        m_hKey = hBad;
        EXPECT_EQ(SubKey(0) + Value(0) + std::to_string(Query("v")), "666");
        EXPECT_EQ(Set("v", "abc") + Registry().RegDeleteValueA(hBad, "v"), 6 + 6);
        EXPECT_EQ(Registry().RegOpenKeyExA(hBad, "x", 0, KEY_READ, &m_hKey), 6);
    }
}
