// A fetch into a file, for zvu get.
#pragma once

#include "ZevrinUtils/HttpServices.h"

#include <string>

// Puts the answer in the place of the file once all of it is there. Gives the exit status, after it has told of a
// failure. An interrupt ends the program.
int GetToFile(CHttpServices& oClient, const std::string& strUrl, const std::string& strFile, bool bUnique);
