// Gathers the pieces of a message and sends them as one record, so that those of several threads do not mix.
#include "framework/MethodTrace.h"

namespace
{
struct Terminator
{
    std::string_view sText;
    CSTrace::eTraceSeverity eSeverity;
};

// In the order in which they are compared.
constexpr Terminator s_aTerminators[] = {
    {END_INFO_MESSAGE, CSTrace::eInformation},
    {END_WARNING_MESSAGE, CSTrace::eWarning},
    {END_ERROR_MESSAGE, CSTrace::eError},
    {END_DEBUG_MESSAGE, CSTrace::eDebug},
};
}

CSMethodTrace::CSMethodTrace(const char* pszFile, int nLine, const char* pszClass, const char* pszMethod)
    : m_pszFile(pszFile), m_pszClass(pszClass), m_pszMethod(pszMethod)
{
    CSTrace::instance()->Trace(CSTrace::eDebug, "Entered Method", m_pszClass, m_pszMethod, m_pszFile, nLine);
}

// The exit names no class and no line: readers of the log tell it from the entry by that.
CSMethodTrace::~CSMethodTrace()
{
    CSTrace::instance()->Trace(CSTrace::eDebug, "Exited Method", "", m_pszMethod, m_pszFile, 0);
}

CSMethodTrace& CSMethodTrace::SetLine(int nLine)
{
    m_nLine = nLine;
    return *this;
}

CSMethodTrace& CSMethodTrace::operator<<(const char* pszText)
{
    return Append(pszText ? pszText : "NULL");
}

CSMethodTrace& CSMethodTrace::operator<<(const std::string& strText)
{
    return Append(strText);
}

CSMethodTrace& CSMethodTrace::Append(std::string_view sText)
{
    for (const auto& oTerminator : s_aTerminators)
    {
        if (sText == oTerminator.sText)
        {
            Flush(oTerminator.eSeverity);
            return *this;
        }
    }
    m_sText += sText;
    return *this;
}

void CSMethodTrace::Flush(CSTrace::eTraceSeverity eSeverity)
{
    CSTrace::instance()->Trace(eSeverity, m_sText.c_str(), m_pszClass, m_pszMethod, m_pszFile, m_nLine);
    m_sText.clear();
}
