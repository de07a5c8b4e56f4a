// One pass over the entries of a folder.
#pragma once

#include "platform/Files.h"

#include <string>

// Not closed with its object: an operation that gives up half-way leaves its listing open, and callers know.
class Walk
{
public:
    // Opens the listing and drops its first entry unseen: ".", but at the root of a Windows volume a real one.
    explicit Walk(const char* pszFolder)
        : m_strFolder(pszFolder), m_hFind(Files().FindFirstFileA(Pattern().c_str(), &m_oFound))
    {
    }

    bool IsOpen() const noexcept { return m_hFind != INVALID_HANDLE_VALUE; }

    // Goes to the next entry. False at the end, and as well if the system fails.
    bool Next()
    {
        while (IsOpen() && Files().FindNextFileA(m_hFind, &m_oFound))
        {
            m_strName = m_oFound.cFileName;
            if (m_strName == "." || m_strName == "..")
                continue;
            m_strPath.assign(m_strFolder).append(1, '\\').append(m_strName);
            return true;
        }
        return false;
    }

    // Asks anew. An entry that is gone by now counts as a folder.
    bool IsFolder() const { return Files().GetFileAttributesA(m_strPath.c_str()) & FILE_ATTRIBUTE_DIRECTORY; }

    bool Close() { return IsOpen() && Files().FindClose(m_hFind); }

    const std::string& Name() const noexcept { return m_strName; }
    const std::string& Path() const noexcept { return m_strPath; }
    DWORD SizeLow() const noexcept { return m_oFound.nFileSizeLow; }
    std::string Pattern() const { return m_strFolder + "\\*.*"; }

private:
    const std::string m_strFolder;
    std::string m_strName;
    std::string m_strPath;
    WIN32_FIND_DATAA m_oFound{};
    const HANDLE m_hFind;
};
