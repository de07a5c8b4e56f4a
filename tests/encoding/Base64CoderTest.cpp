#include "ZevrinUtils/Base64Coder.h"

#include "fuzz/Base64Rules.h"
#include "platform/Files.h"
#include "support/ScratchFolder.h"
#include "support/Substitution.h"

#include <array>
#include <memory>
#include <random>
#include <utility>

#include <gtest/gtest.h>

namespace
{
struct OpenCoder : Base64Coder
{
    using Base64Coder::m_Init;
    using Base64Coder::m_nDecodeCapacity;
    using Base64Coder::m_nEncodeCapacity;

    std::pair<unsigned, unsigned> Capacities() const { return {m_nDecodeCapacity, m_nEncodeCapacity}; }
};

BYTE* BytesOf(std::string& strText)
{
    return reinterpret_cast<BYTE*>(strText.data());
}

std::string Encoded(Base64Coder& oCoder, std::string strPlain)
{
    oCoder.Encode(BytesOf(strPlain), static_cast<unsigned long>(strPlain.size()));
    return oCoder.EncodedMessage() ? oCoder.EncodedMessage() : "null";
}

std::string Decoded(Base64Coder& oCoder, std::string strText)
{
    oCoder.Decode(BytesOf(strText), static_cast<unsigned long>(strText.size()));
    return oCoder.DecodedMessage() ? std::string(oCoder.DecodedMessage(), oCoder.GetDecodeDataSize()) : "null";
}

using namespace std::string_literals;
const std::pair<std::string, std::string> s_aoEncoded[] = {
    {"", "null"}, {"A", "QQ=="}, {"AB", "QUI="}, {"ABC", "QUJD"}, {"\xFB\xFF\xBF", "+/+/"},
};
const std::pair<std::string, std::string> s_aoDecoded[] = {
    {"", "null"},       {"QQ==", "A"},         {"QUI=", "AB"},
    {"QUJD", "ABC"},    {"Q Q\r\n=\t=", "A"},  {"QQ", "A\0"s},
    {"QUI", "AB\0"s},   {"QQ=", "A\0\0"s},     {"Q", "@"},
    {"=", "\0"s},       {"==", "\0\0"s},       {"===", "\0\0\0"s},
    {"====", "\xFF"},   {"Q===", "C"},         {"QQ=Q", "A"},
    {"QQ==QQ==", "AA"}, {"QUJDQQ", "ABCA\0"s}, {"Q*==", "C"},
    {"QUJ*", "AB~"},    {"QUJ\0"s, "AB~"},     {"\xD1\xD5\xCA\xC4", "ABC"},
    {"QUJ\x80", "AB~"}, {"\xD1Q\xBD=", "A"},   {"\x0EUJD\x06", "\xF9\x42\x43\xF8"},
};

// Texts, with more or less in them of what is skipped, pads or is of no alphabet.
std::string RandomText(std::mt19937& oRandom)
{
    const std::string strKinds = "AZaz09+/\xC1\xDA\xE1\xFAQUJDQUJD \n\x07\x0D=\xBD*\0\x80"s;
    const std::size_t nKinds = std::array{8U, 20U, 24U, 29U}[oRandom() % 4];
    std::string strText(oRandom() % 400, 'Q');
    for (char& ch : strText)
        if (const auto n = oRandom() % 40; n < 10)
            ch = n == 0 ? static_cast<char>(oRandom()) : strKinds[oRandom() % nKinds];
    return strText;
}
}

TEST(Base64Coder, CodesTheDocumentedTexts)
{
    for (const auto& [strPlain, strText] : s_aoEncoded)
        EXPECT_EQ(Encoded(*std::make_unique<Base64Coder>(), strPlain), strText);
    for (const auto& [strText, strPlain] : s_aoDecoded)
        EXPECT_EQ(Decoded(*std::make_unique<Base64Coder>(), strText), strPlain) << strText;

    Base64Coder oCoder;
    EXPECT_EQ(Encoded(oCoder, std::string(57, 'A') + "B").substr(72), "QUFBQg==");
    EXPECT_EQ(oCoder.GetDecodeDataSize(), 58u);
    EXPECT_EQ(Encoded(oCoder, ""), "");
    for (const auto& [strText, chBehind] : {std::pair("QR==", '\x10'), {"QUJ=", '\x40'}, {"====", '\xF0'}})
        EXPECT_EQ(oCoder.DecodedMessage()[Decoded(oCoder, strText).size()], chBehind);
}

// Also in vectors: runs are of all lengths, and begin and end anywhere in them.
TEST(Base64Coder, KeepsItsRulesForAnyBytes)
{
    std::mt19937 oRandom(20);
    for (int n = 0; n < 20000 && !HasFailure(); ++n)
    {
        std::string strText = RandomText(oRandom);
        EXPECT_EQ(FaultInDecoding(BytesOf(strText), strText.size()), "") << testing::PrintToString(strText);
        EXPECT_EQ(FaultInEncoding(BytesOf(strText), strText.size()), "") << testing::PrintToString(strText);
    }
}

