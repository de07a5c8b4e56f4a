// Runs in the vectors of x86 processors. The processor is asked at run time which of them it has, because the library
// itself is built for any.
#include "encoding/Runs.h"

#include "encoding/Base64Table.h"

#include <array>
#include <cstdint>

#include <immintrin.h>

#define FOR_VBMI __attribute__((target("avx512f,avx512bw,avx512vbmi")))
#define FOR_AVX2 __attribute__((target("avx2")))

namespace
{
template <std::size_t nSize, class Make>
constexpr std::array<unsigned char, nSize> MakeBytes(Make make)
{
    std::array<unsigned char, nSize> anBytes{};
    for (unsigned int n = 0; n < nSize; ++n)
        anBytes[n] = static_cast<unsigned char>(make(n));
    return anBytes;
}

// Factors that put the six-bit values of a group side by side: first two and two, then both halves.
constexpr int nJoinPairs = 0x01400140;
constexpr int nJoinHalves = 0x00011000;

// The bytes b, a, c, b for each group a, b, c: now each value lies within 16 bits of its own.
constexpr unsigned int Spread(unsigned int n)
{
    return n / 4 * 3 + (n % 4 == 1 ? 0 : n % 4 == 2 ? 2 : 1);
}

// 64 characters at a time.
namespace vbmi
{
constexpr std::size_t nText = 64;
constexpr std::size_t nPlain = 48;
constexpr std::uint64_t nPlainMask = (std::uint64_t{1} << nPlain) - 1;

constexpr auto s_anSpread = MakeBytes<64>(&Spread);
// The bits by which each value of two groups is to be shifted down.
constexpr auto s_anShift = MakeBytes<64>([](unsigned n) { return std::array{10, 4, 22, 16, 42, 36, 54, 48}[n % 8]; });
// The three bytes of each 32-bit number, highest first.
constexpr auto s_anPack = MakeBytes<64>([](unsigned n) { return n < nPlain ? n / 3 * 4 + 2 - n % 3 : 0; });
// The values of 7-bit characters, the top bit telling padding and nothing else.
constexpr auto s_anValues = MakeBytes<128>(
    [](unsigned n) { return g_anBase64Values[n] == nOtherValue ? nOtherValue & 0x3F : g_anBase64Values[n]; });

// A full mask, because GCC 12 warns that its own unmasked form reads an unset vector.
constexpr __mmask64 nAll = ~__mmask64{0};

FOR_VBMI __m512i Pick(__m512i vPlaces, __m512i vFrom)
{
    return _mm512_maskz_permutexvar_epi8(nAll, vPlaces, vFrom);
}

FOR_VBMI std::size_t Encode(const unsigned char* pPlain, std::size_t nSize, unsigned char* pText)
{
    const __m512i vSpread = _mm512_loadu_si512(s_anSpread.data());
    const __m512i vShift = _mm512_loadu_si512(s_anShift.data());
    const __m512i vAlphabet = _mm512_loadu_si512(Base64Alphabet);
    std::size_t nDone = 0;
    for (; nSize - nDone >= nText; nDone += nPlain, pText += nText)   // it loads more than it codes
    {
        const __m512i vGroups = Pick(vSpread, _mm512_loadu_si512(pPlain + nDone));
        const __m512i vValues =
            _mm512_maskz_multishift_epi64_epi8(nAll, vShift, vGroups);   // the lookup takes six bits
        _mm512_storeu_si512(pText, Pick(vValues, vAlphabet));
    }
    return nDone + g_oPlainRuns.Encode(pPlain + nDone, nSize - nDone, pText);
}

FOR_VBMI std::size_t Decode(const unsigned char* pText, std::size_t nSize, unsigned char* pPlain)
{
    const __m512i vLowValues = _mm512_loadu_si512(s_anValues.data());
    const __m512i vHighValues = _mm512_loadu_si512(s_anValues.data() + 64);
    const __m512i vPack = _mm512_loadu_si512(s_anPack.data());
    std::size_t nDone = 0;
    for (; nSize - nDone >= nText; nDone += nText, pPlain += nPlain)
    {
        // The lookup takes the low seven bits of a character.
        const __m512i vValues = _mm512_permutex2var_epi8(vLowValues, _mm512_loadu_si512(pText + nDone), vHighValues);
        if (_mm512_movepi8_mask(vValues))
            break;
        const __m512i vPairs = _mm512_maddubs_epi16(vValues, _mm512_set1_epi32(nJoinPairs));
        const __m512i vGroups = _mm512_madd_epi16(vPairs, _mm512_set1_epi32(nJoinHalves));
        _mm512_mask_storeu_epi8(pPlain, nPlainMask, Pick(vPack, vGroups));
    }
    return nDone + g_oPlainRuns.Decode(pText + nDone, nSize - nDone, pPlain);
}
}

// 32 characters at a time.
namespace avx2
{
constexpr std::size_t nText = 32;
constexpr std::size_t nPlain = 24;

// Both halves of a vector are shuffled alike.
template <class Make>
constexpr std::array<unsigned char, 32> MakeHalves(Make make)
{
    return MakeBytes<32>([&](unsigned n) { return make(n % 16); });
}

constexpr auto s_anSpread = MakeHalves(&Spread);
constexpr auto s_anPack = MakeHalves([](unsigned n) { return n < 12 ? n / 3 * 4 + 2 - n % 3 : 0x80; });
// The number that makes a value a character, by range: small letters, ten digits, '+', '/', capitals.
constexpr auto s_anAdded = MakeHalves([](unsigned n) {
    return n == 0 ? 'a' - 26 : n <= 10 ? '0' - 52 : n == 11 ? '+' - 62 : n == 12 ? '/' - 63 : 'A';
});

FOR_AVX2 __m256i Load(const unsigned char* p)
{
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
}

// Loads 24 bytes, 12 into each half.
FOR_AVX2 __m256i LoadPlain(const unsigned char* p)
{
    const auto* const pLow = reinterpret_cast<const __m128i*>(p);
    const auto* const pHigh = reinterpret_cast<const __m128i*>(p + nPlain / 2);
    return _mm256_inserti128_si256(_mm256_castsi128_si256(_mm_loadu_si128(pLow)), _mm_loadu_si128(pHigh), 1);
}

FOR_AVX2 void Store(unsigned char* p, __m256i v)
{
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), v);
}

