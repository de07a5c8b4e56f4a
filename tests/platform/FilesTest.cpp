// The contract of the calls on files and folders, the same on every target.
#include "platform/Files.h"
#include "platform/Handles.h"
#include "support/ErrorOf.h"
#include "support/ScratchFolder.h"

#include "Native.h"

#include <vector>

#include <gmock/gmock.h>

namespace fs = std::filesystem;

namespace
{
HANDLE Open(const std::string& strPath, DWORD nAccess = GENERIC_READ, DWORD nShare = FILE_SHARE_READ,
            DWORD nDisposition = OPEN_EXISTING)
{
    return Files().CreateFileA(strPath.c_str(), nAccess, nShare, nullptr, nDisposition, FILE_ATTRIBUTE_NORMAL, nullptr);
}

// Of an attempt to open: 0 or the error.
template <class... Arguments>
DWORD ErrorOfOpening(Arguments... arguments)
{
    const HANDLE hFile = Open(arguments...);
    return hFile == INVALID_HANDLE_VALUE ? Errors().GetLastError() : (Handles().CloseHandle(hFile), DWORD{0});
}

const auto Delete = [](const std::string& str) { return ErrorOf(Files().DeleteFileA(str.c_str())); };
const auto Remove = [](const std::string& str) { return ErrorOf(Files().RemoveDirectoryA(str.c_str())); };
const auto Create = [](const std::string& str) { return ErrorOf(Files().CreateDirectoryA(str.c_str(), nullptr)); };

DWORD Copy(const std::string& strFrom, const std::string& strTo)
{
    return ErrorOf(Files().CopyFileA(strFrom.c_str(), strTo.c_str(), FALSE));
}
DWORD List(const std::string& strPath)
{
    WIN32_FIND_DATAA oFound{};
    return ErrorOf(Files().FindFirstFileA((strPath + "\\*.*").c_str(), &oFound) != INVALID_HANDLE_VALUE);
}
}

TEST(Files, KeepWhatIsWrittenAndTellTheirSize)
{
    const ScratchFolder oFolder;
    const std::string strFile = oFolder / "a file";
    for (const std::string& strBytes : {std::string("longer\r\n\0than", 12), std::string("later"), std::string()})
    {
        const HANDLE hFile = Open(strFile, GENERIC_WRITE, 0, CREATE_ALWAYS);
        DWORD nCount = 77;
        EXPECT_TRUE(Files().WriteFile(hFile, strBytes.data(), static_cast<DWORD>(strBytes.size()), &nCount, nullptr));
        EXPECT_EQ(nCount, strBytes.size());
        char achRead[20] = {};
        EXPECT_EQ(ErrorOf(Files().ReadFile(hFile, achRead, 1, &nCount, nullptr)), DWORD{ERROR_ACCESS_DENIED});
        EXPECT_TRUE(Handles().CloseHandle(hFile));
        EXPECT_EQ(ErrorOf(Files().ReadFile(hFile, achRead, 1, &nCount, nullptr)), DWORD{ERROR_INVALID_HANDLE});

        const HANDLE hRead = Open(strFile);
        LARGE_INTEGER nSize{};
        EXPECT_TRUE(Files().GetFileSizeEx(hRead, &nSize));
        EXPECT_EQ(nSize.QuadPart, static_cast<long long>(strBytes.size()));
        for (const DWORD nExpected : {static_cast<DWORD>(strBytes.size()), DWORD{0}})
        {
            EXPECT_TRUE(Files().ReadFile(hRead, achRead, sizeof achRead, &nCount, nullptr));
            EXPECT_EQ(nCount, nExpected);
        }
        EXPECT_EQ(std::string(achRead, strBytes.size()), strBytes);
        EXPECT_EQ(ErrorOf(Files().WriteFile(hRead, "x", 1, &nCount, nullptr)), DWORD{ERROR_ACCESS_DENIED});
        Handles().CloseHandle(hRead);
    }
}

