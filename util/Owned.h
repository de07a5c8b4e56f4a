// A pointer that is given back by the function that its maker names for it:
//
//     const Owned<DIR, ::closedir> pFolder(::opendir(pszPath));
#pragma once

#include <cstdlib>
#include <memory>

template <auto pfnRelease>
struct Release
{
    template <class Object>
    void operator()(Object* pObject) const noexcept
    {
        pfnRelease(pObject);
    }
};

template <class Object, auto pfnRelease>
using Owned = std::unique_ptr<Object, Release<pfnRelease>>;

// Memory as C hands it out.
template <class Object>
using Malloced = Owned<Object, std::free>;
