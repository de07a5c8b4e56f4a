// What only Linux has: links, permission bits, locks of flock, deep trees, any byte in a name.
#include "ZevrinUtils/Folder.h"

#include "support/ScratchFolder.h"

#include <csignal>
#include <cstdlib>

#include <gmock/gmock.h>

#include <sys/file.h>
#include <sys/resource.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace
{
class FolderOnLinuxTest : public testing::Test
{
protected:
    FolderOnLinuxTest() { fs::create_directory(m_oFrom); }

    bool Copy() { return CSFolder::CopyFolder(m_oFrom.c_str(), m_oTo.c_str(), m_strError); }
    bool Delete(const fs::path& oPath) { return CSFolder::DeleteFolder(oPath.c_str(), m_strError); }

    // What find says of all below: path, type, bits, size, time.
    static std::string Details(const fs::path& oRoot)
    {
        std::system(
            ("cd '" + oRoot.string() + "' && find . ! -type d -printf '%p %y %m %s %T@ %l\\n' | sort >../out").c_str());
        return ScratchFolder::Read(oRoot.parent_path() / "out");
    }

    const ScratchFolder m_oFolder;
    const fs::path m_oRoot = ScratchFolder::Native(m_oFolder / "").parent_path();
    const fs::path m_oFrom = m_oRoot / "from", m_oTo = m_oRoot / "to";
    std::string m_strError;
};
}

TEST_F(FolderOnLinuxTest, KeepsToTheTreeWhateverItsLinksSay)
{
    fs::create_directory(m_oRoot / "outside");
    ScratchFolder::Write(m_oRoot / "outside/kept", "kept");
    fs::create_symlink("../outside", m_oFrom / "to a folder");
    fs::create_symlink("../outside/kept", m_oFrom / "to a file");
    for (const bool bCopied : {true, true})   // the second onto the first
        EXPECT_EQ(Copy(), bCopied) << m_strError;
    EXPECT_EQ(fs::read_symlink(m_oTo / "to a folder"), "../outside");
    EXPECT_FALSE(fs::is_symlink(m_oTo / "to a file"));
    EXPECT_EQ(ScratchFolder::Read(m_oTo / "to a file"), "kept");
    std::vector<std::string> oFound;
    CSFolder::GetFolderList(m_oTo.c_str(), oFound, true);
    EXPECT_TRUE(oFound.empty());

    for (const auto& [pszLeadsTo, pszError] : {std::pair{"nowhere", ". Error: 2"}, {"loop", ". Error: 1921"}})
    {
        fs::create_symlink(pszLeadsTo, m_oFrom / "loop");
        EXPECT_FALSE(Copy());
        EXPECT_THAT(m_strError, testing::EndsWith(pszError));
        EXPECT_TRUE(Delete(m_oFrom)) << m_strError;
        fs::create_directory(m_oFrom);
    }
    fs::create_directory_symlink("outside", m_oRoot / "given");
    EXPECT_TRUE(Delete(m_oRoot / "given")) << m_strError;   // the link itself was named
    EXPECT_TRUE(fs::is_empty(m_oRoot / "outside"));
}

