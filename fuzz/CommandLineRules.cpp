// Looks back from each quote to its backslashes, where the library looks ahead from them; and quotes arguments that
// must come back as they were.
#include "Rules.h"

#include "platform/linux/processes/CommandLine.h"

#include <algorithm>
#include <sstream>

namespace
{
// Looks back from each quote to what stands in front of it.
std::vector<std::string> Arguments(const std::string& strLine)
{
    std::vector<std::string> oArguments;
    bool bInside = false;
    bool bQuoted = false;
    for (std::size_t n = 0; n < strLine.size(); ++n)
    {
        const char ch = strLine[n];
        if (!bQuoted && (ch == ' ' || ch == '\t'))
        {
            bInside = false;
            continue;
        }
        if (!bInside)
            oArguments.emplace_back();
        bInside = true;
        oArguments.back() += ch;
        if (ch != '"')
            continue;
        const std::size_t nBackslashes = n - (std::string_view(strLine).substr(0, n).find_last_not_of('\\') + 1);
        const bool bPair = bQuoted && nBackslashes % 2 == 0 && strLine[n + 1] == '"';
        const bool bPlain = bPair || nBackslashes % 2;
        oArguments.back().resize(oArguments.back().size() - 1 - (nBackslashes + 1) / 2);
        if (bPlain)
            oArguments.back() += '"';
        else
            bQuoted = !bQuoted;
        n += bPair;
    }
    return oArguments;
}

std::string Quoted(const std::string& strArgument)
{
    std::string strQuoted = "\"";
    std::size_t nBackslashes = 0;
    for (const char ch : strArgument + '"')   // the last one ends it
    {
        if (ch == '"')
            strQuoted.append(nBackslashes + 1, '\\');
        nBackslashes = ch == '\\' ? nBackslashes + 1 : 0;
        strQuoted += ch;
    }
    strQuoted.erase(strQuoted.size() - 2, 1);
    return strQuoted;
}
}

std::string FaultInCommandLine(const unsigned char* pText, std::size_t nSize)
{
    const std::string strText(pText, pText + nSize);
    const bool bQuoted = strText.starts_with('"');
    const std::size_t nEnd = std::min(strText.find_first_of(bQuoted ? "\"" : " \t", bQuoted), strText.size());
    std::vector<std::string> oExpected = Arguments(strText.substr(std::min(nEnd + bQuoted, strText.size())));
    oExpected.insert(oExpected.begin(), strText.substr(bQuoted, nEnd - bQuoted));
    if (SplitCommandLine(strText) != oExpected)
        return "the arguments";

    std::istringstream oLines(strText);   // each an argument
    std::string strLine = "program";
    oExpected = {strLine};
    for (std::string strArgument; std::getline(oLines, strArgument); strLine += ' ' + Quoted(strArgument))
        oExpected.push_back(strArgument);
    return SplitCommandLine(strLine) == oExpected ? "" : "quoted arguments";
}
