// Parameters are read, written and listed in the registry, and keys closed but for the promised leaks.
#include "ZevrinUtils/ConfigParams.h"

#include "platform/Registry.h"
#include "support/FaultSweep.h"

#include "Own.h"

#include <functional>
#include <utility>

#include <gmock/gmock.h>

namespace
{
// Keys, since the last such question.
int LeftOpen()
{
    auto oDone = std::exchange(FaultSweep::s_oDone, {});
    return oDone["open"] - oDone["close"];
}

struct ConfigParams : testing::Test, CConfigParamsBase
{
    ConfigParams() { EXPECT_EQ(OpenRegistry(m_strPath.c_str(), m_hKey), 0); }

    void Set(const char* pszName, const std::string& strBytes)
    {
        Registry().RegSetValueExA(m_hKey, pszName, 0, REG_BINARY, reinterpret_cast<const BYTE*>(strBytes.data()),
                                  static_cast<DWORD>(strBytes.size()));
    }

    OwnRegistry m_oRegistry;
    const std::string m_strPath = m_oRegistry.Key();
    HKEY m_hKey = nullptr;
    std::string m_strValue = "before";
    unsigned long m_nValue = ~0ul;
    std::vector<std::string> m_oList{"before"};
    const Substitution<RegistryCalls> m_oCounted{[](RegistryCalls& o) {
        FaultSweep::Watch<&RegistryCalls::RegCreateKeyExA>(o, "open", ERROR_BAD_PATHNAME);
        FaultSweep::Watch<&RegistryCalls::RegCloseKey>(o, "close", ERROR_INVALID_HANDLE);
    }};
};
}

TEST_F(ConfigParams, EachOperationByPathCreatesItsKeyAndAllButOneCloseIt)
{
    const std::function<bool(const char*)> aOperations[] = {
        [&](const char* psz) { return !getRegString(psz, "v", m_strValue) && m_strValue.empty(); },
        [&](const char* psz) { return !getRegDWORD(psz, "v", m_nValue) && m_nValue == ~0ul; },
        [&](const char* psz) { return setRegString(psz, "v", "") == (*psz != '\\'); },
        [&](const char* psz) { return getRegSubKeys(psz, m_oList), m_oList.size() == 1; },
        [&](const char* psz) { return getRegSubKeyValues(psz, m_oList), m_oList.size() == 1; },
    };
    std::string strKey = m_strPath + "\\";
    for (const auto& operation : aOperations)
    {
        strKey += 'x';
        EXPECT_FALSE(IsRegistryKeyExists(HKEY_LOCAL_MACHINE, strKey.c_str()));
        EXPECT_EQ(OpenRegistryKey(HKEY_LOCAL_MACHINE, strKey.c_str(), m_hKey), 2);
        LeftOpen();
        EXPECT_TRUE(operation(strKey.c_str()) && operation("\\refused")) << strKey;
        EXPECT_EQ(LeftOpen(), &operation == &aOperations[4]) << strKey;
        EXPECT_TRUE(IsRegistryKeyExists(HKEY_LOCAL_MACHINE, strKey.c_str()));
    }
}

TEST_F(ConfigParams, ReadsAnyTypeUpToItsCapacity)
{
    setRegString(m_hKey, "text", "hello");
    setRegDWORD(m_hKey, std::string(300, 'n').c_str(), 0x44434241);
    const std::string strNumber(300, 'N');
    DWORD nText = 0, nNumber = 0;
    Registry().RegQueryValueExA(m_hKey, "text", nullptr, &nText, nullptr, nullptr);
    Registry().RegQueryValueExA(m_hKey, strNumber.c_str(), nullptr, &nNumber, nullptr, nullptr);
    EXPECT_TRUE(nText == REG_SZ && nNumber == REG_DWORD);
    for (const std::string& strBytes : {std::string(2047, 'y'), std::string("a\0b", 3), std::string()})
    {
        Set("bytes", strBytes);
        EXPECT_TRUE(getRegString(m_strPath.c_str(), "bytes", m_strValue) && m_strValue == strBytes.c_str());
    }
    Set("bytes", std::string(2048, 'z'));
    EXPECT_FALSE(getRegString(m_hKey, "bytes", m_strValue));
    EXPECT_TRUE(getRegString(m_hKey, strNumber.c_str(), m_strValue) && m_strValue == "ABCD");
    EXPECT_TRUE(getRegDWORD(m_strPath.c_str(), strNumber.c_str(), m_nValue) && m_nValue == 0x44434241);
    EXPECT_FALSE(getRegDWORD(m_hKey, "text", m_nValue));
    Set("bytes", "a");
    EXPECT_TRUE(getRegDWORD(m_hKey, "bytes", m_nValue) && m_nValue == 0x44434261);   // the other bytes stay
    char achBuffer[] = "........";
    EXPECT_TRUE(!getRegString(m_hKey, "text", achBuffer, 5) && getRegString(m_hKey, "text", achBuffer, 6));
    EXPECT_EQ(achBuffer, std::string("hello"));
    DeleteRegValue(m_hKey, "text");
    EXPECT_FALSE(getRegString(m_hKey, "text", m_strValue));
    const HKEY hBefore = m_hKey;
    CloseRegistry(m_hKey);
    EXPECT_EQ(m_hKey, hBefore);
}

TEST_F(ConfigParams, ListsBehindWhatTheListHoldsUntilSomethingDoesNotFit)
{
    const std::string strFull(256, 'x');
    for (const auto& [pszName, strBytes] : {std::pair{"1", std::string("text", 5)},
                                            {"2", ""},
                                            {"4", strFull},
                                            {"5", "yz"},
                                            {"6", strFull + 'x'},
                                            {"7", ""}})
        Set(pszName, strBytes);
    setRegDWORD(m_hKey, "3", 0x414243);
    for (const char* psz : {"\\b", "\\A", "\\c"})
        setRegString((m_strPath + psz).c_str(), "", psz);
    getRegSubKeys(m_strPath.c_str(), m_oList);
    getRegSubKeyValues(m_strPath.c_str(), m_oList);
    EXPECT_THAT(m_oList, testing::ElementsAre("before", "A", "b", "c", "text", "text", "CBA", strFull,
                                              "yz" + strFull.substr(2)));
}

TEST_F(ConfigParams, AWriteTellsOnlyWhetherTheKeyCouldBeOpened)
{
    LeftOpen();
    EXPECT_TRUE(setRegString(m_strPath.c_str(), std::string(20000, 'n').c_str(), "refused") && LeftOpen() == 0);
    const Substitution oThrowing(&RegistryCalls::RegSetValueExA,
                                 [](HKEY, LPCSTR, DWORD, DWORD, const BYTE*, DWORD) WINAPI -> LSTATUS { throw 1; });
    EXPECT_TRUE(!setRegString(m_strPath.c_str(), "v", "ab") && LeftOpen() == 1);   // which stays open
    EXPECT_TRUE(!setRegString(m_strPath.c_str(), "v", nullptr) && LeftOpen() == 1);
}
