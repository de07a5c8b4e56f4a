// Folders are made, copied, deleted, listed and measured, with the texts and the leftovers of each failure.
#include "ZevrinUtils/Folder.h"

#include "platform/Files.h"
#include "platform/Handles.h"
#include "support/FaultSweep.h"
#include "support/ScratchFolder.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include <gmock/gmock.h>

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::UnorderedElementsAre;

namespace
{
class Folder : public testing::Test
{
protected:
    // Files end in a name without a backslash behind it; each holds its own path.
    static void Plant(const std::string& strRoot, const std::vector<std::string>& oPaths)
    {
        for (const auto& strPath : oPaths)
        {
            const bool bFolder = strPath.ends_with('\\');
            fs::create_directories(ScratchFolder::Native(strRoot + '\\' + strPath.substr(0, strPath.rfind('\\') + 1)));
            if (!bFolder)
                ScratchFolder::Write(strRoot + '\\' + strPath, strPath);
        }
    }

    // Paths below the root, with what the files hold.
    static std::vector<std::string> Content(const std::string& strRoot)
    {
        std::vector<std::string> oFound;
        for (const auto& oEntry : fs::recursive_directory_iterator(ScratchFolder::Native(strRoot)))
            oFound.push_back(oEntry.path().string().substr(strRoot.size() + 1) +
                             (oEntry.is_directory() ? "" : '=' + ScratchFolder::Read(oEntry.path().string())));
        std::sort(oFound.begin(), oFound.end());
        return oFound;
    }

    static std::ptrdiff_t Count(const std::string& strRoot)
    {
        return fs::exists(ScratchFolder::Native(strRoot)) ? std::ssize(Content(strRoot)) + 1 : 0;
    }

    bool Copy() { return CSFolder::CopyFolder(m_strFrom.c_str(), m_strTo.c_str(), m_strError); }
    bool Delete(const std::string& strPath) { return CSFolder::DeleteFolder(strPath.c_str(), m_strError); }

    const ScratchFolder m_oFolder;
    const std::string m_strFrom = m_oFolder / "from";
    std::string m_strTo = m_oFolder / "to";
    std::string m_strError = "before ";
    const std::vector<std::string> m_oTree{"a", "b\\1", "b\\c\\2 x", "b\\c\\3", "d\\", "e"};
};

struct Consumer : CSFolderConsumer
{
    void OnFolderFound(const char* pszFolder, bool& bDescend) override
    {
        oFound.push_back(std::string(pszFolder) + (bDescend ? "" : " unset"));
        bDescend = !oFound.back().ends_with("closed");
    }
    std::vector<std::string> oFound;
};
}

TEST_F(Folder, CopiesOntoWhatIsThereAndDeletesATree)
{
    EXPECT_FALSE(Copy());
    EXPECT_EQ(std::exchange(m_strError, ""), "before Cannot find folder " + m_strFrom + ". Error: 3");
    EXPECT_EQ(Count(m_strTo), 1);   // stays behind
    Plant(m_strFrom, m_oTree);
    Plant(m_strTo, {"own", "b\\own", "b\\1"});
    ScratchFolder::Write(m_strTo + "\\b\\1", "longer and older");
    EXPECT_TRUE(Copy());
    auto oExpected = Content(m_strFrom);
    oExpected.insert(oExpected.end(),
                     {"own=own", std::string("b") + fs::path("/x").make_preferred().string()[0] + "own=b\\own"});
    EXPECT_THAT(Content(m_strTo), testing::UnorderedElementsAreArray(oExpected));
    EXPECT_TRUE(Delete(m_strTo));
    EXPECT_EQ(Count(m_strTo), 0);
    EXPECT_EQ(m_strError, "");
}

