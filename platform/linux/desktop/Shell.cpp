// The shell's objects, its desktop folder and its allocator, and the texts of its items.
#include "win32/Desktop.h"

#include "ShellItems.h"
#include "platform/linux/base/Buffers.h"
#include "platform/linux/base/Paths.h"
#include "platform/linux/base/Unicode.h"
#include "win32/Kernel.h"

#include <cstdlib>

#include <sys/stat.h>

namespace
{
// A call that gives its failure as the shell does.
template <class Body>
HRESULT ResultOf(Body body) noexcept
{
    constexpr DWORD nWin32 = 0x80070000;
    const DWORD nError = ErrorOf(body, ERROR_OUTOFMEMORY);
    return nError ? static_cast<HRESULT>(nWin32 | nError) : S_OK;
}

// All of the shell's objects are there for ever, whoever refers to them.
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
        return ResultOf([&] {
            Require(ppItem, ERROR_INVALID_PARAMETER);
            *ppItem = nullptr;
            Require(!pBindCtx && pszName && !pnEaten && !pnAttributes, ERROR_INVALID_PARAMETER);
            const NativePath oPath(Narrowed(pszName).c_str());
            struct stat oStatus;
            Require(!*oPath || *oPath == '/', ERROR_FILE_NOT_FOUND);
            if (*oPath)
                OrThrowOnPath(oPath, ::stat(oPath, &oStatus));
            *ppItem = ItemsOf(static_cast<const char*>(oPath)).release();
        });
    }

    HRESULT GetDisplayNameOf(const ITEMIDLIST* pItem, DWORD nFlags, STRRET* pName) override
    {
        return ResultOf([&] {
            Require(pItem && pName, ERROR_INVALID_PARAMETER);
            const std::string strPath = PathOf(*pItem);
            pName->uType = STRRET_CSTR;
            CopyCut(nFlags & SHGDN_FORPARSING ? strPath : ShownName(strPath), pName->cStr, sizeof pName->cStr);
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
    return Succeeds([&] {
        *pszPath = 0;
        const std::string strPath = pItem ? PathOf(*pItem) : std::string();
        Require(!strPath.empty() && CopyWhole(strPath, 1, pszPath, MAX_PATH), ERROR_BAD_PATHNAME);
    });
}

HRESULT win32::StrRetToBufA(STRRET* pName, const ITEMIDLIST*, LPSTR pszBuffer, UINT nSize)
{
    return ResultOf([&] {
        Require(pName->uType == STRRET_CSTR && nSize > 0, ERROR_INVALID_PARAMETER);
        CopyCut(pName->cStr, pszBuffer, nSize);
    });
}