TEST(Files, SayWhyTheyCannotBeOpened)
{
    const ScratchFolder oFolder;
    ScratchFolder::Write(oFolder / "file", "kept");
    EXPECT_EQ(ErrorOfOpening(oFolder / "missing"), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(ErrorOfOpening(""), DWORD{ERROR_PATH_NOT_FOUND});
    for (const DWORD nDisposition : {OPEN_EXISTING, CREATE_ALWAYS})
        for (const auto& [strPath, nError] : {std::pair{oFolder / "missing\\file", ERROR_PATH_NOT_FOUND},
                                              {oFolder / "file\\file", ERROR_PATH_NOT_FOUND},
                                              {oFolder / ".", ERROR_ACCESS_DENIED}})
            EXPECT_EQ(ErrorOfOpening(strPath, GENERIC_WRITE, 0u, nDisposition), DWORD(nError)) << strPath;
}

TEST(Files, OfWhichNobodyMayWriteAreReadOnly)
{
    if (UnderWine())
        GTEST_SKIP() << "Wine opens a read-only file for writing when root runs it";
    const ScratchFolder oFolder;
    const std::string strFile = oFolder / "read-only";
    ScratchFolder::Write(strFile, "kept");
    fs::permissions(ScratchFolder::Native(strFile), fs::perms::owner_read);
    for (const DWORD nDisposition : {OPEN_EXISTING, CREATE_ALWAYS})
        EXPECT_EQ(ErrorOfOpening(strFile, GENERIC_WRITE, 0u, nDisposition), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(ErrorOfOpening(strFile), 0u);
    EXPECT_EQ(ScratchFolder::Read(strFile), "kept");
}

TEST(Files, AreSharedAsEachOpenerAllows)
{
    const ScratchFolder oFolder;
    const std::string strFile = oFolder / "shared";
    ScratchFolder::Write(strFile, "kept");
    const DWORD nBoth = FILE_SHARE_READ | FILE_SHARE_WRITE;
    const struct
    {
        DWORD nAccess, nShare, nThenAccess, nThenShare;
        bool bTogether;
    } aCases[] = {
        {GENERIC_READ, FILE_SHARE_READ, GENERIC_READ, FILE_SHARE_READ, true},
        {GENERIC_READ, FILE_SHARE_READ, GENERIC_READ, 0, false},
        {GENERIC_READ, 0, GENERIC_READ, FILE_SHARE_READ, false},
        {GENERIC_READ, FILE_SHARE_READ, GENERIC_WRITE, FILE_SHARE_READ, false},
        {GENERIC_WRITE, FILE_SHARE_READ, GENERIC_READ, FILE_SHARE_READ, false},
        {GENERIC_WRITE, FILE_SHARE_READ, GENERIC_READ, nBoth, true},
        {GENERIC_WRITE, nBoth, GENERIC_WRITE, nBoth, true},
    };
    for (const auto& o : aCases)
    {
        const HANDLE hFirst = Open(strFile, o.nAccess, o.nShare);
        EXPECT_EQ(ErrorOfOpening(strFile, o.nThenAccess, o.nThenShare),
                  o.bTogether ? 0 : DWORD{ERROR_SHARING_VIOLATION})
            << &o - aCases;
        EXPECT_EQ(o.nShare || ErrorOfOpening(strFile, GENERIC_WRITE, 0u, CREATE_ALWAYS), true);
        Handles().CloseHandle(hFirst);
    }
    EXPECT_EQ(ScratchFolder::Read(strFile), "kept");
}

TEST(Listings, BeginWithTheDotsAndTellSizes)
{
    const ScratchFolder oFolder;
    Create(oFolder / "below");
    ScratchFolder::Write(oFolder / "five", "12345");
    ScratchFolder::Write(oFolder / "b l 'ank", "");
    WIN32_FIND_DATAA oFound{};
    const HANDLE hFind = Files().FindFirstFileA((oFolder / "*.*").c_str(), &oFound);
    std::vector<std::string> oNames;
    do
        oNames.push_back(oFound.cFileName + ('=' + std::to_string(oFound.nFileSizeLow)));
    while (Files().FindNextFileA(hFind, &oFound));
    EXPECT_EQ(Errors().GetLastError(), DWORD{ERROR_NO_MORE_FILES});
    EXPECT_EQ((std::vector{oNames[0], oNames[1]}), (std::vector<std::string>{".=0", "..=0"}));
    EXPECT_THAT(oNames, testing::UnorderedElementsAre(".=0", "..=0", "below=0", "five=5", "b l 'ank=0"));
    EXPECT_TRUE(Files().FindClose(hFind));
    EXPECT_EQ(ErrorOf(Files().FindClose(INVALID_HANDLE_VALUE)), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(List(oFolder / "missing"), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(List(oFolder / "five\\below"), DWORD{ERROR_PATH_NOT_FOUND});
    const DWORD nError = List(oFolder / "five");
    EXPECT_TRUE(nError == ERROR_DIRECTORY || (UnderWine() && nError == 123)) << nError;   // 123: older than Wine 10
}

TEST(Paths, AreMadeAndRemovedOrSayWhyNot)
{
    const ScratchFolder oFolder;
    ScratchFolder::Write(oFolder / "file", "x");
    EXPECT_EQ(Create(oFolder / "new"), 0u);
    EXPECT_EQ(Create(oFolder / "new"), DWORD{ERROR_ALREADY_EXISTS});
    EXPECT_EQ(Create(oFolder / "file"), DWORD{ERROR_ALREADY_EXISTS});
    EXPECT_EQ(Create(oFolder / "no\\such"), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(Create(oFolder / "new\\inner"), 0u);
    EXPECT_EQ(Remove(oFolder / "new"), DWORD{ERROR_DIR_NOT_EMPTY});
    EXPECT_EQ(Remove(oFolder / "file"), DWORD{ERROR_DIRECTORY});
    EXPECT_EQ(Remove(oFolder / "missing"), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(Delete(oFolder / "new"), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(Delete(oFolder / "missing"), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(Delete(oFolder / "no\\such"), DWORD{ERROR_PATH_NOT_FOUND});

    const auto attributes = [&](const char* pszName) {
        return Files().GetFileAttributesA((oFolder / pszName).c_str());
    };
    EXPECT_EQ(attributes("new") & FILE_ATTRIBUTE_DIRECTORY, FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_EQ(attributes("file") & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY), 0u);
    EXPECT_EQ(attributes("missing"), INVALID_FILE_ATTRIBUTES);
    fs::permissions(ScratchFolder::Native(oFolder / "file"), fs::perms::owner_read);
    EXPECT_EQ(attributes("file") & FILE_ATTRIBUTE_READONLY, DWORD{FILE_ATTRIBUTE_READONLY});
    EXPECT_EQ(Delete(oFolder / "file"), DWORD{ERROR_ACCESS_DENIED});
    fs::permissions(ScratchFolder::Native(oFolder / "file"), fs::perms::owner_all);

    const HANDLE hHeld = Open(oFolder / "file", GENERIC_READ, 0);
    EXPECT_EQ(Delete(oFolder / "file"), DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_EQ(Copy(oFolder / "file", oFolder / "copy"), DWORD{ERROR_SHARING_VIOLATION});
    Handles().CloseHandle(hHeld);
    EXPECT_EQ(Delete(oFolder / "file"), 0u);
}

TEST(Copies, KeepBytesAndTimesAndOverwrite)
{
    const ScratchFolder oFolder;
    const std::string strFrom = oFolder / "from";
    const auto nTime = fs::file_time_type::clock::now() - std::chrono::hours(1000);
    for (const std::size_t nSize : {300000U, 65536U, 5U, 0U})   // each shorter than the one that it overwrites
    {
        std::string strBytes(nSize, 'b');
        for (std::size_t n = 0; n < nSize; n += 7)
            strBytes[n] = static_cast<char>(n);
        ScratchFolder::Write(strFrom, strBytes);
        fs::last_write_time(ScratchFolder::Native(strFrom), nTime);
        EXPECT_EQ(Copy(strFrom, oFolder / "to"), 0u);
        EXPECT_EQ(ScratchFolder::Read(oFolder / "to"), strBytes);
        EXPECT_LT(abs(fs::last_write_time(ScratchFolder::Native(oFolder / "to")) - nTime), std::chrono::seconds(2));
    }
    EXPECT_EQ(Copy(oFolder / "missing", oFolder / "to"), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(Copy(strFrom, oFolder / "no\\such"), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(Copy(strFrom, oFolder / "."), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(Copy(oFolder / ".", oFolder / "to"), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(Copy(strFrom, strFrom), DWORD{ERROR_SHARING_VIOLATION});
}
