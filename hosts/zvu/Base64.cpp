// zvu base64: codes bytes as Base64 text and back. The library codes files as wholes; standard input is coded here,
// block by block, so that it may be of any length.
#include "Command.h"
#include "System.h"

#include "ZevrinUtils/Base64Coder.h"

#include <cstdio>
#include <fstream>
#include <iostream>
#include <optional>
#include <stdexcept>

namespace
{
constexpr std::size_t nBlockSize = 196608;   // whole groups of three bytes, so that only the last block is padded

struct CodingOptions
{
    std::optional<std::string> strInput;   // standard input if there is none
    std::string strOutput;
};

// Opens up the coder's own test of characters, to find where the groups of a text begin.
class Filter : public Base64Coder
{
public:
    bool Skips(BYTE nChar) { return _IsBadMimeChar(nChar) != 0; }
};

// Hands standard input to take, block by block. A short block, which may be empty, is the last one; at a terminal,
// where more could be read behind the end, too.
template <class Take>
void ReadBlocks(Take take)
{
    std::vector<BYTE> oBlock(nBlockSize);
    while (oBlock.size() == nBlockSize)
    {
        oBlock.resize(std::fread(oBlock.data(), 1, nBlockSize, stdin));
        if (std::ferror(stdin))
            throw std::runtime_error("standard input cannot be read");
        take(oBlock);
    }
}

void Write(const char* pData, std::size_t nSize)
{
    // The coder makes no text of nothing.
    if (nSize != 0 && std::fwrite(pData, 1, nSize, stdout) != nSize)
        throw std::runtime_error("standard output cannot be written");
}

void EncodeStream()
{
    Base64Coder oCoder;
    bool bAny = false;
    ReadBlocks([&](std::vector<BYTE>& oBlock) {
        oCoder.Encode(oBlock.data(), static_cast<unsigned long>(oBlock.size()));
        Write(oCoder.EncodedMessage(), (oBlock.size() + 2) / 3 * 4);
        bAny = bAny || !oBlock.empty();
    });
    Write("\n", bAny ? 1 : 0);
}

void DecodeStream()
{
    Filter oFilter;
    Base64Coder oCoder;
    std::vector<BYTE> oPending;   // without what is skipped
    const auto decode = [&](std::size_t nSize) {
        oCoder.Decode(oPending.data(), static_cast<unsigned long>(nSize));
        Write(oCoder.DecodedMessage(), oCoder.GetDecodeDataSize());
        oPending.erase(oPending.begin(), oPending.begin() + static_cast<std::ptrdiff_t>(nSize));
    };
    ReadBlocks([&](const std::vector<BYTE>& oBlock) {
        std::copy_if(oBlock.begin(), oBlock.end(), std::back_inserter(oPending),
                     [&](BYTE nChar) { return !oFilter.Skips(nChar); });
        decode(oPending.size() / 4 * 4);
    });
    decode(oPending.size());
}

int CodeStandardStreams(void (*pfnCode)())
{
    MakeBinary(eStandardInput);
    MakeBinary(eStandardOutput);
    pfnCode();
    if (std::fflush(stdout) != 0)
        throw std::runtime_error("standard output cannot be written");
    return eSucceeded;
}

using CodeFiles = int (Base64Coder::*)(const char*, const char*);

int Code(const CodingOptions& oOptions, CodeFiles pfnCodeFiles, void (*pfnCodeStream)())
{
    if (!oOptions.strInput)
        return CodeStandardStreams(pfnCodeStream);
    Base64Coder oCoder;
    if ((oCoder.*pfnCodeFiles)(oOptions.strInput->c_str(), oOptions.strOutput.c_str()))
        return eSucceeded;
    const bool bReadable = std::ifstream(*oOptions.strInput).is_open();
    return Fail(bReadable ? oOptions.strOutput + " cannot be written" : *oOptions.strInput + " cannot be read");
}

int Encode(const CodingOptions& oOptions)
{
    return Code(oOptions, &Base64Coder::Encode, &EncodeStream);
}

int Decode(const CodingOptions& oOptions)
{
    return Code(oOptions, &Base64Coder::Decode, &DecodeStream);
}

void AddFiles(CLI::App& oCommand, CodingOptions& oOptions)
{
    auto* const pInput = oCommand.add_option("INPUT", oOptions.strInput, "File to read; standard input by default");
    auto* const pOutput =
        oCommand.add_option("OUTPUT", oOptions.strOutput, "File to write; standard output without INPUT");
    pInput->type_name("")->needs(pOutput->type_name(""));
}

void DefineBase64(CLI::App& oGroup, Action& action)
{
    oGroup.require_subcommand(1);
    const std::string strLargeFiles =
        "Of a file of 4 GiB or more only the length modulo 4 GiB is coded: give such a one "
        "as standard input.";
    auto& oEncode = AddCommand(oGroup, "encode", "Bytes to text, without line breaks",
                               "base64 encode picture.png picture.txt", strLargeFiles);
    AddFiles(oEncode, Runs(oEncode, action, &Encode));
    auto& oDecode = AddCommand(
        oGroup, "decode", "Text to bytes; any text decodes to something", "base64 decode picture.txt picture.png",
        "A text with line breaks in it comes from standard input: files are decoded in blocks of "
        "3072 characters,\neach by itself.\n" +
            strLargeFiles);
    AddFiles(oDecode, Runs(oDecode, action, &Decode));
}
const Command s_oBase64Command("base64", "Code bytes as Base64 text and back", "base64 encode picture.png picture.txt",
                               &DefineBase64);
}
