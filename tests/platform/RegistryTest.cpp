// The contract of the registry, the same on every target.
#include "platform/Registry.h"
#include "platform/Threads.h"

#include "OwnRegistry.h"

#include <string>

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace
{
class RegistryTest : public testing::Test
{
protected:
    // The number of the failure; the key, which stays open, in m_hKey.
    LSTATUS Create(const std::string& strBelow = "")
    {
        DWORD nDisposition = 0;
        return Registry().RegCreateKeyExA(HKEY_LOCAL_MACHINE, (m_oRegistry.Key() + strBelow).c_str(), 0, nullptr, 0,
                                          KEY_ALL_ACCESS, nullptr, &m_hKey, &nDisposition);
    }

    LSTATUS Open(const std::string& strBelow, REGSAM nRights = KEY_READ)
    {
        return Registry().RegOpenKeyExA(HKEY_LOCAL_MACHINE, (m_oRegistry.Key() + strBelow).c_str(), 0, nRights,
                                        &m_hKey);
    }

    LSTATUS Set(const char* pszName, const std::string& strBytes, DWORD nType = REG_BINARY)
    {
        return Registry().RegSetValueExA(m_hKey, pszName, 0, nType, reinterpret_cast<const BYTE*>(strBytes.data()),
                                         static_cast<DWORD>(strBytes.size()));
    }

    // "number type:bytes count", with a buffer of so many bytes.
    std::string Query(const char* pszName, DWORD nCapacity = 8)
    {
        std::string strBuffer(nCapacity, '.');
        DWORD nType = 0;
        const LSTATUS nError = Registry().RegQueryValueExA(m_hKey, pszName, nullptr, &nType,
                                                           reinterpret_cast<LPBYTE>(strBuffer.data()), &nCapacity);
        return std::to_string(nError) + ' ' + std::to_string(nType) + ':' + strBuffer + ' ' + std::to_string(nCapacity);
    }

    std::vector<std::string> ListKeys(DWORD nCapacity = 20, int nMost = 100)
    {
        std::vector<std::string> oLines;
        LSTATUS nError = 0;
        for (DWORD nIndex = 0; nError == 0 && nMost-- > 0; ++nIndex)
        {
            char achName[20] = "";
            DWORD nLength = nCapacity;
            nError = Registry().RegEnumKeyExA(m_hKey, nIndex, achName, &nLength, nullptr, nullptr, nullptr, nullptr);
            oLines.push_back(nError ? std::to_string(nError) : achName + std::to_string(nLength));
        }
        return oLines;
    }

    std::string Value(DWORD nIndex, DWORD nNameCapacity = 20, DWORD nCapacity = 4)
    {
        char achName[20] = "";
        char achData[] = "....";
        DWORD nType = 0;
        const LSTATUS nError = Registry().RegEnumValueA(m_hKey, nIndex, achName, &nNameCapacity, nullptr, &nType,
                                                        reinterpret_cast<LPBYTE>(achData), &nCapacity);
        return nError ? std::to_string(nError) : achName + std::to_string(nNameCapacity) + '=' + achData;
    }

    OwnRegistry m_oRegistry;
    HKEY m_hKey = nullptr;
};
}

TEST_F(RegistryTest, KeysAreCreatedWithTheirParentsAndFoundWithoutRegardToCase)
{
    EXPECT_EQ(Open("\\A\\b"), ERROR_FILE_NOT_FOUND);
    ASSERT_EQ(Create("\\A\\b"), 0);
    for (const char* psz : {"\\a\\B", "\\A", "\\A\\b\\", "\\\\A\\\\b", ""})
        EXPECT_EQ(Open(psz), 0) << psz;
    EXPECT_EQ(Open("\\A\\c"), ERROR_FILE_NOT_FOUND);
    for (const char* psz : {"\\c\\d", "\\B", "\\a\\x", "\\b"})
        EXPECT_EQ(Create(psz), 0) << psz;
    ASSERT_EQ(Open(""), 0);
    EXPECT_THAT(ListKeys(), ElementsAre("A1", "B1", "c1", "259"));
    EXPECT_THAT(ListKeys(1), ElementsAre("234"));
    EXPECT_THAT(ListKeys(2, 2), ElementsAre("A1", "B1"));
    char achName[20];
    DWORD nLength = 20;
    EXPECT_EQ(Registry().RegEnumKeyExA(m_hKey, 2, achName, &nLength, nullptr, nullptr, nullptr, nullptr), 0);
    EXPECT_STREQ(achName, "c");   // also when it is asked for out of turn

    HKEY hKey = nullptr;
    EXPECT_EQ(Registry().RegOpenKeyExA(m_hKey, "a\\B", 0, KEY_READ, &hKey), 0);
    EXPECT_EQ(Registry().RegOpenKeyExA(hKey, nullptr, 0, KEY_READ, &hKey), 0);
    EXPECT_EQ(Registry().RegOpenKeyExA(HKEY_LOCAL_MACHINE, "\\Software", 0, KEY_READ, &hKey), ERROR_BAD_PATHNAME);
    EXPECT_NE(Create('\\' + std::string(256, 'k')), 0);
}

