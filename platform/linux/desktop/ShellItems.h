// Item lists: a folder's path as the shell hands it around, each of its parts an item. The desktop, which has no path,
// is the empty list.
#pragma once

#include "ZevrinUtils/ShellTypes.h"
#include "util/Owned.h"

#include <string>

// The list of a path from the root, in the memory of the shell's allocator. Fails if a part is too long.
Malloced<ITEMIDLIST> ItemsOf(const std::string& strPath);

// Empty for the desktop.
std::string PathOf(const ITEMIDLIST& oItems);

// The name that the shell shows for a path.
std::string ShownName(const std::string& strPath);
