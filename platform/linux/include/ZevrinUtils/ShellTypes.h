// What the exported headers need of the shell, for Linux: the same names and values; only what is in use.
#pragma once

#include "ZevrinUtils/Types.h"

// One item: its length in bytes, these two included, and what the shell keeps of it. A list ends with length 0.
struct SHITEMID
{
    WORD cb;
    BYTE abID[1];
};
struct _ITEMIDLIST   // NOLINT(bugprone-reserved-identifier): exported names hold it
{
    SHITEMID mkid;
};
using ITEMIDLIST = _ITEMIDLIST;

inline constexpr UINT BIF_RETURNONLYFSDIRS = 0x1;   // OK only for what has a path
inline constexpr UINT BIF_STATUSTEXT = 0x4;
inline constexpr UINT BIF_EDITBOX = 0x10;
inline constexpr UINT BIF_VALIDATE = 0x20;
inline constexpr UINT BIF_NEWDIALOGSTYLE = 0x40;
inline constexpr UINT BIF_SHAREABLE = 0x8000;

inline constexpr UINT BFFM_INITIALIZED = 1;
inline constexpr UINT BFFM_SELCHANGED = 2;
inline constexpr UINT BFFM_VALIDATEFAILEDA = 3;
inline constexpr UINT BFFM_ENABLEOK = 0x465;
inline constexpr UINT BFFM_SETSELECTIONA = 0x466;
inline constexpr UINT BFFM_SETOKTEXT = 0x469;

using BFFCALLBACK = int (*)(HWND hWindow, UINT nMessage, LPARAM lParam, LPARAM lpData);

struct BROWSEINFOA
{
    HWND hwndOwner;
    const ITEMIDLIST* pidlRoot;
    LPSTR pszDisplayName;
    LPCSTR lpszTitle;
    UINT ulFlags;
    BFFCALLBACK lpfn;
    LPARAM lParam;
    int iImage;
};

inline constexpr UINT STRRET_CSTR = 2;

struct STRRET
{
    UINT uType;
    char cStr[260];
};

struct IBindCtx;   // never passed: null only

struct IUnknown
{
    virtual ULONG AddRef() = 0;
    virtual ULONG Release() = 0;

protected:
    ~IUnknown() = default;
};

struct IShellFolder : IUnknown
{
    virtual HRESULT ParseDisplayName(HWND hWindow, IBindCtx* pBindCtx, LPWSTR pszName, ULONG* pnEaten,
                                     ITEMIDLIST** ppItem, ULONG* pnAttributes) = 0;
    virtual HRESULT GetDisplayNameOf(const ITEMIDLIST* pItem, DWORD nFlags, STRRET* pName) = 0;

protected:
    ~IShellFolder() = default;
};

struct IMalloc : IUnknown
{
    virtual void* Alloc(SIZE_T nSize) = 0;
    virtual void Free(void* pBlock) = 0;

protected:
    ~IMalloc() = default;
};
