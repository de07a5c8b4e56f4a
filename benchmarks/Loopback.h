// Clients and a bare server on the loopback address, for measuring what serves a port.
#pragma once

#include <string>

// A server of one thread and nothing but the calls that it takes: accept, receive, send a fixed text, close. It
// ends with the process.
void StartBareServer(unsigned short nPort, const std::string& strReply);

// Sends a request on each of so many new connections, shared out among the clients, and reads until the peer closes.
// False if one of them fails, or its answer does not end with the wanted text.
bool MakeRequests(unsigned short nPort, int nClients, int nRequests, const std::string& strWanted);