// All bits of the bytes that are at most so much, unsigned.
FOR_AVX2 __m256i AtMost(__m256i v, unsigned char nMost)
{
    return _mm256_cmpeq_epi8(_mm256_min_epu8(v, _mm256_set1_epi8(static_cast<char>(nMost))), v);
}

FOR_AVX2 std::size_t Encode(const unsigned char* pPlain, std::size_t nSize, unsigned char* pText)
{
    const __m256i vSpread = Load(s_anSpread.data());
    const __m256i vAdded = Load(s_anAdded.data());
    std::size_t nDone = 0;
    for (; nSize - nDone >= nText; nDone += nPlain, pText += nText)   // it loads more than it codes
    {
        const __m256i vGroups = _mm256_shuffle_epi8(LoadPlain(pPlain + nDone), vSpread);
        // Shifted down and up by multiplying: the first and third value of each group, the second and fourth.
        const __m256i vOdd =
            _mm256_mulhi_epu16(_mm256_and_si256(vGroups, _mm256_set1_epi32(0x0FC0FC00)), _mm256_set1_epi32(0x04000040));
        const __m256i vEven =
            _mm256_mullo_epi16(_mm256_and_si256(vGroups, _mm256_set1_epi32(0x003F03F0)), _mm256_set1_epi32(0x01000010));
        const __m256i vValues = _mm256_or_si256(vOdd, vEven);
        // 0 for capitals and small letters, 1 to 12 above them; then 13 for capitals.
        const __m256i vAboveLetters = _mm256_subs_epu8(vValues, _mm256_set1_epi8(51));
        const __m256i vCapitals = _mm256_and_si256(AtMost(vValues, 25), _mm256_set1_epi8(13));
        const __m256i vRanges = _mm256_or_si256(vAboveLetters, vCapitals);
        Store(pText, _mm256_add_epi8(vValues, _mm256_shuffle_epi8(vAdded, vRanges)));
    }
    return nDone + g_oPlainRuns.Encode(pPlain + nDone, nSize - nDone, pText);
}

