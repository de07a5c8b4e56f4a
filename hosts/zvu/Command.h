// The means of which the commands of zvu are made. A new command takes its source, which announces it, its entry in
// zvu.1 and its test in tests/hosts. Results go to standard output, one per line; failures and progress to standard
// error.
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

// The work of a command, once the whole command line has been read without an error. Returns the exit status.
using Action = std::function<int()>;

// A command of zvu. An object of this type with static storage, in the command's own source, announces the command to
// Main; nothing else names it.
struct Command
{
    // Adds the options of the command, and sets the action for when it is chosen.
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

    // Made at the first use: objects of several sources are constructed in no promised order.
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

// Prints the answer to a question. Returns the exit status for it.
inline int PrintAnswer(bool bAnswer)
{
    std::cout << (bAnswer ? "true\n" : "false\n");
    return bAnswer ? eSucceeded : eFailed;
}

// Prints the text of a failure. Returns the exit status for it.
inline int Fail(const std::string& strText)
{
    std::cerr << "zvu: " << strText << '\n';
    return eFailed;
}

// A command below another. Its help ends with the notes and the example, which is given without the program's name.
inline CLI::App& AddCommand(CLI::App& oParent, const std::string& strName, const std::string& strHelp,
                            const std::string& strExample, const std::string& strNotes = "")
{
    auto* const pCommand = oParent.add_subcommand(strName, strHelp);
    pCommand->footer(strNotes + (strNotes.empty() ? "" : "\n") + "Example: zvu " + strExample);
    return *pCommand;
}

// A value that the user has to give, known by its place in the command line.
template <class Value>
CLI::Option* AddArgument(CLI::App& oCommand, const std::string& strName, Value& oValue, const std::string& strHelp)
{
    return oCommand.add_option(strName, oValue, strHelp)->required()->type_name("");
}

// Lets the command run pfnRun over its options, once all of them have been read.
template <class Options>
Options& Runs(CLI::App& oCommand, Action& action, int (*pfnRun)(const Options&))
{
    const auto pOptions = std::make_shared<Options>();
    oCommand.callback([=, &action] { action = [=] { return pfnRun(*pOptions); }; });
    return *pOptions;
}
