// The families of the library, as the tour visits them in the order of Tour.cpp. Each shows its own stops.
#pragma once

#include "Guide.h"

#include <filesystem>

// The surroundings of the tour: its folder, and a program that it may start.
struct Surroundings
{
    std::filesystem::path oScratch;   // a folder of the tour's own, empty at first
    std::string strProgram;           // the path of zvu itself
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

// Files of the tour, byte by byte.
void WriteFile(const std::filesystem::path& oPath, const std::string& strBytes);
std::string ReadFile(const std::filesystem::path& oPath);
