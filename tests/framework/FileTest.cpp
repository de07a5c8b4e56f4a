// Files say what failed, in a record or in an exception, with the text for it.
#include "framework/File.h"

#include "platform/Errors.h"
#include "support/ScratchFolder.h"
#include "support/Substitution.h"

#include <gtest/gtest.h>

namespace
{
// The text of what the call throws, in a buffer of so many bytes.
template <class Call>
std::string ThrownBy(Call call, unsigned nSize = 300)
{
    try
    {
        call();
        return "nothing";
    }
    catch (CException* pError)   // and so the concrete type is known across the base
    {
        std::string strText(nSize, '#');
        EXPECT_NE(pError->GetErrorMessage(strText.data(), nSize), 0);
        pError->Delete();
        return strText.c_str();
    }
}
}

TEST(CFile, SaysWhatFailed)
{
    const ScratchFolder oFolder;
    CFileException oError;
    char achText[8] = "unset";
    EXPECT_EQ(oError.GetErrorMessage(achText, sizeof achText), 0);
    EXPECT_STREQ(achText, "");
    CFile oFile, oOut;
    EXPECT_FALSE(oFile.Open((oFolder / "missing").c_str(), CFile::modeRead, &oError));
    EXPECT_EQ(oError.m_eCause, CFileException::fileNotFound);
    EXPECT_EQ(oError.m_lOsError, 2);
    EXPECT_EQ(oError.m_strFileName, oFolder / "missing");

    const std::string strName = oFolder / "a file";
    ASSERT_TRUE(oOut.Open(strName.c_str(), CFile::modeCreate | CFile::modeWrite));
    EXPECT_FALSE(oFile.Open(strName.c_str(), CFile::modeRead, &oError));
    EXPECT_EQ(oError.m_eCause, CFileException::sharingViolation);
    EXPECT_EQ(ThrownBy([&] { oOut.Read(achText, 1); }), strName + ": access is denied (error 5)");
    const Substitution oFullDisk(&FileCalls::WriteFile,
                                 [](HANDLE, LPCVOID, DWORD nCount, LPDWORD pnWritten, LPOVERLAPPED)
                                     WINAPI -> BOOL { return *pnWritten = nCount - 1, TRUE; });
    EXPECT_EQ(ThrownBy([&] { oOut.Write("x", 1); }), strName + ": the disk is full (error 112)");
    oOut.Close();
    oOut.Close();
    EXPECT_EQ(ThrownBy([&] { oOut.GetLength(); }, unsigned(strName.size()) + 5), strName + ": th");
}