TEST_F(Folder, LeavesOnDiskWhatWasDoneBeforeAFailure)
{
    const auto watch = [](FileCalls& o) {
        FaultSweep::Watch<&FileCalls::CreateDirectoryA>(o, "CreateDirectoryA", FALSE);
        FaultSweep::Watch<&FileCalls::FindFirstFileA>(o, "FindFirstFileA", INVALID_HANDLE_VALUE);
        FaultSweep::Watch<&FileCalls::CopyFileA>(o, "CopyFileA", FALSE);
        FaultSweep::Watch<&FileCalls::FindClose>(o, "FindClose", FALSE, true);
        FaultSweep::Watch<&FileCalls::DeleteFileA>(o, "DeleteFileA", FALSE);
        FaultSweep::Watch<&FileCalls::RemoveDirectoryA>(o, "RemoveDirectoryA", FALSE);
    };
    using Texts = std::map<std::string, std::pair<std::string, std::string>>;
    auto& oDone = FaultSweep::s_oDone;
    // The text is what stands before the path in the tree, and behind it.
    const auto check = [&](bool bResult, Texts oTexts) {
        EXPECT_EQ(bResult, FaultSweep::s_strStruck.empty());
        const auto& [strBegin, strEnd] = oTexts[FaultSweep::s_strStruck];
        EXPECT_TRUE(m_strError.starts_with(strBegin) && m_strError.ends_with(strEnd)) << m_strError;
        m_strError.clear();
    };
    Plant(m_strFrom, m_oTree);
    m_strError.clear();
    const int nCopyCalls = FaultSweep::Over<FileCalls>(watch, [&] {
        m_strTo += '+';
        check(Copy(), {{"CreateDirectoryA", {"Cannot create new folder: " + m_strTo, ". Error: 5"}},
                       {"CopyFileA", {"Failed to copy file: " + m_strFrom + '\\', ". Error: 5"}},
                       {"FindFirstFileA", {"Cannot find folder " + m_strFrom, ". Error: 5"}},
                       {"FindClose", {"Failed to close file handle. Error: 5", ""}}});
        EXPECT_EQ(Count(m_strTo), oDone["CreateDirectoryA"] + oDone["CopyFileA"]);   // nothing is undone
        // All but the closed ones stay open: those of the levels above what failed, and its own.
        const int nOpen = oDone["FindFirstFileA"] - oDone["FindClose"];
        EXPECT_TRUE(FaultSweep::s_strStruck.empty() ? nOpen == 0 : nOpen >= (FaultSweep::s_strStruck == "CopyFileA"));
    });
    EXPECT_EQ(nCopyCalls, 4 * 3 + 5);
    const int nDeleteCalls = FaultSweep::Over<FileCalls>(watch, [&] {
        m_strTo += '-';
        Plant(m_strTo, m_oTree);
        const auto nBefore = Count(m_strTo);
        check(Delete(m_strTo), {{"FindFirstFileA", {"Failed to find folder " + m_strTo, "\\*.*Error: 5"}},
                                {"FindClose", {"Unable to close files handle. Error: 5", ""}},
                                {"DeleteFileA", {"Unable to delete file " + m_strTo + '\\', ". Error: 5"}},
                                {"RemoveDirectoryA", {"Unable to remove folder " + m_strTo, " Error:5"}}});
        EXPECT_EQ(Count(m_strTo), nBefore - oDone["DeleteFileA"] - oDone["RemoveDirectoryA"]);
    });
    EXPECT_EQ(nDeleteCalls, 4 * 3 + 5);
}

TEST_F(Folder, ListsFoldersAndFiles)
{
    Plant(m_strFrom, {"read.me", "Read.Me2", "open\\READ.ME", "open\\in\\x", "closed\\in\\read.me"});
    const std::string strOpen = m_strFrom + "\\open", strClosed = m_strFrom + "\\closed";
    const Substitution<FileCalls> oCounted([](FileCalls& o) {
        FaultSweep::Watch<&FileCalls::FindFirstFileA>(o, "FindFirstFileA", INVALID_HANDLE_VALUE);
        FaultSweep::Watch<&FileCalls::FindClose>(o, "FindClose", FALSE);
    });
    Consumer oConsumer;
    CSFolder::GetFolderList(m_strFrom.c_str(), &oConsumer);
    EXPECT_THAT(oConsumer.oFound, UnorderedElementsAre(strOpen, strOpen + "\\in", strClosed));
    CSFolder::GetFolderList(m_strFrom.c_str(), nullptr);

    std::vector<std::string> oFound{"before"};
    CSFolder::GetFolderList(m_strFrom.c_str(), oFound, false);
    EXPECT_EQ(oFound[0], "before");
    EXPECT_THAT(oFound, UnorderedElementsAre("before", strOpen, strClosed));
    oFound.clear();
    CSFolder::GetFolderList(m_strFrom.c_str(), oFound, true);
    EXPECT_THAT(oFound, testing::AnyOf(ElementsAre(strOpen, strOpen + "\\in", strClosed, strClosed + "\\in"),
                                       ElementsAre(strClosed, strClosed + "\\in", strOpen, strOpen + "\\in")));
    for (const bool bRecursive : {false, true})
    {
        oFound.clear();
        CSFolder::GetFilesPathList(m_strFrom.c_str(), "rEAD.me", oFound, bRecursive);
        CSFolder::GetFilesPathList(m_strFrom.c_str(), "*.me", oFound, bRecursive);
        CSFolder::GetFilesPathList((m_oFolder / "missing").c_str(), "read.me", oFound, bRecursive);
        EXPECT_EQ(oFound.size(), bRecursive ? 3u : 1u);
        EXPECT_THAT(oFound, testing::Contains(m_strFrom + "\\read.me"));
    }
    EXPECT_EQ(FaultSweep::s_oDone["FindFirstFileA"], FaultSweep::s_oDone["FindClose"]);
    // At the root of a volume the first entry is a real one, and left out; what has vanished counts as a folder.
    static const char* const* s_ppszNext;
    static constexpr const char* s_apszNames[] = {"first", "second", ""};
    const Substitution<FileCalls> oRoot([](FileCalls& o) {
        s_ppszNext = s_apszNames;
        o.FindNextFileA = [](HANDLE, LPWIN32_FIND_DATAA p)
                              WINAPI -> BOOL { return *std::strcpy(p->cFileName, *s_ppszNext++) != 0; };
        o.FindFirstFileA = [](LPCSTR, LPWIN32_FIND_DATAA p)
                               WINAPI -> HANDLE { return Files().FindNextFileA(nullptr, p), p; };
        o.GetFileAttributesA = [](LPCSTR) WINAPI -> DWORD { return INVALID_FILE_ATTRIBUTES; };
        o.FindClose = [](HANDLE) WINAPI -> BOOL { return TRUE; };
    });
    oFound.clear();
    CSFolder::GetFolderList("X:", oFound, false);
    EXPECT_THAT(oFound, ElementsAre("X:\\second"));
}

