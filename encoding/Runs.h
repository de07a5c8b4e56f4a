// Coding many groups at a time, by the same rules as group by group. A group that these cannot code, one that
// is padded or short, is left to the caller.
#pragma once

#include <cstddef>
#include <span>

struct Runs
{
    const char* pszName;

    // Encodes all whole groups of three bytes; gives how many bytes those are.
    std::size_t (*Encode)(const unsigned char* pPlain, std::size_t nSize, unsigned char* pText);

    // Decodes whole groups of four characters up to the first that holds a padding character; gives how many
    // characters those are. pPlain has room for nSize bytes; behind the decoded ones it writes nothing but zeros.
    std::size_t (*Decode)(const unsigned char* pText, std::size_t nSize, unsigned char* pPlain);

    // Copies the characters that are not skipped; gives how many those are. pOut has room for nSize bytes, and
    // may hold anything behind the copied ones.
    std::size_t (*Filter)(const unsigned char* pIn, std::size_t nSize, unsigned char* pOut);
};

extern const Runs g_oPlainRuns;

// The runs in vectors that this machine can do, the fastest first; there may be none.
std::span<const Runs> VectorRuns();

// The fastest that this machine can do.
const Runs& BestRuns();
