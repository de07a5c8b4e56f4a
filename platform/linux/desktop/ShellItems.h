// Item lists: a folder's path as the shell hands it around, each of its parts an item. The desktop, which has no path,
// is the empty list.
#pragma once

#include "ZevrinUtils/ShellTypes.h"

#include <string>

// The list of a path from the root, in memory of malloc; null if there is no memory or a part is too long.
ITEMIDLIST* ItemsOf(const std::string& strPath);

// Empty for the desktop.
std::string PathOf(const ITEMIDLIST& oItems);

// How the shell shows what lies at a path.
std::string ShownName(const std::string& strPath);
