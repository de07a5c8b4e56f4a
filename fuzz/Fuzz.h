// A program that the fuzzer feeds: each names the function that is given its inputs and tells the fault that one
// of them brings to light, if it does.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

template <class Check>
int RunFuzzInput(Check faultIn, const std::uint8_t* pInput, std::size_t nSize)
{
    const std::string strFault = faultIn(pInput, nSize);
    if (!strFault.empty())
    {
        std::fprintf(stderr, "wrong: %s\n", strFault.c_str());
        std::abort();   // the fuzzer keeps the input
    }
    return 0;
}

#define FUZZ_TARGET(faultIn)                                                                                           \
    extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pInput, std::size_t nSize)                               \
    {                                                                                                                  \
        return RunFuzzInput(&(faultIn), pInput, nSize);                                                                \
    }
