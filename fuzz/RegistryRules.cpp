// A registry with edited bytes must be refused and left as it is, or work: its listings end, and a value written to it
// is there when it is opened again.
#include "Rules.h"

#include "platform/linux/registry/RegistryStore.h"
#include "support/ScratchFolder.h"

#include <memory>

namespace
{
const ScratchFolder s_oFolder(ScratchFolder::InMemory());
const std::string s_strPath = ScratchFolder::Native(s_oFolder / "registry.db");
const std::string s_strLogPath = s_strPath + "-wal";
constexpr std::size_t nMostGrowth = 1 << 16;
constexpr DWORD nMostEntries = 100;   // many more than there are

std::string FileAndLog()
{
    return ScratchFolder::Read(s_strPath) + ScratchFolder::Read(s_strLogPath);
}

void WriteValue(RegistryStore& oStore, const std::string& strKey, const std::string& strName, std::string strBytes)
{
    const auto nKey = oStore.CreateKey(0, "", strKey);
    oStore.WriteValue(nKey, strName, 3, {reinterpret_cast<BYTE*>(strBytes.data()), strBytes.size()});
}

// In use, so that a part of it is in the log.
struct SoundRegistry
{
    SoundRegistry()
    {
        std::unique_ptr<RegistryStore> pStore;
        for (const std::string strKey : {"Software\\First", "Software\\Second"})
        {
            pStore = nullptr;
            pStore = std::make_unique<RegistryStore>(s_strPath);
            WriteValue(*pStore, strKey, "", "");
            WriteValue(*pStore, strKey, "Text", strKey);
            WriteValue(*pStore, strKey, "long", std::string(5000, 0));   // has pages of its own
        }
        nFile = std::filesystem::file_size(s_strPath);
        strBytes = FileAndLog();
        for (std::size_t n = 4; n < strBytes.size(); ++n)
            if (strBytes.substr(n - 4, 8) != std::string(8, 0))
                oPlaces.push_back(n);
    }

    std::size_t nFile;
    std::string strBytes;               // of the log behind those of the file
    std::vector<std::size_t> oPlaces;   // where something is written; elsewhere an edit shows nothing
};

// True if the listings end, whatever they list.
bool End(RegistryStore& oStore)
{
    for (const char* pszPath : {"", "SOFTWARE", "SOFTWARE\\FIRST", "SOFTWARE\\SECOND"})
        for (const auto list : {&RegistryStore::ListSubKeys, &RegistryStore::ListValues})
        {
            const auto nKey = oStore.FindKey(pszPath);
            RegistryCursor oCursor;
            DWORD nIndex = 0;
            while (nKey && nIndex < nMostEntries && (oStore.*list)(*nKey, nIndex, oCursor))
                ++nIndex;
            if (nIndex == nMostEntries)
                return false;
        }
    return true;
}

bool HoldsNew(RegistryStore&& oStore)
{
    const auto nKey = oStore.FindKey("SOFTWARE\\NEW");
    const auto oValue = nKey ? oStore.ReadValue(*nKey, "NAME") : std::nullopt;
    return oValue && oValue->strBytes == "new";
}
}

std::string FaultInRegistryFile(const unsigned char* pEdits, std::size_t nSize)
{
    static const SoundRegistry s_oSound;
    std::string strBytes = s_oSound.strBytes;
    for (; nSize >= 3; pEdits += 3, nSize -= 3)
        strBytes[s_oSound.oPlaces[(pEdits[0] * 256U + pEdits[1]) % s_oSound.oPlaces.size()]] =
            static_cast<char>(pEdits[2]);
    ScratchFolder::Write(s_strPath, strBytes.substr(0, s_oSound.nFile));
    ScratchFolder::Write(s_strLogPath, strBytes.substr(s_oSound.nFile));
    std::filesystem::remove(s_strPath + "-shm");

    bool bIsOpen = false;
    bool bIsWritten = false;
    try
    {
        auto pStore = std::make_unique<RegistryStore>(s_strPath);
        bIsOpen = true;
        if (!End(*pStore))
            return "a listing without an end";
        WriteValue(*pStore, "Software\\New", "Name", "new");
        bIsWritten = true;
        pStore = nullptr;
        if (FileAndLog().size() > strBytes.size() + nMostGrowth)
            return "the size";
        return HoldsNew(RegistryStore(s_strPath)) ? "" : "a value that was written";
    }
    catch (const Failure&)
    {
        return bIsWritten                             ? "a file that was written and is refused"
               : !bIsOpen && FileAndLog() != strBytes ? "a file that was refused and has changed"
                                                      : "";
    }
}
