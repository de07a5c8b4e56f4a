// The framework's own texts, with the numbers of their string resources.
#pragma once

// 61840
inline constexpr char szMailLoadFailed[] = "The mail system of this machine could not be loaded.";
// 61841
inline constexpr char szMailEntryMissing[] = "The mail system of this machine is not valid: it cannot send a message.";
