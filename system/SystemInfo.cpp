// Small questions to the system. How the free part of a disk is computed, and how long an answer is kept, stays as it
// is to the last bit: hosts know both.
#include "ZevrinUtils/SystemInfo.h"

#include "ZevrinUtils/framework/String.h"
#include "framework/Hold.h"
#include "platform/System.h"
#include "util/Owned.h"

#include <cstdint>

namespace
{
constexpr std::int32_t nKeptSeconds = 10;
constexpr double dScale = 1000000000.0;   // cancels out but for the last bits, which are kept as hosts know them
constexpr ULONGLONG nMegabyte = 1048576;
constexpr DWORD nUsersLanguage = 0x400;
constexpr DWORD nMessageFlags =
    FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_FROM_SYSTEM;

std::int32_t Now()
{
    return static_cast<std::int32_t>(System().time(nullptr));
}

std::int32_t SecondsBetween(std::int32_t tFrom, std::int32_t tTo)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(tTo) - static_cast<std::uint32_t>(tFrom));
}

void FreeText(char* pszText)
{
    System().LocalFree(pszText);
}

double Scaled(const ULARGE_INTEGER& nBytes)
{
    return static_cast<double>(static_cast<LONGLONG>(nBytes.QuadPart)) / dScale;
}
}

CSystemInfo::CSystemInfo() = default;
CSystemInfo::CSystemInfo(const CSystemInfo& oOther) = default;
CSystemInfo& CSystemInfo::operator=(const CSystemInfo& oOther) = default;
CSystemInfo::~CSystemInfo() = default;

bool CSystemInfo::GetFreeDiskSpacePercent(double& dPercent, unsigned long& ulMegabytes)
{
    const std::int32_t tNow = Now();
    const CSHold oHold(m_oDiskLock);   // also while the system is asked, so that others wait for that answer
    // Signed, so that a clock that is set back keeps the answer until it has caught up.
    if (m_tLastDiskCheck != 0 && SecondsBetween(m_tLastDiskCheck, tNow) < nKeptSeconds)
    {
        dPercent = m_dFreeDiskPercent;
        ulMegabytes = m_ulFreeDiskMegabytes;
        return true;
    }

    ULARGE_INTEGER nFreeToCaller{}, nTotal{}, nFree{};
    const char* const pszDirectory = m_sDiskSpaceDirectory.empty() ? nullptr : m_sDiskSpaceDirectory.c_str();
    if (!System().GetDiskFreeSpaceExA(pszDirectory, &nFreeToCaller, &nTotal, &nFree))
        return false;
    const double dFree = Scaled(nFreeToCaller);
    const double dTotal = Scaled(nTotal);
    ulMegabytes = static_cast<std::uint32_t>(nFreeToCaller.QuadPart / nMegabyte);   // also where it then fails
    if (dTotal == 0.0)
        return false;
    m_dFreeDiskPercent = 100.0 * dFree / dTotal;
    m_ulFreeDiskMegabytes = ulMegabytes;
    m_tLastDiskCheck = tNow;
    dPercent = m_dFreeDiskPercent;
    return true;
}

bool CSystemInfo::SetDiskSpaceDirectory(const std::string& sDirectory)
{
    const CSHold oHold(m_oDiskLock);
    m_sDiskSpaceDirectory = sDirectory;
    return true;
}

void CSystemInfo::GetDiskSpaceDirectory(std::string& sDirectory)
{
    const CSHold oHold(m_oDiskLock);
    sDirectory = m_sDiskSpaceDirectory;
}

void CSystemInfo::GetFormatedMessageForWin32ErrCode(unsigned long ulErrorCode, std::string& sText)
{
    char* pszText = nullptr;
    // The buffer's place takes the pointer to the one that the system makes.
    if (System().FormatMessageA(nMessageFlags, nullptr, static_cast<DWORD>(ulErrorCode), nUsersLanguage,
                                reinterpret_cast<char*>(&pszText), 0, nullptr))
    {
        const Owned<char, FreeText> pText(pszText);
        sText = pszText;
    }
    else
        sText = "Win32 error code: " + std::to_string(static_cast<std::int32_t>(ulErrorCode));
}

bool CSystemInfo::IsExecutionInsideVDManager()
{
    CString strCommandLine(System().GetCommandLineA());
    strCommandLine.MakeLower();
    return strCommandLine.Find("vdmanager.exe", 0) >= 0;
}
