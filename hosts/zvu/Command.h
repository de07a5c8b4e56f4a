// The commands of the command-line host.
//
// Results go to standard output, one per line; failures and progress to standard error. Exit status:
// 0 success, 1 the operation failed, 2 wrong usage.
#pragma once

#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

enum eExitStatus
{
    eSucceeded = 0,
    eFailed = 1,
    eWrongUsage = 2
};

// What to do once the whole command line has been read without an error; gives the exit status.
using Action = std::function<int()>;

// A command of zvu. It announces itself: an object like this in the command's own source, with static storage, is all
// that Main needs to know of it.
struct Command
{
    // Gives the command its options, which set the action when it is chosen.
    using Define = void (*)(CLI::App& oCommand, Action& action);

    Command(const char* pszItsName, const char* pszItsHelp, const char* pszItsExample, Define pfnItsDefine,
            const char* pszItsNotes = "")
        : pszName(pszItsName),
          pszHelp(pszItsHelp),
          pszExample(pszItsExample),
          pszNotes(pszItsNotes),
          pfnDefine(pfnItsDefine)
    {
        All().push_back(this);
    }
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

    // Made at the first use, as no order is promised in which the objects of several sources come to be.
    static std::vector<const Command*>& All()
    {
        static std::vector<const Command*> s_oAll;
        return s_oAll;
    }

    const char* const pszName;
    const char* const pszHelp;
    const char* const pszExample;   // without the program's name
    const char* const pszNotes;
    const Define pfnDefine;
};

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
