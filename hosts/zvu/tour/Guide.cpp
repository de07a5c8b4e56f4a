// The tour's table, for a person at a terminal or for a program behind a pipe.
#include "Guide.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <iomanip>
#include <iostream>

namespace
{
constexpr int nVerdictWidth = 10;
constexpr int nAskedWidth = 38;
constexpr int nTimeWidth = 9;
constexpr int nFewestColumns = 80;
constexpr int nMostColumns = 120;   // lines that are longer are hard to follow

struct Verdict
{
    const char* pszName;
    eStyle eHow;
};
constexpr Verdict s_aVerdicts[] = {{"ok", eGood}, {"WRONG", eBad}, {"left out", eDoubtful}};
static_assert(std::size(s_aVerdicts) == Outcome::eVerdicts);

// A row is one line: characters that would break it become blanks.
std::string OneLine(std::string strText)
{
    while (!strText.empty() && std::isspace(static_cast<unsigned char>(strText.back())))
        strText.pop_back();
    const auto isBreak = [](char ch) { return ch == '\n' || ch == '\r' || ch == '\t'; };
    std::ranges::replace_if(strText, isBreak, ' ');
    return strText;
}

// The text cut or padded to this many characters.
std::string Fitted(const std::string& strText, int nWidth)
{
    const auto nRoom = static_cast<std::size_t>(nWidth);
    if (strText.size() <= nRoom)
        return strText + std::string(nRoom - strText.size(), ' ');
    return strText.substr(0, nRoom - 3) + "...";
}
}

Guide::Guide() : m_nColumns(TerminalColumns(eStandardOutput)), m_bStyled(m_nColumns > 0 && !std::getenv("NO_COLOR"))
{
    if (m_nColumns > 0)
        m_nColumns = std::clamp(m_nColumns, nFewestColumns, nMostColumns);
}

void Guide::Style(eStyle eHow) const
{
    if (m_bStyled)
        SetStyle(eHow);
}

void Guide::EnterFamily(const char* pszName)
{
    m_pszFamily = pszName;
    if (m_nColumns == 0)
        return;
    Style(eStrong);
    std::cout << '\n' << pszName;
    Style(ePlain);
    std::cout << '\n';
}

void Guide::Show(const std::string& strAsked, const std::function<Outcome()>& ask)
{
    const auto nStart = Clock::now();
    Outcome oOutcome;
    try
    {
        oOutcome = ask();
    }
    catch (const std::exception& oError)
    {
        oOutcome = Judged(false, oError.what());
    }
    catch (CException* pError)
    {
        oOutcome = Judged(false, TextOf(pError));
    }
    ++m_anStops[oOutcome.eHow];
    PrintRow(OneLine(strAsked), {oOutcome.eHow, OneLine(oOutcome.strText)}, Clock::now() - nStart);
}

void Guide::PrintRow(const std::string& strAsked, const Outcome& oOutcome, std::chrono::duration<double> nTook) const
{
    const auto& [pszVerdict, eHow] = s_aVerdicts[oOutcome.eHow];
    if (m_nColumns == 0)
    {
        std::cout << pszVerdict << '\t' << m_pszFamily << '\t' << strAsked << '\t' << oOutcome.strText << '\t'
                  << std::fixed << std::setprecision(3) << nTook.count() * 1000 << std::endl;
        return;
    }
    Style(eHow);
    std::cout << "  " << Fitted(pszVerdict, nVerdictWidth);
    Style(ePlain);
    const int nAnswerWidth = m_nColumns - nVerdictWidth - nAskedWidth - nTimeWidth - 5;
    std::cout << Fitted(strAsked, nAskedWidth) << "  " << Fitted(oOutcome.strText, nAnswerWidth);
    Style(eFaint);
    // A stop that was left out has no time worth showing.
    std::cout << std::right << std::setw(nTimeWidth) << (oOutcome.eHow == Outcome::eLeftOut ? "" : TimeText(nTook));
    Style(ePlain);
    std::cout << std::endl;
}

bool Guide::Close() const
{
    const auto [nRight, nWrong, nLeftOut] = m_anStops;
    if (m_nColumns > 0)
        std::cout << '\n'
                  << nRight << " of " << nRight + nWrong << " right in " << TimeText(Clock::now() - m_nStart)
                  << (nLeftOut ? Text("; ", nLeftOut, " left out") : "") << std::endl;
    return nWrong == 0 && nRight > 0;
}
