// CFile over the platform's files. The handle is given up before a failure to close is thrown, so that the destructor
// does not close it a second time.
#include "framework/File.h"

#include "platform/Errors.h"
#include "platform/Handles.h"
#include "util/OrEmpty.h"

#include <memory>
#include <utility>

CFile::~CFile()
{
    GiveUp();
}

bool CFile::GiveUp() noexcept
{
    const HANDLE hFile = std::exchange(m_hFile, INVALID_HANDLE_VALUE);
    return hFile == INVALID_HANDLE_VALUE || Handles().CloseHandle(hFile);
}

bool CFile::Open(const char* pszFileName, unsigned nOpenFlags, CFileException* pError)
{
    GiveUp();
    m_strFileName = OrEmpty(pszFileName);
    m_hFile =
        Files().CreateFileA(pszFileName, nOpenFlags & modeWrite ? GENERIC_WRITE : GENERIC_READ, 0, nullptr,
                            nOpenFlags & modeCreate ? CREATE_ALWAYS : OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (m_hFile != INVALID_HANDLE_VALUE)
        return true;
    if (pError)
        pError->Set(Errors().GetLastError(), pszFileName);
    return false;
}

// Throws the last error, unless the operation succeeded.
void CFile::Check(bool bSucceeded) const
{
    if (bSucceeded)
        return;
    const DWORD nError = Errors().GetLastError();   // asked for first: to make the exception may change it
    auto pError = std::make_unique<CFileException>();
    pError->Set(nError, m_strFileName.c_str());
    throw pError.release();
}

unsigned CFile::Read(void* pBuffer, unsigned nCount)
{
    DWORD nRead = 0;
    Check(Files().ReadFile(m_hFile, pBuffer, nCount, &nRead, nullptr));
    return static_cast<unsigned>(nRead);
}

void CFile::Write(const void* pData, unsigned nCount)
{
    DWORD nWritten = 0;
    Check(Files().WriteFile(m_hFile, pData, nCount, &nWritten, nullptr));
    if (nWritten < nCount)
        Errors().SetLastError(ERROR_DISK_FULL);   // how the system reports a full disk is a short count
    Check(nWritten == nCount);
}

unsigned long long CFile::GetLength() const
{
    LARGE_INTEGER nSize{};
    Check(Files().GetFileSizeEx(m_hFile, &nSize));
    return static_cast<unsigned long long>(nSize.QuadPart);
}

void CFile::Close()
{
    Check(GiveUp());
}
