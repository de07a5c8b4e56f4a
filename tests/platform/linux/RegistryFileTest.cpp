// The registry's file between processes, some of which are killed.
#include "ZevrinUtils/ConfigParams.h"

#include "Own.h"
#include "platform/Handles.h"
#include "platform/Threads.h"

#include <algorithm>
#include <functional>
#include <thread>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
struct RegistryFile : testing::Test, CConfigParamsBase
{
    unsigned long Read(const std::string& strName)
    {
        unsigned long nValue = 0;
        getRegDWORD("Test", strName.c_str(), nValue);
        return nValue;
    }

    // A child process, which fails with the test's own failures.
    static pid_t Start(const std::function<void()>& body)
    {
        const pid_t nChild = fork();
        if (nChild == 0)
            body(), _exit(HasFailure());
        return nChild;
    }

    static int StatusOf(pid_t nChild)
    {
        int nStatus = -1;
        waitpid(nChild, &nStatus, 0);
        return nStatus;
    }

    OwnRegistry m_oRegistry;
    HKEY m_hKey = nullptr;
    std::vector<std::string> m_oNames;
};
}

TEST_F(RegistryFile, TakesEightProcessesThatWriteAndListAtOnce)
{
    std::vector<pid_t> oChildren;
    for (const std::string strName : {"1", "2", "3", "4", "5", "6", "7", "8"})
        oChildren.push_back(Start([&] {
            ASSERT_EQ(OpenRegistry("Test", m_hKey), 0);   // the first of them makes the file
            for (unsigned nWrite = 1; nWrite <= 100; ++nWrite)
            {
                setRegDWORD(m_hKey, strName.c_str(), nWrite);
                setRegString(("Test\\" + strName + '-' + std::to_string(nWrite)).c_str(), "", "");
                m_oNames.clear();
                getRegSubKeys("Test", m_oNames);
                ASSERT_TRUE(m_oNames.size() >= nWrite && Read(strName) == nWrite);
                ASSERT_EQ(std::ranges::adjacent_find(m_oNames), m_oNames.end());
            }
        }));
    for (const pid_t nChild : oChildren)
        EXPECT_EQ(StatusOf(nChild), 0);
    getRegSubKeys("Test", m_oNames);
    EXPECT_TRUE(m_oNames.size() == 800 && Read("1") == 100 && Read("8") == 100);
}

TEST_F(RegistryFile, KeepsWhatWasReportedWhenItsWritersAreKilled)
{
    // A child goes on with its parent's handle and is seen; of the page that the file loses, the log has the whole.
    // So it does whatever the parent's other threads do with their handles just then.
    ASSERT_EQ(OpenRegistry("Test", m_hKey), 0);
    {
        std::jthread oOther([](const std::stop_token& oStop) {
            while (!oStop.stop_requested())
                Handles().CloseHandle(Threads().CreateEventA(nullptr, FALSE, FALSE, nullptr));
        });
        for (unsigned long nValue = 1; nValue <= 7; ++nValue)
            EXPECT_EQ(StatusOf(Start([&] { setRegDWORD(m_hKey, "counter", nValue); })), 0);
    }
    std::filesystem::resize_file(m_oRegistry.File(), std::filesystem::file_size(m_oRegistry.File()) - 5);
    EXPECT_EQ(Read("counter"), 7u);
    unsigned long nReported = 0;
    int nWaitedFor = 0;
    for (useconds_t nMicroseconds = 0; nMicroseconds < 10000; nMicroseconds += 150)
    {
        int anPipe[2];
        ASSERT_EQ(pipe(anPipe), 0);
        const pid_t nWriter = Start([&] {
            ASSERT_EQ(OpenRegistry("Test", m_hKey), 0);
            for (unsigned long nValue = Read("counter") + 1;; ++nValue)
            {
                setRegDWORD(m_hKey, "counter", nValue);
                ASSERT_EQ(write(anPipe[1], &nValue, sizeof nValue), ssize_t{sizeof nValue});
            }
        });
        close(anPipe[1]);
        // Every second writer has written by then, however slow the machine is; the others die at any moment.
        if (nMicroseconds % 300 != 0 && read(anPipe[0], &nReported, sizeof nReported) > 0)
            ++nWaitedFor;
        usleep(nMicroseconds);
        kill(nWriter, SIGKILL);
        EXPECT_TRUE(WIFSIGNALED(StatusOf(nWriter)));
        while (read(anPipe[0], &nReported, sizeof nReported) > 0)
            continue;
        close(anPipe[0]);
        ASSERT_EQ(StatusOf(Start([&] { EXPECT_TRUE(!OpenRegistry("Test", m_hKey) && Read("counter") >= nReported); })),
                  0);
    }
    EXPECT_EQ(nWaitedFor, 33);
    // A handle means its key in another file too, and not the one that has its number there.
    std::filesystem::rename(m_oRegistry.Folder() + "made", m_oRegistry.Folder() + "moved");
    EXPECT_FALSE(getRegDWORD("Other", "counter", nReported));
    setRegDWORD(m_hKey, "counter", 9);
    EXPECT_FALSE(getRegDWORD("Other", "counter", nReported));
}
