// The table of the tour: question, answer, verdict and time of each stop.
#pragma once

#include "../System.h"
#include "../support/Texts.h"

#include <chrono>
#include <functional>
#include <string>

// The outcome of one stop.
struct Outcome
{
    enum eVerdict
    {
        eRight,
        eWrong,
        eLeftOut,   // this machine, or a tour that nobody answers, cannot show it; the text says why
        eVerdicts
    };
    eVerdict eHow;
    std::string strText;
};

inline Outcome Judged(bool bRight, std::string strText)
{
    return {bRight ? Outcome::eRight : Outcome::eWrong, std::move(strText)};
}

// For an operation that tells its failure as a text: that text, if there is one, or else strText.
inline Outcome Judged(bool bRight, const std::string& strError, const std::string& strText)
{
    return Judged(bRight && strError.empty(), strError.empty() ? strText : strError);
}

inline Outcome LeftOut(std::string strWhy)
{
    return {Outcome::eLeftOut, std::move(strWhy)};
}

// Leads through the stops and prints a row for each as soon as it is over: for a person on a terminal, otherwise
// plain, with tabs between verdict, family, question, answer and milliseconds.
class Guide
{
public:
    Guide();

    void EnterFamily(const char* pszName);

    // An exception that the question throws is a wrong outcome.
    void Show(const std::string& strAsked, const std::function<Outcome()>& ask);

    // Prints the sum. True if something was right and nothing wrong.
    bool Close() const;

private:
    using Clock = std::chrono::steady_clock;

    void Style(eStyle eHow) const;
    void PrintRow(const std::string& strAsked, const Outcome& oOutcome, std::chrono::duration<double> nTook) const;

    int m_nColumns;   // of the terminal; 0: plain rows
    bool m_bStyled;
    const char* m_pszFamily = "";
    int m_anStops[Outcome::eVerdicts] = {};
    Clock::time_point m_nStart = Clock::now();
};
