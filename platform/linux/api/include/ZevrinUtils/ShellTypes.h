/// @file
/// The part of the shell that the exported headers use, for Linux: the same names and values.
#pragma once

#include "ZevrinUtils/Types.h"

/// One item. A list ends with one of length 0.
struct SHITEMID
{
    WORD cb;        ///< length in bytes, these two included
    BYTE abID[1];   ///< what the shell keeps of it
};
/// An item list: its first item, with the others behind it.
struct _ITEMIDLIST   // NOLINT(bugprone-reserved-identifier): exported names hold it
{
    SHITEMID mkid;   ///< the first
};
/// As the documentation of the shell tells, here and below.
/// @{
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

/// The wishes for a browse.
struct BROWSEINFOA
{
    /// As the documentation of the shell tells.
    /// @{
    HWND hwndOwner;
    const ITEMIDLIST* pidlRoot;
    LPSTR pszDisplayName;
    LPCSTR lpszTitle;
    UINT ulFlags;
    BFFCALLBACK lpfn;
    LPARAM lParam;
    int iImage;
    /// @}
};

inline constexpr UINT STRRET_CSTR = 2;

/// A name that the shell gives.
struct STRRET
{
    /// As the documentation of the shell tells.
    /// @{
    UINT uType;
    char cStr[260];
    /// @}
};

struct IBindCtx;   // never passed: null only

/// Common to all objects of the shell: a count of those who refer to them.
struct IUnknown
{
    virtual ULONG AddRef() = 0;    ///< one more
    virtual ULONG Release() = 0;   ///< one less; the last one ends the object

protected:
    ~IUnknown() = default;
};

/// A folder of the shell.
struct IShellFolder : IUnknown
{
    /// The item of a path.
    virtual HRESULT ParseDisplayName(HWND hWindow, IBindCtx* pBindCtx, LPWSTR pszName, ULONG* pnEaten,
                                     ITEMIDLIST** ppItem, ULONG* pnAttributes) = 0;
    /// The name of an item.
    virtual HRESULT GetDisplayNameOf(const ITEMIDLIST* pItem, DWORD nFlags, STRRET* pName) = 0;

protected:
    ~IShellFolder() = default;
};

/// The shell's allocator.
struct IMalloc : IUnknown
{
    virtual void* Alloc(SIZE_T nSize) = 0;   ///< null if memory is short
    virtual void Free(void* pBlock) = 0;     ///< null does nothing

protected:
    ~IMalloc() = default;
};
/// @}
