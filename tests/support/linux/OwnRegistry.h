// A registry for a test alone.
#pragma once

#include "support/ScratchFolder.h"

#include <cstdlib>

class OwnRegistry
{
public:
    OwnRegistry() { setenv("ZEVRIN_REGISTRY", File().c_str(), 1); }

    std::string Key() const { return "Software\\Zevrin Test"; }
    std::string File() const { return ScratchFolder::Native(m_oFolder / "made/as needed/registry.db"); }
    std::string Folder() const { return ScratchFolder::Native(m_oFolder / ""); }

private:
    ScratchFolder m_oFolder;
};
