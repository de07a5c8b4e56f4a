// The tour's stops at the port listener and the HTTP client, which talk to each other, so that the tour needs no
// network.
#include "Families.h"

#include "ZevrinUtils/HttpServices.h"
#include "ZevrinUtils/PortListener.h"

#include <atomic>

namespace
{
// Ports that systems leave to everyone. Of so many, one should be free.
constexpr unsigned short nFirstPort = 50'000;
constexpr unsigned short nLastPort = 50'999;

constexpr std::size_t nLargeReply = 1'000'000;
constexpr unsigned long nCancelAfter = 100'000;

// The server of the tour: one text for each path.
std::atomic<int> s_nRequests;

unsigned long ServeTour(unsigned short, const char* pszRequest, ZVString& oReply, void*)
{
    ++s_nRequests;
    const bool bLarge = std::string_view(pszRequest).starts_with("GET /large ");
    oReply.Assign(bLarge ? std::string(nLargeReply, 'x').c_str() : "<hello/>");
    return 0;
}

// The port that could be opened; 0 if none could.
unsigned short OpenPort(CSPortListener& oListener)
{
    for (unsigned short nPort = nFirstPort; nPort <= nLastPort; ++nPort)
        if (oListener.Start(nPort, &ServeTour))
            return nPort;
    return 0;
}

// Counts the bytes that arrive, and cancels when they are too many.
class Counter : public CHTTPRequestObserver
{
public:
    explicit Counter(unsigned long nMost) : m_nMost(nMost) {}

    void OnContentLength(unsigned long nBytes) override { m_nAnnounced = nBytes; }
    bool bOnDataBlock(unsigned long nBytes) override
    {
        ++m_nBlocks;
        m_nBytes += nBytes;
        return m_nBytes < m_nMost;
    }
    bool bKeepRunning() override { return true; }
    void OnRequestEnd(bool) override {}
    void OnDialogShown(bool) override {}

    unsigned long m_nAnnounced = 0;
    unsigned long m_nBlocks = 0;
    unsigned long m_nBytes = 0;

private:
    unsigned long m_nMost;
};

Outcome Fetch(const std::string& strUrl)
{
    CString strContent;
    CString strHost;
    CString strError;
    const auto eResult = CHttpServices().eGetURLFile(strUrl, strContent, strHost, nullptr, 0, 0, &strError, 0);
    const bool bRight = eResult == CHttpServices::eHttpReqOK && strContent == "<hello/>";
    return Judged(bRight, static_cast<const char*>(bRight ? strContent : strError));
}

Outcome FetchAndCount(const std::string& strUrl)
{
    Counter oCounter(nLargeReply + 1);
    std::ostringstream oOutput;
    CString strHost;
    CHttpServices().eCopyURLFile(strUrl, oOutput, strHost, &oCounter, 0, 0, nullptr, 0);
    return Judged(oOutput.str() == std::string(nLargeReply, 'x') && oCounter.m_nAnnounced == nLargeReply,
                  Text(Grouped(oCounter.m_nBytes), " bytes in ", oCounter.m_nBlocks, " blocks"));
}

Outcome FetchAndCancel(const std::string& strUrl)
{
    Counter oCounter(nCancelAfter);
    std::ostringstream oOutput;
    CString strHost;
    const auto eResult = CHttpServices().eCopyURLFile(strUrl, oOutput, strHost, &oCounter, 0, 0, nullptr, 0);
    return Judged(eResult == CHttpServices::eHttpReqCanceled && oCounter.m_nBytes < nLargeReply,
                  Text("canceled after ", Grouped(oCounter.m_nBytes), " bytes"));
}

Outcome FetchIntoFile(const std::string& strUrl, const std::filesystem::path& oFile)
{
    CString strError;
    if (!CHttpServices().bGetURLFileAndWriteToFile(strUrl, oFile.string(), 0, &strError))
        return Judged(false, static_cast<const char*>(strError));
    return Judged(ReadFile(oFile) == std::string(nLargeReply, 'x'), Grouped(file_size(oFile)) + " bytes");
}

Outcome IsOnline(const std::string& strUrl, bool bExpected)
{
    CString strText(strUrl);
    const bool bOnline = CHttpServices().IsOnline(strText) != 0;
    return Judged(bOnline == bExpected, bOnline ? "yes" : "no");
}
}

void ShowListenerAndHttp(Guide& oGuide, const Surroundings& oSurroundings)
{
    CSPortListener oListener;
    oListener.UseHeader(1);
    unsigned short nPort = 0;
    oGuide.Show("open a port", [&] {
        nPort = OpenPort(oListener);
        return Judged(nPort != 0, nPort ? Text("port ", nPort) : "no port is free");
    });
    if (!nPort)
        return;

    const std::string strRoot = Text("http://127.0.0.1:", nPort, "/");
    const std::string strLarge = strRoot + "large";
    oGuide.Show("does " + strRoot + " answer?", [&] { return IsOnline(strRoot, true); });
    oGuide.Show("fetch it", [&] { return Fetch(strRoot); });
    oGuide.Show("fetch a large answer, with progress", [&] { return FetchAndCount(strLarge); });
    oGuide.Show("fetch it into a file", [&] { return FetchIntoFile(strLarge, oSurroundings.oScratch / "large"); });
    oGuide.Show("cancel it on the way", [&] { return FetchAndCancel(strLarge); });
    oGuide.Show("close the port", [&] {
        oListener.Stop(nPort);
        return Judged(s_nRequests >= 4, Text(s_nRequests, " requests were served"));
    });
    oGuide.Show("does it still answer?", [&] { return IsOnline(strRoot, false); });
}

void ShowUrls(Guide& oGuide, const Surroundings&)
{
    const std::string strText = "?q=50% of a&b";
    std::string strEscaped;
    oGuide.Show("escape " + strText, [&] {
        strEscaped = OwnedText(CHttpServices().URL_Escape(strText.c_str(), 0)).get();
        return Judged(strEscaped == "%3Fq%3D50%25+of+a%26b", strEscaped);
    });
    oGuide.Show("unescape ?q=50%25+of+a%26b", [&] {
        int nLength = 0;
        const OwnedText pText(CHttpServices().URL_UnEscape("?q=50%25+of+a%26b", 0, nLength));
        return Judged(pText.get() == strText, pText.get());
    });
}
