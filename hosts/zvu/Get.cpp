// zvu get: what a URL holds, on standard output or in a file.
#include "Command.h"
#include "Progress.h"
#include "StandardStreams.h"

#include "ZevrinUtils/HttpServices.h"

#include <atomic>
#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <mutex>
#include <thread>

namespace
{
constexpr auto nPause = std::chrono::milliseconds(50);   // between two looks at a file

constexpr std::size_t nOutputBuffer = 0x10000;   // of blocks of 1024 bytes

// Set by the signal, read by any thread.
std::atomic<bool> s_bInterrupted = false;
static_assert(std::atomic<bool>::is_always_lock_free);

struct Options
{
    std::string strUrl;
    std::string strFile;   // empty: standard output
    std::string strAgent;
    std::string strUser;
    std::string strPassword;
    unsigned short nSecurePort = 0;   // 0: a plain connection
    bool bUnique = false;
    bool bHostCache = false;
    bool bPost = false;
};

// The first Ctrl-C asks for an orderly end. While the network is silent it has to wait, so a second one ends the
// program at once.
void WatchForInterrupt()
{
    std::signal(SIGINT, [](int) {
        const int nError = errno;   // of the call that is interrupted
        s_bInterrupted = true;
        std::signal(SIGINT, SIG_DFL);
        errno = nError;
    });
}

int Fail(const std::string& strText)
{
    std::cerr << "zvu: " << strText << '\n';
    return eFailed;
}

class Observer : public CHTTPRequestObserver
{
public:
    explicit Observer(Progress& oProgress) : m_oProgress(oProgress) {}

    void OnContentLength(unsigned long nBytes) override { m_oProgress.Expect(nBytes); }
    bool bOnDataBlock(unsigned long nBytes) override
    {
        m_oProgress.Add(nBytes);
        return !s_bInterrupted;
    }
    bool bKeepRunning() override { return true; }
    void OnRequestEnd(bool) override {}
    void OnDialogShown(bool) override {}

private:
    Progress& m_oProgress;
};

void Configure(CHttpServices& oClient, const Options& oOptions)
{
    if (!oOptions.strAgent.empty())
        oClient.SetAppName(oOptions.strAgent);
    if (oOptions.bPost)
        oClient.SetGetPostType(0);
    oClient.SetAuthenticationDetails(oOptions.strUser.c_str(), oOptions.strPassword.c_str(), oOptions.nSecurePort != 0,
                                     oOptions.nSecurePort);
}

int GetToOutput(CHttpServices& oClient, const Options& oOptions)
{
    MakeBinary(eStandardOutput);
    if (!IsTerminal(eStandardOutput))
        std::setvbuf(stdout, nullptr, _IOFBF, nOutputBuffer);
    WatchForInterrupt();
    CString strError;
    CString strNewHost;
    auto eResult = CHttpServices::eHttpReqOK;
    {
        // Text and progress would run into each other on one terminal.
        Progress oProgress(IsTerminal(eStandardError) && !IsTerminal(eStandardOutput));
        Observer oObserver(oProgress);
        eResult = oClient.eCopyURLFile(oOptions.strUrl, std::cout, strNewHost, &oObserver, 0, oOptions.bUnique,
                                       &strError, oOptions.bHostCache);
    }
    if (eResult == CHttpServices::eHttpReqCanceled)
        return Fail("interrupted");
    if (eResult != CHttpServices::eHttpReqOK)
        return Fail(static_cast<const char*>(strError));
    return std::cout.flush() ? eSucceeded : Fail("standard output cannot be written");
}

// Where the answer is gathered until all of it is there: beside the file, which a failed fetch leaves as it was.
// What is no ordinary file, a device say, takes the answer itself.
class PartialFile
{
public:
    explicit PartialFile(const std::string& strFile) : m_oFile(strFile), m_oPartial(strFile)
    {
        if (exists(m_oFile))
            m_oFile = canonical(m_oFile);   // not to put a file in the place of a link
        if (!exists(m_oFile) || is_regular_file(m_oFile))
            m_oPartial = m_oFile.string() + ".part";
    }
    ~PartialFile() { Discard(); }
    PartialFile(const PartialFile&) = delete;
    PartialFile& operator=(const PartialFile&) = delete;

