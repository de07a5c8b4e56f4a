// The tour's stops at folders, access rights and SQL scripts: each asks for something that it can judge by itself.
#include "Families.h"

#include "ZevrinUtils/FileAccessRights.h"
#include "ZevrinUtils/Folder.h"
#include "ZevrinUtils/SQLFileParser.h"

#include <algorithm>

namespace
{
constexpr int nFolders = 8;
constexpr int nFilesInEach = 25;
constexpr int nTreeFileBytes = 4096;

constexpr auto pszScript = "# The tables of a small shop.\n"
                           "CREATE TABLE item (\n"
                           "    id INT,\n"
                           "    name TEXT\n"
                           ");\n"
                           "\n"
                           "# What it sells.\n"
                           "INSERT INTO item VALUES (1, 'tea');\n"
                           "INSERT INTO item VALUES (2, 'sugar');\n";

// The SID of everyone, which every machine knows.
constexpr auto pszEveryone = "S-1-1-0";

Outcome MakeTree(const std::filesystem::path& oTree)
{
    std::string strError;
    bool bMade = CSFolder::CreateFolder(oTree.string().c_str(), strError);
    for (int nFolder = 0; nFolder < nFolders; ++nFolder)
    {
        const auto oFolder = oTree / Text("folder ", nFolder);
        bMade = CSFolder::CreateFolder(oFolder.string().c_str(), strError) && bMade;
        for (int nFile = 0; nFile < nFilesInEach; ++nFile)
            WriteFile(oFolder / Text("file ", nFile, ".txt"), std::string(nTreeFileBytes, 'x'));
    }
    return Judged(bMade, strError, Text(nFolders, " folders, ", nFolders * nFilesInEach, " files"));
}

Outcome Measure(const std::string& strTree)
{
    long nKilobytes = 0;
    CSFolder::GetFolderSize(strTree.c_str(), nKilobytes);
    return Judged(nKilobytes == nFolders * nFilesInEach * nTreeFileBytes / 1024, Text(nKilobytes, " KiB"));
}

Outcome List(const std::string& strTree)
{
    std::vector<std::string> oFolders;
    CSFolder::GetFolderList(strTree.c_str(), oFolders, true);
    return Judged(oFolders.size() == nFolders, Text(oFolders.size(), " folders"));
}

Outcome Find(const std::string& strTree)
{
    std::vector<std::string> oFiles;
    CSFolder::GetFilesPathList(strTree.c_str(), "FILE 7.TXT", oFiles, true);
    return Judged(oFiles.size() == nFolders, Text(oFiles.size(), " files"));
}

// The only program that is sure to be on this machine is zvu itself.
Outcome RunProcess(const Surroundings& oSurroundings)
{
    const auto oText = oSurroundings.oScratch / "plain text";
    const auto oCoded = oSurroundings.oScratch / "coded text";
    WriteFile(oText, "Hello!");
    const std::string strArguments = Text("zvu base64 encode \"", oText.string(), "\" \"", oCoded.string(), "\"");
    CSFolder::CreateProcessAndWait(oSurroundings.strProgram.c_str(), strArguments.c_str(), nullptr);
    const std::string strCoded = ReadFile(oCoded);
    return Judged(strCoded == "SGVsbG8h", "it left " + strCoded);
}

Outcome GrantAll(const std::filesystem::path& oPath)
{
    CString strError;
    const bool bDone = ZVUAddFileAccessRights(oPath.string().c_str(), pszEveryone, 1, strError) != 0;
    if (std::string_view(strError).ends_with("0x32)"))
        return LeftOut("this file system has no access lists");
    return Judged(bDone, static_cast<const char*>(strError), "granted");
}

Outcome GrantToNobody(const std::filesystem::path& oPath)
{
    CString strError;
    const bool bDone = ZVUAddFileAccessRights(oPath.string().c_str(), "no such account", 0, strError) != 0;
    return Judged(!bDone && !strError.IsEmpty(), static_cast<const char*>(strError));
}

Outcome Split(const std::filesystem::path& oScript)
{
    WriteFile(oScript, pszScript);
    std::vector<std::string> oStatements;
    std::string strError;
    CSSQLFileParser::Parse(oScript.string(), oStatements, strError);
    const bool bRight = oStatements.size() == 3 && oStatements[0] == "CREATE TABLE item (id INT,name TEXT);";
    return Judged(bRight, strError, Text(oStatements.size(), " statements"));
}

}

void ShowFolders(Guide& oGuide, const Surroundings& oSurroundings)
{
    const auto oTree = oSurroundings.oScratch / "tree";
    const std::string strTree = oTree.string();
    const std::string strCopy = (oSurroundings.oScratch / "copy").string();
    std::string strError;
    oGuide.Show("make a tree", [&] { return MakeTree(oTree); });
    oGuide.Show("copy it", [&] {
        const bool bDone = CSFolder::CopyFolder(strTree.c_str(), strCopy.c_str(), strError);
        return Judged(bDone, strError, "copied");
    });
    oGuide.Show("measure the copy", [&] { return Measure(strCopy); });
    oGuide.Show("list its folders", [&] { return List(strCopy); });
    oGuide.Show("find FILE 7.TXT in it", [&] { return Find(strCopy); });
    oGuide.Show("delete it", [&] {
        const bool bDone = CSFolder::DeleteFolder(strCopy.c_str(), strError);
        return Judged(bDone && !std::filesystem::exists(strCopy), strError, "deleted");
    });
    oGuide.Show("run a program and wait for it", [&] { return RunProcess(oSurroundings); });
}

void ShowAccessRights(Guide& oGuide, const Surroundings& oSurroundings)
{
    const auto oFile = oSurroundings.oScratch / "shared";
    WriteFile(oFile, "for everyone");
    oGuide.Show("full access for everyone", [&] { return GrantAll(oFile); });
    oGuide.Show("full access for an unknown account", [&] { return GrantToNobody(oFile); });
}

void ShowSqlScripts(Guide& oGuide, const Surroundings& oSurroundings)
{
    oGuide.Show("split a script with comments", [&] { return Split(oSurroundings.oScratch / "script.sql"); });
}
