#include "ZevrinUtils/ConfigParams.h"

#include "platform/Registry.h"
#include "support/Substitution.h"

#include "OwnRegistry.h"

#include <stdexcept>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
const auto& s_oNative = PlatformService<RegistryCalls>::s_oNative;
int s_nOpen;   // keys

void CountKeys(RegistryCalls& oCalls)
{
    s_nOpen = 0;
    oCalls.RegCreateKeyExA = [](HKEY hRoot, LPCSTR pszPath, DWORD nReserved, char* pszClass, DWORD nOptions,
                                REGSAM nRights, LPSECURITY_ATTRIBUTES pSecurity, HKEY* phKey, LPDWORD pnDisposition)
                                 WINAPI -> LSTATUS {
        EXPECT_EQ(nRights, DWORD{KEY_ALL_ACCESS});
        const LSTATUS nResult = s_oNative.RegCreateKeyExA(hRoot, pszPath, nReserved, pszClass, nOptions, nRights,
                                                          pSecurity, phKey, pnDisposition);
        s_nOpen += nResult == 0;
        return nResult;
    };
    oCalls.RegCloseKey = [](HKEY hKey) WINAPI { return --s_nOpen, s_oNative.RegCloseKey(hKey); };
}

class ConfigParamsTest : public testing::Test
{
protected:
    ~ConfigParamsTest() override { m_oParams.CloseRegistry(m_hKey); }

    void SetUp() override { ASSERT_EQ(m_oParams.OpenRegistry(m_strPath.c_str(), m_hKey), 0); }

    long Set(const char* pszName, const std::string& strBytes, DWORD nType = REG_BINARY)
    {
        return Registry().RegSetValueExA(m_hKey, pszName, 0, nType, reinterpret_cast<const BYTE*>(strBytes.data()),
                                         static_cast<DWORD>(strBytes.size()));
    }

    std::string Path(const std::string& strBelow) const { return m_strPath + '\\' + strBelow; }

    OwnRegistry m_oRegistry;
    const std::string m_strPath = m_oRegistry.Key();
    CConfigParamsBase m_oParams;
    HKEY m_hKey = nullptr;
};
}

TEST_F(ConfigParamsTest, OnlyReadsByHandleAndQuestionsCreateNoKey)
{
    HKEY hKey = m_hKey;
    const Substitution<RegistryCalls> oCounted(CountKeys);
    std::vector<std::string> oList;
    std::string strValue = "before";
    unsigned long nValue = 5;
    const std::function<bool(const char*)> aCreating[] = {
        [&](const char* psz) { return !m_oParams.getRegString(psz, "v", strValue) && strValue.empty(); },
        [&](const char* psz) { return !m_oParams.getRegDWORD(psz, "v", nValue) && nValue == 5; },
        [&](const char* psz) { return m_oParams.setRegString(psz, "v", ""); },
        [&](const char* psz) { return m_oParams.getRegSubKeys(psz, oList), oList.empty(); },
    };
    int nKey = 0;
    for (const auto& create : aCreating)
    {
        const std::string strKey = Path(std::to_string(nKey++));
        EXPECT_FALSE(m_oParams.IsRegistryKeyExists(HKEY_LOCAL_MACHINE, strKey.c_str()));
        EXPECT_EQ(m_oParams.OpenRegistryKey(HKEY_LOCAL_MACHINE, strKey.c_str(), hKey), 2);
        EXPECT_TRUE(create(strKey.c_str())) << nKey;
        EXPECT_EQ(s_nOpen, 0) << nKey;
        EXPECT_TRUE(m_oParams.IsRegistryKeyExists(HKEY_LOCAL_MACHINE, strKey.c_str()));
        ++s_nOpen;   // of the question, which does not create
    }
    m_oParams.getRegSubKeyValues(Path("5").c_str(), oList);
    EXPECT_EQ(s_nOpen, 1);   // this one leaves its key open
    EXPECT_TRUE(m_oParams.IsRegistryKeyExists(m_hKey, "5"));
    EXPECT_THAT(oList, IsEmpty());

    ASSERT_EQ(m_oParams.OpenRegistry(m_hKey, "5", hKey), 0);
    const HKEY hBefore = hKey;
    m_oParams.CloseRegistry(hKey);
    EXPECT_EQ(hKey, hBefore);
}

