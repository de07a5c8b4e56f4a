// The families of the library, as the tour visits them. Each shows its own stops.
#pragma once

#include "Guide.h"

#include <filesystem>

// Where the tour works, and what it may use.
struct Surroundings
{
    std::filesystem::path oScratch;   // a folder of the tour's own, empty at first
    std::string strProgram;           // what runs: a program that the tour can start
};

void ShowLock(Guide& oGuide, const Surroundings& oSurroundings);
void ShowAddresses(Guide& oGuide, const Surroundings& oSurroundings);
void ShowResolver(Guide& oGuide, const Surroundings& oSurroundings);
void ShowListenerAndHttp(Guide& oGuide, const Surroundings& oSurroundings);
void ShowUrls(Guide& oGuide, const Surroundings& oSurroundings);
void ShowRegistry(Guide& oGuide, const Surroundings& oSurroundings);
void ShowFolders(Guide& oGuide, const Surroundings& oSurroundings);
void ShowAccessRights(Guide& oGuide, const Surroundings& oSurroundings);
void ShowSqlScripts(Guide& oGuide, const Surroundings& oSurroundings);
void ShowSystem(Guide& oGuide, const Surroundings& oSurroundings);
void ShowBase64(Guide& oGuide, const Surroundings& oSurroundings);
void ShowGenerators(Guide& oGuide, const Surroundings& oSurroundings);
void ShowMailAndPicker(Guide& oGuide, const Surroundings& oSurroundings);

// A file of the tour, with the text as its bytes.
void WriteFile(const std::filesystem::path& oPath, const std::string& strBytes);
std::string ReadFile(const std::filesystem::path& oPath);
