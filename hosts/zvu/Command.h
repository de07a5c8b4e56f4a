// The commands of the command-line host.
//
// Results go to standard output, one per line; failures and progress to standard error. Exit status:
// 0 success, 1 the operation failed, 2 wrong usage.
#pragma once

#include <functional>
#include <iostream>

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
