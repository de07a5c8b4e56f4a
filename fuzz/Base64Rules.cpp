// A plain account of the rules of Base64Coder, group by group, against each way of coding: an object of the class
// itself, one of a derived class, and each kind of runs. Sizes and the zeros behind the result count too.
#include "Rules.h"

#include "ZevrinUtils/Base64Coder.h"
#include "encoding/Runs.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace
{
using Bytes = std::vector<unsigned char>;

// It replaces nothing, but is asked for each group like one that does.
class DerivedCoder : public Base64Coder
{
};

const char* const pszAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

int ValueOf(unsigned char nChar)
{
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

// True if a side holds these bytes, and zeros behind them as far as it was asked for.
bool Holds(const char* pSide, Bytes oExpected, std::size_t nAsked)
{
    if (nAsked == 0)
        return !pSide;   // of a fresh object
    oExpected.resize(std::max(oExpected.size(), nAsked) + 1);
    return std::memcmp(pSide, oExpected.data(), oExpected.size()) == 0;
}

// Makes a check of a fresh object, and again when both sides are full of something else. The check is told how many
// bytes a side that is asked for so many must then have room for.
template <class Check>
std::string FaultOf(Base64Coder&& oCoder, Check faultIn)
{
    std::string strFault = faultIn(oCoder, [](std::size_t nAsked) { return nAsked; });
    if (!strFault.empty())
        return strFault;
    static Bytes s_oBefore(5000, 'x');   // in 8192 bytes of storage
    oCoder.SetEncodeBuffer(s_oBefore.data(), static_cast<unsigned long>(s_oBefore.size()));
    oCoder.SetDecodeBuffer(s_oBefore.data(), static_cast<unsigned long>(s_oBefore.size()));
    return faultIn(oCoder, [](std::size_t nAsked) { return std::max<std::size_t>(nAsked, 8191); });
}

std::string FaultIn(Base64Coder&& oCoder, Bytes oText, const Bytes& oKept, const Plain& oPlain)
{
    return FaultOf(std::move(oCoder), [&](Base64Coder& o, auto roomFor) -> std::string {
        o.Decode(oText.data(), static_cast<unsigned long>(oText.size()));
        const std::size_t nRoom = roomFor(oText.size());
        return o.GetDecodeDataSize() != oPlain.nSize              ? "the size"
               : !Holds(o.EncodedMessage(), oKept, nRoom)         ? "the text side"
               : !Holds(o.DecodedMessage(), oPlain.oBytes, nRoom) ? "the plain side"
                                                                  : "";
    });
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

std::string FaultIn(Base64Coder&& oCoder, Bytes oPlain, const Bytes& oText)
{
    return FaultOf(std::move(oCoder), [&](Base64Coder& o, auto roomFor) -> std::string {
        o.Encode(oPlain.data(), static_cast<unsigned long>(oPlain.size()));
        return !Holds(o.EncodedMessage(), oText, roomFor(2 * oPlain.size())) ? "the text side"
               : !Holds(o.DecodedMessage(), oPlain, roomFor(oPlain.size()))  ? "the plain side"
                                                                             : "";
    });
}

// True if a text has the form of so many bytes' Base64: of the alphabet, and padded where the last group is short.
bool IsTextOf(std::size_t nPlain, const Bytes& oText)
{
    const auto pPadding = oText.end() - static_cast<std::ptrdiff_t>((3 - nPlain % 3) % 3);
    return std::all_of(oText.begin(), pPadding, [](int nChar) { return nChar && std::strchr(pszAlphabet, nChar); }) &&
           std::all_of(pPadding, oText.end(), [](int nChar) { return nChar == '='; });
}

std::vector<Runs> AllRuns()
{
    std::vector<Runs> oAll(VectorRuns().begin(), VectorRuns().end());
    oAll.push_back(g_oPlainRuns);
    return oAll;
}
}

std::string FaultInBase64Decoding(const unsigned char* pText, std::size_t nSize)
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

std::string FaultInBase64Encoding(const unsigned char* pPlain, std::size_t nSize)
{
    Bytes oPlain(pPlain, pPlain + nSize);
    DerivedCoder oCoder;
    oCoder.Encode(oPlain.data(), static_cast<unsigned long>(nSize));
    Bytes oText((nSize + 2) / 3 * 4);
    std::copy_n(oCoder.EncodedMessage(), oText.size(), oText.begin());
    const Plain oBack = Decoded(oText);
    Bytes oExpected(oPlain);
    oExpected.resize(oBack.oBytes.size());   // the bits behind the last byte are zero
    if (!IsTextOf(nSize, oText) || oBack.nSize != nSize || oBack.oBytes != oExpected)
        return "the text of a derived class";

    if (const auto strFault = FaultIn(DerivedCoder(), oPlain, oText); !strFault.empty())
        return strFault + " of a derived class";
    if (const auto strFault = FaultIn(Base64Coder(), oPlain, oText); !strFault.empty())
        return strFault + " of the class itself";
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
