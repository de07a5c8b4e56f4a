// Retrievals from nginx on loopback, against the curl command and against libcurl's easy interface; run by
// with-servers:
//     bench_http FOLDER     which has room for a file of 1 GiB
#include "RatioTable.h"

#include "ZevrinUtils/HttpServices.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>

#include <curl/curl.h>

namespace
{
using Clock = std::chrono::steady_clock;
constexpr int nRounds = 7;
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

bool GetByCommand(const std::string& strUrl, const std::string& strFile)
{
    return std::system(("curl --silent --fail --output '" + strFile + "' " + strUrl).c_str()) == 0;
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

using Work = std::function<bool()>;

// Nanoseconds for one of so many.
double Measure(const Work& work, int nTimes)
{
    const auto nStart = Clock::now();
    for (int n = 0; n < nTimes; ++n)
        if (!work())
        {
            std::cerr << "bench_http: a request failed\n";
            std::exit(1);
        }
    return std::chrono::duration<double, std::nano>(Clock::now() - nStart).count() / nTimes;
}

// Library and peer in turn, so that both see the machine's moods; the medians are compared.
void Compare(RatioTable& oTable, const std::string& strCase, int nTimes, const Work& library, const Work& peer)
{
    std::vector<double> oLibrary;
    std::vector<double> oPeer;
    for (int n = 0; n < nRounds; ++n)
    {
        oLibrary.push_back(Measure(library, nTimes));
        oPeer.push_back(Measure(peer, nTimes));
    }
    const auto median = [](std::vector<double>& oTimes) {
        std::nth_element(oTimes.begin(), oTimes.begin() + nRounds / 2, oTimes.end());
        return oTimes[nRounds / 2];
    };
    oTable.SetGoal(strCase, "at most 1.1");
    oTable.Add(strCase, "library", median(oLibrary));
    oTable.Add(strCase, "peer", median(oPeer));
}
}

int main(int nArguments, char** ppArguments)
{
    if (nArguments != 2)
    {
        std::cerr << "usage: bench_http FOLDER\n";
        return 2;
    }
    const std::filesystem::path oServed(std::getenv("ZV_FILES"));
    const std::string strCopy = (std::filesystem::path(ppArguments[1]) / "bench_http.copy").string();
    std::ofstream(oServed / "gibibyte").close();
    std::filesystem::resize_file(oServed / "gibibyte", nGibibyte);
    curl_global_init(CURL_GLOBAL_ALL);

    RatioTable oTable;
    const std::string strBig = Url("/gibibyte");
    Compare(
        oTable, "1 GiB into a file, against curl", 1, [&] { return GetIntoFile(strBig, strCopy); },
        [&] { return GetByCommand(strBig, strCopy); });
    Compare(
        oTable, "1 GiB into a stream, against curl", 1, [&] { return GetIntoStream(strBig, nGibibyte); },
        [&] { return GetByCommand(strBig, "/dev/null"); });
    const std::string strSmall = Url("/zeros");
    Compare(
        oTable, "10000 small requests, against libcurl", nSmallRequests, [&] { return GetIntoStream(strSmall, 6); },
        [&] { return GetByEasyInterface(strSmall, 6); });
    oTable.Print();
    std::filesystem::remove(strCopy);
}
