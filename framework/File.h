// CFile: a file that is read or written from its beginning.
#pragma once

#include "ZevrinUtils/framework/Exception.h"
#include "platform/Files.h"

// One thread at a time. While it is open, nobody else can open the file.
class CFile
{
public:
    enum eOpenFlag : unsigned
    {
        modeRead = 0,
        modeWrite = 1,
        modeCreate = 0x1000   // makes the file, or empties the one that is there
    };

    CFile() = default;
    ~CFile();   // closes
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;

    // False on failure, with the reason in *pError if that is given. Throws nothing of the framework.
    bool Open(const char* pszFileName, unsigned nOpenFlags, CFileException* pError = nullptr);

    // The operations below throw a CFileException* on failure.
    // Gives the count of bytes read: less than asked for at the end, 0 behind it.
    unsigned Read(void* pBuffer, unsigned nCount);
    void Write(const void* pData, unsigned nCount);   // all of it
    unsigned long long GetLength() const;
    void Close();   // closed, whatever it throws; nothing happens to a closed one

private:
    bool GiveUp() noexcept;
    void Check(bool bSucceeded) const;

    HANDLE m_hFile = INVALID_HANDLE_VALUE;
    std::string m_strFileName;
};
