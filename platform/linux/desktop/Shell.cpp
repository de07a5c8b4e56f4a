#include "win32/Shell.h"

#include "ShellItems.h"
#include "platform/linux/base/Failure.h"
#include "platform/linux/base/Paths.h"
#include "platform/linux/base/Wide.h"
#include "win32/Files.h"

#include <cstdlib>

#include <sys/stat.h>

namespace
{
// A failure as the shell's operations give it.
HRESULT ResultOf(DWORD nError)
{
    return static_cast<HRESULT>(0x80070000 | nError);
}

void CopyCut(const std::string& strText, LPSTR pszBuffer, std::size_t nSize)
{
    pszBuffer[strText.copy(pszBuffer, nSize - 1)] = 0;
}

// What all of them are: there for ever, whoever refers to them.
template <class Interface>
class Eternal : public Interface
{
public:
    ULONG AddRef() override { return 1; }
    ULONG Release() override { return 1; }
};

class ShellDesktop final : public Eternal<IShellFolder>
{
public:
    // The item of a folder or file that is there. Without a path it is the desktop itself.
    HRESULT ParseDisplayName(HWND, IBindCtx* pBindCtx, LPWSTR pszName, ULONG* pnEaten, ITEMIDLIST** ppItem,
                             ULONG* pnAttributes) override
    {
        if (!ppItem)
            return E_INVALIDARG;
        *ppItem = nullptr;
        if (pBindCtx || !pszName || pnEaten || pnAttributes)
            return E_INVALIDARG;
        return OrOutOfMemory(E_OUTOFMEMORY, [&] {
            const NativePath oPath(Narrowed(pszName).c_str());
            struct stat oStatus;
            if (*oPath && *oPath != '/')
                return ResultOf(ERROR_FILE_NOT_FOUND);
            if (*oPath && ::stat(oPath, &oStatus) != 0)
                return ResultOf(ErrorOnPath(oPath, errno));
            *ppItem = ItemsOf(static_cast<const char*>(oPath));
            return *ppItem ? S_OK : E_OUTOFMEMORY;
        });
    }

    HRESULT GetDisplayNameOf(const ITEMIDLIST* pItem, DWORD nFlags, STRRET* pName) override
    {
        if (!pItem || !pName)
            return E_INVALIDARG;
        return OrOutOfMemory(E_OUTOFMEMORY, [&] {
            const std::string strPath = PathOf(*pItem);
            pName->uType = STRRET_CSTR;
            CopyCut(nFlags & SHGDN_FORPARSING ? strPath : ShownName(strPath), pName->cStr, sizeof pName->cStr);
            return S_OK;
        });
    }
};

class Allocator final : public Eternal<IMalloc>
{
public:
    void* Alloc(SIZE_T nSize) override { return std::malloc(nSize); }
    void Free(void* pBlock) override { std::free(pBlock); }
};

constinit ShellDesktop s_oShellDesktop;
constinit Allocator s_oAllocator;
}

HRESULT win32::SHGetDesktopFolder(IShellFolder** ppFolder)
{
    *ppFolder = &s_oShellDesktop;
    return S_OK;
}

HRESULT win32::SHGetMalloc(IMalloc** ppMalloc)
{
    *ppMalloc = &s_oAllocator;
    return S_OK;
}

BOOL win32::SHGetPathFromIDListA(const ITEMIDLIST* pItem, LPSTR pszPath)
{
    *pszPath = 0;
    return OrOutOfMemory(FALSE, [&] {
        const std::string strPath = pItem ? PathOf(*pItem) : std::string();
        if (strPath.empty() || strPath.size() >= MAX_PATH)
            return Fail(ERROR_BAD_PATHNAME, FALSE);
        CopyCut(strPath, pszPath, MAX_PATH);
        return TRUE;
    });
}

HRESULT win32::StrRetToBufA(STRRET* pName, const ITEMIDLIST*, LPSTR pszBuffer, UINT nSize)
{
    if (pName->uType != STRRET_CSTR || nSize == 0)
        return E_INVALIDARG;
    return OrOutOfMemory(E_OUTOFMEMORY, [&] {
        CopyCut(pName->cStr, pszBuffer, nSize);
        return S_OK;
    });
}
