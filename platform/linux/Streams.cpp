#include "system/Streams.h"

#include "Failure.h"
#include "Paths.h"

std::FILE* win32::fopen(const char* pszPath, const char* pszMode)
{
    return OrOutOfMemory<std::FILE*>(nullptr, [&] { return std::fopen(NativePath(pszPath), pszMode); });
}
