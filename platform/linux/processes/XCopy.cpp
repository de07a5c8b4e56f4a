// Over find and cp, which every system has, instead of a walk of our own.
#include "XCopy.h"

#include "platform/linux/base/Paths.h"
#include "platform/linux/base/Unicode.h"

#include <algorithm>

namespace
{
// Owners, access rights and times go along, links stay links, empty folders are left out, files that are there are
// overwritten. A target inside of its source is refused, as is a source that is no folder.
constexpr const char* pszScript = R"(
cd -- "$1" && mkdir -p -- "$2" || exit 4
here=$(pwd -P) there=$(cd -- "$2" && pwd -P) || exit 4
case $there/ in "${here%/}"/*) exit 4 ;; esac
exec find . \( -type f -o -type l \) -exec cp --parents --no-dereference --preserve=all --target-directory="$there" -- {} +
)";

bool IsKnownSwitch(const std::string& str)
{
    return str.size() > 1 && str[0] == '/' && FoldCase(str).find_first_not_of("/ISOQ") == std::string::npos;
}
}

std::vector<std::string> TranslateXCopy(const std::vector<std::string>& oArguments)
{
    const std::string strName = FoldCase(oArguments[0]);
    if ((strName != "XCOPY" && strName != "XCOPY.EXE") || oArguments.size() < 3 ||
        !std::all_of(oArguments.begin() + 3, oArguments.end(), IsKnownSwitch))
        return {};
    const std::string strFrom = AbsolutePath(NativePath(oArguments[1].c_str()));
    const std::string strTo = AbsolutePath(NativePath(oArguments[2].c_str()));
    if (strFrom.empty() || strTo.empty())
        return {};
    return {"/bin/sh", "-c", pszScript, "xcopy", strFrom, strTo};
}
