// The proxies of the environment.
#pragma once

#include <string>

// The proxy that libcurl finds in these variables for a web URL; empty for none. The exceptions of no_proxy are not
// looked at: a 407 of a server that they name is taken for the proxy's. Credentials then go to the proxy alone, as
// libcurl keeps to no_proxy.
std::string ProxyOf(bool bSecure);

// A proxy's text without the credentials in it.
std::string WithoutUser(std::string strProxy);
