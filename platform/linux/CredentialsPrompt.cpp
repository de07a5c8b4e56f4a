#include "CredentialsPrompt.h"

#include "Desktop.h"
#include "platform/Memory.h"

#include <cerrno>
#include <mutex>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace
{
constexpr char chCancel = 3;   // Ctrl-C

// The process's terminal, with its mode put back at the end.
class Terminal
{
public:
    Terminal() : m_nFile(open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
        // A process in the background would be stopped by reading.
        m_bUsable = m_nFile >= 0 && tcgetpgrp(m_nFile) == getpgrp() && tcgetattr(m_nFile, &m_oModeBefore) == 0;
    }
    ~Terminal()
    {
        if (m_bUsable)
            tcsetattr(m_nFile, TCSAFLUSH, &m_oModeBefore);
        if (m_nFile >= 0)
            close(m_nFile);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    bool IsUsable() const noexcept { return m_bUsable; }

    // A line; nothing if the user gives up.
    std::optional<std::string> Ask(const std::string& strPrompt, bool bEcho)
    {
        // Ctrl-C ends the line instead of the process, which would leave the terminal without its echo.
        termios oMode = m_oModeBefore;
        oMode.c_lflag &= ~static_cast<tcflag_t>(ISIG | (bEcho ? 0 : ECHO));
        oMode.c_lflag |= ICANON;
        oMode.c_iflag |= ICRNL;
        oMode.c_cc[VEOL] = chCancel;
        if (tcsetattr(m_nFile, TCSAFLUSH, &oMode) != 0 || !Write(strPrompt))
            return std::nullopt;
        std::optional<std::string> strLine = ReadLine();
        if (!bEcho || !strLine)
            Write("\n");
        return strLine;
    }

private:
    bool Write(const std::string& strText) const
    {
        return write(m_nFile, strText.data(), strText.size()) == static_cast<ssize_t>(strText.size());
    }

    std::optional<std::string> ReadLine() const
    {
        std::string strLine;
        for (;;)
        {
            char ch = 0;
            const ssize_t nRead = read(m_nFile, &ch, 1);
            if (nRead < 0 && errno == EINTR)
                continue;
            if (nRead != 1 || ch == chCancel)
                return std::nullopt;
            if (ch == '\n')
                return strLine;
            strLine += ch;
        }
    }

    int m_nFile;
    bool m_bUsable = false;
    termios m_oModeBefore{};
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
