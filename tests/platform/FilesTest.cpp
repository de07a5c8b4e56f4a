// The contract of the file calls, the same on every target.
#include "platform/Files.h"
#include "platform/Handles.h"
#include "support/ErrorOf.h"
#include "support/ScratchFolder.h"

#include "Native.h"

#include <gtest/gtest.h>

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
    std::filesystem::permissions(ScratchFolder::Native(strFile), std::filesystem::perms::owner_read);
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
