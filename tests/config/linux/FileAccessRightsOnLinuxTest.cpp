// What the lists come to, as getfacl sees it. The accounts are numbers that nobody has here, and "daemon".
#include "ZevrinUtils/FileAccessRights.h"

#include "support/ScratchFolder.h"

#include <cstdlib>

#include <gtest/gtest.h>

#include <unistd.h>

namespace fs = std::filesystem;

namespace
{
class FileAccessRightsOnLinuxTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!Do("setfacl -d -m u:7001:r '" + m_oRoot.string() + "' && setfacl -k '" + m_oRoot.string() + "'"))
            GTEST_SKIP() << "no setfacl, or no access lists where temporary files are";
        fs::create_directories(m_oTop / "sub");
        ScratchFolder::Write(m_oTop / "sub/file", "x");
        fs::permissions(m_oTop, fs::perms(0750));
        fs::permissions(m_oTop / "sub/file", fs::perms(0640));
    }

    static bool Do(const std::string& strCommand) { return std::system((strCommand + " 2>/dev/null").c_str()) == 0; }

    // One line for the object and one for what it hands down; u, g, m, o for user, group, mask, other.
    std::string ListOf(const fs::path& oPath) const
    {
        Do("getfacl -cpEn '" + oPath.string() +
           "' | sed -E 's/default:/d/; s/^(d?[ugmo])(ser|roup|ask|ther):/\\1:/' | tr -s '\\n' ' ' >'" +
           (m_oRoot / "out").string() + "'");
        return ScratchFolder::Read(m_oRoot / "out");
    }

    int Set(const fs::path& oPath, const char* pszAccount, bool bKeep)
    {
        return ZVUSetFileAccessRights(oPath.c_str(), pszAccount, *pszAccount == 'S', bKeep, m_strError);
    }
    int Add(const fs::path& oPath, const char* pszAccount)
    {
        return ZVUAddFileAccessRights(oPath.c_str(), pszAccount, *pszAccount == 'S', m_strError);
    }

    const ScratchFolder m_oFolder;
    const fs::path m_oRoot = ScratchFolder::Native(m_oFolder / "").parent_path();
    const fs::path m_oTop = m_oRoot / "top";
    CString m_strError;
};
}

TEST_F(FileAccessRightsOnLinuxTest, GiveEverythingBelowTheEntry)
{
    EXPECT_EQ(Set(m_oTop, "S-1-22-1-7002", false), 1) << m_strError;
    EXPECT_EQ(ListOf(m_oTop), "u::--- u:7002:rwx g::--- m::rwx o::--- du::rwx du:7002:rwx dg::--- dm::rwx do::--- ");
    EXPECT_EQ(ListOf(m_oTop / "sub/file"), "u::rw- u:7002:rwx g::r-- m::rwx o::--- ");
    ScratchFolder::Write(m_oTop / "sub/new", "x");
    EXPECT_EQ(ListOf(m_oTop / "sub/new"), "u::rw- u:7002:rwx g::r-x m::rw- o::r-- ");   // as its maker limits it

    EXPECT_EQ(Add(m_oTop, "S-1-22-2-7003"), 1) << m_strError;
    EXPECT_EQ(Add(m_oTop, "S-1-22-1-7002"), 1) << m_strError;
    EXPECT_EQ(ListOf(m_oTop), "u::--- u:7002:rwx g::--- g:7003:rwx m::rwx o::--- du::rwx du:7002:rwx dg::--- "
                              "dg:7003:rwx dm::rwx do::--- ");
    EXPECT_EQ(Set(m_oTop, "daemon", false), 1) << m_strError;
    EXPECT_EQ(ListOf(m_oTop), "u::--- u:1:rwx g::--- m::rwx o::--- du::rwx du:1:rwx dg::--- dm::rwx do::--- ");
}

TEST_F(FileAccessRightsOnLinuxTest, KeepWhatIsInheritedUnlessProtected)
{
    EXPECT_EQ(Set(m_oTop, "S-1-22-1-7002", true), 1) << m_strError;
    EXPECT_EQ(Set(m_oTop, "S-1-22-1-7004", true), 1) << m_strError;   // in its place, and no wider
    EXPECT_EQ(ListOf(m_oTop), "u::rwx u:7004:rwx g::r-x m::rwx o::--- du::rwx du:7004:rwx dg::r-x dm::rwx do::--- ");
    ASSERT_TRUE(Do("setfacl -d -m u:7001:r,g::-,o::- '" + m_oRoot.string() + "'"));
    EXPECT_EQ(Set(m_oTop / "sub/file", "S-1-22-1-7005", true), 1) << m_strError;
    EXPECT_EQ(ListOf(m_oTop / "sub/file"), "u::rw- u:7002:rwx u:7004:rwx u:7005:rwx g::r-- m::rwx o::r-- ");
    EXPECT_EQ(Set(m_oTop, "S-1-22-1-7002", true), 1) << m_strError;
    EXPECT_EQ(ListOf(m_oTop),
              "u::rwx u:7001:r-- u:7002:rwx g::--- m::rwx o::--- du::rwx du:7001:r-- du:7002:rwx dg::--- "
              "dm::rwx do::--- ");
    EXPECT_EQ(Set(m_oTop, "S-1-22-1-7002", false), 1) << m_strError;
    EXPECT_EQ(ListOf(m_oTop), "u::--- u:7002:rwx g::--- m::rwx o::--- du::rwx du:7002:rwx dg::--- dm::rwx do::--- ");
}

TEST_F(FileAccessRightsOnLinuxTest, KnowOwnersEveryoneAndFileSystemsWithoutLists)
{
    ASSERT_EQ(::chown((m_oTop / "sub/file").c_str(), ::getuid(), ::getgid()), 0);
    const std::string strSelf = "S-1-22-1-" + std::to_string(::getuid()), strId = std::to_string(::getuid());
    EXPECT_EQ(Set(m_oTop / "sub/file", strSelf.c_str(), false), 1) << m_strError;
    EXPECT_EQ(ListOf(m_oTop / "sub/file"), "u::rwx u:" + strId + ":rwx g::--- m::rwx o::--- ");
    for (const char* pszEveryone : {"S-1-1-0", "S-1-5-11"})
    {
        EXPECT_EQ(Set(m_oTop / "sub/file", pszEveryone, false), 1) << m_strError;
        EXPECT_EQ(ListOf(m_oTop / "sub/file"), "u::rwx g::rwx o::rwx ");
    }
    for (const char* pszUnknown : {"S-1-5-21-1-2-3", "S-1-22-3-1"})
    {
        EXPECT_EQ(Set(m_oTop, pszUnknown, false), 0);
        EXPECT_GT(m_strError.Find("0x534)"), 0) << m_strError;
    }
    EXPECT_EQ(Set("/proc/self/status", "S-1-1-0", false), 0);
    EXPECT_GT(m_strError.Find("0x32)"), 0) << m_strError;
    EXPECT_EQ(Add("/proc/self/status", "S-1-1-0"), 0);
    EXPECT_GT(m_strError.Find("0x32)"), 0) << m_strError;
}
