// A program that the fuzzer feeds. FAULT_IN is the rule that its inputs are held against.
#include "Rules.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pInput, std::size_t nSize)
{
    const std::string strFault = FAULT_IN(pInput, nSize);
    if (!strFault.empty())
    {
        std::fprintf(stderr, "wrong: %s\n", strFault.c_str());
        std::abort();   // the fuzzer keeps the input
    }
    return 0;
}
