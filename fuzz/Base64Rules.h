// What the Base64 coder promises, held against whatever text or bytes it is given.
#pragma once

#include <cstddef>
#include <string>

// Decodes a text with an object of the class itself, with one of a derived class, and in each kind of runs that
// this machine can do; names what differs from a plain account of the rules, and nothing if all is well.
std::string FaultInDecoding(const unsigned char* pText, std::size_t nSize);

// The same for encoding, whose text has to decode to the bytes again.
std::string FaultInEncoding(const unsigned char* pPlain, std::size_t nSize);
