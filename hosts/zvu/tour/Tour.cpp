// zvu tour: shows every family of the library at work on real input, so that a new user sees it run and judges the
// machine by it.
#include "../Command.h"
#include "../System.h"
#include "Families.h"

#include "ZevrinUtils/Generators.h"
#include "ZevrinUtils/SimpleMapi.h"

#include <fstream>

namespace
{
struct Family
{
    const char* pszName;
    void (*pfnShow)(Guide&, const Surroundings&);
};
constexpr Family s_aFamilies[] = {
    {"Lock", &ShowLock},
    {"Addresses", &ShowAddresses},
    {"DNS resolver", &ShowResolver},
    {"Port listener and HTTP client", &ShowListenerAndHttp},
    {"URLs", &ShowUrls},
    {"Registry", &ShowRegistry},
    {"Folders and processes", &ShowFolders},
    {"Access rights", &ShowAccessRights},
    {"SQL scripts", &ShowSqlScripts},
    {"System", &ShowSystem},
    {"Base64", &ShowBase64},
    {"Passwords and GUIDs", &ShowGenerators},
    {"Mail and folder picker", &ShowMailAndPicker},
};

// The folder of the tour, removed at its end.
class ScratchFolder
{
public:
    ScratchFolder() : m_oPath(std::filesystem::temp_directory_path() / ("zvu-tour-" + CSGuid::CreateGUID()))
    {
        create_directory(m_oPath);
    }
    ~ScratchFolder()
    {
        std::error_code oIgnored;
        remove_all(m_oPath, oIgnored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& Path() const { return m_oPath; }

private:
    std::filesystem::path m_oPath;
};

int Tour()
{
    if (!StartSocketLayer())
        return Fail("the socket layer does not start");
    const ScratchFolder oScratch;
    // The tour has a registry of its own on Linux, and no proxy between its client and its server.
    SetEnvironment("ZEVRIN_REGISTRY", (oScratch.Path() / "registry.db").string());
    SetEnvironment("no_proxy", "127.0.0.1");

    const Surroundings oSurroundings{oScratch.Path(), ProgramPath()};
    Guide oGuide;
    for (const auto& [pszName, pfnShow] : s_aFamilies)
    {
        oGuide.EnterFamily(pszName);
        pfnShow(oGuide, oSurroundings);
    }
    return oGuide.Close() ? eSucceeded : eFailed;
}

void DefineTour(CLI::App& oCommand, Action& action)
{
    oCommand.callback([&action] { action = &Tour; });
}
const Command s_oTourCommand(
    "tour", "Show every family of the library at work", "tour", &DefineTour,
    "It works in a folder of its own under the one for temporary files and on the loopback network, and\n"
    "leaves nothing behind but, on Windows, an empty registry key. Without a terminal the rows have tabs\n"
    "between verdict, family, question, answer and milliseconds.");
}

void ShowMailAndPicker(Guide& oGuide, const Surroundings&)
{
    oGuide.Show("is there a mail system?", [] { return Judged(true, CSIMapi::HasEmail() ? "yes" : "no"); });
    // Stops that need a user are listed as left out, so that nobody takes them for shown.
    oGuide.Show("show a message in the mail client", [] { return LeftOut("needs you: zvu mail --to NAME"); });
    oGuide.Show("let a user pick a folder", [] { return LeftOut("needs you: zvu pick-folder"); });
}

void WriteFile(const std::filesystem::path& oPath, const std::string& strBytes)
{
    std::ofstream oFile(oPath, std::ios::binary);
    oFile.exceptions(std::ios::failbit | std::ios::badbit);
    oFile << strBytes << std::flush;
}

std::string ReadFile(const std::filesystem::path& oPath)
{
    std::ostringstream oBytes;
    oBytes << std::ifstream(oPath, std::ios::binary).rdbuf();
    return oBytes.str();
}
