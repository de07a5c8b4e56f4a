// The host and the port that a URL names, for requests and for the table of hosts.
#pragma once

#include "ZevrinUtils/framework/String.h"

CString HostOf(const CString& sURL);          // empty if the URL does not split
unsigned short PortOf(const CString& sURL);   // 80 if the URL does not split

// The host as the table of hosts knows it: bare, or with the port if the URL's last colon is not that of its scheme.
// A colon in the path or the query counts too.
CString HostKey(const CString& sURL);
