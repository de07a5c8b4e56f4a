// The coder keeps its alphabet and its odd paddings, its steps for derived classes, and what is written before a
// failure.
#include "ZevrinUtils/Base64Coder.h"
#include "ZevrinUtils/framework/Exception.h"

#include "fuzz/Rules.h"
#include "platform/Files.h"
#include "platform/Handles.h"
#include "support/FaultSweep.h"
#include "support/ScratchFolder.h"

#include <array>
#include <memory>
#include <random>
#include <utility>

#include <gmock/gmock.h>

namespace
{
struct OpenCoder : Base64Coder
{
    using Base64Coder::m_DecodeTable;

    std::pair<unsigned, unsigned> Capacities() const { return {m_nDecodeCapacity, m_nEncodeCapacity}; }
};

BYTE* BytesOf(std::string& strText)
{
    return reinterpret_cast<BYTE*>(strText.data());
}

std::string Encoded(Base64Coder& oCoder, std::string strPlain)
{
    oCoder.Encode(BytesOf(strPlain), static_cast<unsigned long>(strPlain.size()));
    return oCoder.EncodedMessage();
}

std::string Decoded(Base64Coder& oCoder, std::string strText)
{
    oCoder.Decode(BytesOf(strText), static_cast<unsigned long>(strText.size()));
    return oCoder.DecodedMessage() ? std::string(oCoder.DecodedMessage(), oCoder.GetDecodeDataSize()) : "null";
}

using namespace std::string_literals;
const std::pair<std::string, std::string> s_aoDecoded[] = {
    {"", "null"},       {"QQ==", "A"},         {"QUI=", "AB"},    {"QUJD", "ABC"}, {"Q Q\r\n=\t=", "A"},
    {"QQ", "A\0"s},     {"QUI", "AB\0"s},      {"QQ=", "A\0\0"s}, {"Q", "@"},      {"=", "\0"s},
    {"==", "\0\0"s},    {"===", "\0\0\0"s},    {"====", "\xFF"},  {"Q===", "C"},   {"QQ=Q", "A"},
    {"QQ==QQ==", "AA"}, {"QUJDQQ", "ABCA\0"s}, {"Q*==", "C"},     {"QUJ*", "AB~"}, {"QUJ\0"s, "AB~"},
    {"QUJ\x80", "AB~"}, {"\xD1Q\xBD=", "A"},
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
    for (const auto& [strText, strPlain] : s_aoDecoded)
        EXPECT_EQ(Decoded(*std::make_unique<Base64Coder>(), strText), strPlain) << strText;

    Base64Coder oCoder;
    EXPECT_EQ(Encoded(oCoder, "A") + Encoded(oCoder, "AB") + Encoded(oCoder, "\xFB\xFF\xBF"), "QQ==QUI=+/+/");
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
        EXPECT_EQ(FaultInBase64Decoding(BytesOf(strText), strText.size()), "") << testing::PrintToString(strText);
        EXPECT_EQ(FaultInBase64Encoding(BytesOf(strText), strText.size()), "") << testing::PrintToString(strText);
    }
}

TEST(Base64Coder, GrowsItsSidesInStepsOf4096AboveTheSizeAndSharesThemWithACopy)
{
    OpenCoder oCoder;
    Encoded(oCoder, std::string(4096, 'x'));
    EXPECT_EQ(Decoded(oCoder, "QQ=="), "A");
    EXPECT_EQ(oCoder.Capacities(), std::pair(8192U, 12288U));

    auto* const pCopy = new OpenCoder(oCoder);   // never destroyed: its source frees what both hold
    EXPECT_EQ(pCopy->DecodedMessage(), oCoder.DecodedMessage());
    ::operator delete(pCopy);
    EXPECT_THROW(oCoder.AllocDecode(0xFFFFF000), std::bad_alloc);   // its capacity would wrap
    EXPECT_THROW(oCoder.Encode(nullptr, 0x80000000), std::bad_alloc);

    std::swap(OpenCoder::m_DecodeTable[+'A'], OpenCoder::m_DecodeTable[+'B']);   // for all objects
    EXPECT_EQ(Decoded(*std::make_unique<Base64Coder>(), std::string(80, 'B')), std::string(60, '\0'));
    std::swap(OpenCoder::m_DecodeTable[+'A'], OpenCoder::m_DecodeTable[+'B']);
}

// One that replaces the steps on both sides, and counts how often each of them is asked for.
struct DashCoder : Base64Coder
{
    using Base = Base64Coder;
    using Base::Decode, Base::Encode;
    mutable std::array<int, 12> m_anAsked{};
    int Ask(unsigned nStep) const { return ++m_anAsked[nStep]; }

