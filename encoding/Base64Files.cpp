// The file operations of Base64Coder: block by block, each coded by itself.
#include "ZevrinUtils/Base64Coder.h"

#include "framework/File.h"

namespace
{
struct Side
{
    const char* pData;
    unsigned int nSize;
};

// False if it throws an exception of the framework, which is left behind.
template <class Body>
bool Try(Body body)
{
    try
    {
        body();
        return true;
    }
    catch (CException*)
    {
        return false;
    }
}

// Coding goes through codeBlock, which is given a block, and takeSide, which gives what came of it. Only reading
// and writing are guarded; what the rest throws is the caller's.
template <class Code, class Take>
int CodeFile(const char* pszInputFile, const char* pszOutputFile, BYTE*& pBlock, unsigned int nMost, Code codeBlock,
             Take takeSide)
{
    CFileException oError;   // nobody asks for the reason
    CFile oInput;
    CFile oOutput;
    if (!oInput.Open(pszInputFile, CFile::modeRead, &oError) ||
        !oOutput.Open(pszOutputFile, CFile::modeCreate | CFile::modeWrite, &oError))
        return 0;

    const auto nLength = static_cast<unsigned int>(oInput.GetLength());   // modulo 4 GiB
    // Never ends if the file is cut short meanwhile: Read then gives 0 for ever.
    for (unsigned long long nOffset = 0; nOffset < nLength;)
    {
        if (!pBlock)
            pBlock = new BYTE[nMost];
        unsigned int nRead = 0;
        if (!Try([&] { nRead = oInput.Read(pBlock, nMost); }))
            return 0;
        nOffset += nRead;
        codeBlock(pBlock, nRead);
        const auto write = [&] {
            const Side oSide = takeSide();
            oOutput.Write(oSide.pData, oSide.nSize);
        };
        if (!Try(write))
            return 0;
    }
    oInput.Close();
    oOutput.Close();
    return 1;
}
}

// Both call this class's own coding of a block, also for an object whose class has one of its own.
int Base64Coder::Encode(const char* pszInputFile, const char* pszOutputFile)
{
    const auto code = [this](BYTE* pBlock, unsigned int nSize) { Base64Coder::Encode(pBlock, nSize); };
    const auto result = [this]() -> Side { return {EncodedMessage(), m_nEncodeSize}; };
    return CodeFile(pszInputFile, pszOutputFile, m_pBlockBuffer, m_nBlockSize, code, result);
}

int Base64Coder::Decode(const char* pszInputFile, const char* pszOutputFile)
{
    const auto code = [this](BYTE* pBlock, unsigned int nSize) { Base64Coder::Decode(pBlock, nSize); };
    const auto result = [this]() -> Side { return {DecodedMessage(), m_nDecodeSize}; };
    return CodeFile(pszInputFile, pszOutputFile, m_pBlockBuffer, m_nBlockSize, code, result);
}
