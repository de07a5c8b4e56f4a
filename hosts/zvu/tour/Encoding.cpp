// The tour's stops at Base64, passwords and GUIDs.
#include "Families.h"

#include "ZevrinUtils/Base64Coder.h"
#include "ZevrinUtils/Generators.h"

#include <algorithm>
#include <cstdint>

namespace
{
constexpr std::size_t nFileBytes = 4'000'000;
constexpr int nPasswordLength = 12;

// Bytes of every value, with no pattern that a block's length could hide.
std::string SomeBytes()
{
    std::string strBytes(nFileBytes, '\0');
    std::uint32_t nState = 1;
    for (char& ch : strBytes)
    {
        nState = nState * 1664525 + 1013904223;
        ch = static_cast<char>(nState >> 24);
    }
    return strBytes;
}

Outcome EncodeText()
{
    std::string strText = "Hello!";
    Base64Coder oCoder;
    oCoder.Encode(reinterpret_cast<BYTE*>(strText.data()), static_cast<unsigned long>(strText.size()));
    return Judged(std::string_view(oCoder.EncodedMessage()) == "SGVsbG8h", oCoder.EncodedMessage());
}

Outcome EncodeFile(const Surroundings& oSurroundings)
{
    const bool bDone = Base64Coder().Encode((oSurroundings.oScratch / "bytes").string().c_str(),
                                            (oSurroundings.oScratch / "text").string().c_str());
    const auto nSize = file_size(oSurroundings.oScratch / "text");
    return Judged(bDone && nSize == (nFileBytes + 2) / 3 * 4, Grouped(nSize) + " characters");
}

Outcome DecodeFile(const Surroundings& oSurroundings)
{
    const bool bDone = Base64Coder().Decode((oSurroundings.oScratch / "text").string().c_str(),
                                            (oSurroundings.oScratch / "again").string().c_str());
    const bool bSame = ReadFile(oSurroundings.oScratch / "again") == ReadFile(oSurroundings.oScratch / "bytes");
    return Judged(bDone && bSame, bSame ? "the same bytes" : "other bytes");
}

Outcome MakePassword()
{
    std::string strPassword;
    CSPasswordUtils().GeneratePassword(strPassword, nPasswordLength);
    std::string strSorted = strPassword;
    std::ranges::sort(strSorted);
    const bool bTwice = std::ranges::adjacent_find(strSorted) != strSorted.end();
    return Judged(strPassword.size() >= nPasswordLength && !bTwice, strPassword);
}

Outcome MakeGuids()
{
    const std::string strFirst = CSGuid::CreateGUID();
    const bool bDiffer = strFirst != CSGuid::CreateGUID();
    return Judged(strFirst.size() == 36 && bDiffer, strFirst);
}
}

void ShowBase64(Guide& oGuide, const Surroundings& oSurroundings)
{
    WriteFile(oSurroundings.oScratch / "bytes", SomeBytes());
    oGuide.Show("encode Hello!", &EncodeText);
    oGuide.Show(Text("encode a file of ", Grouped(nFileBytes), " bytes"), [&] { return EncodeFile(oSurroundings); });
    oGuide.Show("decode it", [&] { return DecodeFile(oSurroundings); });
}

void ShowGenerators(Guide& oGuide, const Surroundings&)
{
    oGuide.Show(Text("a password of ", nPasswordLength, " characters"), &MakePassword);
    oGuide.Show("two GUIDs that differ", &MakeGuids);
}
