/// @file
/// Small questions to the system.
#pragma once

#include "ZevrinUtils/CritSection.h"
#include "ZevrinUtils/Export.h"

#include <cstdint>
#include <string>

/// Free disk space, with an answer that is kept for ten seconds; error texts; whether the manager's name
/// stands in the command line.
///
/// The operations of one object may be called from any thread. The copies are not guarded: keep them apart from the
/// other operations on both objects.
class ZEVRINUTILS_API CSystemInfo
{
public:
    CSystemInfo();

    /// Takes over the kept answer and the directory. The lock is copied as CSCritSection copies, which leaves two
    /// objects with one lock's internals: exported for completeness, not for use.
    CSystemInfo(const CSystemInfo& oOther);
    CSystemInfo& operator=(const CSystemInfo& oOther);   ///< likewise

    virtual ~CSystemInfo();

    /// The part of the disk that is free to the caller, quotas included. The answer of one call serves all within the
    /// next ten seconds, also for another directory and while the clock is set back.
    ///
    /// @param dPercent     0.0 to 100.0
    /// @param ulMegabytes  in units of 1048576 bytes, the low 32 bits
    /// @return false if the system does not answer, with both unchanged, or tells of a disk without a size, with
    ///         only the percent unchanged; nothing is kept then
    bool GetFreeDiskSpacePercent(double& dPercent, unsigned long& ulMegabytes);

    /// Any directory on the disk in question; empty, as at first, for the disk of the current one. Not checked, and
    /// the kept answer stays. Always true.
    bool SetDiskSpaceDirectory(const std::string& sDirectory);
    void GetDiskSpaceDirectory(std::string& sDirectory);   ///< what SetDiskSpaceDirectory was given

    /// The system's text for a Win32 error number, with the line end behind it; "Win32 error code: " and the number,
    /// signed, if it has none.
    static void GetFormatedMessageForWin32ErrCode(unsigned long ulErrorCode, std::string& sText);

    /// True if "vdmanager.exe" stands anywhere in the command line of the process, in any case (ASCII).
    static bool IsExecutionInsideVDManager();

private:
    friend struct CSystemInfoPeer;   // the tests: the layout

    std::int32_t m_tLastDiskCheck = 0;   // 0: there is no kept answer
    unsigned long m_ulFreeDiskMegabytes = 0;
    double m_dFreeDiskPercent = 0.0;
    CSCritSection m_oDiskLock;
    std::string m_sDiskSpaceDirectory;
};