    std::string Path() const { return m_oPartial.string(); }

    std::uint64_t Size() const
    {
        std::error_code oIgnored;
        return is_regular_file(m_oPartial, oIgnored) ? file_size(m_oPartial, oIgnored) : 0;
    }

    void Discard() const
    {
        std::error_code oIgnored;
        if (m_oPartial != m_oFile)
            remove(m_oPartial, oIgnored);
    }

    void Complete()
    {
        if (m_oPartial != m_oFile)
            rename(m_oPartial, m_oFile);
    }

private:
    std::filesystem::path m_oFile;
    std::filesystem::path m_oPartial;
};

// A retrieval into a file tells nothing of its progress and cannot be stopped. So a thread beside it looks at the
// file, and an interrupt ends the program.
class FileWatch
{
public:
    explicit FileWatch(const PartialFile& oFile) : m_oFile(oFile), m_oThread([this] { Watch(); }) {}
    ~FileWatch()
    {
        {
            const std::lock_guard oHold(m_oLock);
            m_bDone = true;
        }
        m_oWake.notify_one();
        m_oThread.join();
    }
    FileWatch(const FileWatch&) = delete;
    FileWatch& operator=(const FileWatch&) = delete;

private:
    void Watch()
    {
        {
            Progress oProgress(IsTerminal(eStandardError));
            std::unique_lock oHold(m_oLock);
            while (!s_bInterrupted && !m_bDone)
            {
                m_oWake.wait_for(oHold, nPause);
                oProgress.Set(m_oFile.Size());
            }
            if (m_bDone)
                return;
        }
        m_oFile.Discard();
        std::_Exit(Fail("interrupted"));
    }

    const PartialFile& m_oFile;
    bool m_bDone = false;
    std::mutex m_oLock;
    std::condition_variable m_oWake;
    std::thread m_oThread;   // the last, as it uses the others
};

int GetToFile(CHttpServices& oClient, const Options& oOptions)
{
    PartialFile oFile(oOptions.strFile);
    CString strError;
    int bDone = 0;
    WatchForInterrupt();
    {
        FileWatch oWatch(oFile);
        bDone = oClient.bGetURLFileAndWriteToFile(oOptions.strUrl, oFile.Path(), oOptions.bUnique, &strError);
    }
    if (!bDone)
        return Fail(static_cast<const char*>(strError));
    oFile.Complete();
    return eSucceeded;
}

int Get(const Options& oOptions)
{
    CHttpServices oClient;
    Configure(oClient, oOptions);
    return oOptions.strFile.empty() ? GetToOutput(oClient, oOptions) : GetToFile(oClient, oOptions);
}
}

void AddGet(CLI::App& oApp, Action& action)
{
    const auto pOptions = std::make_shared<Options>();
    auto* const pCommand = oApp.add_subcommand("get", "Fetch what a URL holds");
    pCommand->add_option("URL", pOptions->strUrl, "http://host[:port][/path][?query]")->required();
    auto* const pFile = pCommand->add_option("-o,--output", pOptions->strFile,
                                             "File to put it in, once all of it is there; standard output by default");
    pCommand->add_flag("--unique", pOptions->bUnique, "Ask so that no cache can answer");
    pCommand->add_flag("--host-cache", pOptions->bHostCache, "First ask the host's root whether the host has moved")
        ->excludes(pFile);
    pCommand->add_option("--agent", pOptions->strAgent, "Agent text to send instead of the library's");
    auto* const pUser = pCommand->add_option("--user", pOptions->strUser, "Name for a server that asks for one");
    pCommand->add_option("--password", pOptions->strPassword, "The password to it")->needs(pUser);
    pCommand->add_option("--secure", pOptions->nSecurePort, "Connect with TLS, to this port whatever the URL says")
        ->check(CLI::Range(1, 65535));
    pCommand->add_flag("--post", pOptions->bPost, "Ask with POST, without a body");
    pCommand->footer("Example: zvu get http://127.0.0.1:8080/report -o report.txt");
    pCommand->callback([pOptions, &action] { action = [pOptions] { return Get(*pOptions); }; });
}
