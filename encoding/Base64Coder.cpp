// Coding in memory, in two ways with one result: group by group through the virtual steps, which a derived class may
// have replaced, and in runs (encoding/Runs.h) for objects of the class itself. Sizes, capacities and the zeros behind
// the result are the same too, because hosts see them.
#include "ZevrinUtils/Base64Coder.h"

#include "encoding/Base64Table.h"
#include "encoding/Runs.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <typeinfo>
#include <utility>

char Base64Coder::m_DecodeTable[256];
int Base64Coder::m_Init = 0;

namespace
{
constexpr unsigned int nStorageShift = 12;   // steps of 4096 bytes
constexpr unsigned long nLargestSide = 0xFFFFEFFF;

// Capacities are 32-bit numbers: one that wraps would leave the side without the room that coding then takes.
void MakeRoom(BYTE*& pBuffer, unsigned int& nCapacity, unsigned long nSize)
{
    if (nSize > nLargestSide)
        throw std::bad_alloc();
    if (nCapacity >= nSize)
        return;
    // The old one goes first, since nothing of it is kept, and leaves no trace of itself should new throw.
    delete[] std::exchange(pBuffer, nullptr);
    nCapacity = 0;
    const auto nNew = ((static_cast<unsigned int>(nSize) >> nStorageShift) + 1) << nStorageShift;
    pBuffer = new BYTE[nNew];
    nCapacity = nNew;
}

BYTE ToByte(char ch)
{
    return static_cast<BYTE>(ch);
}

// In a whole group padding counts from the third place on. A short group has one byte for each character it has,
// not three for each four of them: hosts know unpadded texts by their length.
unsigned int CountBytes(const Base64Coder::TempBucket& oGroup)
{
    if (oGroup.m_nSize < 4)
        return oGroup.m_nSize;
    if (oGroup.m_aData[2] == nPaddingValue)
        return 1;
    return oGroup.m_aData[3] == nPaddingValue ? 2 : 3;
}

// Replaces padding by zero bits; the first two places of a whole group keep it.
void ClearPadding(Base64Coder::TempBucket& oGroup)
{
    const int nKept = oGroup.m_nSize == 4 ? 2 : 0;
    std::replace(oGroup.m_aData + nKept, std::end(oGroup.m_aData), nPaddingValue, BYTE{0});
}

// The input must not be the side itself. If it is, coding goes group by group, which reads the zeros just written.
bool IsWithin(const BYTE* pBuffer, const BYTE* pSide, unsigned int nCapacity)
{
    return reinterpret_cast<std::uintptr_t>(pBuffer) - reinterpret_cast<std::uintptr_t>(pSide) < nCapacity;
}

// A derived class may have replaced any step and is asked for each group. With an object of the class itself
// nobody can tell, so that codes in runs.
bool IsOfTheClassItself(const Base64Coder& oCoder)
{
    return typeid(oCoder) == typeid(Base64Coder);
}
}

Base64Coder::Base64Coder() = default;

Base64Coder::Base64Coder(const Base64Coder& oOther) = default;

Base64Coder& Base64Coder::operator=(const Base64Coder& oOther) = default;

Base64Coder::~Base64Coder()
{
    delete[] m_pDecodeBuffer;
    delete[] m_pEncodeBuffer;
    delete[] m_pBlockBuffer;
}

const char* Base64Coder::DecodedMessage() const
{
    return reinterpret_cast<const char*>(m_pDecodeBuffer);
}

const char* Base64Coder::EncodedMessage() const
{
    return reinterpret_cast<const char*>(m_pEncodeBuffer);
}

unsigned long Base64Coder::GetDecodeDataSize()
{
    return m_nDecodeSize;
}

void Base64Coder::AllocEncode(unsigned long nSize)
{
    m_nEncodeSize = 0;
    MakeRoom(m_pEncodeBuffer, m_nEncodeCapacity, nSize);
    std::fill_n(m_pEncodeBuffer, m_nEncodeCapacity, BYTE{0});
}

void Base64Coder::AllocDecode(unsigned long nSize)
{
    m_nDecodeSize = 0;
    MakeRoom(m_pDecodeBuffer, m_nDecodeCapacity, nSize);
    std::fill_n(m_pDecodeBuffer, m_nDecodeCapacity, BYTE{0});
}

void Base64Coder::SetDecodeBuffer(BYTE* const pBuffer, unsigned long nLength)
{
    AllocDecode(nLength);
    std::copy_n(pBuffer, nLength, m_pDecodeBuffer);
    m_nDecodeSize = static_cast<unsigned int>(nLength);
}

void Base64Coder::SetEncodeBuffer(BYTE* const pBuffer, unsigned long nLength)
{
    if (IsOfTheClassItself(*this) && !IsWithin(pBuffer, m_pEncodeBuffer, m_nEncodeCapacity))
    {
        // AllocEncode's work, but zeroing only what the filter leaves.
        m_nEncodeSize = 0;
        MakeRoom(m_pEncodeBuffer, m_nEncodeCapacity, nLength);
        m_nEncodeSize = static_cast<unsigned int>(BestRuns().Filter(pBuffer, nLength, m_pEncodeBuffer));
        std::fill(m_pEncodeBuffer + m_nEncodeSize, m_pEncodeBuffer + m_nEncodeCapacity, BYTE{0});
        return;
    }
    AllocEncode(nLength);
    for (unsigned long n = 0; n < nLength; ++n)
        if (_IsBadMimeChar(pBuffer[n]) == 0)
            m_pEncodeBuffer[m_nEncodeSize++] = pBuffer[n];
}

int Base64Coder::_IsBadMimeChar(BYTE nChar)
{
    return IsSkipped(nChar);
}

