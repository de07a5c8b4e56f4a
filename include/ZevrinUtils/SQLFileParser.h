/// @file
/// SQL scripts, as statements to run one at a time.
#pragma once

#include "ZevrinUtils/Export.h"

#include <string>
#include <vector>

/// Splits a text file of SQL into its statements. It knows lines and nothing of SQL: a statement is what stands
/// between two lines that end in a semicolon. All operations are static; calls from several threads do not
/// disturb each other.
///
///     # a comment, because its first character is the hash sign
///     CREATE TABLE a (
///         id INT
///     );
///
/// gives "CREATE TABLE a (id INT);". What follows from that rule:
/// - Lines are trimmed and joined with nothing between them.
/// - A semicolon inside a line splits nothing, not even in front of a comment; one at the end of a line ends the
///   statement, in a quoted text too.
/// - The hash sign at the start of a line is the only comment; such a line in the middle of a statement drops out.
/// - Text behind the last line that ends in a semicolon is lost.
///
/// CR, LF and CR LF end lines alike. Lines, statements and files may have any length.
class ZEVRINUTILS_API CSSQLFileParser
{
public:
    CSSQLFileParser();
    CSSQLFileParser(const CSSQLFileParser& oOther);              ///< copies nothing
    CSSQLFileParser& operator=(const CSSQLFileParser& oOther);   ///< likewise
    virtual ~CSSQLFileParser();

    /// Adds the statements of a file behind what the list holds.
    ///
    /// The file is read in blocks of 1024 bytes, of each block up to its first zero byte. A read that fails ends
    /// the text like the end of the file.
    ///
    /// @param strFileName  the file
    /// @param oStatements  receives the statements; not cleared
    /// @param strError     receives the text of a failure, and is left alone by a success
    /// @return whether the file could be opened, whatever it holds. Want of memory passes through as an exception
    ///         and leaves the file open.
    static bool Parse(const std::string& strFileName, std::vector<std::string>& oStatements, std::string& strError);

protected:
    /// Trims the line in place; true if it is empty then, or begins with the hash sign.
    static bool IsACommentLine(std::string& strLine);

    /// Trims the line in place; true if its last character is a semicolon then.
    static bool IsEndingWithSemiColon(std::string& strLine);

    /// Removes the spaces at both ends, then the tabs, and each only once: a space that stands inside a tab stays.
    static void Trim(std::string& strLine);
};
