// zvu sql: the statements of a script.
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
    {
        std::cerr << "zvu: " << strError << '\n';
        return eFailed;
    }
    for (const auto& strStatement : oStatements)
        std::cout << strStatement << '\n';
    return eSucceeded;
}
}

void AddSql(CLI::App& oApp, Action& action)
{
    const auto pFile = std::make_shared<std::string>();
    auto* const pCommand = oApp.add_subcommand("sql", "Print the statements of a SQL script, one a line");
    pCommand->add_option("FILE", *pFile, "Script, whose statements each end in a semicolon at the end of a line")
        ->required();
    pCommand->footer("Example: zvu sql create-tables.sql");
    pCommand->callback([pFile, &action] { action = [pFile] { return Split(*pFile); }; });
}
