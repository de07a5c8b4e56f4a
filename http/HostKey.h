// The host of a URL as the table of hosts knows it.
#pragma once

#include "ZevrinUtils/framework/String.h"

// The bare host, or host and port if the URL's last colon is not that of its scheme. A colon in the path or the
// query counts too.
CString HostKey(const CString& sURL, const CString& strHost, unsigned short nPort);
