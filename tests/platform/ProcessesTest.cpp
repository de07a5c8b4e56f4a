// The contract of the process calls, the same on every target.
#include "platform/Processes.h"
#include "platform/Errors.h"
#include "platform/Handles.h"
#include "support/ScratchFolder.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace
{
const std::string strProgram = ECHO_ARGUMENTS;

// The exit code, or minus the error of the start.
int ResultOf(const char* pszApplication, std::string strCommandLine, const std::string& strFolder)
{
    STARTUPINFOA oStartup{};
    oStartup.cb = sizeof oStartup;
    PROCESS_INFORMATION oProcess{};
    if (!Processes().CreateProcessA(pszApplication, strCommandLine.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW,
                                    nullptr, strFolder.c_str(), &oStartup, &oProcess))
        return -static_cast<int>(Errors().GetLastError());
    DWORD nExitCode = 0;
    EXPECT_TRUE(Processes().GetExitCodeProcess(oProcess.hProcess, &nExitCode));
    EXPECT_EQ(nExitCode, DWORD{STILL_ACTIVE});
    while (Processes().GetExitCodeProcess(oProcess.hProcess, &nExitCode) && nExitCode == STILL_ACTIVE)
        Processes().Sleep(5);
    EXPECT_TRUE(Handles().CloseHandle(oProcess.hProcess));
    EXPECT_TRUE(Handles().CloseHandle(oProcess.hThread));
    EXPECT_FALSE(Processes().GetExitCodeProcess(oProcess.hProcess, &nExitCode));
    return static_cast<int>(nExitCode);
}
}

TEST(Processes, GetTheArgumentsOfTheirLine)
{
    const ScratchFolder oFolder;
    for (const auto& [pszLine, pszArguments] :
         {std::pair{R"(a out "two  words"	c:\dir\ "")", R"(<a><out><two  words><c:\dir\><>)"},
          {R"(\\server out "a\\b\\" "c\"d" e\\"f g"h)", R"(<\\server><out><a\\b\><c"d><e\f gh>)"},
          {R"("say ""hello"" once" "out" \"x)", R"(<say "hello" once><out><"x>)"}})
    {
        const std::string strExpected(pszArguments);
        EXPECT_EQ(ResultOf(nullptr, '"' + strProgram + "\" " + pszLine, oFolder / "."),
                  std::count(strExpected.begin(), strExpected.end(), '<'));
        EXPECT_EQ(ScratchFolder::Read(oFolder / "out"), strExpected);
    }
    EXPECT_EQ(ResultOf(strProgram.c_str(), "its-name a out", oFolder / "."), 2);
}

TEST(Processes, SayWhyTheyDoNotStart)
{
    const ScratchFolder oFolder;
    ScratchFolder::Write(oFolder / "text", "x");
    EXPECT_EQ(ResultOf(nullptr, "no-such-program-anywhere x", oFolder / "."), -int{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(ResultOf((oFolder / "no\\such").c_str(), "x", oFolder / "."), -int{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(ResultOf(strProgram.c_str(), "x", oFolder / "missing"), -int{ERROR_DIRECTORY});
}

TEST(Processes, AreFoundFromTheFolderOfTheirStarter)
{
    const ScratchFolder oFolder;
    const std::filesystem::path oProgram(strProgram);
    std::filesystem::current_path(oProgram.parent_path());
    EXPECT_EQ(ResultOf(oProgram.filename().string().c_str(), "its-name a out", oFolder / "."), 2);
    EXPECT_EQ(ScratchFolder::Read(oFolder / "out"), "<a><out>");
}

TEST(Messages, AreTakenIfThereAreAny)
{
    MSG oMessage{};
    EXPECT_FALSE(Processes().PeekMessageA(&oMessage, nullptr, 0, 0, PM_REMOVE));
    EXPECT_FALSE(Processes().TranslateMessage(&oMessage));   // an empty one, to no window
    EXPECT_EQ(Processes().DispatchMessageA(&oMessage), 0);
}
