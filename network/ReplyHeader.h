// The fixed HTTP/1.0 header that the port listener can put before a reply.
#pragma once

// A format with one place: the length of the reply in bytes, in decimal.
extern const char g_szReplyHeader[];

// Length of the format as it stands, placeholder included, in bytes; measured when the module loads.
extern const int g_nReplyHeaderLength;
int MeasureReplyHeader() noexcept;
