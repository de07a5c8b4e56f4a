// The commands of the command-line host.
//
// Results go to standard output, one per line; failures and progress to standard error. Exit status:
// 0 success, 1 the operation failed, 2 wrong usage.
#pragma once

#include <functional>
#include <iostream>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

enum eExitStatus
{
    eSucceeded = 0,
    eFailed = 1,
    eWrongUsage = 2
};

// What to do once the whole command line has been read without an error; gives the exit status.
using Action = std::function<int()>;

// The answer to a question, and its exit status.
inline int PrintAnswer(bool bAnswer)
{
    std::cout << (bAnswer ? "true\n" : "false\n");
    return bAnswer ? eSucceeded : eFailed;
}

// Tells of a failure, and gives its exit status.
inline int Fail(const std::string& strText)
{
    std::cerr << "zvu: " << strText << '\n';
    return eFailed;
}

// The help of a command ends with an example, which is given without the program's name, and with notes before it.
inline CLI::App& AddCommand(CLI::App& oParent, const std::string& strName, const std::string& strHelp,
                            const std::string& strExample, const std::string& strNotes = "")
{
    auto* const pCommand = oParent.add_subcommand(strName, strHelp);
    pCommand->footer(strNotes + (strNotes.empty() ? "" : "\n") + "Example: zvu " + strExample);
    return *pCommand;
}

// A command that only stands before others.
inline CLI::App& AddGroup(CLI::App& oApp, const std::string& strName, const std::string& strHelp,
                          const std::string& strExample)
{
    auto& oGroup = AddCommand(oApp, strName, strHelp, strExample);
    oGroup.require_subcommand(1);
    return oGroup;
}

// A value that has to be given, by its place.
template <class Value>
CLI::Option* AddArgument(CLI::App& oCommand, const std::string& strName, Value& oValue, const std::string& strHelp)
{
    return oCommand.add_option(strName, oValue, strHelp)->required()->type_name("");
}

// The options of a command, for which it runs once all of them have been read.
template <class Options>
Options& Runs(CLI::App& oCommand, Action& action, int (*pfnRun)(const Options&))
{
    const auto pOptions = std::make_shared<Options>();
    oCommand.callback([=, &action] { action = [=] { return pfnRun(*pOptions); }; });
    return *pOptions;
}

// Each adds its command, which sets the action when it is chosen.
void AddBase64(CLI::App& oApp, Action& action);
void AddDisk(CLI::App& oApp, Action& action);
void AddErrorText(CLI::App& oApp, Action& action);
void AddFolder(CLI::App& oApp, Action& action);
void AddGet(CLI::App& oApp, Action& action);
void AddGuid(CLI::App& oApp, Action& action);
void AddInsideManager(CLI::App& oApp, Action& action);
void AddIp(CLI::App& oApp, Action& action);
void AddListen(CLI::App& oApp, Action& action);
void AddMail(CLI::App& oApp, Action& action);
void AddOnline(CLI::App& oApp, Action& action);
void AddPassword(CLI::App& oApp, Action& action);
void AddPickFolder(CLI::App& oApp, Action& action);
void AddRegistry(CLI::App& oApp, Action& action);
void AddResolve(CLI::App& oApp, Action& action);
void AddRights(CLI::App& oApp, Action& action);
void AddRunAndWait(CLI::App& oApp, Action& action);
void AddSql(CLI::App& oApp, Action& action);
void AddTour(CLI::App& oApp, Action& action);
void AddUrl(CLI::App& oApp, Action& action);
