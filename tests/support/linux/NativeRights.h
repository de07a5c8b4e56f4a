// The access rights of a path as the system itself sees them.
#pragma once

#include "support/ScratchFolder.h"

// To read, write and execute.
inline bool EveryoneMayAll(const std::string& strPath)
{
    return std::filesystem::status(ScratchFolder::Native(strPath)).permissions() == std::filesystem::perms::all;
}
