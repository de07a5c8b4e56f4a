// The registry's file: several processes at once, processes that are killed, damage, and accounts without rights.
#include "platform/Registry.h"

#include "OwnRegistry.h"

#include <functional>

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
LSTATUS Create(HKEY& hKey, const std::string& strPath = "Software\\Test")
{
    return Registry().RegCreateKeyExA(HKEY_LOCAL_MACHINE, strPath.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                                      &hKey, nullptr);
}

LSTATUS Open(HKEY& hKey, REGSAM nRights = KEY_READ)
{
    return Registry().RegOpenKeyExA(HKEY_LOCAL_MACHINE, "Software\\Test", 0, nRights, &hKey);
}

LSTATUS Write(HKEY hKey, const std::string& strName, DWORD nValue)
{
    return Registry().RegSetValueExA(hKey, strName.c_str(), 0, REG_DWORD, reinterpret_cast<const BYTE*>(&nValue), 4);
}

DWORD Read(HKEY hKey, const std::string& strName)
{
    DWORD nValue = 0;
    DWORD nSize = sizeof nValue;
    Registry().RegQueryValueExA(hKey, strName.c_str(), nullptr, nullptr, reinterpret_cast<LPBYTE>(&nValue), &nSize);
    return nValue;
}

std::size_t CountSubKeys(HKEY hKey)
{
    std::size_t nCount = 0;
    char achName[256];
    for (DWORD nLength = sizeof achName; Registry().RegEnumKeyExA(hKey, static_cast<DWORD>(nCount), achName, &nLength,
                                                                  nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
         nLength = sizeof achName)
        ++nCount;
    return nCount;
}

// A child process, which fails with the test's own failures.
pid_t Start(const std::function<void()>& body)
{
    const pid_t nChild = fork();
    if (nChild != 0)
        return nChild;
    body();
    _exit(testing::Test::HasFailure());
}

int StatusOf(pid_t nChild)
{
    int nStatus = -1;
    waitpid(nChild, &nStatus, 0);
    return nStatus;
}

// In a child as an account without rights, which root becomes.
int StatusWithoutRights(const std::function<void()>& body)
{
    return StatusOf(Start([&] {
        EXPECT_TRUE(geteuid() != 0 || seteuid(65534) == 0);
        body();
    }));
}
}

TEST(RegistryFile, TakesEightProcessesThatWriteAndListAtOnce)
{
    constexpr int nProcesses = 8;
    constexpr DWORD nWrites = 100;
    const OwnRegistry oRegistry;
    std::vector<pid_t> oChildren;
    for (int n = 0; n < nProcesses; ++n)
        oChildren.push_back(Start([n] {
            HKEY hKey = nullptr;
            HKEY hOwn = nullptr;
            ASSERT_EQ(Create(hKey), 0);   // the first of them makes the file
            for (DWORD nWrite = 1; nWrite <= nWrites; ++nWrite)
            {
                ASSERT_EQ(Write(hKey, "of " + std::to_string(n), nWrite), 0);
                ASSERT_EQ(Create(hOwn, "Software\\Test\\" + std::to_string(n) + '-' + std::to_string(nWrite)), 0);
                ASSERT_GE(CountSubKeys(hKey), nWrite);
            }
        }));
    for (const pid_t nChild : oChildren)
        EXPECT_EQ(StatusOf(nChild), 0);
    HKEY hKey = nullptr;
    ASSERT_EQ(Open(hKey), 0);
    EXPECT_EQ(CountSubKeys(hKey), nProcesses * nWrites);
    for (int n = 0; n < nProcesses; ++n)
        EXPECT_EQ(Read(hKey, "of " + std::to_string(n)), nWrites);
    // A child goes on with its parent's handle, and each sees what the other writes.
    EXPECT_EQ(StatusOf(Start([&] { EXPECT_EQ(Read(hKey, "of 0"), nWrites); })), 0);
    EXPECT_EQ(StatusOf(Start([&] { EXPECT_EQ(Create(hKey) | Write(hKey, "child", 7), 0); })), 0);
    EXPECT_EQ(Read(hKey, "child"), 7u);
}

TEST(RegistryFile, KeepsWhatWasReportedWhenItsWritersAreKilled)
{
    DWORD nReported = 0;
    for (int nRound = 0; nRound < 60; ++nRound)
    {
        static std::unique_ptr<OwnRegistry> s_pRegistry;
        if (nRound % 20 == 0)   // killed while it makes the file, too
        {
            s_pRegistry = std::make_unique<OwnRegistry>();
            nReported = 0;
        }
        int anPipe[2];
        ASSERT_EQ(pipe(anPipe), 0);
        const pid_t nWriter = Start([&] {
            HKEY hKey = nullptr;
            ASSERT_EQ(Create(hKey), 0);
            for (DWORD nValue = Read(hKey, "counter") + 1; Write(hKey, "counter", nValue) == 0; ++nValue)
                ASSERT_EQ(write(anPipe[1], &nValue, sizeof nValue), ssize_t{sizeof nValue});
        });
        usleep(static_cast<useconds_t>(nRound % 20 * 300));
        kill(nWriter, SIGKILL);
        EXPECT_TRUE(WIFSIGNALED(StatusOf(nWriter)));
        close(anPipe[1]);
        while (read(anPipe[0], &nReported, sizeof nReported) > 0)
            continue;
        close(anPipe[0]);
        ASSERT_EQ(StatusOf(Start([&] {
                      HKEY hKey = nullptr;
                      EXPECT_EQ(Create(hKey), 0);
                      EXPECT_GE(Read(hKey, "counter"), nReported);
                  })),
                  0)
            << nRound;
    }
    EXPECT_GT(nReported, 100u);
}