TEST_F(ConfigParamsTest, ReadsAnyTypeUpToItsCapacity)
{
    std::string strValue;
    unsigned long nValue = ~0ul;
    m_oParams.setRegString(m_hKey, "text", "hello");
    m_oParams.setRegDWORD(m_hKey, "number", 0x44434241);
    m_oParams.setRegDWORD(m_hKey, std::string(300, 'n').c_str(), 300);
    const std::pair<std::string, std::string> aoCases[] = {
        {std::string(2046, 'x') + '\0', std::string(2046, 'x')},
        {std::string(2047, 'y'), std::string(2047, 'y')},   // without a terminator
        {std::string("a\0b", 3), "a"},
        {"", ""},
    };
    for (const auto& [strBytes, strExpected] : aoCases)
    {
        ASSERT_EQ(Set("bytes", strBytes), 0);
        EXPECT_TRUE(m_oParams.getRegString(m_strPath.c_str(), "bytes", strValue));
        EXPECT_EQ(strValue, strExpected);
    }
    Set("bytes", std::string(2048, 'z'));
    EXPECT_FALSE(m_oParams.getRegString(m_hKey, "bytes", strValue));
    EXPECT_TRUE(m_oParams.getRegString(m_hKey, "number", strValue));
    EXPECT_EQ(strValue, "ABCD");

    EXPECT_TRUE(m_oParams.getRegDWORD(m_strPath.c_str(), "number", nValue));
    EXPECT_EQ(nValue, 0x44434241u);
    EXPECT_FALSE(m_oParams.getRegDWORD(m_hKey, "text", nValue));
    Set("bytes", "a");
    EXPECT_TRUE(m_oParams.getRegDWORD(m_hKey, "bytes", nValue));
    EXPECT_EQ(nValue, 0x44434261u);   // the others stay
    EXPECT_TRUE(m_oParams.getRegDWORD(m_hKey, std::string(300, 'N').c_str(), nValue));
    EXPECT_EQ(nValue, 300u);

    char achBuffer[] = "........";
    EXPECT_FALSE(m_oParams.getRegString(m_hKey, "text", achBuffer, 5));
    EXPECT_TRUE(m_oParams.getRegString(m_hKey, "number", achBuffer, 5));
    EXPECT_STREQ(achBuffer, "ABCD....");
    m_oParams.DeleteRegValue(m_hKey, "number");
    EXPECT_FALSE(m_oParams.getRegDWORD(m_hKey, "number", nValue));
}

TEST_F(ConfigParamsTest, ListsBehindWhatTheListHoldsUntilSomethingDoesNotFit)
{
    std::vector<std::string> oKeys{"before"};
    std::vector<std::string> oValues{"before"};
    for (const char* psz : {"b", "A", "c"})
        m_oParams.setRegString(Path(psz).c_str(), "", psz);
    m_oParams.getRegSubKeys(m_strPath.c_str(), oKeys);
    EXPECT_THAT(oKeys, ElementsAre("before", "A", "b", "c"));

    Set("1", std::string("text", 5));
    Set("2", "");
    m_oParams.setRegDWORD(m_hKey, "3", 0x414243);
    Set("4", std::string(256, 'x'));
    Set("5", "yz");
    Set("6", std::string(257, 'x'));
    Set("7", "");
    m_oParams.getRegSubKeyValues(m_strPath.c_str(), oValues);
    EXPECT_THAT(oValues,
                ElementsAre("before", "text", "text", "CBA", std::string(256, 'x'), "yz" + std::string(254, 'x')));
}

TEST_F(ConfigParamsTest, TellsOnlyWhetherTheKeyCouldBeOpened)
{
    static bool s_bThrows;
    const Substitution<RegistryCalls> oCounted(CountKeys);
    {
        const Substitution<RegistryCalls> oRefusing([](RegistryCalls& oCalls) {
            oCalls.RegSetValueExA = [](HKEY, LPCSTR, DWORD, DWORD nType, const BYTE*, DWORD nSize) WINAPI -> LSTATUS {
                EXPECT_EQ(nType * 100 + nSize, 103u);   // with its terminator
                return s_bThrows ? throw std::runtime_error("") : ERROR_ACCESS_DENIED;
            };
        });
        EXPECT_TRUE(m_oParams.setRegString(m_strPath.c_str(), "v", "ab"));
        EXPECT_EQ(s_nOpen, 0);
        s_bThrows = true;
        EXPECT_FALSE(m_oParams.setRegString(m_strPath.c_str(), "v", "ab"));
        EXPECT_EQ(s_nOpen, 1);
        EXPECT_FALSE(m_oParams.setRegString(m_strPath.c_str(), "v", nullptr));
        EXPECT_EQ(s_nOpen, 2);
    }
    std::string strValue = "before";
    unsigned long nValue = 5;
    std::vector<std::string> oList;
    EXPECT_EQ(m_oParams.OpenRegistry("\\refused", m_hKey), long{ERROR_BAD_PATHNAME});
    EXPECT_FALSE(m_oParams.getRegString("\\refused", "v", strValue));
    EXPECT_EQ(strValue, "");
    EXPECT_FALSE(m_oParams.getRegDWORD("\\refused", "v", nValue));
    EXPECT_EQ(nValue, 5u);
    EXPECT_FALSE(m_oParams.setRegString("\\refused", "v", "ab"));
    m_oParams.getRegSubKeys("\\refused", oList);
    m_oParams.getRegSubKeyValues("\\refused", oList);
    EXPECT_THAT(oList, IsEmpty());
    EXPECT_EQ(s_nOpen, 2);
}
