// zvu sql: prints the statements of a script as the library splits it.
#include "Command.h"

#include "ZevrinUtils/SQLFileParser.h"

#include <iostream>

namespace
{
int Split(const std::string& strFile)
{
    std::vector<std::string> oStatements;
    std::string strError;
    if (!CSSQLFileParser::Parse(strFile, oStatements, strError))
        return Fail(strError);
    for (const auto& strStatement : oStatements)
        std::cout << strStatement << '\n';
    return eSucceeded;
}

void DefineSql(CLI::App& oCommand, Action& action)
{
    AddArgument(oCommand, "FILE", Runs(oCommand, action, &Split),
                "Script, whose statements each end in a semicolon at the end of a line");
}
const Command s_oSqlCommand("sql", "Print the statements of a SQL script, one a line", "sql create-tables.sql",
                            &DefineSql);
}
