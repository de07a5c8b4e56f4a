// A message by xdg-email, which opens the client with it. All that the library hands on is escaped, or refused:
// programs on the way take their arguments for more than text.
#include "Mail.h"

#include "platform/linux/base/Descriptor.h"
#include "platform/linux/base/Failure.h"
#include "platform/linux/base/Paths.h"
#include "platform/linux/processes/Spawn.h"
#include "util/OrEmpty.h"
#include "util/Translation.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <span>
#include <sstream>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>

namespace
{
constexpr char s_szProgram[] = "xdg-email";
constexpr char s_szUsualPath[] = "/usr/local/bin:/usr/bin:/bin";

bool IsProgram(const std::string& strPath)
{
    struct stat oStatus;
    return ::stat(strPath.c_str(), &oStatus) == 0 && S_ISREG(oStatus.st_mode) && ::access(strPath.c_str(), X_OK) == 0;
}

bool StandsForItself(char ch)
{
    return (ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z') || (ch >= '0' && ch <= '9') ||
           std::string_view("-._~@").find(ch) != std::string_view::npos;
}

// The form of a mailto address: nothing is left in it that any program on the way could take for more than text.
std::string Escaped(std::string_view sText)
{
    constexpr char szDigits[] = "0123456789ABCDEF";
    std::string strResult;
    for (const char ch : sText)
    {
        const auto nByte = static_cast<unsigned char>(ch);
        if (StandsForItself(ch))
            strResult += ch;
        else
            (strResult += '%').append({szDigits[nByte >> 4], szDigits[nByte & 15]});
    }
    return strResult;
}

// In such an address a line ends with CR LF.
std::string WithFullLineEnds(std::string_view sText)
{
    std::string strResult;
    for (std::size_t n = 0; n < sText.size(); ++n)
    {
        if (sText[n] == '\n' && (n == 0 || sText[n - 1] != '\r'))
            strResult += '\r';
        strResult += sText[n];
    }
    return strResult;
}

// The recipients of a class, with commas between them.
std::string Recipients(std::span<const MapiRecipDesc> aRecipients, ULONG nClass)
{
    std::string strResult;
    for (const auto& oRecipient : aRecipients)
        if (oRecipient.ulRecipClass == nClass)
            strResult += (strResult.empty() ? "" : ",") + Escaped(oRecipient.lpszName);
    return strResult;
}

// Some versions of xdg-email put names and paths in single quotes, with commas between them, for a client that takes
// this pair for the end of one and the beginning of a field of its own.
bool EndsItsQuotes(const std::string& strText)
{
    return strText.ends_with('\'') || strText.find("',") != std::string::npos;
}

void Check(std::span<const MapiRecipDesc> aRecipients)
{
    for (const auto& oRecipient : aRecipients)
    {
        Require(oRecipient.ulRecipClass >= MAPI_TO && oRecipient.ulRecipClass <= MAPI_BCC, MAPI_E_BAD_RECIPTYPE);
        Require(oRecipient.lpszName && *oRecipient.lpszName && !EndsItsQuotes(oRecipient.lpszName),
                MAPI_E_INVALID_RECIPS);
    }
}

// All that the message says, as one address of a mail.
std::string MailAddress(const MapiMessage& oMessage)
{
    const std::span<const MapiRecipDesc> aRecipients(oMessage.lpRecips, oMessage.lpRecips ? oMessage.nRecipCount : 0);
    Check(aRecipients);
    std::string strResult = "mailto:" + Recipients(aRecipients, MAPI_TO);
    char chBefore = '?';
    const auto add = [&](const char* pszField, const std::string& strValue) {
        if (!strValue.empty())
            (((strResult += std::exchange(chBefore, '&')) += pszField) += '=') += strValue;
    };
    add("cc", Recipients(aRecipients, MAPI_CC));
    add("bcc", Recipients(aRecipients, MAPI_BCC));
    add("subject", Escaped(OrEmpty(oMessage.lpszSubject)));
    add("body", Escaped(WithFullLineEnds(OrEmpty(oMessage.lpszNoteText))));
    return strResult;
}

// The file's path from the root, as the client need not share our folder.
std::string PathOfAttachment(const MapiFileDesc& oFile)
{
    const NativePath oPath(oFile.lpszPathName);
    // Opened to see whether it can be; a pipe or a terminal must not hold us.
    const Descriptor oOpen(::open(oPath, O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    Require(oOpen || (errno != ENOENT && errno != ENOTDIR), MAPI_E_ATTACHMENT_NOT_FOUND);
    struct stat oStatus;
    Require(oOpen && ::fstat(oOpen.Get(), &oStatus) == 0 && S_ISREG(oStatus.st_mode), MAPI_E_ATTACHMENT_OPEN_FAILURE);
    std::error_code oError;
    std::string strPath = std::filesystem::canonical(static_cast<const char*>(oPath), oError).string();
    Require(!oError, MAPI_E_FAILURE);   // its folder is gone
    Require(!EndsItsQuotes(strPath), MAPI_E_ATTACHMENT_OPEN_FAILURE);
    return strPath;
}

std::vector<std::string> CommandFor(const MapiMessage& oMessage)
{
    std::vector<std::string> oCommand{FindMailProgram(), "--utf8"};
    for (const auto& oFile : std::span(oMessage.lpFiles, oMessage.lpFiles ? oMessage.nFileCount : 0))
        oCommand.insert(oCommand.end(), {"--attach", PathOfAttachment(oFile)});
    oCommand.push_back(MailAddress(oMessage));
    return oCommand;
}

// Runs a program to its end; its exit code. The client that it starts outlives this process, and must not go on holding
// what this one has open.
DWORD Run(std::vector<std::string>& oCommand)
{
    Spawn oSpawn;
    oSpawn.KeepFilesBack();
    pid_t nId = 0;
    const int nErrno = oSpawn.Start(false, oCommand[0].c_str(), oCommand, nId);
    Require(nErrno == 0, nErrno == E2BIG ? MAPI_E_TEXT_TOO_LARGE : MAPI_E_FAILURE);
    int nStatus = 0;
    while (::waitpid(nId, &nStatus, 0) < 0)
        Require(errno == EINTR, MAPI_E_FAILURE);   // or the host has taken its end
    return ExitCodeOf(nStatus);
}

constexpr Translation<DWORD, ULONG> s_aResults[] = {
    {0, SUCCESS_SUCCESS},
    {2, MAPI_E_ATTACHMENT_NOT_FOUND},
    {5, MAPI_E_ATTACHMENT_OPEN_FAILURE},
};

// xdg-email tells by its exit code: also 3, there is no client, and 4, it did not start. One that was ended by a
// signal, itself or the client that it ran, was called off.
ULONG ResultOf(DWORD nExitCode)
{
    return nExitCode > nEndedBySignal ? MAPI_E_USER_ABORT : Translate(s_aResults, nExitCode, MAPI_E_FAILURE);
}
}

// Only in folders that are named from the root: a program that lies where the process happens to be is not trusted.
std::string FindMailProgram()
{
    const char* const pszPath = ::getenv("PATH");
    std::istringstream oFolders(pszPath ? pszPath : s_szUsualPath);
    for (std::string strFolder; std::getline(oFolders, strFolder, ':');)
        if (std::string strPath = strFolder + '/' + s_szProgram; strFolder.starts_with('/') && IsProgram(strPath))
            return strPath;
    return {};
}

ULONG win32::MAPISendMail(LHANDLE, std::uintptr_t, lpMapiMessage pMessage, FLAGS, ULONG)
{
    const auto send = [&] {
        Require(pMessage, MAPI_E_FAILURE);
        std::vector<std::string> oCommand = CommandFor(*pMessage);
        const ULONG nResult = ResultOf(Run(oCommand));
        Require(nResult == SUCCESS_SUCCESS, nResult);
    };
    return ErrorOf(send, MAPI_E_INSUFFICIENT_MEMORY);
}