TEST_F(FolderOnLinuxTest, CopiesEveryNameWithItsBitsAndTimes)
{
    fs::create_directories(m_oFrom / "a 'quoted\" \xff/fol\nder");
    for (const auto& [pszName, nMode] :
         {std::pair{"read-only", 0444}, {"tool", 0755}, {"private", 0600}, {"\xc3\xa4pfel", 0640}})
    {
        const auto oPath = m_oFrom / "a 'quoted\" \xff/fol\nder" / pszName;
        ScratchFolder::Write(oPath, pszName);
        fs::permissions(oPath, fs::perms(nMode));
        fs::last_write_time(oPath, fs::file_time_type::clock::now() - std::chrono::hours(nMode));
    }
    EXPECT_TRUE(Copy()) << m_strError;
    EXPECT_EQ(Details(m_oTo), Details(m_oFrom));
    std::vector<std::string> oFound;
    CSFolder::GetFilesPathList(m_oTo.c_str(), "\xc3\x84PFEL", oFound, true);
    EXPECT_EQ(oFound.size(), 1u);
    EXPECT_FALSE(Copy());   // over the read-only one
    EXPECT_THAT(m_strError, testing::EndsWith("read-only. Error: 5"));
    EXPECT_FALSE(Delete(m_oTo));

    const fs::path oOther = m_oRoot / "other one";
    EXPECT_TRUE(CSFolder::XCopyFolder(m_oFrom.c_str(), oOther.c_str(), m_strError));
    EXPECT_EQ(Details(oOther), Details(m_oFrom));
}

TEST_F(FolderOnLinuxTest, LeavesNoPartOfAFileThatDidNotFit)
{
    std::signal(SIGXFSZ, SIG_IGN);
    for (const std::size_t nSize : {9000, 900000})
    {
        ScratchFolder::Write(m_oFrom / "f", std::string(nSize, 'f'));
        const rlimit oLittle{nSize - 1, RLIM_INFINITY}, oAny{RLIM_INFINITY, RLIM_INFINITY};
        setrlimit(RLIMIT_FSIZE, &oLittle);
        EXPECT_FALSE(Copy());
        setrlimit(RLIMIT_FSIZE, &oAny);
        EXPECT_THAT(m_strError, testing::EndsWith(". Error: 112"));
        EXPECT_TRUE(fs::is_empty(m_oTo));
    }
}

TEST_F(FolderOnLinuxTest, SeesWhatAnotherProcessHolds)
{
    for (const char* pszName : {"held", "free"})
        ScratchFolder::Write(m_oFrom / pszName, pszName);
    const int nHeld = ::open((m_oFrom / "held").c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(::flock(nHeld, LOCK_EX), 0);
    EXPECT_FALSE(CSFolder::IsFileExists((m_oFrom / "held").c_str()));
    EXPECT_FALSE(Delete(m_oFrom));
    EXPECT_EQ(m_strError, "Unable to remove folder " + m_oFrom.string() + " Error:145");
    EXPECT_FALSE(fs::exists(m_oFrom / "free"));
    ::close(nHeld);
    EXPECT_TRUE(Delete(m_oFrom));
}

TEST_F(FolderOnLinuxTest, GoesDownFiveHundredLevels)
{
    fs::path oDeepest = m_oFrom;
    for (int n = 0; n < 500; ++n)
        EXPECT_TRUE(CSFolder::CreateFolder((oDeepest /= "d").c_str(), m_strError));
    ScratchFolder::Write(oDeepest / "f", "deep");
    EXPECT_TRUE(Copy()) << m_strError;
    std::vector<std::string> oFound;
    CSFolder::GetFolderList(m_oTo.c_str(), oFound, true);
    EXPECT_EQ(oFound.size(), 500u);
    CSFolder::GetFilesPathList(m_oTo.c_str(), "F", oFound, true);
    EXPECT_EQ(ScratchFolder::Read(oFound.at(500)), "deep");
    EXPECT_TRUE(Delete(m_oTo)) << m_strError;
}

TEST_F(FolderOnLinuxTest, StartsProcessesThatTakeSignals)
{
    sigset_t oAll, oBefore;
    sigfillset(&oAll);
    pthread_sigmask(SIG_BLOCK, &oAll, &oBefore);   // as threads of the library do
    CSFolder::CreateProcessAndWait(nullptr, "sh -c \"grep SigBlk /proc/self/status >out\"", m_oRoot.c_str());
    pthread_sigmask(SIG_SETMASK, &oBefore, nullptr);
    EXPECT_EQ(ScratchFolder::Read(m_oRoot / "out"), "SigBlk:\t0000000000000000\n");
}