TEST(RegistryFile, RefusesDamagedAndForeignFilesAndLeavesThemAlone)
{
    const OwnRegistry oRegistry;
    EXPECT_EQ(StatusOf(Start([] {
                  HKEY hKey = nullptr;
                  ASSERT_EQ(Create(hKey), 0);
                  for (DWORD n = 0; n < 500; ++n)
                      Write(hKey, "value " + std::to_string(n), n);
                  _exit(0);
              })),
              0);
    HKEY hKey = nullptr;
    ASSERT_EQ(Open(hKey), 0);   // takes the log into the file when it closes it
    EXPECT_EQ(StatusOf(Start([] {})), 0);
    const std::string strSound = ScratchFolder::Read(oRegistry.File());
    ASSERT_GT(strSound.size(), 16384u);

    std::string strOverwritten = strSound;
    strOverwritten.replace(strSound.size() - 6000, 2000, 2000, '\x5a');
    std::string strOther = strSound;
    strOther[68] = 'X';   // a database, but not of ours
    const std::pair<std::string, LSTATUS> aoCases[] = {
        {"", ERROR_NOT_REGISTRY_FILE},           {"a text", ERROR_NOT_REGISTRY_FILE},
        {strOther, ERROR_NOT_REGISTRY_FILE},     {strSound.substr(0, 100), ERROR_BADDB},
        {strSound.substr(0, 8192), ERROR_BADDB}, {strSound.substr(0, strSound.size() - 5), ERROR_BADDB},
        {strOverwritten, ERROR_BADDB},           {strSound, ERROR_SUCCESS},
    };
    for (const auto& [strBytes, nExpected] : aoCases)
    {
        ScratchFolder::Write(oRegistry.File(), strBytes);
        const auto open = [&] {
            EXPECT_EQ(Create(hKey), nExpected) << strBytes.size();
            EXPECT_EQ(Open(hKey), nExpected) << strBytes.size();
        };
        EXPECT_EQ(StatusOf(Start(open)), 0);
        EXPECT_TRUE(ScratchFolder::Read(oRegistry.File()) == strBytes) << strBytes.size();
    }
}

TEST(RegistryFile, IsReadByAnAccountThatMayNotWriteAndOneMayHaveItsOwn)
{
    const OwnRegistry oRegistry;
    HKEY hKey = nullptr;
    ASSERT_EQ(Create(hKey), 0);
    ASSERT_EQ(Write(hKey, "v", 5), 0);
    for (const auto& oEntry : std::filesystem::recursive_directory_iterator(oRegistry.Folder()))
        chmod(oEntry.path().c_str(), oEntry.is_directory() ? 0555 : 0444);
    EXPECT_EQ(StatusWithoutRights([&] {
                  EXPECT_EQ(Open(hKey), 0);
                  EXPECT_EQ(Read(hKey, "v"), 5u);
                  EXPECT_EQ(Write(hKey, "v", 6), ERROR_ACCESS_DENIED);
                  EXPECT_EQ(Open(hKey, KEY_ALL_ACCESS), ERROR_ACCESS_DENIED);
                  EXPECT_EQ(Create(hKey), ERROR_ACCESS_DENIED);
                  EXPECT_EQ(Create(hKey, "Software\\New"), ERROR_ACCESS_DENIED);
              }),
              0);
    for (const auto& oEntry : std::filesystem::recursive_directory_iterator(oRegistry.Folder()))
        chmod(oEntry.path().c_str(), 0777);
}

TEST(RegistryFile, LiesInTheFolderOfAnAccountWithoutRightsToTheMachines)
{
    const OwnRegistry oRegistry;
    std::filesystem::permissions(oRegistry.Folder(), std::filesystem::perms::all);
    unsetenv("ZEVRIN_REGISTRY");
    setenv("XDG_DATA_HOME", oRegistry.Folder().c_str(), 1);
    EXPECT_EQ(StatusWithoutRights([] {
                  HKEY hKey = nullptr;
                  EXPECT_EQ(Create(hKey, "Software\\Größe"), 0);
                  EXPECT_EQ(Registry().RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE\\GRÖßE", 0, KEY_ALL_ACCESS, &hKey),
                            0);
                  EXPECT_EQ(Registry().RegOpenKeyExA(HKEY_LOCAL_MACHINE,
                                                     "Software\\Gr\xf6\xdf"
                                                     "e",
                                                     0, KEY_READ, &hKey),
                            2);
              }),
              0);
    EXPECT_TRUE(std::filesystem::exists(oRegistry.Folder() + "zevrinutils/registry.db"));
}
