// The socket layer of the system, which the library leaves to its host to start.
#pragma once

// False if it does not start. It is needed until the process ends, so nothing stops it.
bool StartSocketLayer();
