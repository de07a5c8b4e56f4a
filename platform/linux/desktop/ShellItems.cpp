// Each item is a length of two bytes, itself included, and a part of the path; one of no length ends the list.
#include "ShellItems.h"

#include "platform/linux/base/Failure.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace
{
constexpr std::size_t nLengthSize = sizeof(WORD);
constexpr std::size_t nMostInItem = 0xFFFF - nLengthSize;

WORD LengthAt(const BYTE* pItem)
{
    WORD nLength = 0;
    std::memcpy(&nLength, pItem, nLengthSize);
    return nLength;
}

void Append(std::string& strBytes, const std::string& strName)
{
    const auto nLength = static_cast<WORD>(nLengthSize + strName.size());
    strBytes.append(reinterpret_cast<const char*>(&nLength), nLengthSize).append(strName);
}
}

Malloced<ITEMIDLIST> ItemsOf(const std::string& strPath)
{
    std::string strBytes;
    for (const auto& oPart : std::filesystem::path(strPath).lexically_normal())
    {
        Require(oPart.native().size() <= nMostInItem, ERROR_BAD_PATHNAME);
        if (!oPart.empty())   // what stands behind a last slash
            Append(strBytes, oPart.native());
    }
    strBytes.append(nLengthSize, 0);
    Malloced<ITEMIDLIST> pItems(static_cast<ITEMIDLIST*>(std::malloc(strBytes.size())));
    if (!pItems)
        throw std::bad_alloc();
    std::copy(strBytes.begin(), strBytes.end(), reinterpret_cast<char*>(pItems.get()));
    return pItems;
}

std::string PathOf(const ITEMIDLIST& oItems)
{
    std::filesystem::path oPath;
    const auto* pItem = reinterpret_cast<const BYTE*>(&oItems);
    for (std::size_t nLength; (nLength = LengthAt(pItem)) != 0; pItem += nLength)
        oPath /= std::string(pItem + nLengthSize, pItem + nLength);
    return oPath.string();
}

std::string ShownName(const std::string& strPath)
{
    if (strPath.empty())
        return "Desktop";
    const std::string strName = std::filesystem::path(strPath).filename().string();
    return strName.empty() ? strPath : strName;
}
