// zvu get: fetches what a URL holds, to standard output or into a file. Both go through one retrieval with one
// observer, so that options, progress and Ctrl-C are the same.
#include "Command.h"
#include "System.h"
#include "support/Interrupt.h"
#include "support/OutputFile.h"
#include "support/Progress.h"

#include "ZevrinUtils/HttpServices.h"

#include <csignal>
#include <iostream>

namespace
{
char s_achOutput[0x10000];   // so that blocks of 1024 bytes do not each become a write

struct GetOptions
{
    std::string strUrl;
    std::string strFile;   // empty: standard output
    std::string strUser;
    std::string strPassword;
    unsigned short nSecurePort = 0;   // 0: a plain connection
    bool bUnique = false;
    bool bHostCache = false;
    mutable CHttpServices oClient{};   // which options that are its own set at once
};

// Shows the user how far the answer is. Opens its file only when it begins, so that an earlier failure touches nothing.
class Observer : public CHTTPRequestObserver
{
public:
    Observer(Progress& oProgress, OutputFile* pFile) : m_oProgress(oProgress), m_pFile(pFile) {}

    void OnContentLength(unsigned long nBytes) override
    {
        m_oProgress.Expect(nBytes);
        if (m_pFile)
            m_pFile->Open();
    }
    bool bOnDataBlock(unsigned long nBytes) override
    {
        m_oProgress.Add(nBytes);
        return !IsInterrupted();
    }
    bool bKeepRunning() override { return true; }
    void OnRequestEnd(bool) override {}
    void OnDialogShown(bool) override {}

private:
    Progress& m_oProgress;
    OutputFile* m_pFile;
};

// pFile: the file behind the stream; null for standard output
int Fetch(const GetOptions& oOptions, std::ostream& oOutput, OutputFile* pFile)
{
    auto& oClient = oOptions.oClient;
    oClient.SetAuthenticationDetails(oOptions.strUser.c_str(), oOptions.strPassword.c_str(), oOptions.nSecurePort != 0,
                                     oOptions.nSecurePort);
    WatchForInterrupt(SIGINT);
    CString strError;
    CString strNewHost;
    auto eResult = CHttpServices::eHttpReqOK;
    {
        // On one terminal, text and progress would run into each other.
        Progress oProgress(IsTerminal(eStandardError) && (pFile || !IsTerminal(eStandardOutput)));
        Observer oObserver(oProgress, pFile);
        eResult = oClient.eCopyURLFile(oOptions.strUrl, oOutput, strNewHost, &oObserver, 0, oOptions.bUnique, &strError,
                                       oOptions.bHostCache);
    }
    if (eResult == CHttpServices::eHttpReqCanceled)
        return Fail("interrupted");
    if (eResult == CHttpServices::eHttpReqOK && (!pFile || pFile->Complete()))
        return eSucceeded;
    return Fail(pFile && !pFile->Fault().empty() ? pFile->Fault() : static_cast<const char*>(strError));
}

int Get(const GetOptions& oOptions)
{
    if (!oOptions.strFile.empty())
    {
        OutputFile oFile(oOptions.strFile);
        std::ostream oOutput(&oFile);
        return Fetch(oOptions, oOutput, &oFile);
    }
    MakeBinary(eStandardOutput);
    if (!IsTerminal(eStandardOutput))
        std::cout.rdbuf()->pubsetbuf(s_achOutput, sizeof s_achOutput);
    return Fetch(oOptions, std::cout, nullptr);
}

void DefineGet(CLI::App& oCommand, Action& action)
{
    auto& oOptions = Runs(oCommand, action, &Get);
    AddArgument(oCommand, "URL", oOptions.strUrl, "http://host[:port][/path][?query]");
    oCommand.add_option("-o,--output", oOptions.strFile,
                        "File to put it in, once all of it is there; standard output by default");
    oCommand.add_flag("--unique", oOptions.bUnique, "Ask so that no cache can answer");
    oCommand.add_flag("--host-cache", oOptions.bHostCache, "First ask the host's root whether the host has moved");
    oCommand.add_option_function<std::string>(
        "--agent", [&](const std::string& strAgent) { oOptions.oClient.SetAppName(strAgent); },
        "Agent text to send instead of the library's");
    auto* const pUser = oCommand.add_option("--user", oOptions.strUser, "Name for a server that asks for one");
    oCommand.add_option("--password", oOptions.strPassword, "The password to it")->needs(pUser);
    oCommand.add_option("--secure", oOptions.nSecurePort, "Connect with TLS, to this port whatever the URL says")
        ->check(CLI::Range(1, 65535));
    oCommand.add_flag_callback(
        "--post", [&] { oOptions.oClient.SetGetPostType(0); }, "Ask with POST, without a body");
}
const Command s_oGetCommand("get", "Fetch what a URL holds", "get http://127.0.0.1:8080/report -o report.txt",
                            &DefineGet);
}
