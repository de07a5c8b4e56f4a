// The runs that any processor can do, which also finish what the vectors leave at the end of a text, and the choice of
// the fastest runs.
#include "encoding/Runs.h"

#include "encoding/Base64Table.h"

namespace
{
constexpr std::size_t nGroup = 4;   // characters, of three bytes

std::size_t EncodePlain(const unsigned char* pPlain, std::size_t nSize, unsigned char* pText)
{
    const std::size_t nWhole = nSize - nSize % 3;
    for (const unsigned char* p = pPlain; p != pPlain + nWhole; p += 3, pText += nGroup)
    {
        const auto nBits = static_cast<unsigned int>(p[0] << 16 | p[1] << 8 | p[2]);
        for (std::size_t n = 0; n < nGroup; ++n)
            pText[n] = static_cast<unsigned char>(Base64Alphabet[nBits >> (18 - 6 * n) & 0x3F]);
    }
    return nWhole;
}

std::size_t DecodePlain(const unsigned char* pText, std::size_t nSize, unsigned char* pPlain)
{
    std::size_t nDone = 0;
    for (; nSize - nDone >= nGroup; nDone += nGroup, pText += nGroup, pPlain += 3)
    {
        unsigned int nBits = 0;
        bool bPadding = false;
        for (std::size_t n = 0; n < nGroup; ++n)
        {
            const unsigned int nValue = g_anBase64Values[pText[n]];
            bPadding |= nValue == nPaddingValue;
            nBits = nBits << 6 | (nValue & 0x3F);
        }
        if (bPadding)
            break;
        for (std::size_t n = 0; n < 3; ++n)
            pPlain[n] = static_cast<unsigned char>(nBits >> (16 - 8 * n));
    }
    return nDone;
}

std::size_t FilterPlain(const unsigned char* pIn, std::size_t nSize, unsigned char* pOut)
{
    unsigned char* p = pOut;
    for (std::size_t n = 0; n < nSize; ++n)
    {
        *p = pIn[n];
        p += !IsSkipped(pIn[n]);
    }
    return static_cast<std::size_t>(p - pOut);
}
}

constinit const Runs g_oPlainRuns{"plain", EncodePlain, DecodePlain, FilterPlain};

const Runs& BestRuns()
{
    // Found at the first call, because nothing but the promised objects is built at load.
    static const Runs& s_oBest = VectorRuns().empty() ? g_oPlainRuns : VectorRuns().front();
    return s_oBest;
}