// Gives the characters of a range (so many from the first on) their values, which start at a number of their own;
// leaves the other values as they are.
FOR_AVX2 __m256i TakeRange(__m256i vValues, __m256i vText, char chFirst, unsigned char nCount, char nFirstValue)
{
    const __m256i vPlaces = _mm256_sub_epi8(vText, _mm256_set1_epi8(chFirst));
    const __m256i vOfRange = _mm256_add_epi8(vPlaces, _mm256_set1_epi8(nFirstValue));
    return _mm256_blendv_epi8(vValues, vOfRange, AtMost(vPlaces, static_cast<unsigned char>(nCount - 1)));
}

FOR_AVX2 std::size_t Decode(const unsigned char* pText, std::size_t nSize, unsigned char* pPlain)
{
    const __m256i vPack = Load(s_anPack.data());
    const __m256i vZerosLast = _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 3, 7);
    std::size_t nDone = 0;
    for (; nSize - nDone >= nText; nDone += nText, pPlain += nPlain)
    {
        const __m256i vText = _mm256_and_si256(Load(pText + nDone), _mm256_set1_epi8(0x7F));
        if (_mm256_movemask_epi8(_mm256_cmpeq_epi8(vText, _mm256_set1_epi8('='))))
            break;
        __m256i vValues = _mm256_set1_epi8(nOtherValue & 0x3F);
        vValues = TakeRange(vValues, vText, 'A', 26, 0);
        vValues = TakeRange(vValues, vText, 'a', 26, 26);
        vValues = TakeRange(vValues, vText, '0', 10, 52);
        vValues = TakeRange(vValues, vText, '/', 1, 63);
        const __m256i vPairs = _mm256_maddubs_epi16(vValues, _mm256_set1_epi32(nJoinPairs));
        const __m256i vGroups = _mm256_madd_epi16(vPairs, _mm256_set1_epi32(nJoinHalves));
        Store(pPlain, _mm256_permutevar8x32_epi32(_mm256_shuffle_epi8(vGroups, vPack), vZerosLast));
    }
    return nDone + g_oPlainRuns.Decode(pText + nDone, nSize - nDone, pPlain);
}

FOR_AVX2 std::size_t Filter(const unsigned char* pIn, std::size_t nSize, unsigned char* pOut)
{
    std::size_t nDone = 0;
    std::size_t nOut = 0;
    while (nSize - nDone >= nText)
    {
        const __m256i vText = Load(pIn + nDone);
        const __m256i vControls =
            AtMost(_mm256_sub_epi8(vText, _mm256_set1_epi8(nFirstLineControl)), nLastLineControl - nFirstLineControl);
        const __m256i vSkipped = _mm256_or_si256(vControls, _mm256_cmpeq_epi8(vText, _mm256_set1_epi8(nBlank)));
        const auto nSkipped = static_cast<unsigned int>(_mm256_movemask_epi8(vSkipped));
        Store(pOut + nOut, vText);
        if (!nSkipped)   // a branch, as what comes next must not wait for the answer
        {
            nOut += nText;
            nDone += nText;
            continue;
        }
        const auto nKept = static_cast<unsigned int>(__builtin_ctz(nSkipped));
        nOut += nKept;
        nDone += nKept + 1;
    }
    return nOut + g_oPlainRuns.Filter(pIn + nDone, nSize - nDone, pOut + nOut);
}
}

// Whatever has VBMI has AVX2 as well, and longer vectors make no faster filter.
constexpr Runs s_aoRuns[] = {{"AVX-512 VBMI", vbmi::Encode, vbmi::Decode, avx2::Filter},
                             {"AVX2", avx2::Encode, avx2::Decode, avx2::Filter}};
}

std::span<const Runs> VectorRuns()
{
    const std::span<const Runs> oAll(s_aoRuns);
    if (__builtin_cpu_supports("avx512vbmi") && __builtin_cpu_supports("avx512bw"))
        return oAll;
    if (__builtin_cpu_supports("avx2"))
        return oAll.subspan(1);
    return {};
}