TEST(Base64Coder, GrowsItsSidesInStepsOf4096AboveTheSizeAndSharesThemWithACopy)
{
    using Capacities = std::pair<unsigned, unsigned>;
    OpenCoder oCoder;
    oCoder.AllocDecode(0);
    EXPECT_EQ(oCoder.Capacities(), Capacities(0, 0));
    oCoder.AllocDecode(4095);
    EXPECT_EQ(oCoder.Capacities(), Capacities(4096, 0));
    Encoded(oCoder, std::string(4096, 'x'));   // which fits, and twice of it asks for more
    EXPECT_EQ(oCoder.Capacities(), Capacities(4096, 12288));
    EXPECT_EQ(Decoded(oCoder, "QQ=="), "A");
    EXPECT_EQ(OpenCoder::m_Init, 1);
    EXPECT_EQ(oCoder.Capacities(), Capacities(4096, 12288));
    EXPECT_EQ(std::string(oCoder.EncodedMessage() + 4, 12288 - 4), std::string(12288 - 4, 0));

    auto* const pCopy = new OpenCoder(oCoder);   // never destroyed: its source frees what both hold
    EXPECT_EQ(pCopy->DecodedMessage(), oCoder.DecodedMessage());
    ::operator delete(pCopy);
    EXPECT_THROW(oCoder.SetDecodeBuffer(nullptr, ~0UL), std::bad_alloc);   // its size would wrap
}

// One that replaces steps on both sides, and counts how often one of them is asked for.
struct DashCoder : Base64Coder
{
    int m_nGroups = 0;

    void _EncodeRaw(TempBucket& oOut, const TempBucket&) override { oOut.m_aData[++m_nGroups % 4] = 1; }
    void _DecodeRaw(TempBucket& oOut, const TempBucket&) override { oOut.m_aData[++m_nGroups % 3] = '#'; }
    int _IsBadMimeChar(BYTE nChar) override { return nChar == '-'; }
    void Encode(BYTE* const, unsigned long) override { ADD_FAILURE() << "asked by a file operation"; }
    using Base64Coder::Encode;
};

TEST(Base64Coder, AsksADerivedClassForEachStepButNotForTheBlocksOfAFile)
{
    DashCoder oCoder;
    EXPECT_EQ(Decoded(oCoder, "QU-JD-" + std::string(396, 'B')).substr(0, 6), "\0#\0\0\0#"s);
    const ScratchFolder oFolder;
    ScratchFolder::Write(oFolder / "in", std::string(4500, 'A'));
    EXPECT_EQ(oCoder.Encode((oFolder / "in").c_str(), (oFolder / "out").c_str()), 1);
    EXPECT_EQ(ScratchFolder::Read(oFolder / "out").substr(0, 8), "ABAAAABA");
    EXPECT_EQ(oCoder.m_nGroups, 100 + 1500);
}

TEST(Base64Coder, CodesFilesBlockByBlock)
{
    const ScratchFolder oFolder;
    const std::string strIn = oFolder / "in", strText = oFolder / "text", strBack = oFolder / "back";
    Base64Coder oCoder, oMemory;
    for (const std::size_t nSize : {0, 1, 3071, 3072, 3073, 10000})
    {
        std::string strPlain(nSize, 'A');
        for (std::size_t n = 0; n < nSize; ++n)
            strPlain[n] = static_cast<char>(n * n / 7);
        ScratchFolder::Write(strIn, strPlain);
        EXPECT_EQ(oCoder.Encode(strIn.c_str(), strText.c_str()), 1);
        EXPECT_EQ(ScratchFolder::Read(strText), nSize ? Encoded(oMemory, strPlain) : "");
        EXPECT_EQ(oCoder.Decode(strText.c_str(), strBack.c_str()), 1);
        EXPECT_EQ(ScratchFolder::Read(strBack), strPlain);
    }
    EXPECT_EQ(oCoder.GetDecodeDataSize(), Decoded(oMemory, ScratchFolder::Read(strText).substr(12288)).size());

    // Each block is filtered and ended for itself, so the second is out of step with a text that has a line end.
    const std::string strLines = "\n" + std::string(4000, 'Q');
    ScratchFolder::Write(strText, strLines);
    EXPECT_EQ(oCoder.Decode(strText.c_str(), strBack.c_str()), 1);
    EXPECT_EQ(ScratchFolder::Read(strBack),
              Decoded(oMemory, strLines.substr(0, 3072)) + Decoded(oMemory, strLines.substr(3072)));

    EXPECT_EQ(oCoder.Encode((oFolder / "missing").c_str(), strIn.c_str()), 0);
    EXPECT_EQ(ScratchFolder::Read(strIn).size(), 10000u);
    EXPECT_EQ(oCoder.Encode(strIn.c_str(), (oFolder / "no\\folder").c_str()), 0);
}

// Reads and writes in turn, of which each is the first to fail.
TEST(Base64Coder, KeepsWhatWasWrittenBeforeAFailure)
{
    static int s_nLeft;
    static const auto& s_oNative = PlatformService<FileCalls>::s_oNative;
    const Substitution<FileCalls> oFailing([](FileCalls& o) {
        o.ReadFile = [](HANDLE hFile, LPVOID pBuffer, DWORD nCount, LPDWORD pnDone, LPOVERLAPPED p) WINAPI -> BOOL {
            return s_nLeft-- > 0 && s_oNative.ReadFile(hFile, pBuffer, nCount, pnDone, p);
        };
        o.WriteFile = [](HANDLE hFile, LPCVOID pData, DWORD nCount, LPDWORD pnDone, LPOVERLAPPED p) WINAPI -> BOOL {
            return s_nLeft-- > 0 && s_oNative.WriteFile(hFile, pData, nCount, pnDone, p);
        };
    });
    const ScratchFolder oFolder;
    ScratchFolder::Write(oFolder / "in", std::string(9216, 'A'));
    for (int nCalls = 0; nCalls <= 6; ++nCalls)
    {
        s_nLeft = nCalls;
        EXPECT_EQ(Base64Coder().Encode((oFolder / "in").c_str(), (oFolder / "out").c_str()), nCalls == 6);
        EXPECT_EQ(ScratchFolder::Read(oFolder / "out").size(), unsigned(nCalls) / 2 * 4096);
    }
}
