// In a window, or on the terminal with the care that one takes for a password: no echo, and the terminal's mode put
// back however the prompt ends.
#include "CredentialsPrompt.h"

#include "Desktop.h"
#include "platform/linux/base/Descriptor.h"
#include "util/Owned.h"

#include <cerrno>
#include <csignal>
#include <iterator>
#include <mutex>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace
{
constexpr char chCancel = 3;   // Ctrl-C

// While the terminal's mode is changed, puts it back also for a signal that would end the process at once. What the
// host does about a signal is its own affair. One at a time, as a handler knows nothing but what is static.
class PutBackAtSignals
{
public:
    PutBackAtSignals(int nTerminal, const termios& oMode)
    {
        s_nTerminal = nTerminal;
        s_oMode = oMode;
        struct sigaction oAction = {};
        oAction.sa_handler = &PutBack;
        oAction.sa_flags = static_cast<int>(SA_RESETHAND);
        for (std::size_t n = 0; n < std::size(s_anEnding); ++n)
            if (sigaction(s_anEnding[n], nullptr, &m_aoBefore[n]) == 0 && m_aoBefore[n].sa_handler == SIG_DFL)
                sigaction(s_anEnding[n], &oAction, nullptr);
    }
    ~PutBackAtSignals()
    {
        for (std::size_t n = 0; n < std::size(s_anEnding); ++n)
            if (m_aoBefore[n].sa_handler == SIG_DFL)
                sigaction(s_anEnding[n], &m_aoBefore[n], nullptr);
    }
    PutBackAtSignals(const PutBackAtSignals&) = delete;
    PutBackAtSignals& operator=(const PutBackAtSignals&) = delete;

private:
    static void PutBack(int nSignal)
    {
        tcsetattr(s_nTerminal, TCSANOW, &s_oMode);
        raise(nSignal);   // which now does what it always does
    }

    static constexpr int s_anEnding[] = {SIGHUP, SIGINT, SIGQUIT, SIGTERM};
    static inline int s_nTerminal = -1;
    static inline termios s_oMode{};
    struct sigaction m_aoBefore[std::size(s_anEnding)] = {};
};

// The process's terminal, with its mode put back at the end.
class Terminal
{
public:
    Terminal() : m_oFile(open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
        // A process in the background would be stopped by reading.
        if (m_oFile && tcgetpgrp(m_oFile.Get()) == getpgrp() && tcgetattr(m_oFile.Get(), &m_oModeBefore) == 0)
            m_oPutBack.emplace(m_oFile.Get(), m_oModeBefore);
    }
    ~Terminal()
    {
        if (IsUsable())
            tcsetattr(m_oFile.Get(), TCSAFLUSH, &m_oModeBefore);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    bool IsUsable() const noexcept { return m_oPutBack.has_value(); }

    // A line; nothing if the user gives up.
    std::optional<std::string> Ask(const std::string& strPrompt, bool bEcho)
    {
        // Ctrl-C ends the line instead of the process, which would leave the terminal without its echo.
        termios oMode = m_oModeBefore;
        oMode.c_lflag &= ~static_cast<tcflag_t>(ISIG | (bEcho ? 0 : ECHO));
        oMode.c_lflag |= ICANON;
        oMode.c_iflag |= ICRNL;
        oMode.c_cc[VEOL] = chCancel;
        if (tcsetattr(m_oFile.Get(), TCSAFLUSH, &oMode) != 0 || !Write(strPrompt))
            return std::nullopt;
        std::optional<std::string> strLine = ReadLine();
        if (!bEcho || !strLine)
            Write("\n");
        return strLine;
    }

private:
    bool Write(const std::string& strText) const
    {
        return WriteAll(m_oFile.Get(), strText.data(), strText.size()) == strText.size();
    }

    std::optional<std::string> ReadLine() const
    {
        std::string strLine;
        for (;;)
        {
            char ch = 0;
            const ssize_t nRead = read(m_oFile.Get(), &ch, 1);
            if (nRead < 0 && errno == EINTR)
                continue;
            if (nRead != 1 || ch == chCancel)
                return std::nullopt;
            if (ch == '\n')
                return strLine;
            strLine += ch;
        }
    }

    const Descriptor m_oFile;
    termios m_oModeBefore{};
    std::optional<PutBackAtSignals> m_oPutBack;
};

std::optional<Credentials> AskInWindow(const DesktopCalls& oDesktop, const std::string& strWhat)
{
    char* pszUser = nullptr;
    char* pszPassword = nullptr;
    if (!oDesktop.pfnAskForCredentials(strWhat.c_str(), &pszUser, &pszPassword))
        return std::nullopt;
    const Malloced<char> oUser(pszUser), oPassword(pszPassword);
    return pszUser && pszPassword ? std::optional(Credentials{pszUser, pszPassword}) : std::nullopt;
}

std::optional<Credentials> AskOnTerminal(const std::string& strWhat)
{
    static std::mutex s_oOneAtATime;   // or two would put back each other's modes
    const std::lock_guard oHold(s_oOneAtATime);
    Terminal oTerminal;
    if (!oTerminal.IsUsable())
        return std::nullopt;
    std::optional<std::string> strUser = oTerminal.Ask(strWhat + "\nUser name: ", true);
    if (!strUser || strUser->empty())
        return std::nullopt;
    std::optional<std::string> strPassword = oTerminal.Ask("Password: ", false);
    if (!strPassword)
        return std::nullopt;
    return Credentials{std::move(*strUser), std::move(*strPassword)};
}
}

std::optional<Credentials> AskForCredentials(const std::string& strWhat)
{
    const DesktopCalls* const pDesktop = Desktop();
    return pDesktop ? AskInWindow(*pDesktop, strWhat) : AskOnTerminal(strWhat);
}
