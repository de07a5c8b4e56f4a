#include "Base64Rules.h"

#include "ZevrinUtils/Base64Coder.h"
#include "encoding/Runs.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace
{
using Bytes = std::vector<unsigned char>;

// It replaces nothing, but is asked for each group like one that does.
class DerivedCoder : public Base64Coder
{
};

int ValueOf(unsigned char nChar)
{
    const char* const pszAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const int nLow = nChar & 0x7F;
    const char* const pFound = nLow ? std::strchr(pszAlphabet, nLow) : nullptr;
    return pFound ? static_cast<int>(pFound - pszAlphabet) : 62;
}

bool IsPadding(unsigned char nChar)
{
    return (nChar & 0x7F) == '=';
}

Bytes Filtered(Bytes oText)
{
    std::erase_if(oText, [](unsigned char nChar) { return std::memchr("\a\b\t\n\v\f\r ", nChar, 8); });
    return oText;
}

// The plain side: what counts, with what the last group left behind that.
struct Plain
{
    Bytes oBytes;
    std::size_t nSize = 0;
};

void Put(Plain& oPlain, unsigned int nBits, std::size_t nCount)
{
    oPlain.oBytes.resize(oPlain.nSize);
    for (const int nShift : {16, 8, 0})
        oPlain.oBytes.push_back(static_cast<unsigned char>(nBits >> nShift));
    oPlain.nSize += nCount;
}

Plain Decoded(const Bytes& oText)
{
    Plain oPlain;
    for (std::size_t nGroup = 0; nGroup < oText.size(); nGroup += 4)
    {
        const std::size_t nCount = std::min<std::size_t>(4, oText.size() - nGroup);
        unsigned int nBits = 0;
        for (std::size_t n = 0; n < 4; ++n)
        {
            const bool bPadding = n < nCount && IsPadding(oText[nGroup + n]);
            const bool bZero = n >= nCount || (bPadding && (nCount < 4 || n >= 2));
            nBits = nBits << 6 | (bZero ? 0U : bPadding ? 63U : static_cast<unsigned>(ValueOf(oText[nGroup + n])));
        }
        const bool bWhole = nCount == 4;
        Put(oPlain, nBits, !bWhole ? nCount : IsPadding(oText[nGroup + 2]) ? 1 : IsPadding(oText[nGroup + 3]) ? 2 : 3);
    }
    return oPlain;
}

// Whether a side holds these bytes, and zeros behind them as far as it was asked for.
bool Holds(const char* pSide, Bytes oExpected, std::size_t nAsked)
{
    if (nAsked == 0)
        return !pSide;   // of a fresh object
    oExpected.resize(std::max(oExpected.size(), nAsked) + 1);
    return std::memcmp(pSide, oExpected.data(), oExpected.size()) == 0;
}

std::string FaultIn(Base64Coder&& oCoder, Bytes oText, const Bytes& oKept, const Plain& oPlain)
{
    oCoder.Decode(oText.data(), static_cast<unsigned long>(oText.size()));
    return oCoder.GetDecodeDataSize() != oPlain.nSize                     ? "the size"
           : !Holds(oCoder.EncodedMessage(), oKept, oText.size())         ? "the text side"
           : !Holds(oCoder.DecodedMessage(), oPlain.oBytes, oText.size()) ? "the plain side"
                                                                          : "";
}

std::string FaultIn(const Runs& oRuns, const Bytes& oText, const Bytes& oKept, const Plain& oPlain)
{
    Bytes oFiltered(oText.size());
    oFiltered.resize(oRuns.Filter(oText.data(), oText.size(), oFiltered.data()));
    Bytes oDecoded(oKept.size());
    const std::size_t nDone = oRuns.Decode(oKept.data(), oKept.size(), oDecoded.data());
    Bytes oExpected(oPlain.oBytes);
    oExpected.resize(nDone / 4 * 3);
    oExpected.resize(oKept.size());
    const bool bEndsEarly = oKept.size() - nDone >= 4 && std::none_of(&oKept[nDone], &oKept[nDone] + 4, &IsPadding);
    return oFiltered != oKept ? "the filter" : oDecoded != oExpected ? "the run" : bEndsEarly ? "its end" : "";
}

std::vector<Runs> AllRuns()
{
    std::vector<Runs> oAll(VectorRuns().begin(), VectorRuns().end());
    oAll.push_back(g_oPlainRuns);
    return oAll;
}
}

std::string FaultInDecoding(const unsigned char* pText, std::size_t nSize)
{
    const Bytes oText(pText, pText + nSize);
    const Bytes oKept = Filtered(oText);
    const Plain oPlain = Decoded(oKept);
    if (const auto strFault = FaultIn(Base64Coder(), oText, oKept, oPlain); !strFault.empty())
        return strFault + " of the class itself";
    if (const auto strFault = FaultIn(DerivedCoder(), oText, oKept, oPlain); !strFault.empty())
        return strFault + " of a derived class";
    for (const auto& oRuns : AllRuns())
        if (const auto strFault = FaultIn(oRuns, oText, oKept, oPlain); !strFault.empty())
            return strFault + " of " + oRuns.pszName;
    return "";
}

std::string FaultInEncoding(const unsigned char* pPlain, std::size_t nSize)
{
    Bytes oPlain(pPlain, pPlain + nSize);
    DerivedCoder oCoder;
    oCoder.Encode(oPlain.data(), static_cast<unsigned long>(nSize));
    Bytes oText((nSize + 2) / 3 * 4);
    std::copy_n(oCoder.EncodedMessage(), oText.size(), oText.begin());
    const Plain oBack = Decoded(oText);
    if (oBack.nSize != nSize || !std::equal(oPlain.begin(), oPlain.end(), oBack.oBytes.begin()))
        return "the text of a derived class";

    Base64Coder oItself;
    oItself.Encode(oPlain.data(), static_cast<unsigned long>(nSize));
    if (!Holds(oItself.EncodedMessage(), oText, 2 * nSize) || !Holds(oItself.DecodedMessage(), oPlain, nSize))
        return "a side of the class itself";
    for (const auto& oRuns : AllRuns())
    {
        Bytes oRun(oText.size());
        const std::size_t nWhole = nSize / 3 * 3;
        if (oRuns.Encode(pPlain, nSize, oRun.data()) != nWhole ||
            !std::equal(oText.begin(), oText.begin() + static_cast<std::ptrdiff_t>(nWhole / 3 * 4), oRun.begin()))
            return std::string("the run of ") + oRuns.pszName;
    }
    return "";
}
