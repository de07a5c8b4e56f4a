// The Base64 coder: in memory against the copying and zeroing that its storage asks for and against OpenSSL, from
// file to file against coreutils: bench_encoding [FOLDER TO WORK IN [MIB OF THE FILE]]
#include "Bench.h"

#include "ZevrinUtils/Base64Coder.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <random>

#include <openssl/evp.h>

namespace
{
using Bytes = std::vector<unsigned char>;

constexpr std::size_t nMiB = 1 << 20;
constexpr std::size_t nStorageStep = 4096;
constexpr int nFileRounds = 4;

Bytes RandomBytes(std::size_t nSize)
{
    Bytes oBytes(nSize);
    std::mt19937 oRandom(1);   // the same bytes in every run
    std::generate(oBytes.begin(), oBytes.end(), [&] { return static_cast<unsigned char>(oRandom()); });
    return oBytes;
}

Bytes TextOf(Bytes& oPlain)
{
    Base64Coder oCoder;
    oCoder.Encode(oPlain.data(), oPlain.size());
    const char* const pszText = oCoder.EncodedMessage();
    return {pszText, pszText + std::strlen(pszText)};
}

void RegisterOne(const std::string& strName, std::function<void()> code)
{
    benchmark::RegisterBenchmark(strName.c_str(), [code = std::move(code)](benchmark::State& oState) {
        for (auto _ : oState)
        {
            code();
            benchmark::ClobberMemory();
        }
    })->UseRealTime();
}

// The measure: the input copied to one side, and all of both zeroed. The library spares itself the zeroing of what
// it writes over.
std::function<void()> CopyAndZero(Bytes& oInput, std::size_t nOtherSide)
{
    const auto pSide = std::make_shared<Bytes>(oInput.size() + nStorageStep);
    const auto pOther = std::make_shared<Bytes>(nOtherSide + nStorageStep);
    return [=, &oInput] {
        std::memset(pSide->data(), 0, pSide->size());
        benchmark::DoNotOptimize(pSide->data());   // not even if it is all written over
        benchmark::ClobberMemory();
        std::memcpy(pSide->data(), oInput.data(), oInput.size());
        std::memset(pOther->data(), 0, pOther->size());
        benchmark::DoNotOptimize(pSide->data());
        benchmark::DoNotOptimize(pOther->data());
    };
}

void RegisterCase(RatioTable& oTable, const std::string& strCase, const std::function<void()>& library,
                  const std::function<void()>& peer, const std::string& strGoal)
{
    RegisterOne(strCase + "/library", library);
    RegisterOne(strCase + "/peer", peer);
    oTable.SetGoal(strCase, strGoal);
}

void RegisterMemory(RatioTable& oTable, std::size_t nSize, Bytes& oPlain, Bytes& oText)
{
    const auto pCoder = std::make_shared<Base64Coder>();
    const auto pOut = std::make_shared<Bytes>(2 * nSize);
    const auto nPlain = static_cast<int>(oPlain.size());
    const auto nText = static_cast<int>(oText.size());
    const std::string strSize = std::to_string(nSize / nMiB) + " MiB, against ";
    const auto encode = [=, &oPlain] { pCoder->Encode(oPlain.data(), oPlain.size()); };
    const auto decode = [=, &oText] { pCoder->Decode(oText.data(), oText.size()); };

    RegisterCase(oTable, "encode " + strSize + "copying and zeroing", encode, CopyAndZero(oPlain, 2 * nSize),
                 "at most 1.67");
    RegisterCase(oTable, "decode " + strSize + "copying and zeroing", decode, CopyAndZero(oText, oText.size()),
                 "at most 1.67");
    RegisterCase(
        oTable, "encode " + strSize + "OpenSSL", encode,
        [=, &oPlain] { EVP_EncodeBlock(pOut->data(), oPlain.data(), nPlain); }, "below 1");
    RegisterCase(
        oTable, "decode " + strSize + "OpenSSL", decode,
        [=, &oText] { EVP_DecodeBlock(pOut->data(), oText.data(), nText); }, "below 1");
}

void CompareFiles(RatioTable& oTable, const ScratchFolder& oFolder, std::size_t nSizeMiB)
{
    const std::string strPlain = oFolder / "plain";
    const std::string strText = oFolder / "text";
    const std::string strBack = oFolder / "back";
    {
        const Bytes oPiece = RandomBytes(nMiB);
        std::ofstream oFile(strPlain, std::ios::binary);
        for (std::size_t n = 0; n < nSizeMiB; ++n)
            oFile.write(reinterpret_cast<const char*>(oPiece.data()), static_cast<std::streamsize>(oPiece.size()));
        Require(oFile.flush().good(), "no room for the file to encode");
    }
    Base64Coder oCoder;
    const std::string strSize = "file of " + std::to_string(nSizeMiB) + " MiB, against base64";
    oTable.Compare(
        {{"encode " + strSize, "at most 1",
          [&] { Require(oCoder.Encode(strPlain.c_str(), strText.c_str()) == 1, "a file cannot be encoded"); },
          [&] { RunCommand("base64 -w0 '" + strPlain + "' >'" + strText + "'"); }},
         {"decode " + strSize, "at most 1",
          [&] { Require(oCoder.Decode(strText.c_str(), strBack.c_str()) == 1, "a file cannot be decoded"); },
          [&] { RunCommand("base64 -d '" + strText + "' >'" + strBack + "'"); }}},
        nFileRounds);
}
}

void Measure(RatioTable& oTable, const std::vector<std::string>& oArguments)
{
    const std::size_t anSizes[] = {nMiB, 8 * nMiB, 64 * nMiB};
    std::vector<std::pair<Bytes, Bytes>> oInputs;
    oInputs.reserve(std::size(anSizes));   // they are referred to
    for (const std::size_t nSize : anSizes)
    {
        Bytes oPlain = RandomBytes(nSize);
        Bytes oText = TextOf(oPlain);
        auto& [oKeptPlain, oKeptText] = oInputs.emplace_back(std::move(oPlain), std::move(oText));
        RegisterMemory(oTable, nSize, oKeptPlain, oKeptText);
    }
    benchmark::RunSpecifiedBenchmarks(&oTable);
    CompareFiles(oTable, ScratchFolder(oArguments),
                 oArguments.size() > 1 ? std::strtoul(oArguments[1].c_str(), nullptr, 10) : Amount(1024));
}