TEST_F(Folder, MeasuresIn32BitsOnceForEachFolder)
{
    const auto size = [&](const char* pszName, long nBefore = 0) {
        CSFolder::GetFolderSize((m_oFolder / pszName).c_str(), nBefore);
        return nBefore;
    };
    for (const auto& [pszFile, nSize] : {std::pair{"two\\x", 1000ULL},
                                         {"two\\y", 1000},
                                         {"apart\\a\\x", 1000},
                                         {"apart\\b\\x", 1000},
                                         {"huge\\a\\x", 0x1'8000'0000 + 2047},
                                         {"huge\\y", 0x1'0000'0000 + 2048}})
    {
        Plant(m_oFolder / "", {pszFile});
        fs::resize_file(ScratchFolder::Native(m_oFolder / pszFile), nSize);
    }
    EXPECT_EQ(size("two", 5), 6);
    EXPECT_EQ(size("apart"), 0);
    EXPECT_EQ(size("huge"), -0x200000 + 2 + 2);   // rounded towards zero
    EXPECT_EQ(size("huge\\a", -0x7fffffff - 1), 0x7fffffff - 0x200000 + 3);
    EXPECT_EQ(size("missing", 7), 7);
}

TEST_F(Folder, TellsWhetherAFileCanBeReadAndEndsPaths)
{
    Plant(m_strFrom, {"x"});
    EXPECT_TRUE(CSFolder::IsFileExists((m_strFrom + "\\x").c_str()));
    EXPECT_FALSE(CSFolder::IsFileExists((m_strFrom + "\\y").c_str()));
    EXPECT_FALSE(CSFolder::IsFileExists(m_strFrom.c_str()));
    const HANDLE hHeld = Files().CreateFileA((m_strFrom + "\\x").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                             FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_FALSE(CSFolder::IsFileExists((m_strFrom + "\\x").c_str()));
    Handles().CloseHandle(hHeld);
    for (const auto& [pszPath, pszEnded] : {std::pair{"", "\\"}, {"\\", "\\"}, {"a/", "a/\\"}, {"a\\", "a\\"}})
    {
        EXPECT_EQ(CSFolder::AddBackslash(pszPath), pszEnded);
        EXPECT_EQ(CSFolder::AddBackslash(std::string(pszPath)), pszEnded);
        EXPECT_EQ(CSFolder::AddBackslash(CString(pszPath)), pszEnded);
    }
}

TEST_F(Folder, RunsAProcessAndWaitsForIt)
{
    const std::string strLine = '"' + std::string(ECHO_ARGUMENTS) + "\" \"a b\" out";
    CSFolder::CreateProcessAndWait(nullptr, strLine.c_str(), (m_oFolder / ".").c_str());
    EXPECT_EQ(ScratchFolder::Read(m_oFolder / "out"), "<a b><out>");
    Plant(m_strFrom, m_oTree);
    EXPECT_FALSE(CSFolder::XCopyFolder(nullptr, m_strTo.c_str(), m_strError));
    EXPECT_FALSE(CSFolder::XCopyFolder(m_strFrom.c_str(), nullptr, m_strError));
    EXPECT_TRUE(CSFolder::XCopyFolder(m_strFrom.c_str(), m_strTo.c_str(), m_strError));
    // On Windows by what stands for it.
    EXPECT_TRUE(fs::is_directory(ScratchFolder::Native(m_strTo)) ||
                ScratchFolder::Read(m_strTo) == '<' + m_strFrom + "><" + m_strTo + "></ISOQ>");
}
