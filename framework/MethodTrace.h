// Reports a method's entry when built, its exit when destroyed, and the messages in between. It is the
// library's only diagnostic channel; where records go is the trace service's business.
//
//     CSMethodTrace oTrace(pszFile, __LINE__, "CSDNSResolver", "CSDNSResolver::Stop");
//     oTrace.SetLine(__LINE__) << "Resolving DNS for " << strAddress << END_DEBUG_MESSAGE;
#pragma once

#include "Fendrel/Trace.h"

#include <string>
#include <string_view>

// The terminators: each finishes a message at its severity.
inline constexpr char END_ERROR_MESSAGE[] = "END_ERROR_MESSAGE";
inline constexpr char END_WARNING_MESSAGE[] = "END_WARNING_MESSAGE";
inline constexpr char END_INFO_MESSAGE[] = "END_INFO_MESSAGE";
inline constexpr char END_DEBUG_MESSAGE[] = "END_DEBUG_MESSAGE";

class CSMethodTrace
{
public:
    // All three texts are borrowed and outlive the scope.
    CSMethodTrace(const char* pszFile, int nLine, const char* pszClass, const char* pszMethod);
    ~CSMethodTrace();
    CSMethodTrace(const CSMethodTrace&) = delete;
    CSMethodTrace& operator=(const CSMethodTrace&) = delete;

    // The source line of the message that follows.
    CSMethodTrace& SetLine(int nLine);

    // Appends a piece; a null pointer reads "NULL". A terminator finishes the message instead, also when
    // it comes from data: the comparison does not know where a piece is from.
    CSMethodTrace& operator<<(const char* pszText);
    CSMethodTrace& operator<<(const std::string& strText);

    // Sends the gathered text, empty or not, as one record.
    void Flush(CSTrace::eTraceSeverity eSeverity);

private:
    CSMethodTrace& Append(std::string_view sText);

    const char* m_pszFile;
    const char* m_pszClass;
    const char* m_pszMethod;
    int m_nLine = 0;   // every message sets it; a set value keeps one that forgot harmless
    std::string m_sText;
};
