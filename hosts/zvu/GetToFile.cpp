#include "GetToFile.h"

#include "Command.h"
#include "System.h"
#include "support/Interrupt.h"
#include "support/Progress.h"

#include "ZevrinUtils/Generators.h"

#include <condition_variable>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <thread>

namespace
{
constexpr auto nBetweenLooks = std::chrono::milliseconds(50);

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
            m_oPartial = m_oFile.string() + "." + CSGuid::CreateGUID().substr(0, 8) + ".part";
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
        if (m_oPartial == m_oFile)
            return;
        if (exists(m_oFile))
            permissions(m_oPartial, status(m_oFile).permissions());
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
            while (!IsInterrupted() && !m_bDone)
            {
                m_oWake.wait_for(oHold, nBetweenLooks);
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
}

int GetToFile(CHttpServices& oClient, const std::string& strUrl, const std::string& strFile, bool bUnique)
{
    PartialFile oFile(strFile);
    CString strError;
    int bDone = 0;
    WatchForInterrupt(SIGINT);
    {
        FileWatch oWatch(oFile);
        bDone = oClient.bGetURLFileAndWriteToFile(strUrl, oFile.Path(), bUnique, &strError);
    }
    if (!bDone)
        return Fail(static_cast<const char*>(strError));
    oFile.Complete();
    return eSucceeded;
}
