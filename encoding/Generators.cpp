// First passwords and GUIDs. The divisor that is one too small, passes that overshoot the length and sums that wrap at
// 32 bits look like slips; hosts rely on each (docs/generators.md).
#include "ZevrinUtils/Generators.h"

#include "platform/Identifiers.h"
#include "platform/Random.h"
#include "platform/System.h"
#include "util/Owned.h"

#include <cstdint>

namespace
{
// The divisor is the largest draw, so that draw gives one past the range.
constexpr std::int32_t nLargestDraw = 32767;

struct Range
{
    char chFirst;
    char chLast;
};
constexpr Range s_aoClasses[] = {{'A', 'Z'}, {'a', 'z'}, {'0', '9'}};

void FreeText(RPC_CSTR pszText)
{
    Identifiers().RpcStringFreeA(&pszText);
}
}

CSPasswordUtils::CSPasswordUtils() = default;

CSPasswordUtils::CSPasswordUtils(const CSPasswordUtils& oOther) = default;

CSPasswordUtils& CSPasswordUtils::operator=(const CSPasswordUtils& oOther) = default;

CSPasswordUtils::~CSPasswordUtils() = default;

bool CSPasswordUtils::GeneratePassword(std::string& strPassword, int nLength)
{
    if (nLength == 0)
        return false;
    Random().srand(static_cast<unsigned int>(System().time(nullptr)));
    // Each pass is made to its end, so up to two characters more than asked for.
    for (int nRemaining = nLength; nRemaining > 0;)
        for (const auto& [chFirst, chLast] : s_aoClasses)
            AddRandomValue(strPassword, chFirst, chLast, nRemaining);
    return true;
}

// A draw that is there already is lost; it leaves its class out of the pass.
void CSPasswordUtils::AddRandomValue(std::string& strPassword, int nFirst, int nLast, int& nRemaining)
{
    const auto ch = static_cast<char>(GetRandomValue(nFirst, nLast) & 0xFF);
    if (strPassword.find(ch) != std::string::npos)
        return;
    strPassword += ch;
    --nRemaining;
}

// The arithmetic is of 32 bits on every target, and wraps where a range is too large for them.
long CSPasswordUtils::GetRandomValue(int nFirst, int nLast)
{
    const auto nFrom = static_cast<std::uint32_t>(nFirst);
    const auto nCount = static_cast<std::uint32_t>(nLast) - nFrom + 1;
    const auto nScaled = static_cast<std::int32_t>(static_cast<std::uint32_t>(Random().rand()) * nCount);
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(nScaled / nLargestDraw) + nFrom);
}

CSGuid::CSGuid() = default;

CSGuid& CSGuid::operator=(const CSGuid& oOther) = default;

CSGuid::~CSGuid() = default;

std::string CSGuid::CreateGUID()
{
    UUID oId{};
    // Every other status passes, that of an identifier which is unique on this machine alone among them.
    if (Identifiers().UuidCreate(&oId) == RPC_S_UUID_NO_ADDRESS)
        return {};
    RPC_CSTR pszText = nullptr;
    if (Identifiers().UuidToStringA(&oId, &pszText) == RPC_S_OUT_OF_MEMORY || !pszText)
        return {};
    const Owned<unsigned char, FreeText> pOwned(pszText);
    return reinterpret_cast<const char*>(pszText);
}
