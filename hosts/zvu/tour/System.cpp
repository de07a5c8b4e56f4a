// The tour's stops at the registry and the system.
#include "Families.h"

#include "ZevrinUtils/ConfigParams.h"
#include "ZevrinUtils/SystemInfo.h"

namespace
{
constexpr auto pszKey = "Software\\ZevrinUtils\\Tour";
constexpr long nAccessDenied = 5;

Outcome WriteParameters()
{
    CConfigParamsBase oParams;
    HKEY hKey = nullptr;
    const long nError = oParams.OpenRegistry(pszKey, hKey);
    if (nError == nAccessDenied)
        return LeftOut("this account may not write to the registry");
    if (nError)
        return Judged(false, Text("error ", nError));
    oParams.setRegString(hKey, "Greeting", "hello");
    oParams.setRegDWORD(hKey, "Answer", 42);
    oParams.CloseRegistry(hKey);
    return Judged(oParams.IsRegistryKeyExists(HKEY_LOCAL_MACHINE, pszKey), pszKey);
}

Outcome ReadParameters()
{
    CConfigParamsBase oParams;
    std::string strGreeting;
    unsigned long nAnswer = 0;
    const bool bRead =
        oParams.getRegString(pszKey, "Greeting", strGreeting) && oParams.getRegDWORD(pszKey, "Answer", nAnswer);
    return Judged(bRead && strGreeting == "hello" && nAnswer == 42, Text(strGreeting, ", ", nAnswer));
}

Outcome DeleteParameters()
{
    CConfigParamsBase oParams;
    HKEY hKey = nullptr;
    if (const long nError = oParams.OpenRegistry(pszKey, hKey))
        return Judged(false, Text("error ", nError));
    for (const char* const pszName : {"Greeting", "Answer"})
        oParams.DeleteRegValue(hKey, pszName);
    oParams.CloseRegistry(hKey);
    std::vector<std::string> oValues;
    oParams.getRegSubKeyValues(pszKey, oValues);
    return Judged(oValues.empty(), Text(oValues.size(), " values are left"));
}

Outcome AskDisk(const std::filesystem::path& oFolder)
{
    CSystemInfo oInfo;
    oInfo.SetDiskSpaceDirectory(oFolder.string());
    double dPercent = -1;
    unsigned long nMegabytes = 0;
    const bool bDone = oInfo.GetFreeDiskSpacePercent(dPercent, nMegabytes);
    return Judged(bDone && dPercent >= 0 && dPercent <= 100,
                  Text(static_cast<int>(dPercent), " %, ", Grouped(nMegabytes), " MiB"));
}
}

void ShowRegistry(Guide& oGuide, const Surroundings&)
{
    bool bWritable = true;
    oGuide.Show("write a text and a number", [&] {
        auto oOutcome = WriteParameters();
        bWritable = oOutcome.eHow != Outcome::eLeftOut;
        return oOutcome;
    });
    if (!bWritable)
        return;
    oGuide.Show("read them", &ReadParameters);
    oGuide.Show("delete them", &DeleteParameters);
}

void ShowSystem(Guide& oGuide, const Surroundings& oSurroundings)
{
    oGuide.Show("how much of the disk is free?", [&] { return AskDisk(oSurroundings.oScratch); });
    oGuide.Show("the text of error 5", [] {
        std::string strText;
        CSystemInfo::GetFormatedMessageForWin32ErrCode(nAccessDenied, strText);
        return Judged(!strText.empty() && !strText.starts_with("Win32 error code"), strText);
    });
    oGuide.Show("does the manager run this process?", [] {
        const bool bInside = CSystemInfo::IsExecutionInsideVDManager();
        return Judged(!bInside, bInside ? "yes" : "no");
    });
}
