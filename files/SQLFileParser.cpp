// Splits by lines and knows no SQL. The size of a block, and what is trimmed when, show in the statements, and scripts
// rely on them: none of it is free to change.
#include "ZevrinUtils/SQLFileParser.h"

#include "platform/Streams.h"

#include <cstring>

namespace
{
constexpr std::size_t nBlockSize = 1024;   // shows in what a zero byte takes with it
constexpr char szLineEnds[] = "\r\n";      // any run of them ends a line, so an empty line is none

void TrimOnce(std::string& strLine, char ch)
{
    strLine.erase(strLine.find_last_not_of(ch) + 1);
    strLine.erase(0, strLine.find_first_not_of(ch));
}

// Gives the file's lines to take(std::string&), one after the other.
template <class Take>
void ForEachLine(std::FILE* pFile, Take take)
{
    char achBlock[nBlockSize + 1];
    std::string strLine;
    while (const std::size_t nRead = Streams().fread(achBlock, 1, nBlockSize, pFile))
    {
        achBlock[nRead] = 0;
        const char* psz = achBlock;
        for (;;)
        {
            const std::size_t nPiece = std::strcspn(psz, szLineEnds);
            strLine.append(psz, nPiece);   // the rest of the line may stand in the next block
            psz += nPiece;
            if (!*psz)
                break;
            if (!strLine.empty())
                take(strLine);
            strLine.clear();
            psz += std::strspn(psz, szLineEnds);
        }
    }
    if (!strLine.empty())
        take(strLine);
}
}

CSSQLFileParser::CSSQLFileParser() = default;

CSSQLFileParser::CSSQLFileParser(const CSSQLFileParser& oOther) = default;

CSSQLFileParser& CSSQLFileParser::operator=(const CSSQLFileParser& oOther) = default;

CSSQLFileParser::~CSSQLFileParser() = default;

bool CSSQLFileParser::Parse(const std::string& strFileName, std::vector<std::string>& oStatements,
                            std::string& strError)
{
    std::FILE* const pFile = Streams().fopen(strFileName.c_str(), "r");
    if (!pFile)
    {
        strError = "Failed to open the file " + strFileName;
        return false;
    }

    std::string strStatement;
    ForEachLine(pFile, [&](std::string& strLine) {
        if (IsACommentLine(strLine))
            return;
        strStatement += strLine;
        // Trims the line a second time, but not what was taken: a space behind the semicolon may stay there.
        if (!IsEndingWithSemiColon(strLine))
            return;
        oStatements.push_back(strStatement);
        strStatement.clear();
    });
    Streams().fclose(pFile);   // not after an exception, which hosts are told
    return true;
}

bool CSSQLFileParser::IsACommentLine(std::string& strLine)
{
    Trim(strLine);
    return strLine.empty() || strLine.front() == '#';
}

bool CSSQLFileParser::IsEndingWithSemiColon(std::string& strLine)
{
    Trim(strLine);
    return strLine.ends_with(';');
}

// Not a general trim: scripts rely on what stays.
void CSSQLFileParser::Trim(std::string& strLine)
{
    TrimOnce(strLine, ' ');
    TrimOnce(strLine, '\t');
}
