// The line of a transfer under way, drawn over itself.
#include "Progress.h"

#include "Texts.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iomanip>
#include <iostream>
#include <sstream>

namespace
{
constexpr auto nFirstDraw = std::chrono::milliseconds(500);
constexpr auto nBetweenDraws = std::chrono::milliseconds(100);
constexpr std::size_t nBarWidth = 24;
constexpr int nLineWidth = 78;
}

Progress::Progress(bool bShown) : m_bShown(bShown), m_nNextDraw(m_nStart + nFirstDraw) {}

Progress::~Progress()
{
    if (!m_bDrawn)
        return;
    Draw();
    std::cerr << '\n';
}

void Progress::Add(std::uint64_t nBytes)
{
    m_nBytes += nBytes;
    if (m_bShown && Clock::now() >= m_nNextDraw)
        Draw();
}

void Progress::Draw()
{
    const auto nNow = Clock::now();
    const double nSeconds = std::chrono::duration<double>(nNow - m_nStart).count();
    const std::string strText = ProgressText(m_nBytes, m_nBytes <= m_nExpected ? m_nExpected : 0, nSeconds);
    std::cerr << '\r' << std::left << std::setw(nLineWidth) << strText << std::flush;
    m_bDrawn = true;
    m_nNextDraw = nNow + nBetweenDraws;
}

std::string ProgressText(std::uint64_t nBytes, std::uint64_t nExpected, double nSeconds)
{
    const auto nDone = static_cast<double>(nBytes);
    const double nRate = nDone / std::max(nSeconds, 0.001);
    const std::string strRate = SizeText(nRate) + "/s";
    if (nExpected == 0)
        return SizeText(nDone) + "  " + strRate;

    const auto nAll = static_cast<double>(nExpected);
    const auto nFilled = static_cast<std::size_t>(nDone / nAll * nBarWidth);
    std::ostringstream oText;
    oText << std::setw(3) << static_cast<int>(nDone / nAll * 100) << "% [" << std::string(nFilled, '#')
          << std::string(nBarWidth - nFilled, '.') << "]  " << SizeText(nDone) << " of " << SizeText(nAll) << "  "
          << strRate;
    if (nBytes > 0)
        oText << "  " << TimeText(std::chrono::duration<double>(std::ceil((nAll - nDone) / nRate))) << " left";
    return oText.str();
}
