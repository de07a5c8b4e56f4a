// The library's promises, held against whatever bytes it is given. Each function names the fault that its input brings
// to light, and nothing if there is none.
#pragma once

#include <cstddef>
#include <string>

using Rule = std::string(const unsigned char* pInput, std::size_t nSize);

// Decodes a text with an object of the class itself, with one of a derived class, and in each kind of runs that
// this machine can do, against a plain account of the rules.
Rule FaultInBase64Decoding;

// Encodes bytes in the same three ways; the text has to decode to the bytes again.
Rule FaultInBase64Encoding;

// Splits a URL as its grammar says; a text that does not follow it has to be refused whole.
Rule FaultInUrlSplitting;

// Escapes bytes, and gets them back from behind a question mark.
Rule FaultInUrlEscaping;

// Unescapes a text as sscanf would read it.
Rule FaultInUrlUnescaping;

// Judges a text as an address by its groups, one after the other.
Rule FaultInAddress;

// Splits a script of SQL as its lines, put together in another way, say.
Rule FaultInSqlScript;

// Splits a command line, and gets arguments back that were quoted for one. On Linux.
Rule FaultInCommandLine;

// Changes bytes of a sound registry, three of the input for one of the file or its log. Whatever they make of it is
// refused and left alone, or answers for what is written to it. On Linux.
Rule FaultInRegistryFile;
