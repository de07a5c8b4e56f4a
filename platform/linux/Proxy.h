// The proxies of the environment.
#pragma once

#include <string>

// What libcurl finds in the proxy variables for a web URL; empty for none. The exceptions of no_proxy are not looked
// at.
std::string ProxyOf(bool bSecure);

// A proxy's text without the credentials in it.
std::string WithoutUser(std::string strProxy);
