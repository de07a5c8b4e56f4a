// The Base64 coder: in memory against the copying and zeroing that its storage asks for and against OpenSSL, from
// file to file against coreutils. bench_encoding [MIB-OF-THE-FILE]
#include "RatioTable.h"

#include "ZevrinUtils/Base64Coder.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <random>

#include <openssl/evp.h>

namespace
{
using Bytes = std::vector<unsigned char>;

constexpr std::size_t nMiB = 1 << 20;
constexpr std::size_t nStorageStep = 4096;
constexpr int nFileRounds = 3;

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

double Nanoseconds(const std::function<bool()>& run)
{
    const auto nStart = std::chrono::steady_clock::now();
    if (!run())
    {
        std::cerr << "bench_encoding: a file cannot be coded\n";
        std::exit(1);
    }
    return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - nStart).count();
}

// A folder in memory if it has the room: a disk would be what is measured.
std::filesystem::path RoomFor(std::size_t nSize)
{
    std::error_code oIgnored;
    const auto oSpace = std::filesystem::space("/dev/shm", oIgnored);
    return !oIgnored && oSpace.available > nSize ? "/dev/shm" : std::filesystem::temp_directory_path();
}

// Library and peer in turn; the medians are compared.
void CompareFiles(RatioTable& oTable, const std::string& strCase, const std::function<bool()>& library,
                  const std::string& strPeerCommand)
{
    std::vector<double> oLibrary;
    std::vector<double> oPeer;
    for (int n = 0; n < nFileRounds; ++n)
    {
        oLibrary.push_back(Nanoseconds(library));
        oPeer.push_back(Nanoseconds([&] { return std::system(strPeerCommand.c_str()) == 0; }));
    }
    std::ranges::nth_element(oLibrary, oLibrary.begin() + nFileRounds / 2);
    std::ranges::nth_element(oPeer, oPeer.begin() + nFileRounds / 2);
    oTable.Add(strCase, "library", oLibrary[nFileRounds / 2]);
    oTable.Add(strCase, "peer", oPeer[nFileRounds / 2]);
    oTable.SetGoal(strCase, "at most 1");
}

void MeasureFiles(RatioTable& oTable, std::size_t nSizeMiB)
{
    const auto oFolder = RoomFor(4 * nSizeMiB * nMiB) / "zevrin-bench-encoding";
    std::filesystem::create_directories(oFolder);
    const std::string strPlain = oFolder / "plain";
    const std::string strText = oFolder / "text";
    const std::string strBack = oFolder / "back";
    {
        const Bytes oPiece = RandomBytes(nMiB);
        std::ofstream oFile(strPlain, std::ios::binary);
        for (std::size_t n = 0; n < nSizeMiB; ++n)
            oFile.write(reinterpret_cast<const char*>(oPiece.data()), static_cast<std::streamsize>(oPiece.size()));
    }
    Base64Coder oCoder;
    const std::string strSize = "file of " + std::to_string(nSizeMiB) + " MiB, against base64";
    CompareFiles(
        oTable, "encode " + strSize, [&] { return oCoder.Encode(strPlain.c_str(), strText.c_str()) == 1; },
        "base64 -w0 '" + strPlain + "' >'" + strText + "'");
    CompareFiles(
        oTable, "decode " + strSize, [&] { return oCoder.Decode(strText.c_str(), strBack.c_str()) == 1; },
        "base64 -d '" + strText + "' >'" + strBack + "'");
    std::filesystem::remove_all(oFolder);
}
}

int main(int nArguments, char** ppArguments)
{
    benchmark::Initialize(&nArguments, ppArguments);
    RatioTable oTable;
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
    MeasureFiles(oTable, nArguments > 1 ? std::strtoul(ppArguments[1], nullptr, 10) : Amount(1024));
    oTable.Print();
}
