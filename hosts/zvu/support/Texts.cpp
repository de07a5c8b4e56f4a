// The wording of times, numbers and failures.
#include "Texts.h"

#include "ZevrinUtils/SystemInfo.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <iomanip>

namespace
{
// Minutes and seconds as on a clock, with hours if there are any.
std::string ClockText(std::uint64_t nSeconds)
{
    const auto twoDigits = [](std::uint64_t nNumber) { return Text(std::setw(2), std::setfill('0'), nNumber); };
    const std::string strHours = nSeconds < 3600 ? "" : Text(nSeconds / 3600, ':');
    const std::uint64_t nMinutes = nSeconds / 60 % 60;
    return strHours + (strHours.empty() ? std::to_string(nMinutes) : twoDigits(nMinutes)) + ':' +
           twoDigits(nSeconds % 60);
}
}

std::string Grouped(unsigned long long nNumber)
{
    std::string strText = std::to_string(nNumber);
    for (auto nPlace = static_cast<std::ptrdiff_t>(strText.size()) - 3; nPlace > 0; nPlace -= 3)
        strText.insert(static_cast<std::size_t>(nPlace), 1, ',');
    return strText;
}

std::string TimeText(std::chrono::duration<double> nTime)
{
    const double nSeconds = nTime.count();
    if (nSeconds >= 60)
        return ClockText(static_cast<std::uint64_t>(nSeconds));
    const auto [nValue, pszUnit] = nSeconds >= 1 || nSeconds == 0 ? std::pair(nSeconds, " s")
                                   : nSeconds >= 0.001            ? std::pair(nSeconds * 1e3, " ms")
                                                                  : std::pair(nSeconds * 1e6, " us");
    const bool bTenths = nValue < 10 && nValue != std::floor(nValue);
    return Text(std::fixed, std::setprecision(bTenths ? 1 : 0), nValue, pszUnit);
}

std::string SizeText(double nBytes)
{
    constexpr std::array apszUnits{"bytes", "KiB", "MiB", "GiB", "TiB"};
    std::size_t nUnit = 0;
    for (; nBytes >= 1024 && nUnit + 1 < apszUnits.size(); ++nUnit)
        nBytes /= 1024;
    return Text(std::fixed, std::setprecision(nUnit == 0 ? 0 : 1), nBytes, ' ', apszUnits.at(nUnit));
}

std::string ErrorText(unsigned long nError)
{
    std::string strText;
    CSystemInfo::GetFormatedMessageForWin32ErrCode(nError, strText);
    strText.resize(strText.find_last_not_of("\r\n") + 1);   // the system ends its lines, the library none
    return strText;
}

std::string TextOf(CException* pError)
{
    std::array<char, 1000> achText{};
    pError->GetErrorMessage(achText.data(), achText.size());
    pError->Delete();
    return achText.data();
}