void Base64Coder::_Init()
{
    std::copy(g_anBase64Values.begin(), g_anBase64Values.end(), m_DecodeTable);
    m_Init = 1;
}

// Twice the input is more than the text takes. It is what hosts find as the capacity.
void Base64Coder::Encode(BYTE* const pBuffer, unsigned long nLength)
{
    if (nLength > nLargestSide / 2)
        throw std::bad_alloc();
    SetDecodeBuffer(pBuffer, nLength);
    const unsigned long nRoom = nLength * 2;
    unsigned long nIndex = 0;
    if (IsOfTheClassItself(*this))
    {
        // AllocEncode's work, but zeroing only what the run leaves.
        MakeRoom(m_pEncodeBuffer, m_nEncodeCapacity, nRoom);
        nIndex = static_cast<unsigned long>(BestRuns().Encode(m_pDecodeBuffer, nLength, m_pEncodeBuffer));
        m_nEncodeSize = static_cast<unsigned int>(nIndex / 3 * 4);
        std::fill(m_pEncodeBuffer + m_nEncodeSize, m_pEncodeBuffer + m_nEncodeCapacity, BYTE{0});
    }
    else
        AllocEncode(nRoom);

    while (nIndex < nLength)
    {
        TempBucket oGroup;
        oGroup.m_nSize = static_cast<BYTE>(std::min(nLength - nIndex, 3UL));
        std::copy_n(m_pDecodeBuffer + nIndex, oGroup.m_nSize, oGroup.m_aData);
        _EncodeToBuffer(oGroup, m_pEncodeBuffer + m_nEncodeSize);
        nIndex += 3;
        m_nEncodeSize += 4;
    }
}

void Base64Coder::_EncodeToBuffer(const TempBucket& oGroup, BYTE* pOut)
{
    TempBucket oValues;
    _EncodeRaw(oValues, oGroup);
    for (int n = 0; n < 4; ++n)
        pOut[n] = static_cast<BYTE>(Base64Alphabet[oValues.m_aData[n] & 0x3F]);
    if (oGroup.m_nSize == 1)
        pOut[2] = '=';
    if (oGroup.m_nSize == 1 || oGroup.m_nSize == 2)
        pOut[3] = '=';
}

void Base64Coder::_EncodeRaw(TempBucket& oOut, const TempBucket& oIn)
{
    const auto& [a, b, c, d] = oIn.m_aData;
    oOut.m_aData[0] = static_cast<BYTE>(a >> 2);
    oOut.m_aData[1] = static_cast<BYTE>((a << 4 | b >> 4) & 0x3F);
    oOut.m_aData[2] = static_cast<BYTE>((b << 2 | c >> 6) & 0x3F);
    oOut.m_aData[3] = static_cast<BYTE>(c & 0x3F);
}

void Base64Coder::Decode(BYTE* const pBuffer, unsigned long nLength)
{
    if (!m_Init)
        _Init();   // unguarded: hosts let the first Decode end before a second thread starts one
    SetEncodeBuffer(pBuffer, nLength);

    unsigned int nIndex = 0;
    const auto decodeRun = [&] {
        const auto nDone =
            BestRuns().Decode(m_pEncodeBuffer + nIndex, m_nEncodeSize - nIndex, m_pDecodeBuffer + m_nDecodeSize);
        nIndex += static_cast<unsigned int>(nDone);
        m_nDecodeSize += static_cast<unsigned int>(nDone / 4 * 3);
    };
    // A derived class may have changed the table, for all objects.
    const bool bRuns = IsOfTheClassItself(*this) && std::ranges::equal(m_DecodeTable, g_anBase64Values, {}, ToByte);
    if (bRuns)
    {
        // AllocDecode's work, but zeroing only what the run leaves.
        m_nDecodeSize = 0;
        MakeRoom(m_pDecodeBuffer, m_nDecodeCapacity, nLength);
        decodeRun();
        std::fill(m_pDecodeBuffer + m_nDecodeSize, m_pDecodeBuffer + m_nDecodeCapacity, BYTE{0});
    }
    else
        AllocDecode(nLength);

    while (nIndex < m_nEncodeSize)
    {
        const unsigned int nCount = std::min(m_nEncodeSize - nIndex, 4U);
        TempBucket oGroup;
        oGroup.m_nSize = static_cast<BYTE>(nCount);
        for (unsigned int n = 0; n < nCount; ++n)
            oGroup.m_aData[n] = ToByte(m_DecodeTable[m_pEncodeBuffer[nIndex + n]]);
        const unsigned int nBytes = CountBytes(oGroup);
        ClearPadding(oGroup);
        _DecodeToBuffer(oGroup, m_pDecodeBuffer + m_nDecodeSize);
        nIndex += nCount;
        m_nDecodeSize += nBytes;
        if (bRuns)
            decodeRun();
    }
}

unsigned long Base64Coder::_DecodeToBuffer(const TempBucket& oGroup, BYTE* pOut)
{
    TempBucket oBytes;
    _DecodeRaw(oBytes, oGroup);
    std::copy_n(oBytes.m_aData, 3, pOut);
    return static_cast<unsigned long>(std::count_if(pOut, pOut + 3, [](BYTE nByte) { return nByte != 0xFF; }));
}

void Base64Coder::_DecodeRaw(TempBucket& oOut, const TempBucket& oIn)
{
    const auto& [w, x, y, z] = oIn.m_aData;
    oOut.m_aData[0] = static_cast<BYTE>(w << 2 | (x >> 4 & 0x03));
    oOut.m_aData[1] = static_cast<BYTE>(x << 4 | (y >> 2 & 0x0F));
    oOut.m_aData[2] = static_cast<BYTE>(y << 6 | (z & 0x3F));
}
