// The C library opens a folder for reading, and only the reads fail; Windows does not open one.
#include "win32/CLibrary.h"

#include "platform/linux/base/Paths.h"
#include "util/Owned.h"

#include <sys/stat.h>

std::FILE* win32::fopen(const char* pszPath, const char* pszMode)
{
    return ResultOr<std::FILE*>(nullptr, [&] {
        const NativePath oPath(pszPath);
        Owned<std::FILE, std::fclose> pFile(std::fopen(oPath, (std::string(pszMode) + 'e').c_str()));   // not inherited
        struct stat oStatus;
        if (!pFile)
            ThrowOnPath(oPath);
        OrThrowErrno(::fstat(::fileno(pFile.get()), &oStatus));
        Require(!S_ISDIR(oStatus.st_mode), ERROR_ACCESS_DENIED);
        return pFile.release();
    });
}