    int _IsBadMimeChar(BYTE nChar) override { return nChar == '-'; }
    void _EncodeRaw(TempBucket& oOut, const TempBucket&) override { oOut.m_aData[Ask(0) % 4] = 1; }
    void _DecodeRaw(TempBucket& oOut, const TempBucket&) override { oOut.m_aData[Ask(1) % 3] = '#'; }
    void _EncodeToBuffer(const TempBucket& o, BYTE* p) override { Ask(2), Base::_EncodeToBuffer(o, p); }
    unsigned long _DecodeToBuffer(const TempBucket& o, BYTE* p) override { return Ask(3), Base::_DecodeToBuffer(o, p); }
    void AllocEncode(unsigned long n) override { Ask(4), Base::AllocEncode(n); }
    void AllocDecode(unsigned long n) override { Ask(5), Base::AllocDecode(n); }
    void SetEncodeBuffer(BYTE* const p, unsigned long n) override { Ask(6), Base::SetEncodeBuffer(p, n); }
    void SetDecodeBuffer(BYTE* const p, unsigned long n) override { Ask(7), Base::SetDecodeBuffer(p, n); }
    const char* EncodedMessage() const override { return Ask(8), Base::EncodedMessage(); }
    const char* DecodedMessage() const override { return Ask(9), Base::DecodedMessage(); }
    void Encode(BYTE* const p, unsigned long n) override { Ask(10), Base::Encode(p, n); }
    void Decode(BYTE* const p, unsigned long n) override { Ask(11), Base::Decode(p, n); }
};

TEST(Base64Coder, AsksADerivedClassForEachStepButNotForTheBlocksOfAFile)
{
    DashCoder oCoder;
    EXPECT_EQ(Decoded(oCoder, "QU-JD-" + std::string(396, 'B')).substr(0, 6), "\0#\0\0\0#"s);
    const ScratchFolder oFolder;
    ScratchFolder::Write(oFolder / "in", std::string(4500, 'A'));
    EXPECT_EQ(oCoder.Encode((oFolder / "in").c_str(), (oFolder / "out").c_str()), 1);
    EXPECT_EQ(ScratchFolder::Read(oFolder / "out").substr(0, 8), "ABAAAABA");
    EXPECT_EQ(oCoder.Decode((oFolder / "out").c_str(), (oFolder / "in").c_str()), 1);
    EXPECT_EQ(oCoder.m_anAsked, (std::array{1500, 1600, 1500, 1600, 5, 5, 3, 2, 2, 4, 0, 1}));
}

// Each block is filtered and ended for itself, so the second is out of step with a text that has a line end.
TEST(Base64Coder, CodesFilesBlockByBlock)
{
    const ScratchFolder oFolder;
    const std::string strIn = oFolder / "in", strOut = oFolder / "out";
    Base64Coder oCoder, oMemory;
    for (const std::string& strText : {""s, "\n" + std::string(3071, 'Q'), "\n" + std::string(4000, 'Q')})
    {
        ScratchFolder::Write(strIn, strText);
        EXPECT_EQ(oCoder.Decode(strIn.c_str(), strOut.c_str()), 1);
        const std::string strFirst = Decoded(oMemory, strText.substr(0, 3072));
        const std::string strRest = strText.size() > 3072 ? Decoded(oMemory, strText.substr(3072)) : "";
        EXPECT_EQ(ScratchFolder::Read(strOut), strText.empty() ? "" : strFirst + strRest);
        EXPECT_EQ(oCoder.GetDecodeDataSize(), oMemory.GetDecodeDataSize());
        EXPECT_EQ(oCoder.Encode(strIn.c_str(), strOut.c_str()), 1);
        EXPECT_EQ(ScratchFolder::Read(strOut), strText.empty() ? "" : Encoded(oMemory, strText));
    }
    EXPECT_EQ(oCoder.Encode(strIn.c_str(), (oFolder / "no\\folder").c_str()), 0);
    EXPECT_EQ(oCoder.Encode((oFolder / "missing").c_str(), strIn.c_str()), 0);
    EXPECT_EQ(ScratchFolder::Read(strIn).size(), 4001u);   // as it was
}

TEST(Base64Coder, KeepsWhatWasWrittenBeforeAFailure)
{
    const ScratchFolder oFolder;
    ScratchFolder::Write(oFolder / "in", std::string(9216, 'A'));
    // -1: it throws.
    const auto encode = [&] {
        try
        {
            return Base64Coder().Encode((oFolder / "in").c_str(), (oFolder / "out").c_str());
        }
        catch (CFileException* pError)
        {
            return pError->Delete(), -1;
        }
    };
    const auto watch = [](FileCalls& o) {
        FaultSweep::Watch<&FileCalls::GetFileSizeEx>(o, "GetFileSizeEx", FALSE);
        FaultSweep::Watch<&FileCalls::ReadFile>(o, "ReadFile", FALSE);
        FaultSweep::Watch<&FileCalls::WriteFile>(o, "WriteFile", FALSE);
    };
    const Substitution<HandleCalls> oHandles(
        [](HandleCalls& o) { FaultSweep::Watch<&HandleCalls::CloseHandle>(o, "CloseHandle", FALSE, true); });
    const int nCalls = FaultSweep::Over<FileCalls>(watch, [&] {
        std::map<std::string, int> oResults{{"", 1}, {"GetFileSizeEx", -1}, {"CloseHandle", -1}};
        const int nResult = encode();
        EXPECT_EQ(nResult, oResults[FaultSweep::s_strStruck]);
        EXPECT_EQ(int(ScratchFolder::Read(oFolder / "out").size()), 4096 * FaultSweep::s_oDone["WriteFile"]);
    });
    EXPECT_EQ(nCalls, 1 + 3 + 3 + 2);
    const Substitution oHuge(&FileCalls::GetFileSizeEx, [](HANDLE, PLARGE_INTEGER pnSize) WINAPI -> BOOL {
        return pnSize->QuadPart = (1LL << 32) + 9216, TRUE;   // of which the low half counts
    });
    EXPECT_EQ(encode(), 1);
}