TEST_F(RegistryTest, ValuesOfAnyTypeAreBytes)
{
    ASSERT_EQ(Create(), 0);
    EXPECT_EQ(Query("Name"), "2 0:........ 8");
    EXPECT_EQ(Set("Name", std::string("text", 5), REG_SZ), 0);
    EXPECT_EQ(Query("NAME"), "0 1:" + std::string("text\0...", 8) + " 5");
    EXPECT_EQ(Query("name", 4), "234 1:.... 5");
    EXPECT_EQ(Set("nAME", "\1\2\3\4", REG_DWORD), 0);
    EXPECT_EQ(Query("Name", 4), "0 4:\1\2\3\4 4");
    EXPECT_EQ(Set("", ""), 0);
    EXPECT_EQ(Query(nullptr), "0 3:........ 0");
    EXPECT_EQ(Set("a2", "2"), 0);
    EXPECT_EQ(Set("A1", "1"), 0);
    for (const auto& [nIndex, pszValue] :
         {std::pair{0u, "0=...."}, {1u, "A12=1..."}, {3u, "Name4=\1\2\3\4"}, {4u, "259"}})
        EXPECT_EQ(Value(nIndex), pszValue) << nIndex;   // the first spelling of a name stays
    EXPECT_EQ(Value(3, 4), "234");
    EXPECT_EQ(Value(3, 5, 3), "234");
    EXPECT_EQ(Set(std::string(16383, 'v').c_str(), "1"), 0);
    EXPECT_EQ(Set(std::string(16384, 'v').c_str(), "1"), ERROR_INVALID_PARAMETER);
    DWORD nSize = 0;
    EXPECT_EQ(Registry().RegQueryValueExA(m_hKey, "name", nullptr, nullptr, nullptr, &nSize), 0);
    EXPECT_EQ(nSize, 4u);
    EXPECT_EQ(Registry().RegDeleteValueA(m_hKey, "NAME"), 0);
    EXPECT_EQ(Registry().RegDeleteValueA(m_hKey, "Name"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(Query("name"), "2 0:........ 8");
}

TEST_F(RegistryTest, HandlesAndTheirRightsAreChecked)
{
    ASSERT_EQ(Create("\\sub"), 0);
    ASSERT_EQ(Open(""), 0);
    EXPECT_EQ(Set("v", "1"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(Registry().RegDeleteValueA(m_hKey, "v"), ERROR_ACCESS_DENIED);
    ASSERT_EQ(Open("", KEY_SET_VALUE), 0);
    EXPECT_EQ(Set("v", "1"), 0);
    EXPECT_EQ(Query("v").substr(0, 2), "5 ");
    EXPECT_THAT(ListKeys(), ElementsAre("5"));

    const auto hEvent = static_cast<HKEY>(Threads().CreateEventA(nullptr, TRUE, FALSE, nullptr));
    const HKEY hClosed = m_hKey;
    EXPECT_EQ(Registry().RegCloseKey(m_hKey), 0);
    for (const HKEY hBad : {hClosed, HKEY{}, hEvent})
    {
        m_hKey = hBad;
        EXPECT_EQ(Set("v", "1"), ERROR_INVALID_HANDLE);
        EXPECT_EQ(Query("v"), "6 0:........ 8");
        EXPECT_THAT(ListKeys(), ElementsAre("6"));
        EXPECT_EQ(Value(0), "6");
        EXPECT_EQ(Registry().RegDeleteValueA(m_hKey, "v"), ERROR_INVALID_HANDLE);
        EXPECT_EQ(Registry().RegOpenKeyExA(hBad, "x", 0, KEY_READ, &m_hKey), ERROR_INVALID_HANDLE);
    }
    EXPECT_EQ(Registry().RegCloseKey(hClosed), ERROR_INVALID_HANDLE);
    EXPECT_EQ(Registry().RegCloseKey(HKEY_LOCAL_MACHINE), 0);
    EXPECT_EQ(Open(""), 0);
}
