/// @file
/// The mark of what the library exports.
#pragma once

#if !defined(_WIN32)
#define ZEVRINUTILS_API __attribute__((visibility("default")))   ///< what this library exports
#elif defined(ZEVRINUTILS_BUILDING)
#define ZEVRINUTILS_API __declspec(dllexport)
#else
#define ZEVRINUTILS_API __declspec(dllimport)
#endif
