// The rules of the C run time of Windows, by which programs there take their lines apart.
#include "CommandLine.h"

namespace
{
constexpr std::string_view strBlanks = " \t";

class Reader
{
public:
    explicit Reader(std::string_view strLine) : m_strRest(strLine) {}

    std::string Program()
    {
        const bool bQuoted = m_strRest.starts_with('"');
        m_strRest.remove_prefix(bQuoted);
        const auto nEnd =
            std::min(bQuoted ? m_strRest.find('"') : m_strRest.find_first_of(strBlanks), m_strRest.size());
        std::string strProgram(m_strRest.substr(0, nEnd));
        m_strRest.remove_prefix(std::min(nEnd + bQuoted, m_strRest.size()));
        return strProgram;
    }

    bool HasMore()
    {
        m_strRest.remove_prefix(std::min(m_strRest.find_first_not_of(strBlanks), m_strRest.size()));
        return !m_strRest.empty();
    }

    std::string Argument()
    {
        std::string strArgument;
        bool bQuoted = false;
        while (!m_strRest.empty() && (bQuoted || strBlanks.find(m_strRest[0]) == std::string_view::npos))
        {
            const auto nBackslashes = std::min(m_strRest.find_first_not_of('\\'), m_strRest.size());
            m_strRest.remove_prefix(nBackslashes);
            const bool bQuote = m_strRest.starts_with('"');
            strArgument.append(bQuote ? nBackslashes / 2 : nBackslashes, '\\');
            if (!bQuote)
            {
                if (nBackslashes == 0)
                    strArgument += Take();
                continue;
            }
            Take();
            if (nBackslashes % 2 || (bQuoted && m_strRest.starts_with('"') && Take()))   // two in quotes make one
                strArgument += '"';
            else
                bQuoted = !bQuoted;
        }
        return strArgument;
    }

private:
    char Take()
    {
        const char ch = m_strRest[0];
        m_strRest.remove_prefix(1);
        return ch;
    }

    std::string_view m_strRest;
};
}

std::vector<std::string> SplitCommandLine(std::string_view strLine)
{
    Reader oReader(strLine);
    std::vector<std::string> oArguments{oReader.Program()};
    while (oReader.HasMore())
        oArguments.push_back(oReader.Argument());
    return oArguments;
}

std::string QuotedArgument(const std::string& strArgument)
{
    if (!strArgument.empty() && strArgument.find_first_of(" \t\"") == std::string::npos)
        return strArgument;
    std::string strQuoted = "\"";
    std::size_t nBackslashes = 0;
    for (const char ch : strArgument)
    {
        if (ch == '"')
            strQuoted.append(nBackslashes + 1, '\\');
        nBackslashes = ch == '\\' ? nBackslashes + 1 : 0;
        strQuoted += ch;
    }
    return strQuoted.append(nBackslashes, '\\') + '"';
}
