// Retrievals from nginx on loopback, against the curl command and against libcurl's easy interface; run by
// with-servers:
//     bench_http [FOLDER]     which has room for a file of 1 GiB
#include "Bench.h"

#include "ZevrinUtils/HttpServices.h"

#include <cstdlib>
#include <fstream>

#include <curl/curl.h>

namespace
{
constexpr int nRounds = 6;
const auto nSmallRequests = static_cast<int>(Amount(10000) / nRounds + 1);   // in each round
const std::uintmax_t nGibibyte = Amount(1 << 30);

std::string Url(const std::string& strPath)
{
    return "http://127.0.0.1:" + std::string(std::getenv("ZV_HTTP")) + strPath;
}

// Takes everything, for nothing.
struct NullBuffer : std::streambuf
{
    std::streamsize xsputn(const char*, std::streamsize nBytes) override { return nBytes; }
};

struct Counter : CHTTPRequestObserver
{
    void OnContentLength(unsigned long) override {}
    bool bOnDataBlock(unsigned long nBytes) override
    {
        nSum += nBytes;
        return true;
    }
    bool bKeepRunning() override { return true; }
    void OnRequestEnd(bool) override {}
    void OnDialogShown(bool) override {}

    std::uintmax_t nSum = 0;
};

bool GetIntoStream(const std::string& strUrl, std::uintmax_t nWanted)
{
    NullBuffer oNull;
    std::ostream oOutput(&oNull);
    Counter oCounter;
    CString strHost;
    return CHttpServices().eCopyURLFile(strUrl, oOutput, strHost, &oCounter, 1, 0, nullptr, 0) ==
               CHttpServices::eHttpReqOK &&
           oCounter.nSum == nWanted;
}

bool GetIntoFile(const std::string& strUrl, const std::string& strFile)
{
    return CHttpServices().bGetURLFileAndWriteToFile(strUrl, strFile, 0, nullptr) != 0;
}

void GetByCommand(const std::string& strUrl, const std::string& strFile)
{
    RunCommand("curl --silent --fail --output '" + strFile + "' " + strUrl);
}

// With everything built anew, as the library does.
bool GetByEasyInterface(const std::string& strUrl, std::uintmax_t nWanted)
{
    std::uintmax_t nSum = 0;
    const auto count = +[](char*, std::size_t nSize, std::size_t nMembers, void* pSum) {
        *static_cast<std::uintmax_t*>(pSum) += nSize * nMembers;
        return nSize * nMembers;
    };
    CURL* const pEasy = curl_easy_init();
    curl_easy_setopt(pEasy, CURLOPT_URL, strUrl.c_str());
    curl_easy_setopt(pEasy, CURLOPT_WRITEFUNCTION, count);
    curl_easy_setopt(pEasy, CURLOPT_WRITEDATA, &nSum);
    const CURLcode eCode = curl_easy_perform(pEasy);
    curl_easy_cleanup(pEasy);
    return eCode == CURLE_OK && nSum == nWanted;
}

// So many of them, none of which may fail.
std::function<void()> Times(int nTimes, const std::function<bool()>& request)
{
    return [=] {
        for (int n = 0; n < nTimes; ++n)
            Require(request(), "a request failed");
    };
}
}

void Measure(RatioTable& oTable, const std::vector<std::string>& oArguments)
{
    const ScratchFolder oFolder(oArguments);
    const std::string strCopy = oFolder / "copy";
    const std::filesystem::path oServed(std::getenv("ZV_FILES"));
    std::ofstream(oServed / "gibibyte").close();
    std::filesystem::resize_file(oServed / "gibibyte", nGibibyte);
    curl_global_init(CURL_GLOBAL_ALL);

    const std::string strBig = Url("/gibibyte");
    const std::string strSmall = Url("/zeros");
    const std::string strGoal = "at most 1.1";
    oTable.Compare(
        {{"1 GiB into a file, against curl", strGoal, Times(1, [&] { return GetIntoFile(strBig, strCopy); }),
          [&] { GetByCommand(strBig, strCopy); }},
         {"1 GiB into a stream, against curl", strGoal, Times(1, [&] { return GetIntoStream(strBig, nGibibyte); }),
          [&] { GetByCommand(strBig, "/dev/null"); }},
         {"10000 small requests, against libcurl", strGoal,
          Times(nSmallRequests, [&] { return GetIntoStream(strSmall, 6); }),
          Times(nSmallRequests, [&] { return GetByEasyInterface(strSmall, 6); }), nSmallRequests}},
        nRounds);
}
