// The entry points of hosts: what a URL holds, into a stream, a string or a file.
#include "ZevrinUtils/HttpServices.h"

#include "framework/File.h"
#include "framework/Internet.h"
#include "http/Tell.h"
#include "platform/Internet.h"

#include <array>
#include <cstring>
#include <string>
#include <strstream>

namespace
{
constexpr unsigned nBlockSize = 1024;   // observer and abort flag are consulted at this grain

// The length that the answer's header tells, or else the one that the file tells.
unsigned long ContentLength(const CHttpFile& oFile)
{
    auto nLength = static_cast<DWORD>(oFile.GetLength());
    oFile.QueryInfo(HTTP_QUERY_FLAG_NUMBER | HTTP_QUERY_CONTENT_LENGTH, nLength);
    return nLength;
}

const char* StreamState(const std::ostream& oOutput)
{
    return oOutput.bad() ? "BAD" : oOutput.fail() ? "FAIL" : "";
}
}

CHttpServices::eHttpReqRTC CHttpServices::eCopyURLFile(const CString& sURL, std::ostream& oOutput, CString& sNewHost,
                                                       CHTTPRequestObserver* pObserver, int bCheckRunning,
                                                       int bUniqueRequest, CString* psError, int bUseHostCache)
{
    m_pObserver = pObserver;
    CString strUrl = sURL;
    if (bUniqueRequest)
        MakeUniqueHttpRequest(strUrl);
    if (!bOpenGetRequest(strUrl, sNewHost, psError, bUseHostCache))
    {
        if (m_pObserver)
            m_pObserver->OnRequestEnd(false);
        return eHttpReqFailed;   // without a close
    }
    if (m_pObserver)
        m_pObserver->OnContentLength(ContentLength(*m_pFile));

    std::array<char, nBlockSize + 1> achBlock{};
    eHttpReqRTC eResult = eHttpReqOK;
    for (unsigned nRead = 1; nRead > 0 && eResult == eHttpReqOK;)
    {
        nRead = m_pFile->Read(achBlock.data(), nBlockSize);
        if (nRead > 0)
        {
            oOutput.write(achBlock.data(), static_cast<std::streamsize>(nRead));
            if (!oOutput.good())
            {
                Tell(psError, CString("Falied to write - ") + StreamState(oOutput));
                eResult = eHttpReqFailed;
                continue;
            }
            if (m_pObserver && !m_pObserver->bOnDataBlock(nRead))
                eResult = eHttpReqCanceled;
            if (IsAbort())
            {
                Tell(psError, "Request canceled by user.");
                eResult = eHttpReqCanceled;
                break;
            }
        }
        // A termination wins over a cancelation by the observer, and counts even behind the last block.
        if (bCheckRunning && m_pObserver && !m_pObserver->bKeepRunning())
        {
            CloseGetRequest(1);
            m_pObserver->OnRequestEnd(false);
            Tell(psError, "Failed because of user request for application termination");
            return eHttpReqFailed;
        }
    }
    if (m_pObserver && eResult != eHttpReqCanceled)
        m_pObserver->OnRequestEnd(eResult == eHttpReqOK);
    CloseGetRequest(1);
    return eResult;
}

// Looking at the stream's text freezes it, and nothing thaws it: the stream leaves that memory behind.
CHttpServices::eHttpReqRTC CHttpServices::eGetURLFile(const CString& sURL, CString& sContent, CString& sNewHost,
                                                      CHTTPRequestObserver* pObserver, int bCheckRunning,
                                                      int bUniqueRequest, CString* psError, int bUseHostCache)
{
    std::ostrstream oContent;
    const eHttpReqRTC eResult =
        eCopyURLFile(sURL, oContent, sNewHost, pObserver, bCheckRunning, bUniqueRequest, psError, bUseHostCache);
    const char* const pchContent = oContent.str();
    sContent = pchContent ? CString(std::string(pchContent, static_cast<std::size_t>(oContent.pcount()))) : CString();
    return eResult;
}

int CHttpServices::bGetURLFileAndWriteToFile(const CString& sURL, const CString& sFilePath, int bUniqueRequest,
                                             CString* psError)
{
    CString strUrl = sURL;
    if (bUniqueRequest)
        MakeUniqueHttpRequest(strUrl);
    CString strNewHost;
    if (!bOpenGetRequest(strUrl, strNewHost, psError, 0))
        return 0;   // the file is not touched

    CFile oFile;
    CFileException oError;
    if (!oFile.Open(sFilePath, CFile::modeCreate | CFile::modeWrite, &oError))
    {
        Tell(psError, "Failed to open file " + sFilePath);
        CloseGetRequest(1);
        return 0;
    }
    std::array<char, std::size_t{4} * nBlockSize> achBuffer{};   // of which only the first block is used
    while (const unsigned nRead = m_pFile->Read(achBuffer.data(), nBlockSize))
        oFile.Write(achBuffer.data(), nRead);
    CloseGetRequest(1);
    return 1;
}

// A text that does not fit leaves the buffer empty, and the system judges that.
int CHttpServices::IsOnline(CString& sURL)
{
    std::array<char, 260> achUrl{};
    const auto nLength = static_cast<std::size_t>(sURL.GetLength());
    if (nLength < achUrl.size())
        std::memcpy(achUrl.data(), static_cast<const char*>(sURL), nLength);
    return Internet().InternetCheckConnectionA(achUrl.data(), FLAG_ICC_FORCE_CONNECTION, 0);
}
