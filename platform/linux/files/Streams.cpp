#include "win32/Streams.h"

#include "platform/linux/base/Failure.h"
#include "platform/linux/base/Paths.h"

#include <sys/stat.h>

std::FILE* win32::fopen(const char* pszPath, const char* pszMode)
{
    return OrOutOfMemory<std::FILE*>(nullptr, [&]() -> std::FILE* {
        std::FILE* const pFile =
            std::fopen(NativePath(pszPath), (std::string(pszMode) + 'e').c_str());   // not inherited
        struct stat oStatus;
        if (!pFile || ::fstat(::fileno(pFile), &oStatus) != 0 || !S_ISDIR(oStatus.st_mode))
            return pFile;
        std::fclose(pFile);   // a folder, which could be opened and not read
        errno = EISDIR;
        return nullptr;
    });
}
